// What the Studio keeps from one start to the next.
#include "tools/studio/model/Settings.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <windows.h>

using namespace studio;

namespace {

const std::wstring PATH = L"studio-settings-tests\\settings.json";

class SettingsFile : public testing::Test {
protected:
    ~SettingsFile() override
    {
        ::DeleteFileW(PATH.c_str());
        ::RemoveDirectoryW(L"studio-settings-tests");
    }
    static void Write(const char* pszText)
    {
        ::CreateDirectoryW(L"studio-settings-tests", nullptr);
        std::FILE* pFile = _wfopen(PATH.c_str(), L"wb");
        ASSERT_NE(nullptr, pFile);
        std::fputs(pszText, pFile);
        std::fclose(pFile);
    }
};

} // namespace

TEST_F(SettingsFile, AreReadAsTheyWereWritten)
{
    Settings settings;
    settings.bSmooth = false;
    settings.bUpdates = true;
    settings.ground = Ground::Chess;
    settings.bTree = settings.bRun = settings.bFindings = false;
    settings.nLeft = 300;
    settings.nRight = 301;
    settings.nAttributes = 302;
    settings.nFindings = 303;
    settings.nX = -40;
    settings.nY = 50;
    settings.nWidth = 900;
    settings.nHeight = 700;
    settings.bMaximized = true;
    settings.recent = {L"C:\\\x6CF5.qel", L"C:\\b.qel"};
    ASSERT_EQ(1, SaveSettings(settings, PATH));
    const Settings read = LoadSettings(PATH);
    EXPECT_FALSE(read.bSmooth);
    EXPECT_TRUE(read.bUpdates);
    EXPECT_EQ(Ground::Chess, read.ground);
    EXPECT_FALSE(read.bTree || read.bRun || read.bFindings);
    EXPECT_EQ(300, read.nLeft);
    EXPECT_EQ(301, read.nRight);
    EXPECT_EQ(302, read.nAttributes);
    EXPECT_EQ(303, read.nFindings);
    EXPECT_EQ(-40, read.nX);
    EXPECT_EQ(50, read.nY);
    EXPECT_EQ(900, read.nWidth);
    EXPECT_EQ(700, read.nHeight);
    EXPECT_TRUE(read.bMaximized);
    EXPECT_EQ(settings.recent, read.recent);
}

TEST_F(SettingsFile, WhatHasTheWrongFormStaysAsInNewOnes)
{
    Write(R"({"smooth": 1, "surround": 7, "left": 5, "right": "wide", "attributes": 1.5,
              "recent": [3, "a.qel"], "updates": true})");
    const Settings read = LoadSettings(PATH);
    const Settings fresh;
    EXPECT_EQ(fresh.bSmooth, read.bSmooth);
    EXPECT_EQ(fresh.ground, read.ground);
    EXPECT_EQ(fresh.nLeft, read.nLeft);
    EXPECT_EQ(fresh.nRight, read.nRight);
    EXPECT_EQ(fresh.nAttributes, read.nAttributes);
    EXPECT_EQ(std::vector<std::wstring>{L"a.qel"}, read.recent);
    EXPECT_TRUE(read.bUpdates);
}

TEST_F(SettingsFile, BrokenOrMissingFileGivesNewOnes)
{
    EXPECT_EQ(Settings().nLeft, LoadSettings(PATH).nLeft);
    Write("{\"left\": 300");
    EXPECT_EQ(Settings().nLeft, LoadSettings(PATH).nLeft);
    Write("[300]");
    EXPECT_EQ(Settings().nLeft, LoadSettings(PATH).nLeft);
}

TEST(RecentFiles, LastOneComesFirstOnceAndTenAreKept)
{
    Settings settings;
    for (int n = 0; n < 12; ++n) NoteRecent(&settings, L"C:\\" + std::to_wstring(n) + L".qel");
    ASSERT_EQ(10U, settings.recent.size());
    EXPECT_EQ(L"C:\\11.qel", settings.recent.front());
    EXPECT_EQ(L"C:\\2.qel", settings.recent.back());
    NoteRecent(&settings, L"c:\\5.QEL"); // the same file
    EXPECT_EQ(10U, settings.recent.size());
    EXPECT_EQ(L"c:\\5.QEL", settings.recent[0]);
    EXPECT_EQ(L"C:\\11.qel", settings.recent[1]);
    EXPECT_EQ(L"C:\\6.qel", settings.recent[6]);
    EXPECT_EQ(L"C:\\4.qel", settings.recent[7]);
}
