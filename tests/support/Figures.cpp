#include "tests/support/Figures.h"

#include <cstdio>
#include <sstream>

namespace figures {

Lines Split(const std::string& line)
{
    std::istringstream in(line);
    Lines words;
    for (std::string word; in >> word;) words.push_back(word);
    return words;
}

std::string After(const std::string& line)
{
    return line.substr(line.find(' '));
}

Lines Figures(CRecording& recording)
{
    Lines objects{""}, figures;
    std::string pen = "stock", brush = "stock", font = "stock", colour = "unset", at;
    bool bOpaque = true;
    for (const std::string& call : recording.Calls()) {
        const Lines w = Split(call);
        if (w[0] == "CreatePen") objects.push_back(w[4] + " " + w[6]);
        if (w[0] == "CreateBrush") objects.push_back(w[4]);
        if (w[0] == "CreatePatternBrush") objects.push_back("pattern");
        if (w[0] == "CreateFont") objects.push_back(w[2] + "x" + w[4] + "/" + w[6]);
        if (w[0] == "SelectPen") pen = objects.at(std::stoul(w[1].substr(1)));
        if (w[0] == "SelectBrush") brush = objects.at(std::stoul(w[1].substr(1)));
        if (w[0] == "SelectFont") font = objects.at(std::stoul(w[1].substr(1)));
        if (w[0] == "SelectStock") {
            if (w[1].find("PEN") != std::string::npos) pen = w[1];
            if (w[1].find("BRUSH") != std::string::npos) brush = w[1];
            if (w[1].find("FONT") != std::string::npos) font = w[1];
        }
        if (w[0] == "SetTextColor") colour = w[1];
        if (w[0] == "SetBkMode") bOpaque = w[1] != "1";
        if (w[0] == "MoveTo") at = w[1];
        if (w[0] == "LineTo") {
            figures.push_back("Line " + pen + " " + at + " " + w[1]);
            at = w[1];
        }
        if (w[0] == "Arc") figures.push_back("Arc " + pen + After(call));
        if (w[0] == "Polygon" || w[0] == "Ellipse" || w[0] == "Pie" || w[0] == "Chord" ||
            w[0] == "Rectangle")
            figures.push_back(w[0] + " " + pen + " " + brush + After(call));
        if (w[0] == "Text")
            figures.push_back("Text " + font + " " + colour + After(call) +
                              (bOpaque ? " opaque" : ""));
    }
    return figures;
}

Lines Drawn(const std::function<void(HDC)>& draw)
{
    CRecording recording;
    draw(recording.Dc());
    return Figures(recording);
}

std::string Hex(COLORREF clr)
{
    char sz[20];
    std::snprintf(sz, sizeof sz, "%06lx", static_cast<unsigned long>(clr));
    return sz;
}

std::string Text(POINT pt)
{
    return std::to_string(pt.x) + "," + std::to_string(pt.y);
}

} // namespace figures
