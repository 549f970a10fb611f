#include "bench/Replay.h"

#include <cstring>

namespace {

template <class T>
const T& As(const ENHMETARECORD& record)
{
    return *reinterpret_cast<const T*>(&record);
}

std::string AnsiText(const EMREXTTEXTOUTW& record)
{
    const auto* pText = reinterpret_cast<const wchar_t*>(reinterpret_cast<const char*>(&record) +
                                                         record.emrtext.offString);
    const int nChars = static_cast<int>(record.emrtext.nChars);
    std::string text(static_cast<std::size_t>(nChars) * 2, 0);
    text.resize(static_cast<std::size_t>(::WideCharToMultiByte(
        CP_ACP, 0, pText, nChars, text.data(), static_cast<int>(text.size()), nullptr, nullptr)));
    return text;
}

// The rows of a pattern of 8 by 8 pixels, as CreateBitmap takes them; empty for another one.
std::string PatternBits(const ENHMETARECORD& record)
{
    constexpr DWORD SIDE = 8;
    constexpr DWORD ROW = 4; // bytes of a row in a recording, the last row first
    const auto& brush = As<EMRCREATEMONOBRUSH>(record);
    const auto* pBytes = reinterpret_cast<const char*>(&record);
    BITMAPINFOHEADER header{};
    std::memcpy(&header, pBytes + brush.offBmi, sizeof header);
    if (header.biWidth != SIDE || header.biHeight != SIDE || brush.cbBits != SIDE * ROW) return {};
    std::string bits(SIDE * 2, 0);
    for (DWORD y = 0; y < SIDE; ++y) bits[y * 2] = pBytes[brush.offBits + (SIDE - 1 - y) * ROW];
    return bits;
}

HBRUSH MakePatternBrush(const std::string& bits)
{
    const HBITMAP hBitmap = ::CreateBitmap(8, 8, 1, 1, bits.data());
    const HBRUSH hBrush = ::CreatePatternBrush(hBitmap);
    ::DeleteObject(hBitmap);
    return hBrush;
}

int IntOf(DWORD n)
{
    return static_cast<int>(n);
}

} // namespace

std::string Recorded(const std::function<void(HDC)>& draw)
{
    const HDC hdc = ::CreateEnhMetaFileA(nullptr, nullptr, nullptr, nullptr);
    draw(hdc);
    const HENHMETAFILE hFile = ::CloseEnhMetaFile(hdc);
    std::string bytes(::GetEnhMetaFileBits(hFile, 0, nullptr), 0);
    ::GetEnhMetaFileBits(hFile, static_cast<UINT>(bytes.size()),
                         reinterpret_cast<BYTE*>(bytes.data()));
    ::DeleteEnhMetaFile(hFile);
    return bytes;
}

CReplay::CReplay(const std::string& recording)
{
    const HENHMETAFILE hFile = ::SetEnhMetaFileBits(
        static_cast<UINT>(recording.size()), reinterpret_cast<const BYTE*>(recording.data()));
    ::EnumEnhMetaFile(nullptr, hFile, Take, this, nullptr);
    ::DeleteEnhMetaFile(hFile);
}

int CALLBACK CReplay::Take(HDC, HANDLETABLE*, const ENHMETARECORD* pRecord, int nObjects,
                           LPARAM lThis)
{
    auto* pThis =
        reinterpret_cast<CReplay*>(lThis); // NOLINT(performance-no-int-to-ptr): what it was
    pThis->m_nObjects = static_cast<std::size_t>(nObjects);
    if (pRecord->iType == EMR_HEADER || pRecord->iType == EMR_EOF) return 1;
    Call call{};
    call.nType = pRecord->iType;
    if (pThis->TakeCall(*pRecord, &call))
        pThis->m_calls.push_back(call);
    else
        pThis->m_bWhole = false;
    return 1;
}

bool CReplay::TakeCall(const ENHMETARECORD& record, Call* pCall)
{
    const auto dParm = [&](std::size_t n) { return IntOf(record.dParm[n]); };
    switch (record.iType) {
    case EMR_SAVEDC:
        return true;
    case EMR_RESTOREDC:
    case EMR_SELECTOBJECT:
    case EMR_DELETEOBJECT:
    case EMR_SETTEXTCOLOR:
    case EMR_SETBKCOLOR:
    case EMR_SETBKMODE:
        pCall->n[0] = dParm(0);
        return true;
    case EMR_MOVETOEX:
    case EMR_LINETO:
        pCall->n = {dParm(0), dParm(1)};
        return true;
    case EMR_INTERSECTCLIPRECT:
        pCall->n = {dParm(0), dParm(1), dParm(2), dParm(3)};
        return true;
    case EMR_ELLIPSE: // recorded with the last pixels inside of the box
        pCall->n = {dParm(0), dParm(1), dParm(2) + 1, dParm(3) + 1};
        return true;
    case EMR_CREATEMONOBRUSH:
        pCall->n[0] = dParm(0);
        pCall->text = PatternBits(record);
        return !pCall->text.empty();
    case EMR_ARC: // with that box too
        pCall->n = {dParm(0), dParm(1), dParm(2) + 1, dParm(3) + 1,
                    dParm(4), dParm(5), dParm(6),     dParm(7)};
        return true;
    case EMR_CREATEPEN: {
        const auto& pen = As<EMRCREATEPEN>(record);
        pCall->n = {IntOf(pen.ihPen), IntOf(pen.lopn.lopnStyle), IntOf(pen.lopn.lopnWidth.x),
                    IntOf(pen.lopn.lopnColor)};
        return true;
    }
    case EMR_EXTCREATEFONTINDIRECTW: {
        const auto& font = As<EMREXTCREATEFONTINDIRECTW>(record);
        pCall->n = {IntOf(font.ihFont), static_cast<int>(m_fonts.size())};
        m_fonts.push_back(font.elfw.elfLogFont);
        return true;
    }
    case EMR_EXTTEXTOUTW: {
        const auto& text = As<EMREXTTEXTOUTW>(record);
        pCall->n = {IntOf(text.emrtext.ptlReference.x), IntOf(text.emrtext.ptlReference.y)};
        pCall->text = AnsiText(text);
        return true;
    }
    default:
        return false;
    }
}

void CReplay::Draw(HDC hdc) const
{
    std::vector<HGDIOBJ> objects(m_nObjects);
    const auto at = [&](int n) -> HGDIOBJ& { return objects[static_cast<std::size_t>(n)]; };
    for (const Call& call : m_calls) {
        const auto& n = call.n;
        switch (call.nType) {
        case EMR_SAVEDC:
            ::SaveDC(hdc);
            break;
        case EMR_RESTOREDC:
            ::RestoreDC(hdc, n[0]);
            break;
        case EMR_SELECTOBJECT:
            ::SelectObject(hdc, n[0] < 0 ? ::GetStockObject(n[0] & 0xFF) : at(n[0]));
            break;
        case EMR_DELETEOBJECT:
            ::DeleteObject(at(n[0]));
            break;
        case EMR_SETTEXTCOLOR:
            ::SetTextColor(hdc, static_cast<COLORREF>(n[0]));
            break;
        case EMR_SETBKCOLOR:
            ::SetBkColor(hdc, static_cast<COLORREF>(n[0]));
            break;
        case EMR_ELLIPSE:
            ::Ellipse(hdc, n[0], n[1], n[2], n[3]);
            break;
        case EMR_CREATEMONOBRUSH:
            at(n[0]) = MakePatternBrush(call.text);
            break;
        case EMR_SETBKMODE:
            ::SetBkMode(hdc, n[0]);
            break;
        case EMR_MOVETOEX:
            ::MoveToEx(hdc, n[0], n[1], nullptr);
            break;
        case EMR_LINETO:
            ::LineTo(hdc, n[0], n[1]);
            break;
        case EMR_INTERSECTCLIPRECT:
            ::IntersectClipRect(hdc, n[0], n[1], n[2], n[3]);
            break;
        case EMR_ARC:
            ::Arc(hdc, n[0], n[1], n[2], n[3], n[4], n[5], n[6], n[7]);
            break;
        case EMR_CREATEPEN:
            at(n[0]) = ::CreatePen(n[1], n[2], static_cast<COLORREF>(n[3]));
            break;
        case EMR_EXTCREATEFONTINDIRECTW:
            at(n[0]) = ::CreateFontIndirectW(&m_fonts[static_cast<std::size_t>(n[1])]);
            break;
        default: { // a text is measured, to be centred, and put
            SIZE size{};
            const int nLen = static_cast<int>(call.text.size());
            ::GetTextExtentPoint32A(hdc, call.text.data(), nLen, &size);
            ::TextOutA(hdc, n[0], n[1], call.text.data(), nLen);
            break;
        }
        }
    }
}
