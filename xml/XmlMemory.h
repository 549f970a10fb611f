// The text of a drawing in a buffer of the host. What does not fit is only counted.
#pragma once

#include "xml/XmlSink.h"

#include <cstdint>

class CXmlMemory final : public CXmlSink {
public:
    CXmlMemory(char* pBuffer, std::size_t nSize) : m_pBuffer(pBuffer)
    {
        UseRoom(pBuffer, pBuffer + nSize);
    }
    [[nodiscard]] uint64_t Size() const { return m_nPast + Taken(); }

private:
    [[nodiscard]] std::size_t Taken() const
    {
        return static_cast<std::size_t>(Place() - m_pBuffer);
    }
    // A full buffer has no room from here on.
    void PutMore(const char* /*pText*/, std::size_t nLen) override
    {
        m_nPast += Taken() + nLen;
        m_pBuffer = Place();
        UseRoom(m_pBuffer, m_pBuffer);
    }

    char* m_pBuffer; // where the bytes begin that m_nPast does not count
    uint64_t m_nPast = 0;
};
