// Records the GDI calls that a drawing makes, through a metafile device context, and gives them
// back as lines of text, one a call, in order:
//
//   CRecording recording;
//   view.Draw(recording.Dc(), rcQel, QEL_DRAW_FULL);
//   EXPECT_EQ(expected, recording.Calls());
//
// Lines: "CreatePen style 0 width 1 color 0000ff", "SelectPen #1" (the number counts the objects
// made in this recording from 1), "SelectStock NULL_PEN", "DeleteObject #1", "SetBkMode 1",
// "SetBkColor 00ff00", "SetTextColor 000000", "Rectangle 5,5,30,20" (right and bottom as passed),
// "RoundRect l,t,r,b w,h", "Ellipse l,t,r,b", "Arc/Pie/Chord l,t,r,b start x,y end x,y",
// "Polygon x,y x,y", "MoveTo x,y", "LineTo x,y", "PolyBezier x,y ...", "SetArcDirection 1",
// "CreatePatternBrush" (monochrome or DIB), "CreateFont width 6 height 12 charset 255 face X",
// "Text x,y \"bytes\"", "PatBlt l,t,r,b" (also what FillRect becomes), "Record N" for any other.
// Colours are written as a COLORREF number, bbggrr.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

class CRecording {
public:
    CRecording();
    ~CRecording();
    CRecording(const CRecording&) = delete;
    CRecording& operator=(const CRecording&) = delete;

    HDC Dc() const { return m_hdc; }
    const std::vector<std::string>& Calls(); // ends the recording
    // The lines that begin with one of the given words, in order.
    std::vector<std::string> Only(const std::vector<std::string>& words);

private:
    HDC m_hdc;
    HENHMETAFILE m_hFile = nullptr;
    std::vector<std::string> m_calls;
};
