// Lines on their way from the threads that read them to the window that takes them. There is room
// for so many; who brings more waits, so that what sends them waits, too, and none is lost.
#pragma once

#include <condition_variable>
#include <cstddef>
#include <mutex>
#include <string>
#include <vector>

namespace studio {

struct SourceLine {
    std::string text;
    std::string fault{}; // why it is refused before it is read; empty: it is not
};

class CLineQueue {
public:
    static constexpr std::size_t ROOM = 4096; // lines

    // Waits for room. 0: the queue is closed, and the line is lost.
    int Push(SourceLine line);
    // All that are there, in their order.
    std::vector<SourceLine> Take();
    // Nobody waits any more.
    void Close();
    [[nodiscard]] bool IsClosed() const;

private:
    mutable std::mutex m_lock;
    std::condition_variable m_room;
    std::vector<SourceLine> m_lines;
    bool m_bClosed = false;
};

// Cuts the bytes of one stream into lines. One that is too long is told as a fault, and what is
// left of it is skipped.
class CLineCutter {
public:
    static constexpr std::size_t LONGEST = 4096; // bytes of a line

    // 0: the queue is closed.
    int Add(const char* pBytes, std::size_t nBytes, CLineQueue* pQueue);
    // What stands behind the last end of a line is a line.
    int Finish(CLineQueue* pQueue);

private:
    int EndLine(CLineQueue* pQueue);

    std::string m_line;
    bool m_bTooLong = false;
};

} // namespace studio
