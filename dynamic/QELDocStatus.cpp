#include "dynamic/QELDocStatus.h"

#include "include/QELEngine.h"

#include <climits>

CQELDocStatus::CQELDocStatus(const DocMaking& making) noexcept : CQELDocElm(making, QEL_TYPE_STATUS)
{
}

std::span<const AttrRow<CQELDocStatus>> CQELDocStatus::Attrs()
{
    using Row = AttrRow<CQELDocStatus>;
    static const Row rows[] = {
        {{ATTR_STX, &g_formStatus, 0, 0, INT_MAX,
          "the status number at which the element is shown"},
         &CQELDocStatus::m_nStatus},
    };
    return rows;
}

void CQELDocStatus::VisitAttrs(AttrVisitor pfnVisit, void* pUser)
{
    for (const auto& row : Attrs()) pfnVisit(row, pUser);
}

int CQELDocStatus::Clone(CQELDocElm** ppOut) const
{
    return CloneAs(*this, ppOut);
}

int CQELDocStatus::GetAttrSize(int* pnSize) const
{
    *pnSize = sizeof(QELWORDATTR);
    return 1;
}

int CQELDocStatus::GetAttr(void* pBlock) const
{
    if (!pBlock) return 0;
    std::memcpy(pBlock, &m_nStatus, sizeof m_nStatus);
    return 1;
}

int CQELDocStatus::SetAttr(const void* pBlock)
{
    if (!pBlock) return 0;
    std::memcpy(&m_nStatus, pBlock, sizeof m_nStatus);
    if (m_nStatus < 0) m_nStatus = 0;
    return 1;
}

int CQELDocStatus::Load()
{
    if (!CQELDocElm::Load()) return 0;
    LoadAttrs(this, Attrs(), Xml());
    return 1;
}

int CQELDocStatus::Save()
{
    BeginSave();
    SaveAttrs(this, Attrs(), Writer());
    return 1;
}
