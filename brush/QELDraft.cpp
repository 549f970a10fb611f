// The hatch-brush class of the exported header: a fill style made into a GDI brush. The brush
// objects are made on first use and kept for the life of the object.
#include "brush/Gradient.h"

#include "base/Refusals.h"
#include "include/QELEngine.h"

const tagDRAFTSTYLE CQELDraft::m_nDefDraft = DRAFT_SOLID_TEXT;

// Scan lines of a monochrome bitmap are word-aligned: the eight pixels stand in the low byte.
const unsigned short CQELDraft::m_byColorsBits[10][8] = {
    {0x0000, 0x0000, 0x0000, 0x0000, 0x0000, 0x0000, 0x0000, 0x0000},
    {0x00FF, 0x00FF, 0x00FF, 0x00FF, 0x00FF, 0x00FF, 0x00FF, 0x00FF},
    {0x00AA, 0x00FF, 0x00AA, 0x00FF, 0x00AA, 0x00FF, 0x00AA, 0x00FF},
    {0x00AA, 0x0055, 0x00AA, 0x0055, 0x00AA, 0x0055, 0x00AA, 0x0055},
    {0x0055, 0x0055, 0x0055, 0x0055, 0x0055, 0x0055, 0x0055, 0x0055},
    {0x00FF, 0x0000, 0x00FF, 0x0000, 0x00FF, 0x0000, 0x00FF, 0x0000},
    {0x0088, 0x0044, 0x0022, 0x0011, 0x0088, 0x0044, 0x0022, 0x0011},
    {0x0011, 0x0022, 0x0044, 0x0088, 0x0011, 0x0022, 0x0044, 0x0088},
    {0x00CC, 0x00CC, 0x0033, 0x0033, 0x00CC, 0x00CC, 0x0033, 0x0033},
    {0x00F0, 0x00F0, 0x00F0, 0x00F0, 0x000F, 0x000F, 0x000F, 0x000F}};

CQELDraft::CQELDraft() : CQELDraft(m_nDefDraft) {}

CQELDraft::CQELDraft(tagDRAFTSTYLE nStyle)
    : m_nStyle(nStyle), m_hBitmap(nullptr), m_hBrush(nullptr),
      m_hGradient(nullptr), m_rcGradient{0, 0, 0, 0}
{
}

// A copy holds the same objects and frees them too. The gradient's handle is refused
// the second time.
CQELDraft::CQELDraft(const CQELDraft& other)
    : m_nStyle(other.m_nStyle), m_hBitmap(other.m_hBitmap), m_hBrush(other.m_hBrush),
      m_hGradient(other.m_hGradient), m_rcGradient(other.m_rcGradient)
{
    ShareGradient(m_hGradient);
}

// Members are copied as they are. NOLINTNEXTLINE(bugprone-unhandled-self-assignment,cert-oop54-cpp)
CQELDraft& CQELDraft::operator=(const CQELDraft& other)
{
    m_nStyle = other.m_nStyle;
    m_hBitmap = other.m_hBitmap;
    m_hBrush = other.m_hBrush;
    m_hGradient = other.m_hGradient;
    m_rcGradient = other.m_rcGradient;
    ShareGradient(m_hGradient);
    return *this;
}

CQELDraft::~CQELDraft()
{
    if (m_hBrush) ::DeleteObject(m_hBrush);
    if (m_hBitmap) ::DeleteObject(m_hBitmap);
    if (m_hGradient) QELCloseGradientDescriptor(m_hGradient);
}

int CQELDraft::SetDraft(tagDRAFTSTYLE nStyle)
{
    m_nStyle = nStyle;
    return 1;
}

int CQELDraft::GetDraftBrush(HBRUSH& brush, RECT* pRect, unsigned long clr1, unsigned long clr2)
{
    brush = nullptr;
    if (m_nStyle < 0) return 0; // there is no such hatch
    if (m_nStyle < DRAFT_GRADIENT) {
        if (!m_hBitmap) m_hBitmap = Made(::CreateBitmap(8, 8, 1, 1, m_byColorsBits[m_nStyle]));
        if (m_hBitmap && !m_hBrush) m_hBrush = Made(::CreatePatternBrush(m_hBitmap));
        brush = m_hBrush;
        return brush != nullptr;
    }
    if (!pRect) return 0;
    if (!m_hGradient || !::EqualRect(pRect, &m_rcGradient)) {
        if (m_hGradient) QELCloseGradientDescriptor(m_hGradient);
        m_rcGradient = *pRect;
        const int nGradient = m_nStyle - DRAFT_GRADIENT;
        const bool bExchanged = nGradient % 2 != 0;
        m_hGradient = CreatePrivateGradient(pRect, nGradient / 2, bExchanged ? clr2 : clr1,
                                            bExchanged ? clr1 : clr2);
    }
    brush = QELGetGradientBrush(m_hGradient);
    return brush != nullptr;
}
