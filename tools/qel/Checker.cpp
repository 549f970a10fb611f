// The checker; see the header.
#include "tools/qel/Checker.h"

#include "document/QELDocQEL.h"
#include "document/QELDocShape.h"
#include "document/TextNumbers.h"
#include "dynamic/QELDocDrawRgn.h"
#include "engine/ElementTypes.h"
#include "engine/Errors.h"
#include "render/Mapping.h"
#include "render/QELView.h"
#include "tools/qel/Clause.h"
#include "tools/qel/CostRules.h"
#include "tools/qel/Encoding.h"
#include "tools/qel/Hint.h"
#include "tools/qel/LiveRules.h"
#include "tools/qel/SetRules.h"

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <new>
#include <unordered_map>

namespace qel {

namespace {

// The engine's own sentence for what the parser met.
std::string ErrorText(const XmlContext& xml)
{
    const bool bMemory = xml.nLastError == XML_ERR_MEMORY && !xml.bTooDeep;
    return Clause(ErrorSentence(bMemory ? uint32_t{QEL_ERROR_MEMORY}
                                        : QEL_ERROR_XML + static_cast<uint32_t>(xml.nLastError)));
}

const char* NoticeText(XmlNotice nNotice)
{
    switch (nNotice) {
    case XML_NOTICE_ATTR_UNQUOTED:
        return "the value has no quotes: the attribute is dropped";
    case XML_NOTICE_ATTR_EMPTY:
        return "the value is empty: the attribute is dropped";
    case XML_NOTICE_ATTR_REPEATED:
        return "the attribute stands here a second time: this value counts";
    case XML_NOTICE_TEXT_REPLACED:
        return "the element has a text already: this one replaces it";
    case XML_NOTICE_SECOND_ROOT:
        return "an element after the root element becomes the root's last child";
    case XML_NOTICE_TRAILING_TEXT:
        return "reading stops here: what stands outside of the root element is not read";
    case XML_NOTICE_UNCLOSED:
        return "this is not closed: all after it is not read";
    }
    return "";
}

// A part of the drawing for a message, which is to stay one short line. No character is cut in the
// middle.
std::string Shown(const std::string& text)
{
    constexpr std::size_t SHOWN = 40;
    std::string shown;
    for (std::size_t n = 0; n < text.size();) {
        const std::size_t nLength = std::max<std::size_t>(CharacterAt(text, n), 1);
        if (shown.size() >= SHOWN) return shown + "...";
        const bool bControl = static_cast<unsigned char>(text[n]) < ' ';
        shown += bControl ? std::string(1, ' ') : text.substr(n, nLength);
        n += nLength;
    }
    return shown;
}

std::string Quoted(const std::string& text)
{
    return "'" + Shown(text) + "'";
}

// The attribute's name that begins at an offset.
std::string NameAt(const std::string& bytes, std::size_t nOffset)
{
    return bytes.substr(nOffset, bytes.find_first_of("= \t\r\n\v\f", nOffset) - nOffset);
}

// The engine takes the nearest number that 32 bits can hold.
bool FitsIn32Bits(const char* pszNumber, bool bUnsigned = false)
{
    const bool bHex = pszNumber[0] == '0' && pszNumber[1] == 'x';
    const long long nValue = std::strtoll(pszNumber, nullptr, bHex ? 16 : 10);
    return bHex || bUnsigned ? nValue >= 0 && nValue <= UINT32_MAX
                             : nValue >= INT32_MIN && nValue <= INT32_MAX;
}

bool IsLive(const CQELDocElm& elm)
{
    return elm.Type() == QEL_TYPE_SCALE || elm.Type() == QEL_TYPE_METER;
}

const CrdForm* CrdFormOf(const CQELDocElm& elm)
{
    return IsLive(elm) ? &LiveCrdForm(elm) : g_elementTypes.Row(elm.Type())->pForm;
}

// Whether the keep modes of its flags work on an element: the others are stretched with the
// drawing.
bool IsAnchored(int32_t nType)
{
    return g_elementTypes.Row(nType)->Is(TRAIT_ANCHORED);
}

bool TakesValues(int32_t nType)
{
    return nType == QEL_TYPE_METER || nType == QEL_TYPE_SCALE || nType == QEL_TYPE_STATUS ||
           nType == QEL_TYPE_TEXT;
}

// The numbers of a text of coordinates, up to what is no number.
struct Numbers {
    std::vector<int32_t> values;
    bool bClean = true; // there is nothing else
    bool bFit = true;   // in 32 bits
};

Numbers ReadNumbers(const char* pszText)
{
    Numbers numbers;
    int32_t nValue = 0;
    for (const char* pszNumber = pszText; ScanDecimal(&pszText, &nValue); pszNumber = pszText) {
        numbers.values.push_back(nValue);
        numbers.bFit = numbers.bFit && FitsIn32Bits(pszNumber);
    }
    SkipTextSpace(&pszText);
    numbers.bClean = *pszText == 0;
    return numbers;
}

// Whether nothing at all is drawn where the rectangle has no width or no height; the other figures
// are lines then.
bool NeedsArea(int32_t nType)
{
    return IsAnchored(nType) || g_elementTypes.Row(nType)->Is(TRAIT_SHIFTS);
}

// A message about the value of an attribute. Of a type that is none it tells what a save makes of
// it; of others that is plain.
std::string WithLoss(int32_t nAttr, const std::string& message)
{
    const bool bType = nAttr == ATTR_TYPE || nAttr == ATTR_MTYPE || nAttr == ATTR_SCTYPE;
    if (!bType) return message;
    return message + (message.ends_with('?') ? " A" : "; a") + " save does not keep it";
}

const XmlAttr* AttrOf(const XmlNode& node, int32_t nId)
{
    for (const XmlAttr* p = node.pAttrs ? node.pAttrs->pHead : nullptr; p; p = p->pNext)
        if (LookupKeyword(g_attrNames, p->pszName) == nId) return p;
    return nullptr;
}

class CChecker {
public:
    std::vector<Finding> Check(const std::string& bytes);

private:
    void Error(std::size_t nOffset, std::string text) { Add(nOffset, true, std::move(text)); }
    void Warn(std::size_t nOffset, std::string text) { Add(nOffset, false, std::move(text)); }
    void Add(std::size_t nOffset, bool bError, std::string text)
    {
        m_findings.push_back({nOffset, bError, std::move(text)});
    }

    void Notice(XmlNotice nNotice, std::size_t nOffset);
    void CheckTree();
    bool CheckNode(XmlNode* pNode); // false: it is skipped with all that is in it
    void CheckAttrs(const XmlNode& node, const ElementType& row, const CQELDocElm& elm);
    void CheckAttr(const XmlNode& node, const XmlAttr& attr, const ElementType& row,
                   const CQELDocElm& elm);
    void CheckSet(const XmlAttr& attr, const std::vector<SetFinding>& findings);
    void CheckValue(const XmlAttr& attr, const AttrInfo& info);
    void CheckCrd(const XmlAttr& attr, const ElementType& row, const CQELDocElm& elm);
    void CheckFixedCrd(const XmlAttr& attr, const CrdForm& form, const Numbers& numbers,
                       std::size_t nNeeded);
    void CheckPoints(const XmlAttr& attr, const ElementType& row, const CrdForm& form,
                     const Numbers& numbers);
    void CheckFlags(const XmlAttr& attr, const ElementType& row);
    void CheckId(const XmlAttr& attr, const ElementType& row);
    void CheckText(const XmlNode& node, const ElementType& row);
    void CheckLoaded(const XmlNode& node, const CQELDocElm& elm);
    void CheckLive(const XmlNode& node, const CQELDocElm& elm);
    void CheckPlace(const XmlNode& node, const CQELDocElm& elm);
    void CheckCost(const XmlNode& node, const CQELDocElm& elm);

    XmlContext* m_pXml = nullptr;
    DocContext m_context{nullptr, &g_elementTypes}; // of the elements that are made to try them
    const XmlNode* m_pUnfinished = nullptr; // the reading failed in it: more may have followed
    const std::string* m_pBytes = nullptr;
    SIZE m_refSize{DEFAULT_REF_SIZE, DEFAULT_REF_SIZE};
    std::vector<Finding> m_findings;
    std::unordered_map<std::string, bool> m_ids; // whether all that bear it take live values
    CIdRules m_liveIds;
};

std::vector<Finding> CChecker::Check(const std::string& bytes)
{
    std::string text = bytes; // the parser writes into it
    m_pBytes = &bytes;
    const std::size_t nZero = bytes.find('\0');
    if (nZero != std::string::npos && bytes.find_first_not_of('\0', nZero) != std::string::npos)
        Warn(nZero, "there is a zero byte here: all after it is not read");
    const std::unique_ptr<XmlContext, int (*)(XmlContext*)> xml(XmlCreate(), XmlDestroy);
    m_pXml = xml.get();
    m_context.pXml = m_pXml;
    if (!m_pXml) throw std::bad_alloc();
    const XmlObserver observer{
        [](void* pUser, XmlNotice nNotice, std::size_t nOffset, const char*) {
            static_cast<CChecker*>(pUser)->Notice(nNotice, nOffset);
        },
        this};
    m_pXml->pObserver = &observer;
    m_pXml->bTakesMark = true;
    if (XmlParseText(m_pXml, text.data())) {
        const char* pAt = m_pXml->pszReadPos;
        Error(pAt ? static_cast<std::size_t>(pAt - text.data()) : 0, ErrorText(*m_pXml));
        m_pUnfinished = m_pXml->pCursor;
    }
    m_pXml->pObserver = nullptr;
    CheckTree(); // what could be read of it
    m_liveIds.Tell(&m_findings);
    for (Finding& finding : EncodingFindings(bytes)) m_findings.push_back(std::move(finding));
    std::stable_sort(m_findings.begin(), m_findings.end(),
                     [](const Finding& a, const Finding& b) { return a.nOffset < b.nOffset; });
    return m_findings;
}

void CChecker::Notice(XmlNotice nNotice, std::size_t nOffset)
{
    const bool bAttr = nNotice == XML_NOTICE_ATTR_UNQUOTED || nNotice == XML_NOTICE_ATTR_EMPTY ||
                       nNotice == XML_NOTICE_ATTR_REPEATED;
    const std::string name = bAttr ? Shown(NameAt(*m_pBytes, nOffset)) + ": " : "";
    Warn(nOffset, name + NoticeText(nNotice));
}

void CChecker::CheckTree()
{
    XmlNode* pRoot = m_pXml->pRoot;
    if (!pRoot->pszName) {
        const bool bTold = std::any_of(m_findings.begin(), m_findings.end(),
                                       [](const Finding& finding) { return finding.bError; });
        if (!bTold) Error(0, "there is no element: the drawing does not open");
        return;
    }
    if (LookupKeyword(g_elementTypes.Rows(), pRoot->pszName) != QEL_TYPE_ROOT) {
        Error(pRoot->nOffset, "the root element is <" + Shown(pRoot->pszName) +
                                  ">, not <qel>: the drawing does not open");
        return;
    }
    for (XmlNode* pNode = pRoot; pNode;) {
        const bool bEnter = CheckNode(pNode);
        if (bEnter && pNode->pFirstChild) {
            pNode = pNode->pFirstChild;
            continue;
        }
        while (pNode && !pNode->pNext) pNode = pNode->pParent;
        if (pNode) pNode = pNode->pNext;
    }
}

bool CChecker::CheckNode(XmlNode* pNode)
{
    const std::string tag = "<" + Shown(pNode->pszName) + ">";
    const ElementType* pRow =
        FindRow(g_elementTypes.Rows(), LookupKeyword(g_elementTypes.Rows(), pNode->pszName));
    if (!pRow) {
        Error(pNode->nOffset, "unknown element " + tag + ": it is skipped with all that is in it");
        return false;
    }
    if (!pRow->pfnMakeDoc) {
        Warn(pNode->nOffset, tag + " is skipped with all that is in it");
        return false;
    }
    if (pRow->nId == QEL_TYPE_ROOT && pNode->pParent) {
        Error(pNode->nOffset, "<qel> inside of the drawing is skipped with all that is in it");
        return false;
    }
    const std::unique_ptr<CQELDocElm> pElm(g_elementTypes.MakeDoc(pRow->nId, &m_context));
    if (!pElm) return false;
    m_pXml->pCursor = pNode;
    pElm->Load(); // the form of some attributes goes by others
    CheckAttrs(*pNode, *pRow, *pElm);
    CheckText(*pNode, *pRow);
    CheckLoaded(*pNode, *pElm);
    return true;
}

void CChecker::CheckAttrs(const XmlNode& node, const ElementType& row, const CQELDocElm& elm)
{
    for (const XmlAttr* p = node.pAttrs ? node.pAttrs->pHead : nullptr; p; p = p->pNext)
        CheckAttr(node, *p, row, elm);
    const CrdForm* pForm = CrdFormOf(elm);
    if (pForm && !AttrOf(node, ATTR_CRD) && &node != m_pUnfinished)
        Warn(node.nOffset, std::string("no crd: the element has ") + pForm->pszDefault);
}

void CChecker::CheckAttr(const XmlNode& node, const XmlAttr& attr, const ElementType& row,
                         const CQELDocElm& elm)
{
    const int32_t nId = LookupKeyword(g_attrNames, attr.pszName);
    if (nId == KEYWORD_NONE) {
        Error(attr.nNameOffset, "unknown attribute " + Quoted(attr.pszName));
        return;
    }
    if (nId == ATTR_ID) {
        CheckId(attr, row);
        return;
    }
    struct Wanted {
        int32_t nId;
        const AttrInfo* pInfo;
    } wanted{nId, nullptr};
    if (row.pfnVisitAttrs) {
        row.pfnVisitAttrs(
            [](const AttrInfo& info, void* pUser) {
                auto* pWanted = static_cast<Wanted*>(pUser);
                if (info.nId == pWanted->nId) pWanted->pInfo = &info;
            },
            &wanted);
    }
    if (!wanted.pInfo) {
        Warn(attr.nNameOffset, std::string("attribute '") + attr.pszName + "' has no meaning on <" +
                                   row.pszName + ">");
        return;
    }
    if (nId == ATTR_CRD)
        CheckCrd(attr, row, elm);
    else if (nId == ATTR_SET)
        CheckSet(attr, SetFindings(attr.pszValue, elm, HasFigure(node), Quoted));
    else if (nId == ATTR_VALUE)
        CheckSet(attr, ValueFindings(attr.pszValue, elm, Quoted));
    else
        CheckValue(attr, *wanted.pInfo);
    if (nId == ATTR_FLAG) CheckFlags(attr, row);
}

void CChecker::CheckValue(const XmlAttr& attr, const AttrInfo& info)
{
    int32_t nRead = 0;
    const bool bTaken = info.pForm->pfnParse(attr.pszValue, &nRead) != 0;
    char szRead[ATTR_TEXT_SIZE] = "";
    if (bTaken) info.pForm->pfnFormat(nRead, szRead, sizeof szRead);
    const std::string outcome =
        bTaken ? std::string("; it is read as ") + szRead : ": it is ignored";
    if (!info.pForm->pfnIsClean(attr.pszValue)) {
        Error(attr.nValueOffset,
              WithLoss(info.nId, std::string(attr.pszName) + " wants " + info.pForm->pszName +
                                     ", not " + Quoted(attr.pszValue) + outcome +
                                     MeantWord(attr.pszValue, WordsOfForm(*info.pForm))));
        return;
    }
    const bool bUnsigned = info.pForm == &g_formCount;
    if (!FitsIn32Bits(attr.pszValue, bUnsigned)) {
        Error(attr.nValueOffset, std::string(attr.pszName) + ": the number " +
                                     Quoted(attr.pszValue) + " does not fit 32 bits" + outcome);
        return;
    }
    if (bUnsigned) return;
    // What the file says, before a form has mended it.
    const char* pszText = attr.pszValue;
    int32_t nValue = 0;
    const bool bDecimal = ScanDecimal(&pszText, &nValue) && *pszText != 'x';
    if (!bDecimal) nValue = nRead;
    if (nValue < info.nMin || nValue > info.nMax)
        Error(attr.nValueOffset,
              WithLoss(
                  info.nId,
                  std::string(attr.pszName) + " is out of range, " + std::to_string(info.nMin) +
                      (info.nMax == INT32_MAX ? " or more" : " to " + std::to_string(info.nMax)) +
                      ": " + Quoted(attr.pszValue)));
}

// A word has its own place, but where the file spells the text in another way than it is read.
void CChecker::CheckSet(const XmlAttr& attr, const std::vector<SetFinding>& findings)
{
    const std::string_view text = attr.pszValue;
    const bool bAsItStands = m_pBytes->compare(attr.nValueOffset, text.size(), text) == 0;
    for (const SetFinding& finding : findings) {
        const auto nInText = static_cast<std::size_t>(finding.pszAt - attr.pszValue);
        Add(attr.nValueOffset + (bAsItStands ? nInText : 0), finding.bError, finding.text);
    }
}

void CChecker::CheckCrd(const XmlAttr& attr, const ElementType& row, const CQELDocElm& elm)
{
    const CrdForm& form = *CrdFormOf(elm);
    const Numbers numbers = ReadNumbers(attr.pszValue);
    const std::string wanted = std::string("crd wants ") + form.pszMeaning;
    if (!numbers.bClean)
        Error(attr.nValueOffset,
              wanted + "; there is something that is no number in " + Quoted(attr.pszValue));
    if (!numbers.bFit) Error(attr.nValueOffset, "crd: a number does not fit 32 bits");
    if (*form.pszLayout)
        CheckFixedCrd(attr, form, numbers,
                      IsLive(elm) ? NeededNumbers(elm, form) : std::strlen(form.pszLayout));
    else
        CheckPoints(attr, row, form, numbers);
}

// Of the numbers of the layout those after nNeeded may be missing all together.
void CChecker::CheckFixedCrd(const XmlAttr& attr, const CrdForm& form, const Numbers& numbers,
                             std::size_t nNeeded)
{
    const std::size_t nCount = numbers.values.size();
    const std::size_t nWanted = std::strlen(form.pszLayout);
    for (std::size_t n = 0; n < nWanted && n < nCount; ++n)
        if (form.pszLayout[n] == 'r' && numbers.values[n] < 0)
            Error(attr.nValueOffset,
                  "crd: the radius " + std::to_string(numbers.values[n]) + " is negative");
    if (nCount == nWanted || nCount == nNeeded) return;
    std::string outcome = "the end angle is 360";
    if (nCount > nWanted) outcome = "the rest is not read";
    if (nCount < nNeeded) outcome = std::string("the element keeps ") + form.pszDefault;
    const std::string counts =
        (nNeeded == nWanted ? "" : std::to_string(nNeeded) + " or ") + std::to_string(nWanted);
    Error(attr.nValueOffset, std::string("crd wants ") + form.pszMeaning + ", " + counts +
                                 " numbers, not " + std::to_string(nCount) + ": " + outcome);
}

// Point lists are read in a way of their own, so what the engine makes of the text is compared with
// what stands there.
void CChecker::CheckPoints(const XmlAttr& attr, const ElementType& row, const CrdForm& form,
                           const Numbers& numbers)
{
    const std::string wanted = std::string("crd wants ") + form.pszMeaning;
    const std::size_t nPoints = numbers.values.size() / 2;
    if (nPoints < 2) {
        Error(attr.nValueOffset,
              wanted + "; the element keeps " + form.pszDefault + ", and a save writes that");
        return;
    }
    if (numbers.values.size() % 2)
        Error(attr.nValueOffset, wanted + "; the last number stands alone");
    if (nPoints > QEL_MAX_POINTS)
        Error(attr.nValueOffset,
              wanted + "; the points after the 16th are not read, and a save loses them");

    const std::unique_ptr<CQELDocElm> pElm(g_elementTypes.MakeDoc(row.nId, &m_context));
    if (!pElm) throw std::bad_alloc();
    auto& shape = static_cast<CQELDocShape&>(*pElm);
    QELSHAPEATTR block{};
    const bool bRead = shape.ParseCrd(attr.pszValue) && shape.GetAttr(&block);
    const std::size_t nExpected = nPoints < QEL_MAX_POINTS ? nPoints : QEL_MAX_POINTS;
    const bool bSame = bRead && static_cast<std::size_t>(block.nGeometry[0]) == nExpected &&
                       std::equal(numbers.values.begin(), numbers.values.begin() + 2 * nExpected,
                                  block.nGeometry + 1);
    if (!bSame)
        Error(attr.nValueOffset, "crd: the points are not read as they stand there; put one blank "
                                 "between the numbers and nothing else");
}

// On a meter any flag has an effect: a dial without flags keeps its distances.
void CChecker::CheckFlags(const XmlAttr& attr, const ElementType& row)
{
    int32_t nValue = 0;
    if (!g_formHex.pfnParse(attr.pszValue, &nValue)) return;
    const auto nFlags = static_cast<uint32_t>(nValue);
    const uint32_t nAnchor = nFlags & QEL_KEEP_ANCHOR_MASK;
    const uint32_t nOther = nFlags & (QEL_ALONG_MASK | QEL_AWAY_MASK);
    if ((nAnchor || nOther) && !IsAnchored(row.nId))
        Warn(attr.nValueOffset, std::string("keep modes have no effect on <") + row.pszName + ">");
    else if (nAnchor && AnchorOf(nFlags) == QEL_KEEP_NONE)
        Warn(attr.nValueOffset, "more than one anchor: the element is stretched with the drawing");
    else if (nOther && row.nId != QEL_TYPE_METER && (!nAnchor || nAnchor == QEL_KEEP_ALL))
        Warn(attr.nValueOffset,
             "placement along and away from an edge have an effect with Keep left, top, right or "
             "bottom only");
}

// Elements that take live values share an identifier on purpose: one call of the host sets them
// all.
void CChecker::CheckId(const XmlAttr& attr, const ElementType& row)
{
    if (std::strlen(attr.pszValue) >= ID_TEXT_SIZE)
        Error(attr.nValueOffset, "the identifier has more than 255 bytes: it is cut");
    const bool bLive = TakesValues(row.nId);
    const auto [at, bNew] = m_ids.emplace(attr.pszValue, bLive);
    at->second = at->second && bLive;
    if (!bNew && !at->second)
        Warn(attr.nValueOffset, "another element has the identifier " + Quoted(attr.pszValue));
}

void CChecker::CheckText(const XmlNode& node, const ElementType& row)
{
    if (!node.pszText) {
        if (row.nId == QEL_TYPE_TEXT && &node != m_pUnfinished)
            Warn(node.nOffset, "<text> without a text shows nothing");
        return;
    }
    if (row.nId != QEL_TYPE_TEXT)
        Warn(node.nTextOffset, std::string("a text has no effect on <") + row.pszName + ">");
    else if (std::strlen(node.pszText) >= QEL_TEXT_SIZE)
        Error(node.nTextOffset, "the text has more than 255 bytes: it is cut");
}

// Shows the element's record to a view element.
void CChecker::CheckLoaded(const XmlNode& node, const CQELDocElm& elm)
{
    alignas(8) unsigned char block[QEL_MAX_ATTR_SIZE] = {};
    elm.GetAttr(block);
    CQELView view(g_elementTypes);
    CQELViewElm* pRoot = nullptr;
    CQELViewElm* pView = nullptr;
    if (!view.CreateElement(nullptr, nullptr, QEL_TYPE_ROOT, &pRoot)) return;
    if (elm.Type() == QEL_TYPE_ROOT) {
        m_refSize = static_cast<const CQELDocQEL&>(elm).RefSize();
        pView = pRoot;
    } else if (!view.CreateElement(pRoot, nullptr, elm.Type(), &pView)) {
        return;
    }
    if (IsLive(elm))
        CheckLive(node, elm);
    else if (!pView->SetAttrBlock(block))
        Error(node.nOffset,
              "the attributes do not go together: the element is drawn with its defaults");
    CheckPlace(node, elm);
    CheckCost(node, elm);
}

void CChecker::CheckLive(const XmlNode& node, const CQELDocElm& elm)
{
    const std::string fault = RangeFault(elm);
    if (!fault.empty()) Add(node.nOffset, elm.Type() == QEL_TYPE_METER, fault);
    if (elm.Type() == QEL_TYPE_SCALE && node.pFirstChild)
        Warn(node.pFirstChild->nOffset, "elements in a <scale> are not drawn");
    if (LacksFace(elm, node) && &node != m_pUnfinished)
        Warn(node.nOffset, "no figure in the <meter>: a bar is painted within those alone");
    const XmlAttr* pId = AttrOf(node, elm.Type() == QEL_TYPE_METER ? ATTR_MTID : ATTR_SCID);
    const std::size_t nOffset = pId ? pId->nValueOffset : node.nOffset;
    if (&node != m_pUnfinished) m_liveIds.Add(elm, nOffset);
}

// Why nothing at all is drawn of an element in its place; empty when something is. What follows
// from missing coordinates is told with them.
std::string WhyNotDrawn(const XmlNode& node, const CQELDocElm& elm, const RECT& rc)
{
    if (IsLive(elm)) {
        const XmlAttr* pCrd = AttrOf(node, ATTR_CRD);
        const bool bRead = pCrd && ReadNumbers(pCrd->pszValue).values.size() >=
                                       NeededNumbers(elm, *CrdFormOf(elm));
        return bRead ? WhyLiveIsNotDrawn(elm) : "";
    }
    return NeedsArea(elm.Type()) && ::IsRectEmpty(&rc) ? "the rectangle is empty: nothing is drawn"
                                                       : "";
}

void CChecker::CheckCost(const XmlNode& node, const CQELDocElm& elm)
{
    for (const CostFinding& finding : CostFindings(elm, m_refSize)) {
        const XmlAttr* pAttr = AttrOf(node, finding.nAttr);
        const std::size_t nOffset = pAttr ? pAttr->nValueOffset : node.nOffset;
        const bool bTold = std::any_of(m_findings.begin(), m_findings.end(), [&](const Finding& f) {
            return f.nOffset == nOffset; // a value that is not read as it stands
        });
        if (!bTold) Warn(nOffset, finding.text);
    }
}

void CChecker::CheckPlace(const XmlNode& node, const CQELDocElm& elm)
{
    RECT rc{};
    if (!CrdFormOf(elm) || &node == m_pUnfinished || !elm.GetRect(&rc)) return;
    if (IsLive(elm)) rc = LiveRect(elm);
    const std::string why = WhyNotDrawn(node, elm, rc);
    if (!why.empty()) {
        Warn(node.nOffset, why);
        return;
    }
    if (rc.left == rc.right && rc.top == rc.bottom) {
        Warn(node.nOffset, "all points are the same: hardly a dot is drawn");
        return;
    }
    if (m_refSize.cx < 1 || m_refSize.cy < 1) return; // told at the root
    // A rectangle ends before its right and bottom edge; a line on the edge may show its width.
    const LONG nEdge = IsAnchored(elm.Type()) ? 1 : 0;
    if (rc.left > m_refSize.cx - nEdge || rc.top > m_refSize.cy - nEdge || rc.right < nEdge ||
        rc.bottom < nEdge)
        Warn(node.nOffset, "the element lies outside of the drawing: it is not drawn");
}

} // namespace

std::vector<Finding> CheckDrawing(const std::string& bytes)
{
    return CChecker().Check(bytes);
}

} // namespace qel
