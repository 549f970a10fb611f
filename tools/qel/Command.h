// The commands of the program, their options, and what they were given.
#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <vector>

namespace qel {

enum ExitStatus { EXIT_CLEAN = 0, EXIT_FINDINGS = 1, EXIT_TROUBLE = 2 };

// What ends a command with one message on standard error and exit status 2. The text is UTF-8.
class CTrouble : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

using Arguments = std::vector<std::wstring>;

// All that the parser and the help know of an option.
struct OptionRow {
    enum class Takes { Nothing, Value, ManyValues } takes;
    const char* pszNames;   // "-o,--output"
    const char* pszValue;   // as help shows it: "OUT"; empty without one
    const char* pszGroup;   // the heading that it stands under
    const char* pszMeaning; // help breaks it into lines
};
using OptionRows = std::vector<const OptionRow*>;

struct GivenOption {
    const OptionRow* pRow;
    std::string name; // the long one, with its dashes
    std::wstring value;
};

struct CommandLine {
    std::string help;                 // what is to be printed; empty: it was not asked for
    std::vector<GivenOption> options; // in the order of the command line
    Arguments names;
};

struct CommandRow {
    const char* pszName;
    const char* pszUsage; // what follows the name
    const char* pszBrief; // one line for the list of all commands
    const char* pszAbout; // help: the paragraphs before the options
    std::string notes;    // help: those after them
    OptionRows options;
    int (*pfnRun)(const CommandLine& given);
};
using CommandRows = std::vector<CommandRow>;

CommandRow RenderCommand();
CommandRow AnimateCommand();
CommandRow InfoCommand();
CommandRow CheckCommand();

// An option, and what takes it into the settings of a command.
template <class Settings>
struct SettingRow {
    OptionRow option;
    void (*pfnTake)(const GivenOption& given, Settings* pSettings);
};

template <class Settings, std::size_t N>
void AddOptions(const SettingRow<Settings> (&rows)[N], OptionRows* pRows)
{
    for (const SettingRow<Settings>& row : rows) pRows->push_back(&row.option);
}

// Whether the option is one of these rows.
template <class Settings, std::size_t N>
bool TakeOption(const SettingRow<Settings> (&rows)[N], const GivenOption& given,
                Settings* pSettings)
{
    for (const SettingRow<Settings>& row : rows) {
        if (given.pRow != &row.option) continue;
        row.pfnTake(given, pSettings);
        return true;
    }
    return false;
}

} // namespace qel
