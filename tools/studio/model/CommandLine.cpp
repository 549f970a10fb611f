// The command line; see the header.
#include "tools/studio/model/CommandLine.h"

#include <cwchar>

namespace studio {

namespace {

constexpr wchar_t LISTEN[] = L"--listen";
constexpr unsigned long MAX_PORT = 65535;

using Fault = CommandLine::Fault;

void Fail(CommandLine* pLine, Fault fault, const std::wstring& word)
{
    if (pLine->fault != Fault::None) return; // the first fault is told
    pLine->fault = fault;
    pLine->wrong = word;
}

// PORT, or HOST:PORT for who is to be heard from elsewhere.
void TakePort(CommandLine* pLine, const std::wstring& word)
{
    if (pLine->nPort) return Fail(pLine, Fault::Twice, LISTEN);
    const std::size_t nColon = word.rfind(L':');
    const std::wstring port = nColon == std::wstring::npos ? word : word.substr(nColon + 1);
    const bool bDigits = !port.empty() && port.size() <= 5 &&
                         port.find_first_not_of(L"0123456789") == std::wstring::npos;
    const unsigned long nPort = bDigits ? std::wcstoul(port.c_str(), nullptr, 10) : 0;
    if (!nPort || nPort > MAX_PORT) return Fail(pLine, Fault::PortWrong, word);
    pLine->nPort = static_cast<unsigned>(nPort);
    if (nColon != std::wstring::npos) pLine->host = word.substr(0, nColon);
}

// The number of words that belong to the option.
std::size_t TakeOption(CommandLine* pLine, const std::vector<std::wstring>& words, std::size_t n)
{
    const std::wstring& word = words[n];
    const std::wstring joined = std::wstring(LISTEN) + L"=";
    if (word.starts_with(joined)) {
        TakePort(pLine, word.substr(joined.size()));
        return 1;
    }
    if (word != LISTEN) {
        Fail(pLine, Fault::Unknown, word);
        return 1;
    }
    if (n + 1 < words.size())
        TakePort(pLine, words[n + 1]);
    else
        Fail(pLine, Fault::PortMissing, word);
    return 2;
}

} // namespace

CommandLine ReadCommandLine(const std::vector<std::wstring>& words)
{
    CommandLine line;
    bool bNames = false; // after "--" all are names
    for (std::size_t n = 0; n < words.size();) {
        const std::wstring& word = words[n];
        const bool bOption = !bNames && word.size() > 1 && word[0] == L'-';
        if (bOption && word != L"--") {
            n += TakeOption(&line, words, n);
            continue;
        }
        if (bOption)
            bNames = true;
        else if (!bNames && word == L"-")
            line.bStandardInput = true;
        else
            line.files.push_back(word);
        ++n;
    }
    return line;
}

} // namespace studio
