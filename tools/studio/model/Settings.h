// What is kept of the program from one start to the next, for each user.
#pragma once

#include <string>
#include <vector>

namespace studio {

enum class Ground { Light, Dark, Chess };

struct Settings {
    bool bSmooth = true;
    bool bUpdates = false;
    Ground ground = Ground::Light;
    bool bTree = true;
    bool bRun = true;
    bool bFindings = true;
    // Sizes of the panes, in pixels at 96 dots an inch.
    int nLeft = 240;
    int nRight = 288;
    int nAttributes = 200;
    int nFindings = 104;
    // The main window, as the system tells its place when it is not maximized.
    int nX = 0;
    int nY = 0;
    int nWidth = 0; // 0: the system chooses
    int nHeight = 0;
    bool bMaximized = false;
    std::vector<std::wstring> recent; // the last one first
};

constexpr std::size_t MOST_RECENT = 10;

// Moves a file to the head of the recent ones.
void NoteRecent(Settings* pSettings, const std::wstring& path);

// Where they are kept; empty when the system has no such folder.
std::wstring SettingsPath();

// What is missing, or has the wrong form, stays as it is in a new one.
Settings LoadSettings(const std::wstring& path);
int SaveSettings(const Settings& settings, const std::wstring& path);

} // namespace studio
