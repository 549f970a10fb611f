#include "render/QELViewQEL.h"

#include <cstring>

CQELViewQEL::CQELViewQEL(int32_t nRefW, int32_t nRefH, CPool* pPool) noexcept
    : CQELViewElm(nRefW, nRefH, pPool)
{
    SetType(QEL_TYPE_ROOT);
}

int CQELViewQEL::NewInstance(CQELViewElm** ppOut) const
{
    return NewInstanceAs(*this, ppOut);
}

int CQELViewQEL::Duplicate(CQELViewElm* pTargetParent, CQELViewElm** ppOut)
{
    if (!CQELViewElm::Duplicate(pTargetParent, ppOut)) return 0;
    static_cast<CQELViewQEL*>(*ppOut)->m_nKind = m_nKind;
    return 1;
}

int CQELViewQEL::GetAttrBlockSize(int* pnSize) const
{
    *pnSize = sizeof(QELROOTATTR);
    return 1;
}

int CQELViewQEL::GetAttrBlock(void*) const
{
    return 0;
}

int CQELViewQEL::SetAttrBlock(const void* pBlock)
{
    if (!pBlock) return 0;
    QELROOTATTR block;
    std::memcpy(&block.nSize, pBlock, sizeof block.nSize);
    if (block.nSize != sizeof block) return 0;
    std::memcpy(&block, pBlock, sizeof block);
    SetRefSize(block.nWidth, block.nHeight);
    m_nKind = block.nType;
    return 1;
}

void CQELViewQEL::SetName(const char* pszName)
{
    std::strncpy(m_szName, pszName, sizeof m_szName - 1);
    m_szName[sizeof m_szName - 1] = 0;
}
