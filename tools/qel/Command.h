// The commands of the program, and what reading their arguments needs.
#pragma once

#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

enum ExitStatus { EXIT_CLEAN = 0, EXIT_FINDINGS = 1, EXIT_TROUBLE = 2 };

// What ends a command with one message on standard error and exit status 2. The text is UTF-8.
class CTrouble : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

using Arguments = std::vector<std::wstring>;

extern const char* const g_renderHelp;
extern const char* const g_animateHelp;
extern const char* const g_infoHelp;
extern const char* const g_checkHelp;

int RunRender(const Arguments& arguments);
int RunAnimate(const Arguments& arguments);
int RunInfo(const Arguments& arguments);
int RunCheck(const Arguments& arguments);

// Goes through the arguments: options with or without a value, and names. "@FILE" in the place of
// one stands for those in that list.
class CArgumentReader {
public:
    explicit CArgumentReader(Arguments arguments) : m_arguments(std::move(arguments)) {}

    bool Next();                         // false at the end; CTrouble for a list that is not there
    [[nodiscard]] bool IsOption() const; // "--x"; after a lone "--" nothing is one
    [[nodiscard]] const std::wstring& Current() const { return m_arguments[m_nAt - 1]; }
    const std::wstring& Value(); // of the current option; CTrouble when there is none
    [[noreturn]] void RefuseOption() const;

private:
    void ExpandLists(); // at the place where it is

    Arguments m_arguments;
    std::size_t m_nAt = 0;
    int m_nLists = 0;
    bool m_bNamesOnly = false;
};
