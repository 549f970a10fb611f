// A host for the tests that see the DLL alone: an engine with a drawing that is opened from a text.
#pragma once

#include "include/QELEngine.h"
#include "tests/support/Bitmap.h"
#include "tests/support/Files.h"
#include "tests/support/Recording.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

class CTextHost {
public:
    // The drawing is nSide by nSide units, and so many pixels until Place is called.
    CTextHost(const std::string& body, int nSide) : m_h(CreateQELEngine()), m_rc{0, 0, nSide, nSide}
    {
        const std::string side = std::to_string(nSide);
        WriteBytes(m_folder.Path("in.qel"),
                   "<qel width='" + side + "' height='" + side + "'>" + body + "</qel>");
        EXPECT_EQ(1, QELOpenFile(m_h, m_folder.Path("in.qel").c_str()));
    }
    ~CTextHost() { EXPECT_EQ(1, DestroyQELEngine(m_h)); }
    CTextHost(const CTextHost&) = delete;
    CTextHost& operator=(const CTextHost&) = delete;
    operator HQELENGINE() const { return m_h; }
    [[nodiscard]] const CTestFolder& Folder() const { return m_folder; }

    void Place(const RECT& rc)
    {
        m_rc = rc;
        EXPECT_EQ(1, QELSetQELRect(m_h, &rc));
    }
    [[nodiscard]] HQELELEM Child(int nIndex) const // of the root
    {
        HQELELEM hElem = QELGetFirstChild(m_h, QELGetRootElem(m_h));
        while (nIndex-- > 0) hElem = QELGetNextElem(m_h, hElem);
        return hElem;
    }
    int Set(DWORD nSelector, DWORD nValue) const // of the meter with id 0
    {
        return QELSetScaleParam(m_h, 0, nSelector, nValue);
    }
    void Draw(HDC hdc, DWORD nFlags = QEL_DRAW_FULL) const
    {
        EXPECT_EQ(1, QELDraw(m_h, hdc, &m_rc, nFlags));
    }
    [[nodiscard]] COLORREF Pixel(int nX, int nY) const // of a full draw on white
    {
        CTestBitmap drawn(m_rc.right, m_rc.bottom);
        Draw(drawn.Dc());
        return drawn.At(nX, nY);
    }
    // The recorded calls that begin with one of the words; all of them without words.
    [[nodiscard]] std::vector<std::string> Calls(const std::vector<std::string>& words = {},
                                                 DWORD nFlags = QEL_DRAW_FULL) const
    {
        CRecording recording;
        Draw(recording.Dc(), nFlags);
        return words.empty() ? recording.Calls() : recording.Only(words);
    }
    [[nodiscard]] std::string Saved() const // from the root's tag on
    {
        const std::string path = m_folder.Path("out.qel");
        EXPECT_EQ(1, QELSaveFile(m_h, path.c_str()));
        const std::string text = ReadBytes(path);
        return text.substr(text.find("<qel"), text.size() - 1 - text.find("<qel"));
    }

private:
    CTestFolder m_folder;
    HQELENGINE m_h;
    RECT m_rc;
};
