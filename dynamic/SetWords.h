// The settings and the value that a drawing gives a scale or a meter: read from the attributes
// "set" and "value" (dynamic/SetTexts.h) and kept as numbers at the view, beneath what the host
// sets.
#pragma once

#include "document/QELDocElm.h"

#include <cstdint>
#include <string_view>

class CHostDriven;

// A word of a "set" as it is spelled.
struct SetWordText {
    std::string_view name;
    std::string_view number;
    bool bHasNumber; // there is a "=" behind the name
};

// The next word at *ppText, which is moved behind it. False: there is none.
bool NextSetWord(const char** ppText, SetWordText* pOut);

// The selector of that name; KEYWORD_NONE for an unknown one.
int32_t SelectorOfName(std::string_view name);

// "0x" and hexadecimal digits of 32 bits, or decimal digits with an optional sign and point. False:
// it is something else.
bool ReadSetNumber(std::string_view text, double* pfOut);

// The same with blanks around it, as the text of "value".
bool ReadValueText(const char* pszText, double* pfOut);

class CSetWords {
public:
    CSetWords() = default;
    ~CSetWords();
    CSetWords(const CSetWords&) = delete;
    CSetWords& operator=(const CSetWords&) = delete;

    // Both 0 without memory. The texts of an element never change: only the first ones are read.
    int Take(const SetTexts& texts);
    int TakeCopy(const CSetWords& source); // with what the host has set
    // Gives the element what the host has not set.
    void Apply(CHostDriven& host);
    // The same when the host's settings are no more.
    void ApplyAll(CHostDriven& host);
    void NoteHost(uint32_t nSelector) // the host has set it
    {
        if (m_pKept) Note(nSelector);
    }
    // The value while the host has set none; null when there is none here.
    [[nodiscard]] const double* Value() const;

private:
    void Note(uint32_t nSelector);

    struct Kept;
    Kept* m_pKept = nullptr; // null without words: then nothing is kept of the host either
};
