// The one file that includes CLI11, which takes long to compile.
#include "tools/qel/CommandLine.h"

#include "tools/qel/Hint.h"
#include "tools/qel/Streams.h"
#include "tools/qel/Text.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <map>
#include <set>
#include <sstream>
#include <utility>

namespace qel {

namespace {

constexpr char CONFIG[] = "--config";

bool TakesValue(const CLI::Option* pOption)
{
    return pOption->get_items_expected_min() > 0;
}

// The options and names of a command, as the library knows them.
class CCommandParser {
public:
    explicit CCommandParser(const CommandRow& command);

    [[nodiscard]] const CLI::Option& Find(const std::string& name) const; // CTrouble: unknown
    CommandLine Parse(std::vector<std::string> words);

private:
    void Add(const OptionRow& row);

    std::string m_command;
    CLI::App m_app;
};

// Names are what the library has no option for; as an option they would be split at commas when
// they stand in brackets.
CCommandParser::CCommandParser(const CommandRow& command) : m_command(command.pszName)
{
    m_app.allow_windows_style_options(false); // paths begin like these
    m_app.allow_extras();
    m_app.set_help_flag();
    for (const OptionRow& row : command.options) Add(row);
}

void CCommandParser::Add(const OptionRow& row)
{
    using CLI::MultiOptionPolicy;
    if (row.takes == OptionRow::Takes::Nothing) {
        m_app.add_flag(row.pszNames)->multi_option_policy(MultiOptionPolicy::TakeAll);
        return;
    }
    CLI::Option* pOption = m_app.add_option(row.pszNames);
    pOption->expected(1)->allow_extra_args(false);
    pOption->multi_option_policy(MultiOptionPolicy::TakeAll);
}

const CLI::Option& CCommandParser::Find(const std::string& name) const
{
    const CLI::Option* pOption = m_app.get_option_no_throw(name);
    if (pOption) return *pOption;
    std::vector<std::string> known;
    for (const CLI::Option* pKnown : m_app.get_options()) known.push_back(pKnown->get_name());
    throw CTrouble("unknown option '" + name + "'; 'qel " + m_command + " --help' lists them" +
                   MeantWord(name, known));
}

CommandLine CCommandParser::Parse(std::vector<std::string> words)
{
    std::reverse(words.begin(), words.end()); // the library takes the last one first
    m_app.parse(std::move(words));
    CommandLine given;
    std::map<const CLI::Option*, std::size_t> seen;
    for (const CLI::Option* pOption : m_app.parse_order()) {
        const std::string value = pOption->results().at(seen[pOption]++);
        given.options.push_back(
            {pOption->get_name(), TakesValue(pOption) ? FromUtf8(value) : std::wstring()});
    }
    std::vector<std::string> names = m_app.remaining();
    const auto mark = std::find(names.begin(), names.end(), "--"); // the first one is no name
    if (mark != names.end()) names.erase(mark);
    for (const std::string& name : names) given.names.push_back(FromUtf8(name));
    return given;
}

// Puts the words of files where the files are named: "@FILE" stands for the arguments in that list,
// and what "--config FILE" has goes before all others.
class CWordExpander {
public:
    CWordExpander(const CommandRow& command, const CCommandParser& parser, Arguments words)
        : m_command(command), m_parser(parser), m_words(std::move(words))
    {
    }

    std::vector<std::string> Expand();

private:
    void ExpandList();
    void StepOverOption();
    std::wstring AttachedOrNext(const std::string& word, std::size_t nAttached);
    void ReadConfig(const std::wstring& path);
    void AddConfigItem(const std::string& file, const CLI::ConfigItem& item);
    [[nodiscard]] bool IsRepeatable(const std::string& name) const;

    const CommandRow& m_command;
    const CCommandParser& m_parser;
    Arguments m_words;
    std::size_t m_nAt = 0;
    int m_nLists = 0;
    std::set<const CLI::Option*> m_given;
    std::vector<std::pair<const CLI::Option*, std::string>> m_config;
};

std::vector<std::string> CWordExpander::Expand()
{
    while (m_nAt < m_words.size() && m_words[m_nAt] != L"--") {
        const std::wstring& word = m_words[m_nAt];
        if (word.size() > 1 && word[0] == L'@')
            ExpandList();
        else if (word.size() > 1 && word[0] == L'-')
            StepOverOption();
        else
            ++m_nAt;
    }
    std::vector<std::string> all;
    for (const auto& [pOption, value] : m_config) {
        if (m_given.contains(pOption) && !IsRepeatable(pOption->get_name())) continue;
        all.push_back(pOption->get_name());
        if (TakesValue(pOption)) all.push_back(value);
    }
    for (const std::wstring& word : m_words) all.push_back(ToUtf8(word));
    return all;
}

bool CWordExpander::IsRepeatable(const std::string& name) const
{
    return std::any_of(m_command.options.begin(), m_command.options.end(),
                       [&name](const OptionRow& row) {
                           return row.takes == OptionRow::Takes::ManyValues && name == row.pszNames;
                       });
}

void CWordExpander::ExpandList()
{
    constexpr int MAX_LISTS = 100;
    const std::wstring path = m_words[m_nAt].substr(1);
    if (++m_nLists > MAX_LISTS)
        throw CTrouble("the list '" + ToUtf8(path) + "' is one too many, or in itself");
    const Arguments words = ReadArgumentList(path);
    const auto at = m_words.begin() + static_cast<std::ptrdiff_t>(m_nAt);
    m_words.insert(m_words.erase(at), words.begin(), words.end());
}

// A value is no option and no list, however it begins.
void CWordExpander::StepOverOption()
{
    const std::string word = ToUtf8(m_words[m_nAt]);
    const bool bLong = word[1] == '-';
    const std::size_t nName = bLong ? std::min(word.find('='), word.size()) : 2;
    const std::string name = word.substr(0, nName);
    const CLI::Option& option = m_parser.Find(name);
    const std::size_t nFirst = m_nAt++;
    m_given.insert(&option);
    if (!TakesValue(&option)) {
        if (nName < word.size()) throw CTrouble(name + " takes no value");
        return;
    }
    const std::wstring value = AttachedOrNext(word, nName + (bLong ? 1 : 0));
    if (name != CONFIG) return;
    ReadConfig(value);
    const auto words = m_words.begin();
    m_words.erase(words + static_cast<std::ptrdiff_t>(nFirst),
                  words + static_cast<std::ptrdiff_t>(m_nAt));
    m_nAt = nFirst;
}

std::wstring CWordExpander::AttachedOrNext(const std::string& word, std::size_t nAttached)
{
    if (nAttached < word.size()) return FromUtf8(word.substr(nAttached));
    if (word.ends_with('=') || m_nAt >= m_words.size())
        throw CTrouble("a value is missing after " + word);
    return m_words[m_nAt++];
}

void CWordExpander::ReadConfig(const std::wstring& path)
{
    const std::string file = ToUtf8(path);
    std::string bytes;
    if (!ReadBytes(path, &bytes))
        throw CTrouble("cannot read the options '" + file + "': " + WhyNotRead(path));
    std::istringstream lines(bytes);
    CLI::ConfigTOML form;
    form.comment(';'); // the usual sign begins a colour, also within quotes
    for (const CLI::ConfigItem& item : form.from_config(lines)) AddConfigItem(file, item);
}

void CWordExpander::AddConfigItem(const std::string& file, const CLI::ConfigItem& item)
{
    if (item.name == "++" || item.name == "--") return; // a section begins, or ends
    if (!item.parents.empty() && item.parents[0] != m_command.pszName) return;
    const CLI::Option& option = m_parser.Find("--" + item.name);
    const std::string where = "'" + file + "': " + item.name;
    if (TakesValue(&option)) {
        if (option.get_name() == CONFIG) throw CTrouble(where + " is for the command line alone");
        if (item.inputs.size() != 1 && !IsRepeatable(option.get_name()))
            throw CTrouble(where + " takes one value");
        for (const std::string& input : item.inputs) m_config.emplace_back(&option, input);
        return;
    }
    const std::string answer = item.inputs.empty() ? "" : item.inputs[0];
    if (answer != "true" && answer != "false") throw CTrouble(where + " is true or false");
    if (answer == "true") m_config.emplace_back(&option, "");
}

} // namespace

CommandLine ReadCommandLine(const CommandRow& command, const Arguments& words)
{
    CCommandParser parser(command);
    return parser.Parse(CWordExpander(command, parser, words).Expand());
}

} // namespace qel
