#include "fuzz/Host.h"

#include "fuzz/TextModel.h"

#include <algorithm>
#include <climits>
#include <cstring>

namespace {

constexpr std::size_t WORD_SIZE = sizeof(DWORD);
constexpr int SURFACE_WIDTH = 640;
constexpr int SURFACE_HEIGHT = 480;

// The number of words that a drawing spells of a shape's geometry; 0 for lists of points.
int ShapeWords(int nType)
{
    switch (nType) {
    case QEL_TYPE_CHORD:
    case QEL_TYPE_PIE:
    case QEL_TYPE_ARC:
        return 8;
    case QEL_TYPE_ROUNDRECT:
        return 6;
    case QEL_TYPE_CIRCLE:
        return 3;
    case QEL_TYPE_POLYLINE:
    case QEL_TYPE_POLYGON:
        return 0;
    default:
        return 4;
    }
}

bool IsShape(int nType)
{
    return nType >= QEL_TYPE_TEXT && nType <= QEL_TYPE_POLYGON;
}

void ClearFrom(LONG* pWords, int nFrom, int nCount)
{
    for (int i = nFrom; i < nCount; ++i) pWords[i] = 0;
}

QELSHAPEATTR ReopenedShape(int nType, QELSHAPEATTR record)
{
    LONG* pWords = record.nGeometry;
    if (const int nWords = ShapeWords(nType)) {
        ClearFrom(pWords, nWords, QEL_SHAPE_WORDS);
    } else if (pWords[0] >= 2 && pWords[0] <= QEL_MAX_POINTS) {
        ClearFrom(pWords, 1 + 2 * pWords[0], QEL_SHAPE_WORDS);
    } else { // a list that cannot be spelled opens as the default one
        static constexpr LONG defaultList[] = {2, 0, 0, 10, 10};
        ClearFrom(pWords, 0, QEL_SHAPE_WORDS);
        std::memcpy(pWords, defaultList, sizeof defaultList);
    }
    std::string text = ReadBackText(record.szText);
    std::memset(record.szText, 0, sizeof record.szText);
    text.copy(record.szText, sizeof record.szText - 1);
    return record;
}

QELSCALEATTR ReopenedScale(QELSCALEATTR record)
{
    ClearFrom(record.nGeometry, record.nType == 5 ? 7 : record.nType == 4 ? 5 : 4, 7);
    return record;
}

QELMETERATTR ReopenedMeter(QELMETERATTR record)
{
    constexpr LONG DEFAULT_MAX = 100;
    const LONG nMin = record.nMin;
    const LONG nMax = record.nMax;
    if (nMin < 1 || nMin > nMax) record.nMin = 1;
    if (nMax < 1 || nMin > nMax) record.nMax = DEFAULT_MAX;
    record.bUseScale = record.bUseScale != 0;
    if (record.nType < 0 || record.nType > 10) record.nType = 0;
    switch (record.nType) {
    case 4:
    case 7:
    case 8:
    case 10:
        ClearFrom(record.nGeometry, 7, 9);
        break;
    case 5:
    case 6:
    case 9:
        break;
    default:
        ClearFrom(record.nGeometry, 4, 9);
        break;
    }
    return record;
}

std::string ReopenedRecord(const HostElem& elem)
{
    if (IsShape(elem.nType))
        return BytesOf(ReopenedShape(elem.nType, RecordOf<QELSHAPEATTR>(elem.attr)));
    if (elem.nType == QEL_TYPE_SCALE)
        return BytesOf(ReopenedScale(RecordOf<QELSCALEATTR>(elem.attr)));
    if (elem.nType == QEL_TYPE_METER)
        return BytesOf(ReopenedMeter(RecordOf<QELMETERATTR>(elem.attr)));
    return elem.attr;
}

HostElem ReadHostElem(HQELENGINE hEngine, HQELELEM hElem, int nDepth)
{
    HostElem elem;
    elem.hElem = hElem;
    elem.nDepth = nDepth;
    elem.nType = QELGetElemType(hEngine, hElem);
    FUZZ_CHECK(elem.nType >= 0 && elem.nType < QEL_TYPE_NONE);
    const char* pszId = QELGetElemId(hEngine, hElem);
    FUZZ_CHECK(pszId && std::strlen(pszId) < QEL_TEXT_SIZE);
    elem.id = pszId;

    // The record has the promised size, and nothing behind it is touched.
    int nSize = 0;
    FUZZ_CHECK(QELGetElemAttr(hEngine, hElem, nullptr, &nSize));
    FUZZ_CHECK(nSize > 0 && nSize <= QEL_MAX_ATTR_SIZE);
    elem.attr.assign(static_cast<std::size_t>(nSize) + 1, '#');
    FUZZ_CHECK(QELGetElemAttr(hEngine, hElem, elem.attr.data(), nullptr));
    FUZZ_CHECK(elem.attr.back() == '#');
    elem.attr.pop_back();
    return elem;
}

// The draw region fills with the hollow brush where it shows nothing, which is no misuse.
void OnMisuse(const std::string& what)
{
    if (what != "PatBlt with the null brush") FuzzFail("GDI", 0, what.c_str());
}

} // namespace

CHostWorld::CHostWorld()
{
    gdi::SetMisuseHandler(OnMisuse);
    kernel::FormatDisk();
}

CHostWorld::~CHostWorld()
{
    FUZZ_CHECK(kernel::OpenHandles() == 0);
    for (const std::string& name : kernel::FileNames()) // a save leaves nothing beside its target
        FUZZ_CHECK(name.find('~') == std::string::npos);
}

void WriteHostFile(const char* pszPath, const std::string& bytes)
{
    FUZZ_CHECK(kernel::PutFile(pszPath, bytes));
}

std::string ReadHostFile(const char* pszPath)
{
    std::string bytes;
    kernel::GetFile(pszPath, &bytes);
    return bytes;
}

CHostDc::CHostDc()
    : m_hdc(::CreateCompatibleDC(nullptr)),
      m_hBitmap(::CreateBitmap(SURFACE_WIDTH, SURFACE_HEIGHT, 1, 32, nullptr)),
      m_hPen(::CreatePen(PS_SOLID, 1, RGB(1, 2, 3))), m_hBrush(::CreateSolidBrush(RGB(3, 2, 1))),
      m_hOldBitmap(::SelectObject(m_hdc, m_hBitmap)), m_hOldPen(::SelectObject(m_hdc, m_hPen)),
      m_hOldBrush(::SelectObject(m_hdc, m_hBrush))
{
    ::MoveToEx(m_hdc, 5, 7, nullptr);
    ::SetArcDirection(m_hdc, AD_CLOCKWISE);
    m_state = gdi::State(m_hdc, gdi::MAY_CHANGE_COLORS);
}

CHostDc::~CHostDc()
{
    FUZZ_CHECK(::SelectObject(m_hdc, m_hOldPen) == m_hPen);
    FUZZ_CHECK(::SelectObject(m_hdc, m_hOldBrush) == m_hBrush);
    FUZZ_CHECK(::SelectObject(m_hdc, m_hOldBitmap) == m_hBitmap);
    ::DeleteObject(m_hPen);
    ::DeleteObject(m_hBrush);
    ::DeleteObject(m_hBitmap);
    ::DeleteDC(m_hdc);
}

void CHostDc::CheckState() const
{
    FUZZ_CHECK(gdi::State(m_hdc, gdi::MAY_CHANGE_COLORS) == m_state);
}

HostTree ReadHostTree(HQELENGINE hEngine, HQELELEM hTop)
{
    HostTree tree;
    if (!hTop) return tree;
    int nDepth = 0;
    for (HQELELEM hElem = hTop;;) {
        tree.push_back(ReadHostElem(hEngine, hElem, nDepth));
        const HQELELEM hChild = QELGetFirstChild(hEngine, hElem);
        if (hChild) {
            FUZZ_CHECK(QELGetParentElem(hEngine, hChild) == hElem);
            FUZZ_CHECK(!QELGetPrevElem(hEngine, hChild));
            hElem = hChild;
            ++nDepth;
            continue;
        }
        FUZZ_CHECK(!QELGetLastChild(hEngine, hElem));
        HQELELEM hNext = nullptr;
        while (nDepth && !(hNext = QELGetNextElem(hEngine, hElem))) {
            const HQELELEM hParent = QELGetParentElem(hEngine, hElem);
            FUZZ_CHECK(hParent && QELGetLastChild(hEngine, hParent) == hElem);
            hElem = hParent;
            --nDepth;
        }
        if (!nDepth) return tree;
        FUZZ_CHECK(QELGetPrevElem(hEngine, hNext) == hElem);
        FUZZ_CHECK(QELGetParentElem(hEngine, hNext) == QELGetParentElem(hEngine, hElem));
        hElem = hNext;
    }
}

bool IsSameTree(const HostTree& a, const HostTree& b)
{
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i < a.size(); ++i)
        if (a[i].nDepth != b[i].nDepth || a[i].nType != b[i].nType || a[i].id != b[i].id ||
            a[i].attr != b[i].attr)
            return false;
    return true;
}

HostTree Reopened(const HostTree& tree)
{
    HostTree out = tree;
    for (HostElem& elem : out) {
        elem.attr = ReopenedRecord(elem);
        elem.id = ReadBackValue(elem.id).substr(0, QEL_TEXT_SIZE - 1);
    }
    return out;
}

void PatchRecord(std::string* pAttr, CInput& input)
{
    for (uint32_t nPatches = input.Below(12); nPatches; --nPatches) {
        const std::size_t nWord = input.Byte();
        const int32_t nValue = input.Number();
        if ((nWord + 1) * WORD_SIZE <= pAttr->size())
            std::memcpy(pAttr->data() + nWord * WORD_SIZE, &nValue, WORD_SIZE);
    }
}

std::size_t DrawCost(int nType, const std::string& attr)
{
    if (IsShape(nType)) {
        const auto record = RecordOf<QELSHAPEATTR>(attr);
        return nType == QEL_TYPE_RECT && (record.nStyle & 6) ? 1 + (record.nStyle >> 16) * 4 : 1;
    }
    if (nType == QEL_TYPE_DRAWRGN) {
        const auto record = RecordOf<QELDRAWRGNATTR>(attr);
        return 1 + (static_cast<DWORD>(record.nStyle) >> 16) * 4;
    }
    if (nType == QEL_TYPE_SCALE) {
        constexpr LONG MOST_DRAWN = 10000;
        const LONG nMin = RecordOf<QELSCALEATTR>(attr).nMin;
        return 20 + static_cast<std::size_t>(std::clamp<LONG>(nMin, 0, MOST_DRAWN));
    }
    return nType == QEL_TYPE_METER ? 50 : 1;
}

void KeepCheap(int nType, std::string* pAttr)
{
    constexpr DWORD WIDEST = 0x3F;
    constexpr LONG MOST = 100;
    if (IsShape(nType)) {
        auto record = RecordOf<QELSHAPEATTR>(*pAttr);
        record.nStyle &= WIDEST << 16 | 0xFFFF;
        *pAttr = BytesOf(record);
    } else if (nType == QEL_TYPE_DRAWRGN) {
        auto record = RecordOf<QELDRAWRGNATTR>(*pAttr);
        if (record.nStyle > 0) record.nStyle &= static_cast<LONG>(WIDEST << 16 | 0xFFFF);
        *pAttr = BytesOf(record);
    } else if (nType == QEL_TYPE_SCALE) {
        auto record = RecordOf<QELSCALEATTR>(*pAttr);
        if (record.nMin > MOST) record.nMin %= MOST;
        *pAttr = BytesOf(record);
    }
}

bool IsGoodRecord(int nType, const std::string& attr)
{
    if (IsShape(nType)) return RecordOf<QELSHAPEATTR>(attr).nSize == sizeof(QELSHAPEATTR);
    switch (nType) {
    case QEL_TYPE_ROOT: {
        const auto record = RecordOf<QELROOTATTR>(attr);
        return record.nSize == sizeof record && record.nType >= 0 && record.nType <= 2;
    }
    case QEL_TYPE_SCALE: {
        const auto record = RecordOf<QELSCALEATTR>(attr);
        return record.nSize == sizeof record && record.nType >= 0 && record.nType <= 5;
    }
    case QEL_TYPE_DRAWRGN: {
        const auto record = RecordOf<QELDRAWRGNATTR>(attr);
        return record.nSize == sizeof record && record.nStyle >= 0;
    }
    case QEL_TYPE_METER: {
        const auto record = RecordOf<QELMETERATTR>(attr);
        return record.nSize >= sizeof record && record.nMin >= 1 && record.nMin <= record.nMax;
    }
    default:
        return true;
    }
}

std::string TakenRecord(int nType, const std::string& attr)
{
    if (IsShape(nType)) { // nothing behind the text's end comes back
        auto record = RecordOf<QELSHAPEATTR>(attr);
        record.szText[QEL_TEXT_SIZE - 1] = 0;
        const std::size_t nLen = std::strlen(record.szText);
        std::memset(record.szText + nLen, 0, sizeof record.szText - nLen);
        return BytesOf(record);
    }
    switch (nType) {
    case QEL_TYPE_ROOT: {
        auto record = RecordOf<QELROOTATTR>(attr);
        record.nFormat = 0x10000;
        if (record.nRotate > 360) record.nRotate /= 360;
        return BytesOf(record);
    }
    case QEL_TYPE_METER: {
        auto record = RecordOf<QELMETERATTR>(attr);
        record.nSize = sizeof record;
        return BytesOf(record);
    }
    case QEL_TYPE_STATUS: {
        const auto record = RecordOf<QELWORDATTR>(attr);
        return BytesOf(QELWORDATTR{record.nValue < 0 ? 0 : record.nValue});
    }
    case QEL_TYPE_GROUP:
    case QEL_TYPE_FRAME:
    case QEL_TYPE_PATTERN:
        return BytesOf(QELWORDATTR{0});
    default:
        return attr;
    }
}
