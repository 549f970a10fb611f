#include "dynamic/QELViewStatus.h"

#include "render/LiveLayer.h"

#include <cmath>
#include <cstring>

constexpr KeywordRow g_statusKindRows[] = {
    {0, "switch"}, {1, "meter"}, {2, "draw"}, {KEYWORD_NONE, nullptr}};
static_assert(IsSoundTable(g_statusKindRows));

CQELViewStatus::CQELViewStatus(int32_t nRefW, int32_t nRefH, CPool* pPool) noexcept
    : CQELViewElm(nRefW, nRefH, pPool)
{
    SetType(QEL_TYPE_STATUS);
}

int CQELViewStatus::NewInstance(CQELViewElm** ppOut) const
{
    return NewInstanceAs(*this, ppOut);
}

int CQELViewStatus::Duplicate(CQELViewElm* pTargetParent, CQELViewElm** ppOut)
{
    if (!CQELViewElm::Duplicate(pTargetParent, ppOut)) return 0;
    auto* pCopy = static_cast<CQELViewStatus*>(*ppOut);
    pCopy->m_nOwn = m_nOwn;
    pCopy->m_nStatus = m_nStatus;
    return 1;
}

// A value of its own goes before the drawing's number, and no value of it shows all.
bool CQELViewStatus::IsShown() const
{
    if (m_nOwn < 0) return false;
    const LiveState* pState = Live();
    if (pState && pState->bHasValue && pState->bIsNumber)
        return std::trunc(pState->fValue) == static_cast<double>(m_nOwn);
    return m_nStatus == static_cast<uint32_t>(m_nOwn) || m_nStatus == STATUS_SHOW_ALL;
}

// What is shown is always drawn in full: the picture that it replaces may have been another one.
int CQELViewStatus::Draw(HDC hdc, const QelRect& rcQel, uint32_t nFlags)
{
    if (!IsShown()) return 0;
    return CQELViewElm::Draw(hdc, rcQel,
                             (nFlags & (QEL_DRAW_PRESSED | DRAW_INTERNAL)) | QEL_DRAW_FULL);
}

int CQELViewStatus::GetAttrBlockSize(int* pnSize) const
{
    *pnSize = sizeof(QELWORDATTR);
    return 1;
}

int CQELViewStatus::GetAttrBlock(void* pBlock) const
{
    if (!pBlock) return 0;
    std::memcpy(pBlock, &m_nOwn, sizeof m_nOwn);
    return 1;
}

int CQELViewStatus::SetAttrBlock(const void* pBlock)
{
    if (!pBlock) return 0;
    std::memcpy(&m_nOwn, pBlock, sizeof m_nOwn);
    return 1;
}
