// The settings; see the header.
#include "tools/studio/model/Settings.h"

#include "tools/studio/model/Convert.h"

#include <nlohmann/json.hpp>

#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <cwctype>

namespace studio {

namespace {

using nlohmann::ordered_json;

constexpr int MIN_PANE = 80;
constexpr int MAX_PANE = 2000;

struct NumberRow {
    const char* pszName;
    int Settings::*pNumber;
    int nMin;
    int nMax;
};
constexpr NumberRow g_numbers[] = {
    {"left", &Settings::nLeft, MIN_PANE, MAX_PANE},
    {"right", &Settings::nRight, MIN_PANE, MAX_PANE},
    {"attributes", &Settings::nAttributes, MIN_PANE / 2, MAX_PANE},
    {"findings-height", &Settings::nFindings, MIN_PANE / 2, MAX_PANE},
    {"x", &Settings::nX, -32768, 32767},
    {"y", &Settings::nY, -32768, 32767},
    {"width", &Settings::nWidth, 0, 32767},
    {"height", &Settings::nHeight, 0, 32767}};

struct SwitchRow {
    const char* pszName;
    bool Settings::*pSwitch;
};
constexpr SwitchRow g_switches[] = {
    {"smooth", &Settings::bSmooth},     {"updates", &Settings::bUpdates},
    {"tree", &Settings::bTree},         {"run", &Settings::bRun},
    {"findings", &Settings::bFindings}, {"maximized", &Settings::bMaximized}};

constexpr const char* g_grounds[] = {"light", "dark", "chess"};

bool IsSame(const std::wstring& a, const std::wstring& b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](wchar_t x, wchar_t y) { return std::towlower(x) == std::towlower(y); });
}

void ReadNumbers(const ordered_json& json, Settings* pSettings)
{
    for (const NumberRow& row : g_numbers) {
        const auto at = json.find(row.pszName);
        if (at == json.end() || !at->is_number_integer()) continue;
        const auto nValue = at->get<long long>();
        if (nValue >= row.nMin && nValue <= row.nMax)
            pSettings->*row.pNumber = static_cast<int>(nValue);
    }
}

void ReadSwitches(const ordered_json& json, Settings* pSettings)
{
    for (const SwitchRow& row : g_switches) {
        const auto at = json.find(row.pszName);
        if (at != json.end() && at->is_boolean()) pSettings->*row.pSwitch = at->get<bool>();
    }
    const std::string ground = json.value("surround", ordered_json()).is_string()
                                   ? json["surround"].get<std::string>()
                                   : std::string();
    for (int n = 0; n < 3; ++n)
        if (ground == g_grounds[n]) pSettings->ground = static_cast<Ground>(n);
}

void ReadRecent(const ordered_json& json, Settings* pSettings)
{
    const auto at = json.find("recent");
    if (at == json.end() || !at->is_array()) return;
    for (const ordered_json& path : *at)
        if (path.is_string() && pSettings->recent.size() < MOST_RECENT)
            pSettings->recent.push_back(FromUtf8(path.get<std::string>()));
}

std::string ReadAll(const std::wstring& path)
{
    std::string bytes;
    std::FILE* pFile = _wfopen(path.c_str(), L"rb");
    if (!pFile) return bytes;
    char buffer[4096];
    for (std::size_t n = 0; (n = std::fread(buffer, 1, sizeof buffer, pFile)) > 0;)
        bytes.append(buffer, n);
    std::fclose(pFile);
    return bytes;
}

} // namespace

void NoteRecent(Settings* pSettings, const std::wstring& path)
{
    auto& recent = pSettings->recent;
    std::erase_if(recent, [&path](const std::wstring& other) { return IsSame(path, other); });
    recent.insert(recent.begin(), path);
    if (recent.size() > MOST_RECENT) recent.resize(MOST_RECENT);
}

std::wstring SettingsPath()
{
    std::wstring folder(::GetEnvironmentVariableW(L"APPDATA", nullptr, 0), L'\0');
    folder.resize(
        ::GetEnvironmentVariableW(L"APPDATA", folder.data(), static_cast<DWORD>(folder.size())));
    return folder.empty() ? folder : folder + L"\\QELStudio\\settings.json";
}

Settings LoadSettings(const std::wstring& path)
{
    Settings settings;
    const ordered_json json = ordered_json::parse(ReadAll(path), nullptr, false);
    if (!json.is_object()) return settings;
    ReadNumbers(json, &settings);
    ReadSwitches(json, &settings);
    ReadRecent(json, &settings);
    return settings;
}

// Beside the old ones first, so that a full disk loses none.
int SaveSettings(const Settings& settings, const std::wstring& path)
{
    ordered_json json;
    for (const SwitchRow& row : g_switches) json[row.pszName] = settings.*row.pSwitch;
    json["surround"] = g_grounds[static_cast<int>(settings.ground)];
    for (const NumberRow& row : g_numbers) json[row.pszName] = settings.*row.pNumber;
    json["recent"] = ordered_json::array();
    for (const std::wstring& file : settings.recent) json["recent"].push_back(ToUtf8(file));
    ::CreateDirectoryW(path.substr(0, path.find_last_of(L'\\')).c_str(), nullptr);
    const std::wstring beside = path + L".new";
    std::FILE* pFile = _wfopen(beside.c_str(), L"wb");
    if (!pFile) return 0;
    const std::string text = json.dump(2) + "\n";
    const bool bWritten = std::fwrite(text.data(), 1, text.size(), pFile) == text.size();
    if (std::fclose(pFile) != 0 || !bWritten) return 0;
    return ::MoveFileExW(beside.c_str(), path.c_str(), MOVEFILE_REPLACE_EXISTING) != 0;
}

} // namespace studio
