// Sentences of the engine as the ends of the program's own.
#pragma once

#include <cctype>
#include <string>

// With a small letter at its beginning and without its full stop.
inline std::string Clause(const char* pszSentence)
{
    std::string clause = pszSentence;
    if (!clause.empty())
        clause[0] = static_cast<char>(std::tolower(static_cast<unsigned char>(clause[0])));
    if (!clause.empty() && clause.back() == '.') clause.pop_back();
    return clause;
}
