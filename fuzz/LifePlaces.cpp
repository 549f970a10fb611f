// The operations of a life that ask where things are: what the answers promise of each other.
#include "fuzz/Life.h"

#include <cstring>

namespace {

constexpr POINT NO_POINT{-77, -78};

bool IsEmpty(const RECT& rc)
{
    return rc.left == 0 && rc.top == 0 && rc.right == 0 && rc.bottom == 0;
}

} // namespace

void CLife::FindPlaces()
{
    const POINT pt{m_input.Number(), m_input.Number()};
    FindAt(pt);
    FindAt({pt.x & 0x7F, pt.y & 0x7F}); // where something may be
    FindByIdentifier(m_input.Text());
    const HQELELEM hElem = AnyElem();
    MapUnits(hElem, pt);
    if (const char* pszId = QELGetElemId(m_hEngine, hElem)) FindByIdentifier(pszId);
}

// Who is hit is a leaf of the picture that is painted near there.
void CLife::FindAt(POINT pt)
{
    const HQELELEM hElem = QELElemFromPoint(m_hEngine, &pt);
    FUZZ_CHECK(!hElem || (IsInside(hElem, Root())));
    RECT rc{};
    FUZZ_CHECK(!hElem || QELGetElemDrawRect(m_hEngine, hElem, &rc));
    ::InflateRect(&rc, 5, 5);
    FUZZ_CHECK(!hElem || ::PtInRect(&rc, pt));
    char szId[QEL_TEXT_SIZE];
    std::memset(szId, 'x', sizeof szId);
    const char* pszExpected = nullptr;
    for (HQELELEM h = hElem; h && !pszExpected; h = Parent(h))
        if (*QELGetElemId(m_hEngine, h)) pszExpected = QELGetElemId(m_hEngine, h);
    const int nResult = QELIdFromPoint(m_hEngine, &pt, szId, sizeof szId);
    FUZZ_CHECK(nResult == (pszExpected ? 1 : 0));
    FUZZ_CHECK(nResult ? std::strcmp(szId, pszExpected) == 0 : szId[0] == 'x');
    const int nSmall = m_input.Number();
    const bool bFits = pszExpected && nSmall > static_cast<int>(std::strlen(pszExpected));
    char szSmall[QEL_TEXT_SIZE];
    const int nSize = nSmall > QEL_TEXT_SIZE ? QEL_TEXT_SIZE : nSmall;
    FUZZ_CHECK(QELIdFromPoint(m_hEngine, &pt, szSmall, nSize) == (bFits ? 1 : 0));
    FUZZ_CHECK(!QELIdFromPoint(m_hEngine, nullptr, szId, sizeof szId));
    FUZZ_CHECK(!QELElemFromPoint(m_hEngine, nullptr));
}

// The first that bears it; and its rectangle is in that of all.
void CLife::FindByIdentifier(const std::string& id)
{
    const HQELELEM hElem = QELFindElem(m_hEngine, id.c_str());
    FUZZ_CHECK(!hElem || IsInside(hElem, Root()));
    FUZZ_CHECK(!hElem || std::strcmp(QELGetElemId(m_hEngine, hElem), id.c_str()) == 0);
    RECT rcAll{1, 2, 3, 4};
    RECT rcOne{1, 2, 3, 4};
    const int nAll = QELGetIdDrawRect(m_hEngine, id.c_str(), &rcAll);
    FUZZ_CHECK(nAll ? hElem && !::IsRectEmpty(&rcAll) : IsEmpty(rcAll));
    if (!hElem) return;
    const int nOne = QELGetElemDrawRect(m_hEngine, hElem, &rcOne);
    FUZZ_CHECK(nOne ? nAll && !::IsRectEmpty(&rcOne) : IsEmpty(rcOne));
    FUZZ_CHECK(!nOne || (rcAll.left <= rcOne.left && rcAll.top <= rcOne.top &&
                         rcAll.right >= rcOne.right && rcAll.bottom >= rcOne.bottom));
}

// A unit's image is the image of the unit that is told for it.
void CLife::MapUnits(HQELELEM hElem, POINT pt)
{
    POINT ptUnit = NO_POINT;
    POINT ptImage = pt;
    FUZZ_CHECK(IsLive(hElem) || !QELElemToDevice(m_hEngine, hElem, &ptUnit));
    FUZZ_CHECK(!QELElemToDevice(m_hEngine, hElem, nullptr));
    FUZZ_CHECK(!QELDeviceToElem(m_hEngine, hElem, nullptr));
    if (!QELElemToDevice(m_hEngine, hElem, &ptImage)) {
        FUZZ_CHECK(ptImage.x == pt.x && ptImage.y == pt.y);
        FUZZ_CHECK(!QELDeviceToElem(m_hEngine, hElem, &ptImage));
        return;
    }
    ptUnit = ptImage;
    FUZZ_CHECK(QELDeviceToElem(m_hEngine, hElem, &ptUnit));
    if (!IsSmall(hElem, pt)) return;
    FUZZ_CHECK(ptUnit.x <= pt.x && ptUnit.y <= pt.y); // the smallest one
    FUZZ_CHECK(QELElemToDevice(m_hEngine, hElem, &ptUnit));
    FUZZ_CHECK(ptUnit.x == ptImage.x && ptUnit.y == ptImage.y);
}

// Nothing wraps around: a point, a shape, the QEL rect and the drawing are of few pixels and units.
bool CLife::IsSmall(HQELELEM hElem, POINT pt) const
{
    constexpr LONG FEW = 10000;
    const auto isFew = [](LONG n) { return n > -FEW && n < FEW; };
    const auto isSmall = [&](const RECT& rc) {
        return isFew(rc.left) && isFew(rc.top) && isFew(rc.right) && isFew(rc.bottom);
    };
    const int nType = QELGetElemType(m_hEngine, hElem);
    RECT rcElem{};
    RECT rcQel{};
    SIZE size{};
    return nType >= QEL_TYPE_TEXT && nType <= QEL_TYPE_POLYGON &&
           QELGetElemRect(m_hEngine, hElem, &rcElem) && isSmall(rcElem) &&
           QELGetQELRect(m_hEngine, &rcQel) && isSmall(rcQel) && QELGetRefSize(m_hEngine, &size) &&
           isFew(size.cx) && isFew(size.cy) && isFew(pt.x) && isFew(pt.y);
}
