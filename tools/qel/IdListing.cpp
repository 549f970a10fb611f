// The identifiers of a drawing; see the header.
#include "tools/qel/IdListing.h"

#include "tools/qel/IdEntries.h"
#include "tools/qel/Text.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

namespace qel {

using nlohmann::ordered_json;

using Words = std::vector<std::string>;

void PrintIds(const HostElements& elements)
{
    for (const IdEntry& entry : ListIds(elements)) {
        Words takes = entry.Takes("colours");
        takes.emplace_back("quality");
        Print(fmt::format("identifier {}, {}: {}\n", Quoted(entry.id), fmt::join(entry.types, ", "),
                          fmt::join(takes, ", ")));
        PrintIndented(entry.Selectors());
    }
}

ordered_json IdsJson(const HostElements& elements)
{
    ordered_json list = ordered_json::array();
    for (const IdEntry& entry : ListIds(elements)) {
        Words takes = entry.Takes("colors");
        takes.insert(takes.end(), {"visibility", "quality"});
        list.push_back({{"id", entry.id},
                        {"types", entry.types},
                        {"takes", takes},
                        {"selectors", entry.Selectors()}});
    }
    return list;
}

void PrintIndented(const Words& words)
{
    constexpr std::size_t LINE_WIDTH = 100;
    constexpr char INDENT[] = "    ";
    std::string line = INDENT;
    for (std::size_t n = 0; n < words.size(); ++n) {
        const std::string text = words[n] + (n + 1 < words.size() ? "," : "");
        if (line.size() + text.size() > LINE_WIDTH) {
            line.pop_back();
            Print(line + "\n");
            line = INDENT;
        }
        line += text + " ";
    }
    line.pop_back();
    if (!words.empty()) Print(line + "\n");
}

std::string Quoted(const std::string& utf8)
{
    constexpr unsigned char FIRST_PRINTED = 0x20;
    std::string text = "\"";
    for (const char c : utf8) {
        if (c == '"' || c == '\\') text += '\\';
        if (static_cast<unsigned char>(c) < FIRST_PRINTED)
            text += fmt::format("\\u{:04x}", static_cast<unsigned>(c));
        else
            text += c;
    }
    return text + '"';
}

} // namespace qel
