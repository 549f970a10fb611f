// What the helpers of the tests do alike on the real system and on its stand-in.
#include "tests/support/Bitmap.h"
#include "tests/support/Recording.h"

#include <vector>

void PaintRegion(const CTestBitmap& bitmap, HRGN hRegion)
{
    ::FillRgn(bitmap.Dc(), hRegion, static_cast<HBRUSH>(::GetStockObject(BLACK_BRUSH)));
}

CTestSelect::CTestSelect(HDC hdc, HGDIOBJ hObject, bool bOwn)
    : m_hdc(hdc), m_hObject(hObject), m_hPrev(::SelectObject(hdc, hObject)), m_bOwn(bOwn)
{
}

CTestSelect::~CTestSelect()
{
    ::SelectObject(m_hdc, m_hPrev);
    if (m_bOwn) ::DeleteObject(m_hObject);
}

std::size_t SpareObjects(std::size_t nMost)
{
    std::vector<HPEN> pens;
    for (HPEN hPen; pens.size() < nMost && (hPen = ::CreatePen(PS_SOLID, 1, 0)) != nullptr;)
        pens.push_back(hPen);
    for (const HPEN hPen : pens) ::DeleteObject(hPen);
    return pens.size();
}

std::vector<std::string> CRecording::Only(const std::vector<std::string>& words)
{
    std::vector<std::string> found;
    for (const std::string& call : Calls())
        for (const std::string& word : words)
            if (call.rfind(word, 0) == 0) {
                found.push_back(call);
                break;
            }
    return found;
}
