#include "fuzz/TextModel.h"

#include <cstddef>

namespace {

struct Entity {
    std::string_view text;
    char c;
};
constexpr Entity g_entities[] = {
    {"&amp;", '&'}, {"&lt;", '<'}, {"&gt;", '>'}, {"&quot;", '"'}, {"&apos;", '\''}};

constexpr std::string_view SPACE = " \t\n\v\f\r";

std::string_view EntityOf(char c)
{
    for (const Entity& entity : g_entities)
        if (entity.c == c) return entity.text;
    return {};
}

// A character reference is copied as it stands, up to its semicolon, unless that would run past the
// end of the text or value.
std::size_t ReferenceLength(std::string_view rest, char cEnd)
{
    if (!rest.starts_with("&#x") || rest.size() < 5) return 0;
    const std::size_t nLast = rest.find(';');
    if (nLast == std::string_view::npos || rest.find(cEnd) < nLast) return 0;
    return nLast + 1;
}

std::string Written(std::string_view text, char cEnd)
{
    std::string out;
    while (!text.empty()) {
        const std::size_t nReference = ReferenceLength(text, cEnd);
        const std::string_view entity = EntityOf(text[0]);
        if (nReference)
            out += text.substr(0, nReference);
        else if (!entity.empty())
            out += entity;
        else
            out += text[0];
        text.remove_prefix(nReference ? nReference : 1);
    }
    return out;
}

char DigitValue(char c)
{
    if (c >= '0' && c <= '9') return static_cast<char>(c - '0');
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + ('a' - 'A'));
    return static_cast<char>(static_cast<unsigned char>(c) - 0x57);
}

// One character at the front of a run, which is shortened by what it took.
char TakeOne(std::string_view* pRest)
{
    const std::string_view rest = *pRest;
    for (const Entity& entity : g_entities) {
        if (!rest.starts_with(entity.text)) continue;
        pRest->remove_prefix(entity.text.size());
        return entity.c;
    }
    if (rest.starts_with("&#x")) {
        for (const std::size_t nDigits : {1U, 2U}) { // of two digits the second one counts alone
            if (rest.size() < 4 + nDigits || rest[3 + nDigits] != ';') continue;
            pRest->remove_prefix(4 + nDigits);
            return DigitValue(rest[2 + nDigits]);
        }
    }
    pRest->remove_prefix(1);
    return rest[0];
}

std::string Decoded(std::string_view run)
{
    std::string out;
    while (!run.empty()) {
        const char c = TakeOne(&run);
        if (!c) break; // a text ends at its first zero
        out += c;
    }
    return out;
}

} // namespace

std::string ReadBackText(std::string_view text)
{
    const std::string written = Written(text, '<');
    const std::size_t nStart = written.find_first_not_of(SPACE);
    return nStart == std::string::npos ? "" : Decoded(std::string_view(written).substr(nStart));
}

std::string ReadBackValue(std::string_view value)
{
    const bool bSingle = value.find('"', 1) != std::string_view::npos;
    return Decoded(Written(value, bSingle ? '\'' : '"'));
}
