// Live data from outside: threads read lines from standard input or from the network, and the
// window takes them on its timer.
#pragma once

#include "tools/studio/model/LineQueue.h"

#include <windows.h>

#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace studio {

class CDataSource {
public:
    CDataSource();
    ~CDataSource();
    CDataSource(const CDataSource&) = delete;
    CDataSource& operator=(const CDataSource&) = delete;

    // Reads until the end of an input, which stays the caller's and must stay open so long. A
    // source reads one. 0: no thread can be had.
    int Read(HANDLE hInput);

    // Listens on a port; 0 lets the system choose. The host is an address of this machine; empty:
    // 127.0.0.1, which others do not reach. 0: *pWhy tells why not.
    int Listen(const std::string& host, unsigned nPort, std::string* pWhy);
    [[nodiscard]] unsigned Port() const { return m_nPort; } // 0: it does not listen

    // What has come since.
    std::vector<SourceLine> Take() { return m_pQueue->Take(); }
    // Whether an input that it read has come to its end.
    [[nodiscard]] bool HasEnded() const;

private:
    struct Ended;

    std::shared_ptr<CLineQueue> m_pQueue;
    std::shared_ptr<Ended> m_pEnded;
    std::thread m_listener;
    unsigned m_nPort = 0;
    bool m_bNetwork = false; // it was started for this
};

} // namespace studio
