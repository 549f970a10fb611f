// Fuzzes a whole life of a drawing through the exported functions: open the bytes, draw, push
// values, turn, edit by a program taken from the input, save, open again and compare; then the same
// file in show-only mode. The input is a drawing, a zero byte and the program, whose first byte
// says whether the values that are pushed come from the input too.
#include "fuzz/LargeBlocks.h"
#include "fuzz/Life.h"

#include <utility>

namespace {

constexpr char SAVED_LOUD[] = "FUZZ-LIFE-SAVED.QEL"; // the same file to a show-only host

class CShowOnlyScope {
public:
    CShowOnlyScope() { FUZZ_CHECK(QELShowOnly(1) == 1); }
    ~CShowOnlyScope() { FUZZ_CHECK(QELShowOnly(0) == 1); }
    CShowOnlyScope(const CShowOnlyScope&) = delete;
    CShowOnlyScope& operator=(const CShowOnlyScope&) = delete;
};

// Everything that edits does nothing here.
void CheckNothingEdits(HQELENGINE h)
{
    SIZE size{10, 10};
    RECT rc{0, 0, 9, 9};
    const std::string saved = ReadHostFile(SAVED);
    FUZZ_CHECK(!QELNewFile(h) && !QELSaveFile(h, SAVED) && ReadHostFile(SAVED) == saved);
    FUZZ_CHECK(!QELGetRootElem(h) && !QELSetRefSize(h, &size));
    FUZZ_CHECK(!QELCreateElem(h, QEL_TYPE_RECT, nullptr, nullptr));
    FUZZ_CHECK(!QELCreateElem(h, QEL_TYPE_ROOT, nullptr, nullptr));
    FUZZ_CHECK(!QELSetElemRect(h, nullptr, &rc) && !QELSetElemId(h, nullptr, "x"));
}

// Two hosts show one file; its values are common, and either may leave first.
void ShowOnly(CInput& input, bool bDraws)
{
    const CShowOnlyScope mode;
    const CLittleMemory little;
    const CHostDc dc;
    HQELENGINE hFirst = CreateQELEngine();
    HQELENGINE hSecond = CreateQELEngine();
    FUZZ_CHECK(hFirst && hSecond && hFirst != hSecond);
    FUZZ_CHECK(!QELOpenFile(hFirst, nullptr) && QELGetType(hFirst) == -1);
    FUZZ_CHECK(QELOpenFile(hFirst, SAVED) && QELOpenFile(hSecond, SAVED_LOUD));
    FUZZ_CHECK(QELGetName(hFirst) == QELGetName(hSecond)); // one drawing
    CheckNothingEdits(hFirst);
    const RECT rc{0, 0, input.Below(2) ? 1 : 320, 240};
    FUZZ_CHECK(QELSetQELRect(hFirst, &rc));
    for (int n = 0; n < 12 && !input.IsAtEnd(); ++n) {
        const DWORD nId = input.Word();
        const DWORD nSelector = input.Below(35);
        const DWORD nValue = input.Word();
        QELSetScaleParam(hFirst, nId, nSelector,
                         nSelector == QEL_SEL_TICKS ? nValue % MAX_TICKS : nValue);
        QELSetParam(hSecond, static_cast<int>(nId % 4), input.Word());
        QELSetStatus(hSecond, nId);
        if (n % 4 == 0) QELRotate(hSecond, static_cast<int>(input.Below(4)) * 90);
        if (bDraws && n % 4 == 1) QELDraw(hFirst, dc.Get(), &rc, nId % 4);
    }
    if (bDraws) QELDraw(hFirst, dc.Get(), &rc, QEL_DRAW_FULL);
    dc.CheckState();
    if (input.Below(2)) std::swap(hFirst, hSecond);
    FUZZ_CHECK(DestroyQELEngine(hFirst));
    if (bDraws) QELDraw(hSecond, dc.Get(), &rc, 0);
    FUZZ_CHECK(QELGetName(hSecond) && QELCloseFile(hSecond) && !QELGetName(hSecond));
    FUZZ_CHECK(DestroyQELEngine(hSecond));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, std::size_t nSize)
{
    const SplitInput split = SplitAtZero(pData, nSize);
    CInput input(reinterpret_cast<const uint8_t*>(split.program.data()), split.program.size());
    const CHostWorld world;
    WriteHostFile(PATH, split.text);
    bool bSaved = false; // after the edits
    bool bCheap = false;
    {
        CLife life(input);
        life.Open();
        life.SaveAndCompare();
        life.DrawAll();
        life.PushAll();
        life.Run();
        bSaved = life.SaveAndCompare();
        bCheap = life.IsCheap();
    }
    if (bSaved) ShowOnly(input, bCheap);
    return 0;
}
