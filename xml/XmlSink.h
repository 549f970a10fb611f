// Where the text of a drawing is put, piece by piece. There is room at hand for most pieces; a
// class that derives from it takes what does not fit.
#pragma once

#include <cstddef>
#include <cstring>

class CXmlSink {
public:
    void Put(const char* pText, std::size_t nLen)
    {
        if (nLen > static_cast<std::size_t>(m_pEnd - m_p)) {
            PutMore(pText, nLen);
            return;
        }
        char* p = m_p;
        m_p += nLen;
        // Most pieces are a few bytes long, which a call of the library's copying takes longer for.
        for (; nLen >= WORD; nLen -= WORD, p += WORD, pText += WORD) std::memcpy(p, pText, WORD);
        if (nLen & 4) {
            std::memcpy(p, pText, 4);
            p += 4;
            pText += 4;
        }
        if (nLen & 2) {
            std::memcpy(p, pText, 2);
            p += 2;
            pText += 2;
        }
        if (nLen & 1) *p = *pText;
    }
    void Put(char c) { Put(&c, 1); }
    void Put(const char* pszText) { Put(pszText, std::strlen(pszText)); }

protected:
    CXmlSink() = default;
    ~CXmlSink() = default;
    virtual void PutMore(const char* pText, std::size_t nLen) = 0;
    void UseRoom(char* p, char* pEnd)
    {
        m_p = p;
        m_pEnd = pEnd;
    }
    [[nodiscard]] char* Place() const { return m_p; } // where the room that is left begins

private:
    static constexpr std::size_t WORD = 8;

    char* m_p = nullptr;
    char* m_pEnd = nullptr;
};
