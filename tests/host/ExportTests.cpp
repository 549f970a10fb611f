// The DLL's tables, read from the headers of the loaded module: what it exports, name for name, and
// from which libraries it imports.
#include "include/QELEngine.h"
#include "tests/support/Bitmap.h"
#include "tests/support/Files.h"
#include "tests/support/Wide.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <cstring>
#include <set>
#include <string>
#include <vector>

namespace {

constexpr const char* g_plain[] = {
    "CreateQELEngine",    "DestroyQELEngine",   "QELShowOnly",         "QELNewFile",
    "QELOpenFile",        "QELSaveFile",        "QELCloseFile",        "QELGetName",
    "QELGetType",         "QELGetRootElem",     "QELCreateElem",       "QELDeleteElem",
    "QELMoveElem",        "QELCopyElem",        "QELGetParentElem",    "QELGetFirstChild",
    "QELGetLastChild",    "QELGetNextElem",     "QELGetPrevElem",      "QELGetElemType",
    "QELGetElemId",       "QELSetElemId",       "QELGetElemAttr",      "QELSetElemAttr",
    "QELGetElemRect",     "QELSetElemRect",     "QELGetRefSize",       "QELSetRefSize",
    "QELGetQELRect",      "QELSetQELRect",      "QELGetDrawGraphRect", "QELDraw",
    "QELRotate",          "QELSetBlinkState",   "QELGetStatus",        "QELSetStatus",
    "QELGetParam",        "QELSetParam",        "QELParamsSupported",  "QELGetScaleParam",
    "QELSetScaleParam",   "QELGetScaleParamf",  "QELSetScaleParamf",   "QELGetScaleStatus",
    "QELSetScaleStatus",  "QELGetScaleStatusf", "QELSetScaleStatusf",  "QELGetVersion",
    "QELSetValue",        "QELGetValue",        "QELSetPin",           "QELGetPin",
    "QELSetSelector",     "QELGetSelector",     "QELSetText",          "QELSetVisible",
    "QELSetColor",        "QELResetLive",       "QELSetQuality",       "QELSetEasing",
    "QELGetDirtyRect",    "QELGetDirtyRegion",  "QELInvalidate",       "QELValidate",
    "QELUpdate",          "QELAdvance",         "QELGetLiveId",        "QELGetError",
    "QELOpenFileW",       "QELSaveFileW",       "QELOpenMemory",       "QELSaveMemory",
    "QELIsModified",      "QELGetElemDrawRect", "QELGetIdDrawRect",    "QELElemFromPoint",
    "QELIdFromPoint",     "QELFindElem",        "QELElemToDevice",     "QELDeviceToElem",
    "QELSetTextCodePage", "QELGetTextCodePage", "QELNewFileEx",        "QELSetElemTextW",
    "QELGetElemTextW",    "QELSetTextW",        "QELSetPixelScale",    "QELGetPixelScale",
    "QELSetSmooth",       "QELGetSmooth",       "QELRenderBitmap",     "QELSetFontFace"};

struct DecoratedRow {
    const char* pszOn32;
    const char* pszOn64;
};

constexpr DecoratedRow g_decorated[] = {
    {"_QELOpenFileU@8", "QELOpenFileU"},
    {"_QELCreateGradientDescriptor@16", "QELCreateGradientDescriptor"},
    {"_QELCloseGradientDescriptor@4", "QELCloseGradientDescriptor"},
    {"_QELGetGradientBrush@4", "QELGetGradientBrush"},
    {"_QELDrawBezier@12", "QELDrawBezier"},
    {"_QELDrawCurve@12", "QELDrawCurve"}};

// The class as g++ names it: three constructors and the destructor in the forms that code asks for,
// assignment, the two functions, the two constants, the table of virtual functions, the type.
constexpr const char* g_class[] = {"_ZN9CQELDraftC1Ev",
                                   "_ZN9CQELDraftC2Ev",
                                   "_ZN9CQELDraftC1E13tagDRAFTSTYLE",
                                   "_ZN9CQELDraftC2E13tagDRAFTSTYLE",
                                   "_ZN9CQELDraftC1ERKS_",
                                   "_ZN9CQELDraftC2ERKS_",
                                   "_ZN9CQELDraftD0Ev",
                                   "_ZN9CQELDraftD1Ev",
                                   "_ZN9CQELDraftD2Ev",
                                   "_ZN9CQELDraftaSERKS_",
                                   "_ZN9CQELDraft13GetDraftBrushERP8HBRUSH__P7tagRECTmm",
                                   "_ZN9CQELDraft8SetDraftE13tagDRAFTSTYLE",
                                   "_ZN9CQELDraft11m_nDefDraftE",
                                   "_ZN9CQELDraft14m_byColorsBitsE",
                                   "_ZTV9CQELDraft",
                                   "_ZTI9CQELDraft"};

// The class as compilers of the other family name it.
constexpr DecoratedRow g_otherClass[] = {
    {"??0CQELDraft@@QAE@XZ", "??0CQELDraft@@QEAA@XZ"},
    {"??0CQELDraft@@QAE@W4tagDRAFTSTYLE@@@Z", "??0CQELDraft@@QEAA@W4tagDRAFTSTYLE@@@Z"},
    {"??0CQELDraft@@QAE@ABV0@@Z", "??0CQELDraft@@QEAA@AEBV0@@Z"},
    {"??1CQELDraft@@UAE@XZ", "??1CQELDraft@@UEAA@XZ"},
    {"??4CQELDraft@@QAEAAV0@ABV0@@Z", "??4CQELDraft@@QEAAAEAV0@AEBV0@@Z"},
    {"?GetDraftBrush@CQELDraft@@QAEHAAPAUHBRUSH__@@PAUtagRECT@@KK@Z",
     "?GetDraftBrush@CQELDraft@@QEAAHAEAPEAUHBRUSH__@@PEAUtagRECT@@KK@Z"},
    {"?SetDraft@CQELDraft@@AAEHW4tagDRAFTSTYLE@@@Z",
     "?SetDraft@CQELDraft@@AEAAHW4tagDRAFTSTYLE@@@Z"},
    {"?m_byColorsBits@CQELDraft@@2QAY07$$CBGA", "?m_byColorsBits@CQELDraft@@2QAY07$$CBGA"},
    {"?m_nDefDraft@CQELDraft@@2W4tagDRAFTSTYLE@@B", "?m_nDefDraft@CQELDraft@@2W4tagDRAFTSTYLE@@B"},
    {"??_7CQELDraft@@6B@", "??_7CQELDraft@@6B@"}};

class CModule {
public:
    CModule() : m_pBase(reinterpret_cast<const char*>(::GetModuleHandleA("QELEngine.dll"))) {}

    bool IsLoaded() const { return m_pBase != nullptr; }
    template <class T>
    const T* At(DWORD nOffset) const
    {
        return reinterpret_cast<const T*>(m_pBase + nOffset);
    }
    const IMAGE_DATA_DIRECTORY& Directory(int nIndex) const
    {
        const auto* pHeaders =
            At<IMAGE_NT_HEADERS>(static_cast<DWORD>(At<IMAGE_DOS_HEADER>(0)->e_lfanew));
        return pHeaders->OptionalHeader.DataDirectory[nIndex];
    }
    const IMAGE_FILE_HEADER& FileHeader() const
    {
        return At<IMAGE_NT_HEADERS>(static_cast<DWORD>(At<IMAGE_DOS_HEADER>(0)->e_lfanew))
            ->FileHeader;
    }

    std::vector<std::string> ExportedNames() const
    {
        const auto* pTable =
            At<IMAGE_EXPORT_DIRECTORY>(Directory(IMAGE_DIRECTORY_ENTRY_EXPORT).VirtualAddress);
        const DWORD* const pNames = At<DWORD>(pTable->AddressOfNames);
        std::vector<std::string> names;
        for (DWORD i = 0; i < pTable->NumberOfNames; ++i) names.emplace_back(At<char>(pNames[i]));
        return names;
    }
    std::set<std::string> ImportedLibraries() const
    {
        std::set<std::string> names;
        for (const auto* p = At<IMAGE_IMPORT_DESCRIPTOR>(
                 Directory(IMAGE_DIRECTORY_ENTRY_IMPORT).VirtualAddress);
             p->Name; ++p) {
            std::string name = At<char>(p->Name);
            for (char& c : name) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
            names.insert(name);
        }
        return names;
    }
    FARPROC Function(const char* pszName) const
    {
        return ::GetProcAddress(::GetModuleHandleA("QELEngine.dll"), pszName);
    }

private:
    const char* m_pBase;
};

std::set<std::string> ExpectedNames()
{
    std::set<std::string> names(std::begin(g_plain), std::end(g_plain));
    for (const DecoratedRow& row : g_decorated)
        names.insert(sizeof(void*) == 4 ? row.pszOn32 : row.pszOn64);
    names.insert(std::begin(g_class), std::end(g_class));
    for (const DecoratedRow& row : g_otherClass)
        names.insert(sizeof(void*) == 4 ? row.pszOn32 : row.pszOn64);
    return names;
}

const char* NameOf(const char* pszOn64)
{
    for (const DecoratedRow& row : g_decorated)
        if (!std::strcmp(row.pszOn64, pszOn64)) return sizeof(void*) == 4 ? row.pszOn32 : pszOn64;
    return pszOn64;
}

template <class T>
T* As(const char* pszName)
{
    return reinterpret_cast<T*>(reinterpret_cast<void*>(CModule().Function(pszName)));
}

} // namespace

TEST(Exports, AreExactlyTheNamesThatHostsAskFor)
{
    const CModule module;
    ASSERT_TRUE(module.IsLoaded());
    const std::vector<std::string> names = module.ExportedNames();
    std::set<std::string> found(names.begin(), names.end());
    found.erase("_ZTS9CQELDraft"); // the name text of the class's type, where the linker lists it
    for (const std::string& name : ExpectedNames())
        EXPECT_EQ(1u, found.count(name)) << "a host that imports this does not start: " << name;
    for (const std::string& name : found)
        EXPECT_EQ(1u, ExpectedNames().count(name))
            << "not documented, and hosts may come to rely on it: " << name;
    EXPECT_TRUE(std::is_sorted(names.begin(), names.end())); // loaders search by halves
}

TEST(Exports, EveryNameLeadsIntoTheModule)
{
    const CModule module;
    ASSERT_TRUE(module.IsLoaded());
    const auto nBegin = reinterpret_cast<uintptr_t>(module.At<char>(0));
    const auto* pHeaders =
        module.At<IMAGE_NT_HEADERS>(static_cast<DWORD>(module.At<IMAGE_DOS_HEADER>(0)->e_lfanew));
    const uintptr_t nEnd = nBegin + pHeaders->OptionalHeader.SizeOfImage;
    std::set<uintptr_t> functions;
    for (const char* pszName : g_plain) {
        const auto n = reinterpret_cast<uintptr_t>(module.Function(pszName));
        EXPECT_TRUE(n > nBegin && n < nEnd) << pszName;
        EXPECT_TRUE(functions.insert(n).second) << pszName << " is another function as well";
    }
    for (const DecoratedRow& row : g_decorated) {
        const auto n = reinterpret_cast<uintptr_t>(module.Function(NameOf(row.pszOn64)));
        EXPECT_TRUE(n > nBegin && n < nEnd) << row.pszOn64;
        EXPECT_TRUE(functions.insert(n).second) << row.pszOn64;
    }
}

TEST(Exports, DecoratedFunctionsAreOnlyThoseSixAndOnlyOn32Bits)
{
    std::set<std::string> decorated;
    for (const std::string& name : CModule().ExportedNames())
        if (name.find('@') != std::string::npos && name[0] != '?') decorated.insert(name);
    std::set<std::string> expected;
    if (sizeof(void*) == 4)
        for (const DecoratedRow& row : g_decorated) expected.insert(row.pszOn32);
    EXPECT_EQ(expected, decorated);
}

// What a host would notice: code that was compiled for one family's class reads the other's table.
TEST(Exports, BothFamiliesShareFunctionsAndDataButNotTheVirtualTable)
{
    const CModule module;
    const auto other = [&](int n) {
        const DecoratedRow& row = g_otherClass[n];
        return module.Function(sizeof(void*) == 4 ? row.pszOn32 : row.pszOn64);
    };
    EXPECT_NE(module.Function("_ZN9CQELDraftC1Ev"), other(0)); // the constructor gives the object
    EXPECT_EQ(module.Function("_ZN9CQELDraftD1Ev"), other(3));
    EXPECT_EQ(module.Function("_ZN9CQELDraftaSERKS_"), other(4));
    EXPECT_EQ(module.Function("_ZN9CQELDraft14m_byColorsBitsE"), other(7));
    EXPECT_EQ(module.Function("_ZN9CQELDraft11m_nDefDraftE"), other(8));
    const auto* const pTable = reinterpret_cast<void* const*>(module.Function("_ZTV9CQELDraft"));
    EXPECT_EQ(reinterpret_cast<void*>(module.Function("_ZN9CQELDraftD1Ev")), pTable[2]);
    EXPECT_EQ(reinterpret_cast<void*>(module.Function("_ZN9CQELDraftD0Ev")), pTable[3]);
    const auto* const pOther = reinterpret_cast<void* const*>(other(9));
    EXPECT_NE(pTable[2], pOther[0]); // destroys and frees, by an argument
    EXPECT_NE(pTable[3], pOther[0]);
}

TEST(Exports, FunctionsFoundByNameWork)
{
    auto* const pfnCreate = As<HQELENGINE QELAPI(void)>("CreateQELEngine");
    auto* const pfnOpenU = As<int QELAPI(HQELENGINE, const wchar_t*)>(NameOf("QELOpenFileU"));
    auto* const pfnType = As<int QELAPI(HQELENGINE)>("QELGetType");
    auto* const pfnDestroy = As<int QELAPI(HQELENGINE)>("DestroyQELEngine");
    ASSERT_TRUE(pfnCreate && pfnOpenU && pfnType && pfnDestroy);
    CTestFolder folder;
    const std::string path = folder.Path("a.qel");
    ASSERT_TRUE(WriteBytes(path, "<qel type=\"2\"/>"));
    const HQELENGINE hEngine = pfnCreate();
    ASSERT_NE(nullptr, hEngine);
    EXPECT_EQ(1, pfnOpenU(hEngine, Wide(path).data()));
    EXPECT_EQ(2, pfnType(hEngine));
    EXPECT_EQ(1, pfnDestroy(hEngine));
    EXPECT_EQ(-1, pfnType(hEngine));
}

TEST(Exports, GradientFunctionsFoundByNameWork)
{
    auto* const pfnCreate = As<HQELGRADIENT QELAPI(const RECT*, int, COLORREF, COLORREF)>(
        NameOf("QELCreateGradientDescriptor"));
    auto* const pfnBrush = As<HBRUSH QELAPI(HQELGRADIENT)>(NameOf("QELGetGradientBrush"));
    auto* const pfnClose = As<int QELAPI(HQELGRADIENT)>(NameOf("QELCloseGradientDescriptor"));
    ASSERT_TRUE(pfnCreate && pfnBrush && pfnClose);
    const RECT rc{0, 0, 4, 4};
    EXPECT_EQ(nullptr, pfnCreate(&rc, 14, 0, 0));
    const HQELGRADIENT hGradient = pfnCreate(&rc, 6, 0, 0xFF);
    EXPECT_EQ(static_cast<DWORD>(OBJ_BRUSH), ::GetObjectType(pfnBrush(hGradient)));
    EXPECT_EQ(1, pfnClose(hGradient));
    EXPECT_EQ(0, pfnClose(hGradient));
}

TEST(Exports, ClassWorksThroughTheImportLibrary)
{
    // Style 5 is horizontal lines: even lines in the background colour.
    static_assert(sizeof(CQELDraft::m_byColorsBits) == 160);
    EXPECT_EQ(0, CQELDraft::m_nDefDraft);
    EXPECT_EQ(0xF0, CQELDraft::m_byColorsBits[9][0]);
    EXPECT_EQ(0x0F, CQELDraft::m_byColorsBits[9][7]);
    CQELDraft draft(DRAFT_HORIZONTAL);
    CQELDraft copy(draft);
    CQELDraft other;
    other = copy;
    HBRUSH hBrush = nullptr;
    ASSERT_NE(0, other.GetDraftBrush(hBrush, nullptr, 0, 0));
    CTestBitmap drawn(8, 8);
    ::SetTextColor(drawn.Dc(), RGB(1, 2, 3));
    ::SetBkColor(drawn.Dc(), RGB(4, 5, 6));
    {
        CTestSelect brush(drawn.Dc(), hBrush, false);
        ::PatBlt(drawn.Dc(), 0, 0, 8, 8, PATCOPY);
    }
    EXPECT_EQ(RGB(4, 5, 6), drawn.At(3, 0));
    EXPECT_EQ(RGB(1, 2, 3), drawn.At(3, 1));
    EXPECT_EQ(32, CountPixels(drawn, RGB(1, 2, 3)));
}

TEST(Imports, AreGdiUserKernelAndTheCRuntimeAlone)
{
    const CModule module;
    ASSERT_TRUE(module.IsLoaded());
    EXPECT_EQ((std::set<std::string>{"gdi32.dll", "kernel32.dll", "msvcrt.dll", "user32.dll"}),
              module.ImportedLibraries());
    EXPECT_EQ(0u, module.Directory(IMAGE_DIRECTORY_ENTRY_DELAY_IMPORT).VirtualAddress);
}

TEST(Module, IsADllOfTheWordSizeOfItsHost)
{
    const CModule module;
    ASSERT_TRUE(module.IsLoaded());
    EXPECT_NE(0, module.FileHeader().Characteristics & IMAGE_FILE_DLL);
    EXPECT_EQ(sizeof(void*) == 4 ? IMAGE_FILE_MACHINE_I386 : IMAGE_FILE_MACHINE_AMD64,
              module.FileHeader().Machine);
}
