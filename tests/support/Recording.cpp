#include "tests/support/Recording.h"

#include <cstdarg>
#include <cstdio>
#include <map>

namespace {

std::string Format(const char* pszFormat, ...)
{
    char sz[600];
    va_list args;
    va_start(args, pszFormat);
    std::vsnprintf(sz, sizeof sz, pszFormat, args);
    va_end(args);
    return sz;
}

struct StockName {
    DWORD nObject;
    const char* pszName;
};

constexpr StockName g_stock[] = {{WHITE_BRUSH, "WHITE_BRUSH"},
                                 {LTGRAY_BRUSH, "LTGRAY_BRUSH"},
                                 {GRAY_BRUSH, "GRAY_BRUSH"},
                                 {DKGRAY_BRUSH, "DKGRAY_BRUSH"},
                                 {BLACK_BRUSH, "BLACK_BRUSH"},
                                 {NULL_BRUSH, "NULL_BRUSH"},
                                 {WHITE_PEN, "WHITE_PEN"},
                                 {BLACK_PEN, "BLACK_PEN"},
                                 {NULL_PEN, "NULL_PEN"},
                                 {SYSTEM_FONT, "SYSTEM_FONT"},
                                 {DEVICE_DEFAULT_FONT, "DEVICE_DEFAULT_FONT"}};

// Wine and Windows number the objects of a metafile by free slots; the tests want them counted.
struct Reader {
    std::vector<std::string>* pCalls;
    std::map<DWORD, std::pair<int, std::string>> objects; // by slot: number and what it is
    int nMade = 0;

    void Made(DWORD nSlot, const char* pszWhat, const std::string& line)
    {
        objects[nSlot] = {++nMade, pszWhat};
        pCalls->push_back(line);
    }
    void Selected(DWORD nSlot)
    {
        if (nSlot & ENHMETA_STOCK_OBJECT) {
            for (const StockName& stock : g_stock)
                if (stock.nObject == (nSlot & ~ENHMETA_STOCK_OBJECT)) {
                    pCalls->push_back(Format("SelectStock %s", stock.pszName));
                    return;
                }
            pCalls->push_back(Format("SelectStock %lu", nSlot & ~ENHMETA_STOCK_OBJECT));
            return;
        }
        const auto& object = objects[nSlot];
        pCalls->push_back(Format("Select%s #%d", object.second.c_str(), object.first));
    }
};

std::string BoxText(const char* pszName, const RECTL& rc)
{
    // Boxes are stored with right and bottom one less than the arguments.
    return Format("%s %ld,%ld,%ld,%ld", pszName, rc.left, rc.top, rc.right + 1, rc.bottom + 1);
}

std::string Points16(const char* pszName, const EMRPOLYLINE16& record)
{
    std::string line = pszName;
    for (DWORD n = 0; n < record.cpts; ++n)
        line += Format(" %d,%d", record.apts[n].x, record.apts[n].y);
    return line;
}

std::string Points32(const char* pszName, const EMRPOLYLINE& record)
{
    std::string line = pszName;
    for (DWORD n = 0; n < record.cptl; ++n)
        line += Format(" %ld,%ld", record.aptl[n].x, record.aptl[n].y);
    return line;
}

std::string TextLine(const EMREXTTEXTOUTW& record)
{
    const auto* pText = reinterpret_cast<const wchar_t*>(reinterpret_cast<const char*>(&record) +
                                                         record.emrtext.offString);
    char szBytes[512] = {};
    ::WideCharToMultiByte(CP_ACP, 0, pText, static_cast<int>(record.emrtext.nChars), szBytes,
                          sizeof szBytes - 1, nullptr, nullptr);
    return Format("Text %ld,%ld \"%s\"", record.emrtext.ptlReference.x,
                  record.emrtext.ptlReference.y, szBytes);
}

template <class T>
const T& As(const ENHMETARECORD* pRecord)
{
    return *reinterpret_cast<const T*>(pRecord);
}

int CALLBACK OnRecord(HDC, HANDLETABLE*, const ENHMETARECORD* pRecord, int, LPARAM lParam)
{
    auto& reader = *reinterpret_cast<Reader*>(lParam);
    auto& calls = *reader.pCalls;
    switch (pRecord->iType) {
    case EMR_HEADER:
    case EMR_EOF:
        break;
    case EMR_CREATEPEN: {
        const auto& r = As<EMRCREATEPEN>(pRecord);
        reader.Made(r.ihPen, "Pen",
                    Format("CreatePen style %u width %ld color %06lx", r.lopn.lopnStyle,
                           r.lopn.lopnWidth.x, r.lopn.lopnColor));
        break;
    }
    case EMR_EXTCREATEPEN: {
        const auto& r = As<EMREXTCREATEPEN>(pRecord);
        reader.Made(r.ihPen, "Pen",
                    Format("CreatePen style %lu width %lu color %06lx", r.elp.elpPenStyle,
                           r.elp.elpWidth, r.elp.elpColor));
        break;
    }
    case EMR_CREATEBRUSHINDIRECT: {
        const auto& r = As<EMRCREATEBRUSHINDIRECT>(pRecord);
        reader.Made(r.ihBrush, "Brush",
                    Format("CreateBrush style %u color %06lx", r.lb.lbStyle, r.lb.lbColor));
        break;
    }
    case EMR_CREATEMONOBRUSH:
        reader.Made(As<EMRCREATEMONOBRUSH>(pRecord).ihBrush, "Brush", "CreatePatternBrush");
        break;
    case EMR_CREATEDIBPATTERNBRUSHPT:
        reader.Made(As<EMRCREATEDIBPATTERNBRUSHPT>(pRecord).ihBrush, "Brush", "CreatePatternBrush");
        break;
    case EMR_EXTCREATEFONTINDIRECTW: {
        const auto& r = As<EMREXTCREATEFONTINDIRECTW>(pRecord);
        const LOGFONTW& font = r.elfw.elfLogFont;
        char szFace[LF_FACESIZE * 2] = {};
        ::WideCharToMultiByte(CP_ACP, 0, font.lfFaceName, -1, szFace, sizeof szFace, nullptr,
                              nullptr);
        reader.Made(r.ihFont, "Font",
                    Format("CreateFont width %ld height %ld charset %d face %s", font.lfWidth,
                           font.lfHeight, font.lfCharSet, szFace));
        break;
    }
    case EMR_SELECTOBJECT:
        reader.Selected(As<EMRSELECTOBJECT>(pRecord).ihObject);
        break;
    case EMR_DELETEOBJECT: {
        const DWORD nSlot = As<EMRDELETEOBJECT>(pRecord).ihObject;
        calls.push_back(Format("DeleteObject #%d", reader.objects[nSlot].first));
        break;
    }
    case EMR_SETBKMODE:
        calls.push_back(Format("SetBkMode %lu", As<EMRSETBKMODE>(pRecord).iMode));
        break;
    case EMR_SETBKCOLOR:
        calls.push_back(Format("SetBkColor %06lx", As<EMRSETBKCOLOR>(pRecord).crColor));
        break;
    case EMR_SETTEXTCOLOR:
        calls.push_back(Format("SetTextColor %06lx", As<EMRSETTEXTCOLOR>(pRecord).crColor));
        break;
    case EMR_SETARCDIRECTION:
        calls.push_back(
            Format("SetArcDirection %lu", As<EMRSETARCDIRECTION>(pRecord).iArcDirection));
        break;
    case EMR_RECTANGLE:
        calls.push_back(BoxText("Rectangle", As<EMRRECTANGLE>(pRecord).rclBox));
        break;
    case EMR_ELLIPSE:
        calls.push_back(BoxText("Ellipse", As<EMRELLIPSE>(pRecord).rclBox));
        break;
    case EMR_ROUNDRECT: {
        const auto& r = As<EMRROUNDRECT>(pRecord);
        calls.push_back(BoxText("RoundRect", r.rclBox) +
                        Format(" %ld,%ld", r.szlCorner.cx, r.szlCorner.cy));
        break;
    }
    case EMR_ARC:
    case EMR_PIE:
    case EMR_CHORD: {
        const auto& r = As<EMRARC>(pRecord);
        const char* pszName = pRecord->iType == EMR_ARC   ? "Arc"
                              : pRecord->iType == EMR_PIE ? "Pie"
                                                          : "Chord";
        calls.push_back(BoxText(pszName, r.rclBox) + Format(" start %ld,%ld end %ld,%ld",
                                                            r.ptlStart.x, r.ptlStart.y, r.ptlEnd.x,
                                                            r.ptlEnd.y));
        break;
    }
    case EMR_POLYGON16:
        calls.push_back(Points16("Polygon", As<EMRPOLYLINE16>(pRecord)));
        break;
    case EMR_POLYGON:
        calls.push_back(Points32("Polygon", As<EMRPOLYLINE>(pRecord)));
        break;
    case EMR_POLYBEZIER16:
        calls.push_back(Points16("PolyBezier", As<EMRPOLYLINE16>(pRecord)));
        break;
    case EMR_POLYBEZIER:
        calls.push_back(Points32("PolyBezier", As<EMRPOLYLINE>(pRecord)));
        break;
    case EMR_MOVETOEX: {
        const auto& r = As<EMRMOVETOEX>(pRecord);
        calls.push_back(Format("MoveTo %ld,%ld", r.ptl.x, r.ptl.y));
        break;
    }
    case EMR_LINETO: {
        const auto& r = As<EMRLINETO>(pRecord);
        calls.push_back(Format("LineTo %ld,%ld", r.ptl.x, r.ptl.y));
        break;
    }
    case EMR_BITBLT: {
        const auto& r = As<EMRBITBLT>(pRecord);
        calls.push_back(Format("PatBlt %ld,%ld,%ld,%ld", r.xDest, r.yDest, r.xDest + r.cxDest,
                               r.yDest + r.cyDest));
        break;
    }
    case EMR_EXTTEXTOUTW:
        calls.push_back(TextLine(As<EMREXTTEXTOUTW>(pRecord)));
        break;
    default:
        calls.push_back(Format("Record %lu", pRecord->iType));
        break;
    }
    return 1;
}

} // namespace

CRecording::CRecording() : m_hdc(::CreateEnhMetaFileA(nullptr, nullptr, nullptr, nullptr)) {}

CRecording::~CRecording()
{
    if (m_hdc) m_hFile = ::CloseEnhMetaFile(m_hdc);
    ::DeleteEnhMetaFile(m_hFile);
}

const std::vector<std::string>& CRecording::Calls()
{
    if (!m_hdc) return m_calls;
    m_hFile = ::CloseEnhMetaFile(m_hdc);
    m_hdc = nullptr;
    Reader reader{&m_calls, {}, 0};
    RECT rc{0, 0, 1, 1};
    ::EnumEnhMetaFile(nullptr, m_hFile, OnRecord, &reader, &rc);
    return m_calls;
}
