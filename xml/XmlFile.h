// A file that is written beside the one whose place it takes when all of it has reached the disk:
// the old or the new one is whole at every moment, and a drawing that stood there before is never
// lost.
#pragma once

#include "xml/XmlSink.h"
#include "xml/XmlTree.h"

#include <windows.h>

class CXmlFile final : public CXmlSink {
public:
    CXmlFile() = default;
    ~CXmlFile(); // what was not committed is gone, and the old file is as it was
    CXmlFile(const CXmlFile&) = delete;
    CXmlFile& operator=(const CXmlFile&) = delete;

    // pszPath: lives as long as this. XML_ERR_CREATE: the target cannot be replaced, or nothing can
    // be made beside it; XML_ERR_MEMORY.
    XmlError Open(const char* pszPath);
    // Whether all of it has taken the target's place. No is also the answer for what could not be
    // written before.
    bool Commit();

private:
    void PutMore(const char* pText, std::size_t nLen) override;
    void Write(const char* pData, std::size_t nSize);
    void Flush();

    const char* m_pszPath = nullptr;
    char* m_pBuffer = nullptr;
    char* m_pszTemp = nullptr; // the name beside the target, in the same block
    HANDLE m_hFile = INVALID_HANDLE_VALUE;
    bool m_bFailed = false;
};
