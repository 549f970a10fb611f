#include "tests/endurance/Panels.h"

#include <cstdarg>
#include <cstdio>

namespace {

constexpr int CELL = 50;
constexpr int COLUMNS = 4;
constexpr const char* g_meters[METER_TYPES] = {"vert",         "vert3d",     "horz",  "horz3d",
                                               "round",        "Arc",        "pie",   "clock",
                                               "roundUpgrade", "pieUpgrade", "sector"};
constexpr const char* g_scales[SCALE_TYPES] = {"vrtleft", "vrtright", "horizup",
                                               "horizdn", "round",    "Arc"};

__attribute__((format(gnu_printf, 1, 2))) std::string Format(const char* pszFormat, ...)
{
    char szText[512];
    va_list args;
    va_start(args, pszFormat);
    std::vsnprintf(szText, sizeof szText, pszFormat, args);
    va_end(args);
    return szText;
}

std::string Panel(const char* pszId, const std::string& inside, SIZE size = PANEL_SIZE)
{
    return Format("<?xml version=\"1.0\" encoding=\"gb2312\" ?>\r\n"
                  "<qel id=\"%s\" width=\"%ld\" height=\"%ld\">\r\n"
                  "<rect style=\"0x1\" bg=\"0x302820\" fg=\"0x605040\" lnwid=\"0\" "
                  "crd=\"0 0 %ld %ld\"/>\r\n",
                  pszId, size.cx, size.cy, size.cx, size.cy) +
           inside + "</qel>\r\n";
}

// A dial takes the whole cell, a bar its left half with the face in the right one.
std::string Meter(int nType, int nId, int nX, int nY)
{
    const std::string head = Format("<meter mtid=\"%d\" upin=\"1\" mtype=\"%s\" flag=\"0x200000\" ",
                                    nId, g_meters[nType]);
    if (nType < 4)
        return head + Format("crd=\"%d %d %d %d\">"
                             "<rect style=\"0x1\" lnwid=\"0\" crd=\"%d %d %d %d\"/></meter>\r\n",
                             nX + 2, nY + 4, nX + 24, nY + 46, nX + 26, nY + 4, nX + 40, nY + 46);
    const bool bArc = nType == 5 || nType == 6 || nType == 9;
    return head + Format("crd=\"%d %d 20 %d %d %d %d%s\">"
                         "<circle style=\"0x1\" lnwid=\"0\" crd=\"%d %d 24\"/></meter>\r\n",
                         nX + 25, nY + 25, nX + 1, nY + 1, nX + 49, nY + 49, bArc ? " 45 315" : "",
                         nX + 25, nY + 25);
}

// Three status pictures, of which one is shown, with blinking colours; and what follows the host's
// parameters.
std::string Lamps(int nX, int nY)
{
    std::string text;
    for (int n = 0; n < 3; ++n)
        text += Format("<status stx=\"%d\"><circle style=\"0x1\" bg=\"0x%x glt\" fg=\"0x%x glt\" "
                       "crd=\"%d %d 5\"/><text fg=\"0xffffff\" crd=\"%d %d %d %d\">%d</text>"
                       "</status>\r\n",
                       n, 0xFF << 8 * n, 0x7F << 8 * n, nX + 8, nY + 8, nX + 4, nY + 2, nX + 12,
                       nY + 14, n);
    text += Format("<pattern><rect style=\"0x1\" crd=\"%d %d %d %d\"/>"
                   "<polygon style=\"0x1\" dr=\"12\" crd=\"%d %d %d %d %d %d\"/></pattern>\r\n",
                   nX + 18, nY + 2, nX + 30, nY + 14, nX + 32, nY + 2, nX + 46, nY + 2, nX + 39,
                   nY + 14);
    text += Format("<frame><rndrect flag=\"0x1\" crd=\"%d %d %d %d 4 4\"/></frame>\r\n", nX + 2,
                   nY + 18, nX + 24, nY + 30);
    text += Format("<drawrgn style=\"0x10003\" crd=\"%d %d %d %d\"/>\r\n", nX + 26, nY + 18,
                   nX + 48, nY + 30);
    text +=
        Format("<rect style=\"0x1\" flag=\"0x81\" bg=\"0xff8000 glt\" crd=\"%d %d %d %d\"/>\r\n",
               nX + 2, nY + 34, nX + 48, nY + 48);
    return text;
}

} // namespace

std::string MeterPanel(int nLive)
{
    std::string inside;
    for (int nType = 0; nType < METER_TYPES; ++nType)
        inside += Meter(nType, nType == nLive ? 0 : FIRST_METER_ID + nType, nType % COLUMNS * CELL,
                        nType / COLUMNS * CELL);
    inside += Lamps(3 * CELL, 2 * CELL);
    return Panel(Format("meters-%d", nLive).c_str(), inside);
}

std::string ScalePanel()
{
    std::string inside;
    for (int nType = 0; nType < SCALE_TYPES; ++nType) {
        const int nX = nType % COLUMNS * CELL;
        const int nY = nType / COLUMNS * CELL;
        inside += Format("<scale scid=\"%d\" pin=\"1\" sctype=\"%s\" crd=\"",
                         FIRST_SCALE_ID + nType, g_scales[nType]);
        if (nType < 4)
            inside += Format("%d %d %d %d\"/>\r\n", nX + 5, nY + 5, nX + 45, nY + 45);
        else
            inside +=
                Format("%d %d 20 15 4%s\"/>\r\n", nX + 25, nY + 25, nType == 5 ? " -30 210" : "");
    }
    inside += Lamps(2 * CELL, 2 * CELL);
    return Panel("scales", inside);
}

std::string ShapePanel(int nShapes)
{
    constexpr const char* shapes[] = {"text",    "rect",   "chord", "pie",      "rndrect", "arc",
                                      "ellipse", "circle", "line",  "polyline", "polygon"};
    std::string inside;
    for (int n = 0; n < nShapes; ++n) {
        const char* pszShape = shapes[n % 11];
        const int nX = n * 17 % 150;
        const int nY = n * 29 % 110;
        if (n % 5 == 0) inside += Format("<g id=\"g%d\">\r\n", n);
        inside += Format("<%s id=\"s%d\" style=\"0x%x\" dr=\"%d\" fg=\"0x%x\" crd=\"%d %d %d %d %d "
                         "%d %d %d\">\xCB\xAE\xB1\xC3 %d &amp; &lt;x&gt;</%s>\r\n",
                         pszShape, n, n % 4 == 3 ? 5 : n % 4, n % 38, n * 977 % 0xFFFFFF, nX, nY,
                         nX + 30, nY + 24, nX + 30, nY + 5, nX + 5, nY, n, pszShape);
        if (n % 5 == 4 || n + 1 == nShapes) inside += "</g>\r\n";
    }
    return Panel("shapes", inside);
}

std::string LivePanel()
{
    std::string inside;
    for (int n = 0; n < LIVE_LAMPS; ++n) {
        const int nX = 10 + n % 25 * 20;
        const int nY = 12 + n / 25 * 24;
        inside += Format("<circle style=\"0x1\" bg=\"0x402010\" crd=\"%d %d 8\"/>"
                         "<status id=\"l%d\" stx=\"1\"><circle style=\"0x1\" dr=\"1\" "
                         "fg=\"0x20e040\" crd=\"%d %d 9\"/></status>\r\n",
                         nX, nY, n, nX, nY);
    }
    constexpr const char* dials[] = {"round", "Arc", "roundUpgrade", "pieUpgrade"};
    for (int n = 0; n < LIVE_DIALS; ++n) {
        const int nX = 50 + n % 5 * 100;
        const int nY = 95 + n / 5 * 70;
        inside += Format("<meter id=\"d%d\" upin=\"1\" mtype=\"%s\" set=\"max=100 scale-end=100 "
                         "alarm=1 low-limit=20 high-limit=80 read-out=1\" value=\"5\" "
                         "crd=\"%d %d 28 %d %d %d %d 45 315\"><circle style=\"0x1\" lnwid=\"0\" "
                         "crd=\"%d %d 32\"/></meter>\r\n",
                         n, dials[n % 4], nX, nY, nX - 33, nY - 33, nX + 33, nY + 33, nX, nY);
    }
    for (int n = 0; n < LIVE_NUMBERS; ++n) {
        const int nX = 4 + n % 10 * 50;
        const int nY = 350 + n / 10 * 22;
        inside += Format("<text id=\"n%d\" fg=\"0xffffff\" crd=\"%d %d %d %d\">###.#</text>\r\n", n,
                         nX, nY, nX + 46, nY + 16);
    }
    return Panel("live", inside, LIVE_PANEL_SIZE);
}
