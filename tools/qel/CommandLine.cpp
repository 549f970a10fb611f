#include "tools/qel/CommandLine.h"

#include "tools/qel/HelpFormatter.h"
#include "tools/qel/Hint.h"
#include "tools/qel/Streams.h"
#include "tools/qel/Text.h"

#include <algorithm>
#include <map>
#include <memory>
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
    CCommandParser(const CommandRow& command, const CommandRows& commands);

    [[nodiscard]] const CLI::Option& Find(const std::string& name) const; // CTrouble: unknown
    [[nodiscard]] bool IsRepeatable(const CLI::Option& option) const;
    [[nodiscard]] bool IsForLineAlone(const CLI::Option& option) const; // not for a file of options
    [[nodiscard]] bool AsksForHelp(const Arguments& words) const;
    [[nodiscard]] std::string Help() const { return m_app.help(); }
    CommandLine Parse(std::vector<std::string> words);

private:
    void Add(const OptionRow& row);
    [[nodiscard]] CommandLine Given() const;

    CLI::App m_app;
    std::map<const CLI::Option*, const OptionRow*> m_rows;
};

std::string JoinedName(const CommandRow& command)
{
    return *command.pszName ? std::string("qel ") + command.pszName : "qel";
}

// Names are what the library has no option for; as an option they would be split at commas when
// they stand in brackets.
CCommandParser::CCommandParser(const CommandRow& command, const CommandRows& commands)
    : m_app(command.pszAbout, JoinedName(command))
{
    m_app.allow_windows_style_options(false); // paths begin like these
    m_app.allow_extras();
    m_app.set_help_flag();
    m_app.formatter(std::make_shared<CHelpFormatter>(command.pszUsage));
    m_app.footer(command.notes);
    for (const CommandRow& row : commands)
        m_app.add_subcommand(row.pszName, row.pszBrief)
            ->name(JoinedName(row) + " " + row.pszUsage)
            ->group("Commands");
    for (const OptionRow* pRow : command.options) Add(*pRow);
    m_app.set_help_flag("-h,--help", "this text");
}

void CCommandParser::Add(const OptionRow& row)
{
    const bool bFlag = row.takes == OptionRow::Takes::Nothing;
    CLI::Option* pOption = bFlag ? m_app.add_flag(row.pszNames) : m_app.add_option(row.pszNames);
    if (!bFlag) pOption->type_name(row.pszValue)->expected(1)->allow_extra_args(false);
    pOption->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    pOption->description(row.pszMeaning)->group(row.pszGroup);
    m_rows[pOption] = &row;
}

const CLI::Option& CCommandParser::Find(const std::string& name) const
{
    const CLI::Option* pOption = m_app.get_option_no_throw(name);
    if (pOption) return *pOption;
    std::vector<std::string> known;
    for (const CLI::Option* pKnown : m_app.get_options()) known.push_back(pKnown->get_name());
    throw CTrouble("unknown option '" + name + "'; '" + m_app.get_name() + " --help' lists them" +
                   MeantWord(name, known));
}

bool CCommandParser::IsRepeatable(const CLI::Option& option) const
{
    const auto at = m_rows.find(&option);
    return at != m_rows.end() && at->second->takes == OptionRow::Takes::ManyValues;
}

bool CCommandParser::IsForLineAlone(const CLI::Option& option) const
{
    return option.get_name() == CONFIG || &option == m_app.get_help_ptr();
}

// Wherever it stands: who asks for help may have got the rest wrong.
bool CCommandParser::AsksForHelp(const Arguments& words) const
{
    const auto end = std::find(words.begin(), words.end(), L"--");
    return std::any_of(words.begin(), end, [this](const std::wstring& word) {
        return m_app.get_help_ptr()->check_name(ToUtf8(word));
    });
}

CommandLine CCommandParser::Given() const
{
    CommandLine given;
    std::map<const CLI::Option*, std::size_t> seen;
    for (const CLI::Option* pOption : m_app.parse_order()) {
        const std::string value = pOption->results().at(seen[pOption]++);
        given.options.push_back({m_rows.at(pOption), pOption->get_name(),
                                 TakesValue(pOption) ? FromUtf8(value) : std::wstring()});
    }
    std::vector<std::string> names = m_app.remaining();
    const auto mark = std::find(names.begin(), names.end(), "--"); // the first one is no name
    if (mark != names.end()) names.erase(mark);
    for (const std::string& name : names) given.names.push_back(FromUtf8(name));
    return given;
}

CommandLine CCommandParser::Parse(std::vector<std::string> words)
{
    std::reverse(words.begin(), words.end()); // the library takes the last one first
    try {
        m_app.parse(std::move(words));
    } catch (const CLI::CallForHelp&) { // in a list of arguments
        return {Help(), {}, {}};
    }
    return Given();
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
        if (m_given.contains(pOption) && !m_parser.IsRepeatable(*pOption)) continue;
        all.push_back(pOption->get_name());
        if (TakesValue(pOption)) all.push_back(value);
    }
    for (const std::wstring& word : m_words) all.push_back(ToUtf8(word));
    return all;
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
    if (m_parser.IsForLineAlone(option)) throw CTrouble(where + " is for the command line alone");
    if (TakesValue(&option)) {
        if (item.inputs.size() != 1 && !m_parser.IsRepeatable(option))
            throw CTrouble(where + " takes one value");
        for (const std::string& input : item.inputs) m_config.emplace_back(&option, input);
        return;
    }
    const std::string answer = item.inputs.empty() ? "" : item.inputs[0];
    if (answer != "true" && answer != "false") throw CTrouble(where + " is true or false");
    if (answer == "true") m_config.emplace_back(&option, "");
}

} // namespace

CommandLine ReadCommandLine(const CommandRow& command, const Arguments& words,
                            const CommandRows& commands)
{
    CCommandParser parser(command, commands);
    if (parser.AsksForHelp(words)) return {parser.Help(), {}, {}};
    return parser.Parse(CWordExpander(command, parser, words).Expand());
}

} // namespace qel
