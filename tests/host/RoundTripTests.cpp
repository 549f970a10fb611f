// What is opened can be saved and opened again, and is the same drawing: for thousands of drawings
// made by chance, of every element, with attributes in and out of reason. And the few cases in
// which the format itself loses something.
#include "include/QELEngine.h"
#include "tests/support/Files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <random>
#include <string>
#include <vector>

namespace {

class CDice { // the same numbers under every compiler
public:
    explicit CDice(uint32_t nSeed) : m_engine(nSeed) {}
    uint32_t Roll(uint32_t nBelow) { return m_engine() % nBelow; }
    uint32_t Bits() { return m_engine(); }
    bool OneIn(uint32_t n) { return Roll(n) == 0; }
    template <class T, std::size_t N>
    const T& Any(const T (&items)[N])
    {
        return items[Roll(N)];
    }

private:
    std::mt19937 m_engine;
};

constexpr const char* g_tags[QEL_TYPE_NONE] = {
    "qel",    "text",  "rect",     "chord",   "pie",     "rndrect", "arc", "ellipse",
    "circle", "line",  "polyline", "polygon", "path",    "defs",    "use", "g",
    "status", "frame", "scale",    "pattern", "drawrgn", "meter"};
constexpr const char* g_meterTypes[] = {"vert",         "vert3d",     "horz",  "horz3d",
                                        "round",        "Arc",        "pie",   "clock",
                                        "roundUpgrade", "pieUpgrade", "sector"};
constexpr const char* g_scaleTypes[] = {"vrtleft", "vrtright", "horizup",
                                        "horizdn", "round",    "Arc"};

bool HasNoElement(int nType)
{
    return nType >= QEL_TYPE_PATH && nType <= QEL_TYPE_USE;
}

// ---- drawings by chance ----

// Makes the text of a drawing, and counts what must be in it once it is open.
class CDrawingMaker {
public:
    explicit CDrawingMaker(uint32_t nSeed) : m_dice(nSeed) {}

    std::string Make();
    [[nodiscard]] const int* Counts() const { return m_nCounts; } // by type

    // A text as it stands in a file or, without references, in memory. It does not begin with white
    // space that is a reference, and has no "#x" behind a decoded ampersand: the format loses
    // these.
    std::string Text(uint32_t nMostPieces, bool bReferences);

private:
    std::string Element(int nDepth, bool bSkipped);
    std::string Inside(int nType, int nDepth, bool bSkipped);
    std::string Attributes(int nType);
    std::string ShapeAttributes(int nType);
    std::string MeterAttributes();
    std::string ScaleAttributes();
    std::string Attribute(const char* pszName, const std::string& value);
    std::string Crd(uint32_t nNumbers);
    std::string Decimal();
    std::string Hex();
    std::string Color();
    std::string Blanks();
    std::string Interlude();
    bool Maybe() { return m_dice.OneIn(3); }

    CDice m_dice;
    int m_nCounts[QEL_TYPE_NONE]{};
    int m_nLeft = 0; // elements that may still be made
};

std::string CDrawingMaker::Make()
{
    m_nLeft = static_cast<int>(1 + m_dice.Roll(m_dice.OneIn(20) ? 120 : 24));
    std::string text;
    if (!m_dice.OneIn(8))
        text = m_dice.OneIn(8) ? "<?xml encoding='utf-8' standalone=\"yes\"?>"
                               : "<?xml version=\"1.0\" encoding=\"gb2312\" ?>\r\n";
    text += Interlude() + "<qel" + Attributes(QEL_TYPE_ROOT) + ">";
    ++m_nCounts[QEL_TYPE_ROOT];
    // Now and then one long chain of groups, else a tree.
    const int nChain = m_dice.OneIn(40) ? static_cast<int>(m_dice.Roll(500)) : 0;
    for (int n = 0; n < nChain; ++n) text += "<g>";
    while (m_nLeft > 0) text += Interlude() + Element(nChain + 1, false);
    for (int n = 0; n < nChain; ++n) text += "</g>\n";
    m_nCounts[QEL_TYPE_GROUP] += nChain;
    text += Interlude() + "</qel>\r\n";
    if (m_dice.OneIn(10)) text += std::string(1, '\0') + "behind the end";
    return text;
}

std::string CDrawingMaker::Element(int nDepth, bool bSkipped)
{
    constexpr int extra[] = {QEL_TYPE_GROUP, QEL_TYPE_STATUS, QEL_TYPE_METER, QEL_TYPE_SCALE,
                             QEL_TYPE_TEXT};
    --m_nLeft;
    int nType = static_cast<int>(m_dice.Roll(QEL_TYPE_NONE));
    if (m_dice.OneIn(4)) nType = m_dice.Any(extra);
    // A drawing inside of a drawing is skipped like what has no class, and so is an unknown tag.
    const bool bUnknown = m_dice.OneIn(40);
    bSkipped = bSkipped || bUnknown || nType == QEL_TYPE_ROOT || HasNoElement(nType);
    if (!bSkipped) ++m_nCounts[nType];
    const std::string tag = bUnknown ? "rect2" : g_tags[nType];
    const std::string head = (m_dice.OneIn(20) ? "< " : "<") + tag + Attributes(nType) + Blanks();
    const std::string inside = nDepth < 505 ? Inside(nType, nDepth, bSkipped) : "";
    if (inside.empty() && m_dice.OneIn(2)) return head + "/>" + Blanks();
    return head + ">" + inside + "</" + tag + ">" + Blanks();
}

// A text, children, or both in any order; of several texts the last one counts.
std::string CDrawingMaker::Inside(int nType, int nDepth, bool bSkipped)
{
    std::string inside;
    if (nType == QEL_TYPE_TEXT || m_dice.OneIn(6)) inside += Blanks() + Text(12, true);
    const bool bHolds = nType >= QEL_TYPE_GROUP && nType != QEL_TYPE_DRAWRGN;
    if (m_nLeft > 0 && (bHolds ? !m_dice.OneIn(3) : m_dice.OneIn(10)))
        for (uint32_t n = 1 + m_dice.Roll(5); n > 0 && m_nLeft > 0; --n)
            inside += Interlude() + Element(nDepth + 1, bSkipped);
    if (m_dice.OneIn(10)) inside += Interlude() + Text(4, true);
    return inside;
}

std::string CDrawingMaker::Attributes(int nType)
{
    std::string text;
    if (m_dice.OneIn(2)) text += Attribute("id", Text(m_dice.OneIn(20) ? 200 : 3, true));
    if (m_dice.OneIn(20)) text += Attribute("unknown", Text(3, true));
    if (m_dice.OneIn(20)) text += " unquoted=12 empty=\"\"";
    switch (nType) {
    case QEL_TYPE_ROOT:
        if (Maybe()) text += Attribute("type", m_dice.OneIn(4) ? Decimal() : "1");
        if (Maybe()) text += Attribute("width", m_dice.OneIn(4) ? Decimal() : "320");
        if (Maybe()) text += Attribute("height", m_dice.OneIn(4) ? Decimal() : "240");
        if (Maybe()) text += Attribute("lst_rotate", Decimal());
        return text;
    case QEL_TYPE_STATUS:
        return text + (m_dice.OneIn(4) ? "" : Attribute("stx", Decimal()));
    case QEL_TYPE_SCALE:
        return text + ScaleAttributes();
    case QEL_TYPE_METER:
        return text + MeterAttributes();
    case QEL_TYPE_DRAWRGN:
        if (Maybe()) text += Attribute("style", Hex());
        if (Maybe()) text += Attribute("crd", Crd(4));
        if (Maybe()) text += Attribute("flag", Hex());
        return text;
    default:
        return nType >= QEL_TYPE_TEXT && nType <= QEL_TYPE_POLYGON ? text + ShapeAttributes(nType)
                                                                   : text;
    }
}

std::string CDrawingMaker::ShapeAttributes(int nType)
{
    constexpr uint32_t numbers[] = {0, 4, 4, 8, 8, 6, 8, 4, 3, 4, 0, 0};
    std::string text;
    if (Maybe()) text += Attribute("style", Hex());
    if (Maybe()) text += Attribute("dr", m_dice.OneIn(4) ? Decimal() : "21");
    if (Maybe()) text += Attribute("fg", Color());
    if (Maybe()) text += Attribute("bg", Color());
    if (Maybe()) text += Attribute("clr", Color());
    if (Maybe()) text += Attribute("lnstyle", Decimal());
    if (Maybe()) text += Attribute("lnwid", Decimal());
    const bool bPoints = nType == QEL_TYPE_POLYLINE || nType == QEL_TYPE_POLYGON;
    if (!m_dice.OneIn(5))
        text += Attribute("crd", Crd(bPoints ? 3 + m_dice.Roll(36) : numbers[nType]));
    if (Maybe()) text += Attribute("flag", Hex());
    if (m_dice.OneIn(20)) text += Attribute("fg", Color()); // the last one counts
    return text;
}

// A range that is none is lost on saving, and so is a "usc" above 1: both are left out here.
std::string CDrawingMaker::MeterAttributes()
{
    constexpr uint32_t numbers[] = {4, 4, 4, 4, 7, 9, 9, 7, 7, 9, 7};
    std::string text;
    if (!m_dice.OneIn(3)) text += Attribute("mtid", Decimal());
    if (Maybe()) text += Attribute("usc", m_dice.OneIn(2) ? "0" : " 1x");
    if (Maybe()) text += Attribute("upin", m_dice.OneIn(4) ? Decimal() : "1");
    const uint32_t nType = m_dice.Roll(11);
    const bool bKnown = !m_dice.OneIn(12);
    text += Attribute("mtype", bKnown ? g_meterTypes[nType] : "ARC");
    const uint32_t nMin = 1 + m_dice.Bits() % 100;
    if (Maybe()) text += Attribute("imin", std::to_string(nMin));
    if (Maybe()) text += Attribute("imax", std::to_string(100 + m_dice.Bits() % 2000000000));
    // An arc may do without its angles.
    const uint32_t nNumbers = numbers[bKnown ? nType : 0];
    if (!m_dice.OneIn(6))
        text += Attribute("crd", Crd(nNumbers == 9 ? 7 + m_dice.Roll(3) : nNumbers));
    if (Maybe()) text += Attribute("flag", Hex());
    return text;
}

std::string CDrawingMaker::ScaleAttributes()
{
    constexpr uint32_t numbers[] = {4, 4, 4, 4, 5, 7};
    std::string text;
    if (!m_dice.OneIn(3)) text += Attribute("scid", Decimal());
    if (Maybe()) text += Attribute("hidesc", m_dice.OneIn(4) ? Decimal() : "1");
    const uint32_t nType = m_dice.Roll(6);
    if (!m_dice.OneIn(6))
        text += Attribute("sctype", m_dice.OneIn(12) ? "Round" : g_scaleTypes[nType]);
    if (Maybe()) text += Attribute("style", Hex());
    if (Maybe()) text += Attribute("min", Decimal());
    if (Maybe()) text += Attribute("max", Decimal());
    if (Maybe()) text += Attribute("pin", m_dice.OneIn(4) ? Decimal() : "1");
    if (!m_dice.OneIn(6)) text += Attribute("crd", Crd(numbers[nType]));
    return text;
}

// Between whichever quotes do not stand in the value.
std::string CDrawingMaker::Attribute(const char* pszName, const std::string& value)
{
    const bool bDouble = value.find('"') != std::string::npos;
    const bool bSingle = value.find('\'') != std::string::npos;
    if (bDouble && bSingle) return "";
    const char cQuote = bDouble || (!bSingle && m_dice.OneIn(4)) ? '\'' : '"';
    std::string text = " " + Blanks() + pszName;
    if (m_dice.OneIn(10)) text += " ";
    text += "=";
    if (m_dice.OneIn(10)) text += "\t";
    return text + cQuote + value + cQuote;
}

// Sometimes a number too few or too many, or something that is no number.
std::string CDrawingMaker::Crd(uint32_t nNumbers)
{
    constexpr const char* gaps[] = {" ", "  ", "\t", " \t ", "\r\n", "+"};
    if (m_dice.OneIn(15)) nNumbers += m_dice.Roll(3) - 1;
    std::string text = m_dice.OneIn(10) ? "  " : "";
    for (uint32_t n = 0; n < nNumbers; ++n) {
        if (n) text += m_dice.OneIn(12) ? m_dice.Any(gaps) : " ";
        text += m_dice.OneIn(25) ? Decimal() : std::to_string(m_dice.Roll(300));
    }
    return text;
}

std::string CDrawingMaker::Decimal()
{
    constexpr const char* odd[] = {
        "-1", "0",   "2147483647", "-2147483648", "4294967295", "99999999999", "-99999999999",
        "+7", " 12", "12px",       "x",           "0x10",       "1.5",         "-"};
    return m_dice.OneIn(3) ? m_dice.Any(odd) : std::to_string(m_dice.Roll(2000));
}

std::string CDrawingMaker::Hex()
{
    constexpr const char* odd[] = {"0x",   "0xffffffff", "0X1",     "12",   "0x80000000",  "0x-1",
                                   "0xzz", "0x7FFFFFFF", "0x 0x1f", " 0x1", "0xfffffffff1"};
    char szHex[16];
    std::snprintf(szHex, sizeof szHex, "0x%x", m_dice.Bits() >> m_dice.Roll(32));
    return m_dice.OneIn(5) ? m_dice.Any(odd) : szHex;
}

std::string CDrawingMaker::Color()
{
    constexpr const char* words[] = {" glt", "glt", "  glt x", " GLT", "\tglt", " red"};
    return Hex() + (m_dice.OneIn(4) ? m_dice.Any(words) : "");
}

std::string CDrawingMaker::Text(uint32_t nMostPieces, bool bReferences)
{
    constexpr const char* chinese[] = {"\xCB\xAE", "\xB1\xC3", "\xB9\xF8\xC2\xAF",
                                       "\x81\x5C", "\x95\x7C", "\xFE\x40"}; // and beyond GB2312
    constexpr const char* plain[] = {"a",    "pump 1", "=",  "/",    "]]>",  "'",   "\"", ";",
                                     "x41;", "%s",     "\\", "\x80", "\xFF", "-->", "?>", "lt;"};
    constexpr const char* references[] = {"&amp;",   "&lt;",       "&gt;",   "&quot;", "&apos;",
                                          "&#x1;",   "&#x48;",     "&#xf;",  "&#x1F;", "&#38;",
                                          "&#x123;", "&#xABCDEF;", "&nbsp;", "& ",     "&;"};
    constexpr const char* blanks[] = {" ", "\t", "\r\n", "  "};
    std::string text;
    for (uint32_t n = 1 + m_dice.Roll(nMostPieces); n > 0; --n) {
        switch (m_dice.Roll(bReferences ? 5 : 3)) {
        case 0:
            text += m_dice.Any(chinese);
            break;
        case 1:
            text += m_dice.Any(plain);
            break;
        case 2:
            if (!text.empty()) text += m_dice.Any(blanks);
            break;
        case 3:
            text += m_dice.Any(references);
            break;
        default: // white space as a reference, which counts only behind something else
            if (!text.empty()) text += m_dice.OneIn(2) ? "&#xa;" : "&#x49;";
            break;
        }
    }
    return text.empty() ? "t" : text;
}

std::string CDrawingMaker::Blanks()
{
    constexpr const char* blanks[] = {" ", "\t", "\r\n", "\n  ", "\f", "\v "};
    return m_dice.OneIn(8) ? m_dice.Any(blanks) : "";
}

std::string CDrawingMaker::Interlude()
{
    constexpr const char* others[] = {"<!-- a comment -->", "<!-- <rect crd=\"1 2 3 4\"/> -->",
                                      "<?target data?>", "<!DOCTYPE qel>", "<!-->-->"};
    return Blanks() + (m_dice.OneIn(12) ? m_dice.Any(others) : "") + Blanks();
}

// ---- trees ----

struct Element {
    int nDepth;
    int nType;
    std::string id;
    std::string record;
    RECT rc;
    int nRectResult;
};

struct Tree {
    std::vector<Element> elements;
    SIZE size{};
    int nKind = 0;
    std::string name;
    DWORD nSupported = 0;
};

Element ReadElement(HQELENGINE h, HQELELEM hElem, int nDepth)
{
    Element element{nDepth, QELGetElemType(h, hElem), "(null)", "", {}, 0};
    if (const char* pszId = QELGetElemId(h, hElem)) element.id = pszId;
    int nSize = 0;
    if (QELGetElemAttr(h, hElem, nullptr, &nSize) && nSize <= QEL_MAX_ATTR_SIZE) {
        element.record.resize(static_cast<std::size_t>(nSize));
        if (!QELGetElemAttr(h, hElem, element.record.data(), nullptr)) element.record = "refused";
    }
    element.nRectResult = QELGetElemRect(h, hElem, &element.rc);
    return element;
}

// Everything that the exported functions tell; false when the links contradict each other.
bool ReadTree(HQELENGINE h, Tree* pTree)
{
    QELGetRefSize(h, &pTree->size);
    pTree->nKind = QELGetType(h);
    const char* pszName = QELGetName(h);
    pTree->name = pszName ? pszName : "(null)";
    pTree->nSupported = QELParamsSupported(h);
    int nDepth = 0;
    HQELELEM hElem = QELGetRootElem(h);
    if (!hElem || QELGetParentElem(h, hElem)) return false;
    for (;;) {
        pTree->elements.push_back(ReadElement(h, hElem, nDepth));
        if (const HQELELEM hChild = QELGetFirstChild(h, hElem)) {
            if (QELGetParentElem(h, hChild) != hElem || QELGetPrevElem(h, hChild)) return false;
            hElem = hChild;
            ++nDepth;
            continue;
        }
        while (nDepth && !QELGetNextElem(h, hElem)) {
            const HQELELEM hParent = QELGetParentElem(h, hElem);
            if (QELGetLastChild(h, hParent) != hElem) return false;
            hElem = hParent;
            --nDepth;
        }
        if (!nDepth) return true;
        const HQELELEM hNext = QELGetNextElem(h, hElem);
        if (QELGetPrevElem(h, hNext) != hElem) return false;
        if (QELGetParentElem(h, hNext) != QELGetParentElem(h, hElem)) return false;
        hElem = hNext;
    }
}

std::string Word(const std::string& record, std::size_t nAt)
{
    int32_t nValue = 0;
    if (nAt + sizeof nValue <= record.size()) std::memcpy(&nValue, &record[nAt], sizeof nValue);
    return std::to_string(nValue);
}

std::string ElementDifference(const Element& a, const Element& b)
{
    if (a.nDepth != b.nDepth)
        return "depth " + std::to_string(a.nDepth) + " and " + std::to_string(b.nDepth);
    if (a.nType != b.nType)
        return "type " + std::to_string(a.nType) + " and " + std::to_string(b.nType);
    if (a.id != b.id) return "id \"" + a.id + "\" and \"" + b.id + "\"";
    if (a.record != b.record) {
        std::size_t n = 0;
        while (n < a.record.size() && n < b.record.size() && a.record[n] == b.record[n]) ++n;
        n = n / 4 * 4;
        return "record, at byte " + std::to_string(n) + ": " + Word(a.record, n) + " and " +
               Word(b.record, n);
    }
    if (a.nRectResult != b.nRectResult || !::EqualRect(&a.rc, &b.rc)) return "rectangle";
    return "";
}

// "" when both are the same drawing, else the first difference.
std::string TreeDifference(const Tree& a, const Tree& b)
{
    if (a.size.cx != b.size.cx || a.size.cy != b.size.cy) return "reference size";
    if (a.nKind != b.nKind) return "kind";
    if (a.name != b.name) return "name";
    const std::size_t nBoth = std::min(a.elements.size(), b.elements.size());
    for (std::size_t n = 0; n < nBoth; ++n) {
        const std::string difference = ElementDifference(a.elements[n], b.elements[n]);
        if (!difference.empty())
            return "element " + std::to_string(n) + " (" + g_tags[a.elements[n].nType] +
                   "): " + difference;
    }
    if (a.elements.size() != b.elements.size())
        return std::to_string(a.elements.size()) + " and " + std::to_string(b.elements.size()) +
               " elements";
    return a.nSupported == b.nSupported ? "" : "supported parameters";
}

// ---- the round ----

class RoundTrip : public ::testing::Test {
protected:
    RoundTrip() : m_h(CreateQELEngine()) {}
    ~RoundTrip() override { EXPECT_EQ(1, DestroyQELEngine(m_h)); }

    // Opens the text, keeps the tree, saves. "" or what failed.
    std::string OpenText(const std::string& text)
    {
        m_first = {};
        if (!WriteBytes(m_opened, text)) return "the drawing could not be written";
        if (!QELOpenFile(m_h, m_opened.c_str())) return "not opened";
        return ReadTree(m_h, &m_first) ? "" : "the links of the opened tree are broken";
    }
    // Saves what is open, opens that and saves again.
    std::string GoRound(bool bSaveTwice)
    {
        if (!QELSaveFile(m_h, m_saved.c_str())) return "not saved";
        if (bSaveTwice) {
            if (!QELSaveFile(m_h, m_again.c_str())) return "not saved a second time";
            if (ReadBytes(m_saved) != ReadBytes(m_again)) return "a second save differs";
        }
        if (!QELOpenFile(m_h, m_saved.c_str())) return "the saved drawing does not open";
        m_second = {};
        if (!ReadTree(m_h, &m_second)) return "the links of the saved tree are broken";
        const std::string difference = TreeDifference(m_first, m_second);
        if (!difference.empty()) return difference;
        if (!QELSaveFile(m_h, m_again.c_str())) return "the saved drawing is not saved";
        const std::string bytes = ReadBytes(m_saved);
        return !bytes.empty() && bytes == ReadBytes(m_again) ? "" : "saved again, the bytes differ";
    }
    // Leaves the files of a round that failed in the current folder.
    std::string KeepFiles(const char* pszTest, uint32_t nSeed) const
    {
        const std::string stem = "roundtrip-" + std::string(pszTest) + "-" + std::to_string(nSeed);
        ::CopyFileA(m_opened.c_str(), (stem + ".qel").c_str(), FALSE);
        ::CopyFileA(m_saved.c_str(), (stem + "-saved.qel").c_str(), FALSE);
        ::CopyFileA(m_again.c_str(), (stem + "-again.qel").c_str(), FALSE);
        return "seed " + std::to_string(nSeed) + ", see " + stem + ".qel and what stands beside it";
    }
    // The text of the one element of a drawing.
    std::string OnlyText() const
    {
        QELSHAPEATTR attr{};
        QELGetElemAttr(m_h, QELGetFirstChild(m_h, QELGetRootElem(m_h)), &attr, nullptr);
        return attr.szText;
    }
    QELMETERATTR OnlyMeter() const
    {
        QELMETERATTR attr{};
        QELGetElemAttr(m_h, QELGetFirstChild(m_h, QELGetRootElem(m_h)), &attr, nullptr);
        return attr;
    }

    CTestFolder m_folder;
    const std::string m_opened = m_folder.Path("a.qel");
    const std::string m_saved = m_folder.Path("b.qel");
    const std::string m_again = m_folder.Path("c.qel");
    HQELENGINE m_h;
    Tree m_first;
    Tree m_second;
};

constexpr int MOST_FAILURES = 5;

std::string CountDifference(const Tree& tree, const int* pnExpected)
{
    int nCounts[QEL_TYPE_NONE]{};
    for (const Element& element : tree.elements)
        if (element.nType >= 0 && element.nType < QEL_TYPE_NONE) ++nCounts[element.nType];
    for (int n = 0; n < QEL_TYPE_NONE; ++n)
        if (nCounts[n] != pnExpected[n])
            return std::to_string(nCounts[n]) + " elements " + g_tags[n] + ", expected " +
                   std::to_string(pnExpected[n]);
    return "";
}

// ---- edits by chance ----

// Changes words of a record that a file can spell. Text and meter ranges stay within what the
// format keeps.
void ChangeRecord(CDice& dice, int nType, const std::string& text, std::string* pRecord)
{
    if (nType >= QEL_TYPE_TEXT && nType <= QEL_TYPE_POLYGON) {
        auto* p = reinterpret_cast<QELSHAPEATTR*>(pRecord->data());
        p->nStyle = dice.Bits();
        p->nDraft = static_cast<LONG>(dice.Bits());
        p->clrA = dice.Bits();
        p->clrPen = dice.Bits();
        p->nPenWidth = static_cast<LONG>(dice.Roll(5));
        p->nFlags = dice.Bits();
        p->nGeometry[1] = static_cast<LONG>(dice.Bits());
        p->nGeometry[2] = static_cast<LONG>(dice.Bits());
        std::memset(p->szText, 0, sizeof p->szText);
        std::strncpy(p->szText, text.c_str(), sizeof p->szText - 1);
    } else if (nType == QEL_TYPE_ROOT) {
        auto* p = reinterpret_cast<QELROOTATTR*>(pRecord->data());
        p->nType = static_cast<LONG>(dice.Roll(3));
        p->nWidth = static_cast<LONG>(dice.Bits());
        p->nRotate = dice.Roll(360);
    } else if (nType == QEL_TYPE_STATUS) {
        reinterpret_cast<QELWORDATTR*>(pRecord->data())->nValue = static_cast<LONG>(dice.Bits());
    } else if (nType == QEL_TYPE_SCALE) {
        auto* p = reinterpret_cast<QELSCALEATTR*>(pRecord->data());
        p->nId = dice.Bits();
        p->nMin = static_cast<LONG>(dice.Bits());
        p->nGeometry[0] = static_cast<LONG>(dice.Bits());
    } else if (nType == QEL_TYPE_DRAWRGN) {
        auto* p = reinterpret_cast<QELDRAWRGNATTR*>(pRecord->data());
        p->nStyle = static_cast<LONG>(dice.Bits() >> 1);
        p->rc.top = static_cast<LONG>(dice.Bits());
    } else if (nType == QEL_TYPE_METER) {
        auto* p = reinterpret_cast<QELMETERATTR*>(pRecord->data());
        p->nId = dice.Bits();
        p->bUseScale = static_cast<LONG>(dice.Roll(2));
        p->nMin = 1 + static_cast<LONG>(dice.Roll(50));
        p->nMax = p->nMin + static_cast<LONG>(dice.Roll(50));
        p->nGeometry[3] = static_cast<LONG>(dice.Bits());
    }
}

void EditOnce(HQELENGINE h, CDice& dice, const std::string& text)
{
    std::vector<HQELELEM> elements;
    for (HQELELEM hElem = QELGetRootElem(h); hElem;) {
        elements.push_back(hElem);
        HQELELEM hNext = QELGetFirstChild(h, hElem);
        while (hElem && !hNext) {
            hNext = QELGetNextElem(h, hElem);
            if (!hNext) hElem = QELGetParentElem(h, hElem);
        }
        hElem = hNext;
    }
    const HQELELEM hElem = elements[dice.Roll(static_cast<uint32_t>(elements.size()))];
    const HQELELEM hOther = elements[dice.Roll(static_cast<uint32_t>(elements.size()))];
    switch (dice.Roll(7)) {
    case 0:
        QELCopyElem(h, hElem);
        break;
    case 1:
        QELMoveElem(h, hElem, hOther, nullptr);
        break;
    case 2:
        if (hElem != QELGetRootElem(h) && dice.OneIn(3)) QELDeleteElem(h, hElem);
        break;
    case 3:
        QELSetElemId(h, hElem, text.c_str());
        break;
    case 4:
        QELCreateElem(h, static_cast<int>(1 + dice.Roll(QEL_TYPE_NONE - 1)), hElem, nullptr);
        break;
    case 5: {
        const RECT rc{static_cast<LONG>(dice.Roll(90)), static_cast<LONG>(dice.Roll(90)),
                      static_cast<LONG>(dice.Roll(190)), static_cast<LONG>(dice.Roll(190))};
        QELSetElemRect(h, hElem, &rc);
        break;
    }
    default: {
        Element element = ReadElement(h, hElem, 0);
        ChangeRecord(dice, element.nType, text, &element.record);
        QELSetElemAttr(h, hElem, element.record.data(), static_cast<int>(element.record.size()));
        break;
    }
    }
}

} // namespace

TEST_F(RoundTrip, TwoThousandDrawingsMadeByChanceStayThemselves)
{
    constexpr uint32_t DRAWINGS = 2000;
    int nFailed = 0;
    int nCounts[QEL_TYPE_NONE]{};
    int nDeepest = 0;
    for (uint32_t nSeed = 1; nSeed <= DRAWINGS && nFailed < MOST_FAILURES; ++nSeed) {
        CDrawingMaker maker(nSeed);
        std::string failure = OpenText(maker.Make());
        if (failure.empty()) failure = CountDifference(m_first, maker.Counts());
        if (failure.empty()) failure = GoRound(nSeed % 8 == 0);
        if (!failure.empty()) {
            ++nFailed;
            ADD_FAILURE() << KeepFiles("opened", nSeed) << ": " << failure;
        }
        for (const Element& element : m_first.elements) {
            if (element.nType < QEL_TYPE_NONE) ++nCounts[element.nType];
            nDeepest = std::max(nDeepest, element.nDepth);
        }
    }
    if (nFailed) return;
    // The drawings were worth it: every element often, and nesting near to the limit.
    for (int n = 1; n < QEL_TYPE_NONE; ++n)
        if (!HasNoElement(n)) {
            EXPECT_LT(700, nCounts[n]) << g_tags[n];
        }
    EXPECT_LT(400, nDeepest);
}

TEST_F(RoundTrip, EditedDrawingsAreSavedAsTheyStand)
{
    constexpr uint32_t DRAWINGS = 300;
    int nFailed = 0;
    for (uint32_t nSeed = 1; nSeed <= DRAWINGS && nFailed < MOST_FAILURES; ++nSeed) {
        CDrawingMaker maker(100000 + nSeed);
        CDice dice(nSeed);
        std::string failure = OpenText(maker.Make());
        const Tree opened = m_first;
        for (int n = 0; n < 20 && failure.empty(); ++n)
            EditOnce(m_h, dice, "t" + maker.Text(n == 7 ? 200 : 6, false));
        m_first = {};
        if (failure.empty() && !ReadTree(m_h, &m_first)) failure = "the edited links are broken";
        if (failure.empty() && TreeDifference(opened, m_first).empty()) failure = "not edited";
        if (failure.empty()) failure = GoRound(false);
        if (failure.empty()) continue;
        ++nFailed;
        ADD_FAILURE() << KeepFiles("edited", nSeed) << ": " << failure;
    }
}

TEST_F(RoundTrip, TextsOfEveryByteStayThemselves)
{
    for (int nByte = 1; nByte < 256; ++nByte) {
        SCOPED_TRACE(nByte);
        ASSERT_EQ(1, QELNewFile(m_h));
        const HQELELEM hText = QELCreateElem(m_h, QEL_TYPE_TEXT, nullptr, nullptr);
        QELSHAPEATTR attr{};
        ASSERT_EQ(1, QELGetElemAttr(m_h, hText, &attr, nullptr));
        const std::string text = std::string("a") + static_cast<char>(nByte) + "b" +
                                 static_cast<char>(nByte) + static_cast<char>(nByte);
        std::strcpy(attr.szText, text.c_str());
        ASSERT_EQ(1, QELSetElemAttr(m_h, hText, &attr, sizeof attr));
        ASSERT_EQ(1, QELSetElemId(m_h, hText, text.c_str()));
        m_first = {};
        ASSERT_TRUE(ReadTree(m_h, &m_first));
        EXPECT_EQ("", GoRound(false));
        EXPECT_EQ(text, OnlyText());
    }
}

TEST_F(RoundTrip, TheDeepestDrawingStaysItself)
{
    std::string text;
    for (int n = 0; n < 512; ++n) text += "<g id=\"" + std::to_string(n) + "\">";
    for (int n = 0; n < 512; ++n) text += "</g>";
    ASSERT_EQ("", OpenText("<qel>" + text + "</qel>"));
    EXPECT_EQ(513u, m_first.elements.size());
    EXPECT_EQ("", GoRound(true));
}

TEST_F(RoundTrip, LostByTheFormatAreWhiteSpaceThatAReferencePutsInFrontOfAText)
{
    ASSERT_EQ("", OpenText("<qel><text>&#xa;&#x9;abc </text></qel>"));
    EXPECT_EQ("\n\tabc ", OnlyText());
    ASSERT_EQ(1, QELSaveFile(m_h, m_saved.c_str()));
    ASSERT_EQ(1, QELOpenFile(m_h, m_saved.c_str()));
    EXPECT_EQ("abc ", OnlyText()); // white space is skipped there, whoever wrote it
    m_first = {};
    ASSERT_TRUE(ReadTree(m_h, &m_first));
    EXPECT_EQ("", GoRound(false)); // and that is all
}

TEST_F(RoundTrip, LostByTheFormatIsAnEscapedAmpersandThatMakesAReferenceOfWhatFollows)
{
    ASSERT_EQ("", OpenText("<qel><text>a&amp;#x41;b</text></qel>"));
    EXPECT_EQ("a&#x41;b", OnlyText());
    ASSERT_EQ(1, QELSaveFile(m_h, m_saved.c_str()));
    ASSERT_EQ(1, QELOpenFile(m_h, m_saved.c_str()));
    EXPECT_EQ("a\1b", OnlyText()); // a reference in a text is kept as it stands
    m_first = {};
    ASSERT_TRUE(ReadTree(m_h, &m_first));
    EXPECT_EQ("", GoRound(false));
}

TEST_F(RoundTrip, LostByTheFormatIsAMetersRangeThatIsNone)
{
    struct Row {
        const char* pszRange;
        int nMin; // as read
        int nMax;
        int nMinAfter; // as read from what was saved
        int nMaxAfter;
    };
    const Row rows[] = {{"imin=\"0\"", 0, 100, 1, 100},
                        {"imin=\"-5\" imax=\"50\"", -5, 50, 1, 50},
                        {"imin=\"70\" imax=\"60\"", 70, 60, 1, 100},
                        {"imax=\"-1\"", 1, -1, 1, 100},
                        {"imin=\"60\" imax=\"60\"", 60, 60, 60, 60}}; // one that is kept
    for (const Row& row : rows) {
        SCOPED_TRACE(row.pszRange);
        ASSERT_EQ("", OpenText(std::string("<qel><meter ") + row.pszRange + "/></qel>"));
        EXPECT_EQ(row.nMin, OnlyMeter().nMin);
        EXPECT_EQ(row.nMax, OnlyMeter().nMax);
        ASSERT_EQ(1, QELSaveFile(m_h, m_saved.c_str()));
        ASSERT_EQ(1, QELOpenFile(m_h, m_saved.c_str()));
        EXPECT_EQ(row.nMinAfter, OnlyMeter().nMin);
        EXPECT_EQ(row.nMaxAfter, OnlyMeter().nMax);
        m_first = {};
        ASSERT_TRUE(ReadTree(m_h, &m_first));
        EXPECT_EQ("", GoRound(false));
    }
}

TEST_F(RoundTrip, LostByTheFormatIsWhichNumberOtherThanZeroSwitchesAMetersScaleOn)
{
    ASSERT_EQ("", OpenText("<qel><meter usc=\"5\"/></qel>"));
    EXPECT_EQ(5, OnlyMeter().bUseScale);
    ASSERT_EQ(1, QELSaveFile(m_h, m_saved.c_str()));
    ASSERT_EQ(1, QELOpenFile(m_h, m_saved.c_str()));
    EXPECT_EQ(1, OnlyMeter().bUseScale);
}
