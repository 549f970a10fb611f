#include "document/QELDocQEL.h"

#include "include/QELEngine.h"

#include <climits>

namespace {

constexpr DWORD ROOT_ATTR_SIZE = sizeof(QELROOTATTR);
constexpr DWORD ROOT_FORMAT = 0x10000;
constexpr LONG MAX_KIND = 2;
constexpr DWORD FULL_TURN = 360;

} // namespace

CQELDocQEL::CQELDocQEL(const DocMaking& making) noexcept : CQELDocElm(making, QEL_TYPE_ROOT) {}

std::span<const AttrRow<CQELDocQEL>> CQELDocQEL::Attrs()
{
    using Row = AttrRow<CQELDocQEL>;
    static const Row rows[] = {
        {{ATTR_TYPE, &g_formKind, 0, 0, MAX_KIND, "kind of the drawing, for the host's own use"},
         &CQELDocQEL::m_nKind},
        {{ATTR_WIDTH, &g_formDecimal, DEFAULT_REF_SIZE, 1, INT_MAX, "reference width"},
         &CQELDocQEL::m_nWidth},
        {{ATTR_HEIGHT, &g_formDecimal, DEFAULT_REF_SIZE, 1, INT_MAX, "reference height"},
         &CQELDocQEL::m_nHeight},
        {{ATTR_LST_ROTATE, &g_formDecimal, 0, 0, static_cast<int32_t>(FULL_TURN),
          "a rotation in degrees; stored for the host and not applied"},
         &CQELDocQEL::m_nRotate},
    };
    return rows;
}

void CQELDocQEL::VisitAttrs(AttrVisitor pfnVisit, void* pUser)
{
    for (const auto& row : Attrs()) pfnVisit(row, pUser);
}

int CQELDocQEL::TakeFields(const CQELDocQEL& source)
{
    for (const auto& row : Attrs()) this->*row.pField = source.*row.pField;
    return 1;
}

void CQELDocQEL::SetRefSize(SIZE size)
{
    m_nWidth = size.cx;
    m_nHeight = size.cy;
}

int CQELDocQEL::Clone(CQELDocElm** ppOut) const
{
    return CloneAs(*this, ppOut);
}

int CQELDocQEL::GetAttrSize(int* pnSize) const
{
    *pnSize = ROOT_ATTR_SIZE;
    return 1;
}

int CQELDocQEL::GetAttr(void* pBlock) const
{
    if (!pBlock) return 0;
    const QELROOTATTR block = {ROOT_ATTR_SIZE, ROOT_FORMAT, m_nKind,
                               m_nWidth,       m_nHeight,   static_cast<DWORD>(m_nRotate)};
    std::memcpy(pBlock, &block, sizeof block);
    return 1;
}

int CQELDocQEL::SetAttr(const void* pBlock)
{
    if (!pBlock) return 0;
    QELROOTATTR block;
    std::memcpy(&block.nSize, pBlock, sizeof block.nSize);
    if (block.nSize != ROOT_ATTR_SIZE) return 0;
    std::memcpy(&block, pBlock, sizeof block);
    if (block.nType < 0 || block.nType > MAX_KIND) return 0;
    m_nKind = block.nType;
    m_nWidth = block.nWidth;
    m_nHeight = block.nHeight;
    // Above a full turn the quotient is stored, not the remainder: a rule of the format.
    const DWORD nRotate = block.nRotate > FULL_TURN ? block.nRotate / FULL_TURN : block.nRotate;
    m_nRotate = static_cast<int32_t>(nRotate);
    return 1;
}

int CQELDocQEL::Load()
{
    if (!CQELDocElm::Load()) return 0;
    LoadAttrs(this, Attrs(), Xml());
    return 1;
}

int CQELDocQEL::Save()
{
    BeginSave();
    SaveAttrs(this, Attrs(), Writer());
    return 1;
}
