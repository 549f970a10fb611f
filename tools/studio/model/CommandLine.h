// What the command line asks for: FILE... [-] [--listen PORT].
#pragma once

#include <string>
#include <vector>

namespace studio {

struct CommandLine {
    enum class Fault { None, Unknown, PortMissing, PortWrong, Twice };

    std::vector<std::wstring> files;
    bool bStandardInput = false; // "-": values are read from there
    std::wstring host;           // of --listen; empty: this machine alone
    unsigned nPort = 0;          // 0: nobody listens
    Fault fault = Fault::None;
    std::wstring wrong; // the word that is at fault
};

// The words after the program's name.
CommandLine ReadCommandLine(const std::vector<std::wstring>& words);

} // namespace studio
