// The commands of the program, their options, and what they were given.
#pragma once

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

struct OptionRow {
    enum class Takes { Nothing, Value, ManyValues } takes;
    const char* pszNames; // "-o,--output"
};
using OptionRows = std::vector<OptionRow>;

struct GivenOption {
    std::string name; // the long one, with its dashes
    std::wstring value;
};

struct CommandLine {
    std::vector<GivenOption> options; // in the order of the command line
    Arguments names;
};

struct CommandRow {
    const char* pszName;
    int (*pfnRun)(const CommandLine& given);
    const char* pszHelp;
    OptionRows options;
};

extern const char* const g_renderHelp;
extern const char* const g_animateHelp;
extern const char* const g_infoHelp;
extern const char* const g_checkHelp;

OptionRows RenderOptions();
OptionRows AnimateOptions();

int RunRender(const CommandLine& given);
int RunAnimate(const CommandLine& given);
int RunInfo(const CommandLine& given);
int RunCheck(const CommandLine& given);

} // namespace qel
