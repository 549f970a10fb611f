// The marks of updates; see the header.
#include "tools/studio/UpdateMarks.h"

#include "tools/studio/Picture.h"
#include "tools/studio/SystemLook.h"

#include <algorithm>

namespace studio {

namespace {

constexpr DWORD FADES_IN = 600; // milliseconds
constexpr int STRONGEST = 110;  // of 255
constexpr std::size_t MOST_MARKS = 256;
constexpr COLORREF MARK = RGB(0xFF, 0x60, 0x00);
constexpr COLORREF LABEL = RGB(0x20, 0x22, 0x24);
constexpr COLORREF LABEL_TEXT = RGB(0xFF, 0xFF, 0xFF);

std::vector<RECT> RectsOf(HRGN hRegion)
{
    std::vector<RECT> rects;
    const DWORD nSize = ::GetRegionData(hRegion, 0, nullptr);
    std::vector<DWORD> data(nSize / sizeof(DWORD) + 1);
    auto* pData = reinterpret_cast<RGNDATA*>(data.data());
    if (!nSize || !::GetRegionData(hRegion, nSize, pData)) return rects;
    const auto* pFirst = reinterpret_cast<const RECT*>(pData->Buffer);
    rects.assign(pFirst, pFirst + pData->rdh.nCount);
    return rects;
}

void Blend(HDC hdc, const RECT& rc, const CPicture& color, int nStrength)
{
    const BLENDFUNCTION how{AC_SRC_OVER, 0, static_cast<BYTE>(nStrength), 0};
    ::AlphaBlend(hdc, rc.left, rc.top, rc.right - rc.left, rc.bottom - rc.top, color.Dc(), 0, 0, 1,
                 1, how);
}

} // namespace

void CUpdateMarks::Clear()
{
    m_marks.clear();
    m_nFrames = 0;
    m_fMilliseconds = 0;
}

void CUpdateMarks::Note(HRGN hPainted, double fMilliseconds)
{
    m_fMilliseconds = fMilliseconds;
    ++m_nFrames;
    for (const RECT& rc : RectsOf(hPainted)) m_marks.push_back({rc, 0});
    if (m_marks.size() > MOST_MARKS)
        m_marks.erase(m_marks.begin(), m_marks.end() - MOST_MARKS); // the old ones
}

void CUpdateMarks::Fade(DWORD nTime, HRGN hChanged)
{
    for (Mark& mark : m_marks) {
        mark.nAge += nTime;
        HRGN hMark = ::CreateRectRgnIndirect(&mark.rc);
        ::CombineRgn(hChanged, hChanged, hMark, RGN_OR);
        ::DeleteObject(hMark);
    }
    std::erase_if(m_marks, [](const Mark& mark) { return mark.nAge >= FADES_IN; });
}

void CUpdateMarks::Draw(HDC hdc, const std::wstring& text, HFONT hFont, SIZE margin)
{
    CPicture color;
    if (!color.SetSize({1, 1})) return;
    ::SetPixelV(color.Dc(), 0, 0, PlainOr(MARK, COLOR_HIGHLIGHT));
    // Of the marks that lie on each other the last one shows: what is painted in every frame is
    // still to be seen through it.
    const int nSaved = ::SaveDC(hdc);
    for (std::size_t n = m_marks.size(); n-- > 0;) {
        const auto& [rc, nAge] = m_marks[n];
        Blend(hdc, rc, color, STRONGEST - static_cast<int>(STRONGEST * nAge / FADES_IN));
        ::ExcludeClipRect(hdc, rc.left, rc.top, rc.right, rc.bottom);
    }
    ::RestoreDC(hdc, nSaved);
    const HGDIOBJ hPrev = ::SelectObject(hdc, hFont);
    SIZE size{};
    const int nLength = static_cast<int>(text.size());
    ::GetTextExtentPoint32W(hdc, text.c_str(), nLength, &size);
    m_rcText = {margin.cx, margin.cy, 3 * margin.cx + size.cx, 2 * margin.cy + size.cy};
    ::SetBkColor(hdc, PlainOr(LABEL, COLOR_INFOBK));
    ::SetTextColor(hdc, PlainOr(LABEL_TEXT, COLOR_INFOTEXT));
    ::ExtTextOutW(hdc, 2 * margin.cx, margin.cy + margin.cy / 2, ETO_OPAQUE, &m_rcText,
                  text.c_str(), static_cast<UINT>(nLength), nullptr);
    ::SelectObject(hdc, hPrev);
}

} // namespace studio
