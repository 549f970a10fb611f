// A file that is written beside the one whose place it takes when all of it has reached the disk:
// the old or the new one is whole at every moment, and a drawing that stood there before is never
// lost.
#pragma once

#include "base/Failure.h"
#include "xml/WidePath.h"
#include "xml/XmlSink.h"
#include "xml/XmlTree.h"

#include <windows.h>

#include <optional>

class CXmlFile final : public CXmlSink {
public:
    CXmlFile() = default;
    ~CXmlFile(); // what was not committed is gone, and the old file is as it was
    CXmlFile(const CXmlFile&) = delete;
    CXmlFile& operator=(const CXmlFile&) = delete;

    // pszPath: lives as long as this. XML_ERR_CREATE: the target cannot be replaced, or nothing can
    // be made beside it; XML_ERR_MEMORY.
    XmlError Open(const char* pszPath);
    XmlError Open(const wchar_t* pszPath); // of any length that the system takes
    // Whether all of it has taken the target's place. No is also the answer for what could not be
    // written before.
    bool Commit();
    // Why Open or Commit failed.
    [[nodiscard]] const Failure& Why() const { return m_why; }

private:
    template <class TChar>
    XmlError Create(const TChar* pszPath, TChar** ppszTemp);
    XmlError Fail(const Failure& failure);
    bool Reaches();
    bool TakesPlace();
    void DeleteTemp() const;
    void PutMore(const char* pText, std::size_t nLen) override;
    void Write(const char* pData, std::size_t nSize);
    void Flush();

    const char* m_pszPath = nullptr; // null: the path is a wide one
    const wchar_t* m_pszWidePath = nullptr;
    std::optional<CWidePath> m_widePath;
    char* m_pBuffer = nullptr;
    char* m_pszTemp = nullptr; // the name beside the target, in the same block
    wchar_t* m_pszWideTemp = nullptr;
    Failure m_why;
    HANDLE m_hFile = INVALID_HANDLE_VALUE;
    bool m_bFailed = false;
};
