// Fuzzes the attribute records: an element of every type takes records of any numbers, reads them
// back, is placed, drawn and turned, and comes back from a saved drawing.
#include "fuzz/Host.h"
#include "fuzz/LargeBlocks.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>

namespace {

constexpr char SAVED[] = "fuzz-attr.qel";
constexpr int MAX_ELEMENTS = 24;
constexpr int32_t MODERATE = 10000; // coordinates up to here are placed without leaving 32 bits

constexpr int g_types[] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 15, 16, 17, 18, 19, 20, 21};

std::string ReadRecord(HQELENGINE hEngine, HQELELEM hElem)
{
    int nSize = 0;
    FUZZ_CHECK(QELGetElemAttr(hEngine, hElem, nullptr, &nSize));
    std::string attr(static_cast<std::size_t>(nSize), '#');
    FUZZ_CHECK(QELGetElemAttr(hEngine, hElem, attr.data(), nullptr));
    return attr;
}

// Lays bytes of the input over the text of a record; it may lack its ending zero.
void PatchText(std::string* pAttr, CInput& input)
{
    constexpr std::size_t TEXT_OFFSET = offsetof(QELSHAPEATTR, szText);
    if (pAttr->size() != sizeof(QELSHAPEATTR)) return;
    std::string text = input.Text();
    text.resize(std::min<std::size_t>(text.size(), QEL_TEXT_SIZE));
    pAttr->replace(TEXT_OFFSET, text.size(), text);
}

// A new record is taken whole or not at all.
void SetRecord(HQELENGINE hEngine, HQELELEM hElem, CInput& input)
{
    const int nType = QELGetElemType(hEngine, hElem);
    const std::string before = ReadRecord(hEngine, hElem);
    std::string attr = before;
    const uint32_t nHow = input.Below(8);
    if (nHow & 1) PatchRecord(&attr, input);
    if (nHow & 2) PatchText(&attr, input);
    KeepCheap(nType, &attr);
    const int nOwn = static_cast<int>(attr.size());
    const int nSize = nHow & 4 ? static_cast<int>(input.Below(8)) - 4 + nOwn : nOwn;
    const bool bGood = nSize >= nOwn && IsGoodRecord(nType, attr);
    FUZZ_CHECK(QELSetElemAttr(hEngine, hElem, attr.data(), nSize) == (bGood ? 1 : 0));
    FUZZ_CHECK(ReadRecord(hEngine, hElem) == (bGood ? TakenRecord(nType, attr) : before));
    FUZZ_CHECK(!QELSetElemAttr(hEngine, hElem, nullptr, nSize));
    FUZZ_CHECK(!QELGetElemAttr(hEngine, hElem, nullptr, nullptr));
}

bool IsModerate(const RECT& rc)
{
    for (const LONG n : {rc.left, rc.top, rc.right, rc.bottom})
        if (n < -MODERATE || n > MODERATE) return false;
    return true;
}

// By how much a resize moves a coordinate.
LONG ShiftOf(LONG nOldFrom, LONG nOldTo, LONG nNewFrom, LONG nNewTo)
{
    const LONG nOld = std::abs(nOldTo - nOldFrom);
    const LONG nNew = std::abs(nNewTo - nNewFrom);
    const LONG nShift = nOld && nNew ? (nNew - nOld) * nNew / nOld : 0;
    return nNewFrom - nOldFrom + nShift;
}

// The edges of a figure all move by the same; where the old or the new side is 0, a rectangle loses
// that side.
void SetRect(HQELENGINE hEngine, HQELELEM hElem, CInput& input)
{
    const RECT rcNew{input.Number(), input.Number(), input.Number(), input.Number()};
    RECT rcOld{};
    const int nHas = QELGetElemRect(hEngine, hElem, &rcOld);
    const std::string before = ReadRecord(hEngine, hElem);
    const int nResult = QELSetElemRect(hEngine, hElem, &rcNew);
    if (!nHas) FUZZ_CHECK(!nResult);
    if (!nResult) FUZZ_CHECK(ReadRecord(hEngine, hElem) == before); // there are no children here
    RECT rcAfter{};
    FUZZ_CHECK(QELGetElemRect(hEngine, hElem, &rcAfter) == nHas);
    const int nType = QELGetElemType(hEngine, hElem);
    const bool bFigure = nType == QEL_TYPE_RECT || nType == QEL_TYPE_ELLIPSE ||
                         nType == QEL_TYPE_TEXT || nType == QEL_TYPE_LINE;
    if (!nResult || !bFigure || !IsModerate(rcOld) || !IsModerate(rcNew)) return;
    const LONG nX = ShiftOf(rcOld.left, rcOld.right, rcNew.left, rcNew.right);
    const LONG nY = ShiftOf(rcOld.top, rcOld.bottom, rcNew.top, rcNew.bottom);
    RECT rc{rcOld.left + nX, rcOld.top + nY, rcOld.right + nX, rcOld.bottom + nY};
    if (nType != QEL_TYPE_LINE) {
        const auto record = RecordOf<QELSHAPEATTR>(before);
        const LONG* n = record.nGeometry;
        const bool bMirrored = n[0] > n[2] || n[1] > n[3];
        if (bMirrored) return; // which edge follows which is not told by the rectangle alone
        if (rcNew.left == rcNew.right) rc.right = rc.left;
        if (rcNew.top == rcNew.bottom) rc.bottom = rc.top;
    }
    FUZZ_CHECK(::EqualRect(&rc, &rcAfter));
}

void Draw(HQELENGINE hEngine, const CHostDc& dc, CInput& input)
{
    static const RECT sizes[] = {{0, 0, 50, 50}, {0, 0, 300, 200}, {-10, 7, 3, 90}, {0, 0, 1, 700}};
    const RECT& rc = sizes[input.Below(4)];
    const CLittleMemory little;
    FUZZ_CHECK(QELSetQELRect(hEngine, &rc));
    QELSetBlinkState(hEngine, static_cast<int>(input.Below(2)));
    QELDraw(hEngine, dc.Get(), &rc, input.Below(4));
    QELDraw(hEngine, dc.Get(), &rc, QEL_DRAW_FULL);
    QELDraw(hEngine, dc.Get(), &rc, 0);
    dc.CheckState();
}

void CheckReopening(HQELENGINE hEngine)
{
    const HostTree tree = ReadHostTree(hEngine, QELGetRootElem(hEngine));
    FUZZ_CHECK(QELSaveFile(hEngine, SAVED));
    FUZZ_CHECK(QELOpenFile(hEngine, SAVED));
    FUZZ_CHECK(IsSameTree(Reopened(tree), ReadHostTree(hEngine, QELGetRootElem(hEngine))));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, std::size_t nSize)
{
    CInput input(pData, nSize);
    const CHostWorld world;
    const HQELENGINE hEngine = CreateQELEngine();
    FUZZ_CHECK(hEngine && QELNewFile(hEngine));
    {
        const CHostDc dc;
        HQELELEM hInto = nullptr;
        for (int n = 0; n < MAX_ELEMENTS && !input.IsAtEnd(); ++n) {
            const uint8_t nKind = input.Byte();
            const int nType = g_types[nKind % 18];
            const HQELELEM hElem = nKind >= 250 ? QELGetRootElem(hEngine)
                                                : QELCreateElem(hEngine, nType, hInto, nullptr);
            FUZZ_CHECK(hElem);
            SetRecord(hEngine, hElem, input);
            if (nKind & 0x20) SetRect(hEngine, hElem, input);
            if (nKind & 0x40) SetRecord(hEngine, hElem, input);
            // A group, a meter or a status takes what follows, until the next one.
            if (nType >= QEL_TYPE_GROUP && nKind < 250) hInto = nKind & 0x80 ? hElem : nullptr;
            if (input.Below(4) == 0) Draw(hEngine, dc, input);
        }
        Draw(hEngine, dc, input);
        QELRotate(hEngine, static_cast<int>(input.Below(4)) * 90);
        Draw(hEngine, dc, input);
        CheckReopening(hEngine);
        Draw(hEngine, dc, input);
    }
    FUZZ_CHECK(DestroyQELEngine(hEngine));
    return 0;
}
