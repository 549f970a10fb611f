#include "tools/qel/HelpFormatter.h"

#include <sstream>
#include <utility>

namespace qel {

namespace {

constexpr std::size_t LINE_WIDTH = 100;
constexpr std::size_t OPTION_COLUMN = 25;
constexpr std::size_t COMMAND_COLUMN = 32;

// The words of a text in lines that begin at a column.
std::string Wrapped(const std::string& text, std::size_t nColumn)
{
    std::string lines;
    std::string line;
    std::istringstream words(text);
    for (std::string word; words >> word;) {
        if (!line.empty() && nColumn + line.size() + 1 + word.size() > LINE_WIDTH) {
            lines += line + "\n" + std::string(nColumn, ' ');
            line.clear();
        }
        line += (line.empty() ? "" : " ") + word;
    }
    return lines + line + "\n";
}

// A name and, from the column on, what it means. A name that is too long has a line of its own.
std::string Entry(const std::string& name, const std::string& meaning, std::size_t nColumn)
{
    std::string entry = "  " + name;
    if (entry.size() + 2 > nColumn)
        entry += "\n" + std::string(nColumn, ' ');
    else
        entry.resize(nColumn, ' ');
    return entry + Wrapped(meaning, nColumn);
}

} // namespace

CHelpFormatter::CHelpFormatter(std::string usage) : m_usage(std::move(usage))
{
    column_width(OPTION_COLUMN);
}

std::string CHelpFormatter::make_help(const CLI::App* pApp, std::string name,
                                      CLI::AppFormatMode mode) const
{
    return name + " " + m_usage + "\n\n" + make_description(pApp) + make_subcommands(pApp, mode) +
           "\n" + make_groups(pApp, mode) + "\n" + make_footer(pApp);
}

// The library parts groups by an empty line.
std::string CHelpFormatter::make_group(std::string heading, bool bPositional,
                                       std::vector<const CLI::Option*> options) const
{
    std::string text = heading + ":\n";
    for (const CLI::Option* pOption : options) text += make_option(pOption, bPositional);
    return text;
}

std::string CHelpFormatter::make_option(const CLI::Option* pOption, bool bPositional) const
{
    const std::string names =
        CLI::detail::find_and_replace(make_option_name(pOption, bPositional), ",", ", ");
    return Entry(names + make_option_opts(pOption), make_option_desc(pOption), get_column_width());
}

std::string CHelpFormatter::make_subcommand(const CLI::App* pCommand) const
{
    return Entry(pCommand->get_name(), pCommand->get_description(), COMMAND_COLUMN);
}

} // namespace qel
