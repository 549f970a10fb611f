// Files of values; see the header.
#include "tools/qel/ValuesFile.h"

#include "tools/qel/Command.h"
#include "tools/qel/OutputFile.h"
#include "tools/qel/Streams.h"
#include "tools/qel/Text.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <set>

namespace qel {

using nlohmann::ordered_json;

namespace {

constexpr char BYTE_ORDER_MARK[] = "\xEF\xBB\xBF";

std::string Place(const std::string& file, const std::string& bytes, std::size_t nAt)
{
    const std::string before = bytes.substr(0, std::min(nAt, bytes.size()));
    const auto nLine = std::count(before.begin(), before.end(), '\n') + 1;
    const std::size_t nEnd = before.rfind('\n');
    const std::size_t nColumn = before.size() - (nEnd == std::string::npos ? 0 : nEnd + 1) + 1;
    return fmt::format("'{}': line {}, column {}", file, nLine, nColumn);
}

// The parser takes the later one of two alike, of which one would be lost.
ordered_json Parse(const std::string& file, const std::string& bytes)
{
    std::set<std::string> names;
    const auto watch = [&](int nDepth, ordered_json::parse_event_t event, ordered_json& parsed) {
        if (nDepth != 1 || event != ordered_json::parse_event_t::key) return true;
        const auto name = parsed.get<std::string>();
        if (names.insert(name).second) return true;
        throw CTrouble("'" + file + "': the name " + QuotedWord(name) + " is there twice");
    };
    try {
        return ordered_json::parse(bytes, watch);
    } catch (const ordered_json::parse_error& error) {
        throw CTrouble(Place(file, bytes, error.byte ? error.byte - 1 : 0) +
                       ": it is no JSON object of names and values");
    } catch (const ordered_json::exception&) {
        throw CTrouble("'" + file + "': a number in it is too large");
    }
}

NamedValue ToValue(const std::string& file, const std::string& name, const ordered_json& json)
{
    if (json.is_string()) return {name, json.get<std::string>(), true};
    if (json.is_boolean()) return {name, json.get<bool>() ? "1" : "0"};
    if (json.is_number()) return {name, json.dump()};
    throw CTrouble("'" + file + "': " + QuotedWord(name) +
                   " wants a number, a text, true or false");
}

ordered_json ToJson(const NamedValue& value)
{
    if (value.bText) return value.text;
    const ordered_json number = ordered_json::parse(value.text, nullptr, false);
    return number.is_number() ? number : ordered_json(value.text);
}

} // namespace

std::vector<NamedValue> ReadValues(const std::string& file, const std::string& bytes)
{
    const std::size_t nMark = bytes.starts_with(BYTE_ORDER_MARK) ? sizeof BYTE_ORDER_MARK - 1 : 0;
    const ordered_json json = Parse(file, bytes.substr(nMark));
    if (!json.is_object())
        throw CTrouble("'" + file + "': it is no JSON object of names and values");
    std::vector<NamedValue> values;
    for (const auto& [name, value] : json.items()) values.push_back(ToValue(file, name, value));
    return values;
}

std::vector<NamedValue> ReadValuesFile(const std::wstring& path)
{
    std::string bytes;
    if (!ReadBytes(path, &bytes))
        throw CTrouble("cannot read the values '" + ToUtf8(path) + "': " + WhyNotRead(path));
    return ReadValues(ToUtf8(path), bytes);
}

std::string WriteValues(const std::vector<NamedValue>& values)
{
    constexpr int INDENT = 2;
    ordered_json json = ordered_json::object();
    for (const NamedValue& value : values) json[value.name] = ToJson(value);
    return json.dump(INDENT) + "\n";
}

void WriteValuesFile(const std::wstring& path, const std::vector<NamedValue>& values)
{
    WriteComplete(path, [&values](const std::wstring& name) {
        return WriteBytes(name, WriteValues(values));
    });
}

} // namespace qel
