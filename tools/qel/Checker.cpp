// The checker; see the header.
#include "tools/qel/Checker.h"

#include "document/QELDocQEL.h"
#include "document/QELDocShape.h"
#include "document/Tags.h"
#include "document/TextNumbers.h"
#include "dynamic/QELDocDrawRgn.h"
#include "render/Mapping.h"
#include "render/QELView.h"

#include <algorithm>
#include <memory>
#include <unordered_map>

namespace {

const char* ErrorText(int32_t nError)
{
    switch (nError) {
    case XML_ERR_MEMORY:
        return "elements are nested more than 512 levels deep, or memory ran out";
    case XML_ERR_EMPTY:
        return "the drawing is empty";
    case XML_ERR_ATTR:
        return "an attribute's value is not closed by its quote, or an attribute of the "
               "declaration cannot "
               "be read";
    case XML_ERR_START_TAG:
        return "a start tag cannot be read here: NAME=\"VALUE\", '/>' or '>' is expected";
    case XML_ERR_END_NAME:
        return "the drawing ends right after an element's name";
    case XML_ERR_END_TAG:
        return "the drawing ends inside a start tag";
    case XML_ERR_SLASH:
        return "'/' is not followed by '>'";
    case XML_ERR_MISMATCH:
        return "the end tag does not match the element that is open";
    case XML_ERR_END_CONTENT:
        return "the drawing ends inside an element's content";
    default:
        return "the drawing cannot be read";
    }
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

std::string Quoted(const std::string& text)
{
    constexpr std::size_t SHOWN = 40;
    return "'" + (text.size() <= SHOWN ? text : text.substr(0, SHOWN) + "...") + "'";
}

const CrdForm* CrdFormOf(const CQELDocElm& elm)
{
    if (elm.Type() >= QEL_TYPE_TEXT && elm.Type() <= QEL_TYPE_POLYGON)
        return &static_cast<const CQELDocShape&>(elm).GetCrdForm();
    return elm.Type() == QEL_TYPE_DRAWRGN ? &CQELDocDrawRgn::GetCrdForm() : nullptr;
}

// Whether the keep modes of its flags work on an element: the others are stretched with the
// drawing.
bool IsAnchored(int32_t nType)
{
    switch (nType) {
    case QEL_TYPE_TEXT:
    case QEL_TYPE_RECT:
    case QEL_TYPE_ROUNDRECT:
    case QEL_TYPE_ELLIPSE:
    case QEL_TYPE_CIRCLE:
    case QEL_TYPE_DRAWRGN:
        return true;
    default:
        return false;
    }
}

// How many numbers a text of coordinates has, up to what is no number; *pbClean tells whether there
// is nothing else.
std::size_t CountNumbers(const char* pszText, const char* pszLayout, bool* pbClean)
{
    std::size_t nCount = 0;
    for (;; ++nCount) {
        uint32_t nUnsigned = 0;
        int32_t nSigned = 0;
        const bool bRadius = nCount < std::strlen(pszLayout) && pszLayout[nCount] == 'r';
        if (bRadius ? !ScanUnsigned(&pszText, &nUnsigned) : !ScanDecimal(&pszText, &nSigned)) break;
    }
    SkipTextSpace(&pszText);
    *pbClean = *pszText == 0;
    return nCount;
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

    void CheckTree();
    bool CheckNode(XmlNode* pNode); // false: it is skipped with all that is in it
    void CheckAttrs(const XmlNode& node, const TagRow& row, const CQELDocElm& elm);
    void CheckAttr(const XmlNode& node, const XmlAttr& attr, const TagRow& row,
                   const CQELDocElm& elm);
    void CheckValue(const XmlAttr& attr, const AttrInfo& info);
    void CheckCrd(const XmlAttr& attr, const CrdForm& form);
    void CheckFlags(const XmlAttr& attr, const TagRow& row);
    void CheckId(const XmlAttr& attr);
    void CheckText(const XmlNode& node, const TagRow& row);
    void CheckLoaded(XmlNode* pNode, CQELDocElm* pElm);
    void CheckPlace(const XmlNode& node, const CQELDocElm& elm);

    XmlContext* m_pXml = nullptr;
    SIZE m_refSize{DEFAULT_REF_SIZE, DEFAULT_REF_SIZE};
    std::vector<Finding> m_findings;
    std::unordered_map<std::string, std::size_t> m_ids;
};

std::vector<Finding> CChecker::Check(const std::string& bytes)
{
    std::string text = bytes;
    const std::size_t nZero = bytes.find('\0');
    if (nZero != std::string::npos && bytes.find_first_not_of('\0', nZero) != std::string::npos)
        Warn(nZero, "there is a zero byte here: all after it is not read");
    const std::unique_ptr<XmlContext, int (*)(XmlContext*)> xml(XmlCreate(), XmlDestroy);
    m_pXml = xml.get();
    if (!m_pXml) return m_findings;
    const XmlObserver observer{
        [](void* pUser, XmlNotice nNotice, std::size_t nOffset, const char*) {
            static_cast<CChecker*>(pUser)->Warn(nOffset, NoticeText(nNotice));
        },
        this};
    m_pXml->pObserver = &observer;
    if (XmlParseText(m_pXml, text.data())) {
        const char* pAt = m_pXml->pszReadPos;
        Error(pAt ? static_cast<std::size_t>(pAt - text.data()) : 0, ErrorText(m_pXml->nLastError));
    }
    m_pXml->pObserver = nullptr;
    CheckTree(); // what could be read of it
    std::stable_sort(m_findings.begin(), m_findings.end(),
                     [](const Finding& a, const Finding& b) { return a.nOffset < b.nOffset; });
    return m_findings;
}

void CChecker::CheckTree()
{
    XmlNode* pRoot = m_pXml->pRoot;
    if (!pRoot->pszName) {
        if (m_findings.empty()) Error(0, "there is no element: the drawing does not open");
        return;
    }
    if (LookupKeyword(g_tagRows, pRoot->pszName) != QEL_TYPE_ROOT) {
        Error(pRoot->nOffset, std::string("the root element is <") + pRoot->pszName +
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
    const std::string tag = std::string("<") + pNode->pszName + ">";
    const TagRow* pRow = FindRow(g_tagRows, LookupKeyword(g_tagRows, pNode->pszName));
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
    const std::unique_ptr<CQELDocElm> pElm(MakeDocElement(pRow->nId, &m_pXml));
    if (!pElm) return false;
    CheckAttrs(*pNode, *pRow, *pElm);
    CheckText(*pNode, *pRow);
    CheckLoaded(pNode, pElm.get());
    return true;
}

void CChecker::CheckAttrs(const XmlNode& node, const TagRow& row, const CQELDocElm& elm)
{
    bool bHasCrd = false;
    if (node.pAttrs) {
        for (const XmlAttr* pAttr = node.pAttrs->pHead; pAttr; pAttr = pAttr->pNext) {
            CheckAttr(node, *pAttr, row, elm);
            bHasCrd = bHasCrd || LookupKeyword(g_attrNameRows, pAttr->pszName) == ATTR_CRD;
        }
    }
    const CrdForm* pForm = CrdFormOf(elm);
    if (pForm && !bHasCrd)
        Warn(node.nOffset, std::string("no crd: the element has ") + pForm->pszDefault);
}

void CChecker::CheckAttr(const XmlNode& node, const XmlAttr& attr, const TagRow& row,
                         const CQELDocElm& elm)
{
    const int32_t nId = LookupKeyword(g_attrNameRows, attr.pszName);
    if (nId == KEYWORD_NONE) {
        Error(attr.nNameOffset, "unknown attribute " + Quoted(attr.pszName));
        return;
    }
    if (nId == ATTR_ID) {
        CheckId(attr);
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
                                   node.pszName + ">");
        return;
    }
    if (nId == ATTR_CRD)
        CheckCrd(attr, *CrdFormOf(elm));
    else
        CheckValue(attr, *wanted.pInfo);
    if (nId == ATTR_FLAG) CheckFlags(attr, row);
}

void CChecker::CheckValue(const XmlAttr& attr, const AttrInfo& info)
{
    if (!info.pForm->pfnIsClean(attr.pszValue)) {
        int32_t nValue = 0;
        const bool bTaken = info.pForm->pfnParse(attr.pszValue, &nValue) != 0;
        Error(attr.nValueOffset, std::string(attr.pszName) + " wants " + info.pForm->pszName +
                                     ", not " + Quoted(attr.pszValue) +
                                     (bTaken ? "" : ": it is ignored"));
        return;
    }
    // What the file says, before a form has mended it.
    const char* pszText = attr.pszValue;
    int32_t nValue = 0;
    const bool bDecimal = ScanDecimal(&pszText, &nValue) && *pszText == 0;
    if (!bDecimal) info.pForm->pfnParse(attr.pszValue, &nValue);
    if (nValue < info.nMin || nValue > info.nMax)
        Error(attr.nValueOffset,
              std::string(attr.pszName) + " is out of range, " + std::to_string(info.nMin) +
                  (info.nMax == INT32_MAX ? " or more" : " to " + std::to_string(info.nMax)) +
                  ": " + Quoted(attr.pszValue));
}

void CChecker::CheckCrd(const XmlAttr& attr, const CrdForm& form)
{
    bool bClean = false;
    const std::size_t nCount = CountNumbers(attr.pszValue, form.pszLayout, &bClean);
    const std::size_t nWanted = std::strlen(form.pszLayout);
    const bool bPoints = nWanted == 0;
    const std::string wanted = std::string("crd wants ") + form.pszMeaning;
    if (!bClean)
        Error(attr.nValueOffset,
              wanted + "; there is something that is no number in " + Quoted(attr.pszValue));
    if (bPoints) {
        if (nCount < 4)
            Error(attr.nValueOffset, wanted + "; the element keeps " + form.pszDefault);
        else if (nCount % 2)
            Error(attr.nValueOffset, wanted + "; the last number stands alone");
        else if (nCount > 2 * QEL_MAX_POINTS)
            Error(attr.nValueOffset, wanted + "; the points after the 16th are not read");
    } else if (nCount < nWanted) {
        Error(attr.nValueOffset, wanted + ", " + std::to_string(nWanted) + " numbers, not " +
                                     std::to_string(nCount) + ": the element keeps " +
                                     form.pszDefault);
    } else if (nCount > nWanted) {
        Error(attr.nValueOffset, wanted + ", " + std::to_string(nWanted) + " numbers, not " +
                                     std::to_string(nCount) + ": the rest is not read");
    }
}

void CChecker::CheckFlags(const XmlAttr& attr, const TagRow& row)
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
    else if (nOther && (!nAnchor || nAnchor == QEL_KEEP_ALL))
        Warn(attr.nValueOffset,
             "placement and extent have an effect with Keep left, top, right or bottom "
             "only");
}

void CChecker::CheckId(const XmlAttr& attr)
{
    if (std::strlen(attr.pszValue) >= ID_TEXT_SIZE)
        Error(attr.nValueOffset, "the identifier has more than 255 bytes: it is cut");
    if (!m_ids.emplace(attr.pszValue, attr.nValueOffset).second)
        Warn(attr.nValueOffset, "another element has the identifier " + Quoted(attr.pszValue));
}

void CChecker::CheckText(const XmlNode& node, const TagRow& row)
{
    if (!node.pszText) {
        if (row.nId == QEL_TYPE_TEXT) Warn(node.nOffset, "<text> without a text shows nothing");
        return;
    }
    if (row.nId != QEL_TYPE_TEXT)
        Warn(node.nTextOffset, std::string("a text has no effect on <") + row.pszName + ">");
    else if (std::strlen(node.pszText) >= QEL_TEXT_SIZE)
        Error(node.nTextOffset, "the text has more than 255 bytes: it is cut");
}

// Loads the element as the engine does, and shows its record to a view element.
void CChecker::CheckLoaded(XmlNode* pNode, CQELDocElm* pElm)
{
    m_pXml->pCursor = pNode;
    pElm->Load();
    alignas(8) unsigned char block[QEL_MAX_ATTR_SIZE] = {};
    pElm->GetAttr(block);
    CQELView view;
    CQELViewElm* pRoot = nullptr;
    CQELViewElm* pView = nullptr;
    if (!view.CreateElement(nullptr, nullptr, QEL_TYPE_ROOT, &pRoot)) return;
    if (pElm->Type() == QEL_TYPE_ROOT) {
        m_refSize = static_cast<CQELDocQEL*>(pElm)->RefSize();
        pView = pRoot;
    } else if (!view.CreateElement(pRoot, nullptr, pElm->Type(), &pView)) {
        return;
    }
    if (!pView->SetAttrBlock(block))
        Error(pNode->nOffset,
              "the attributes do not go together: the element is drawn with its defaults");
    CheckPlace(*pNode, *pElm);
}

void CChecker::CheckPlace(const XmlNode& node, const CQELDocElm& elm)
{
    const CrdForm* pForm = CrdFormOf(elm);
    RECT rc{};
    if (!pForm || !elm.GetRect(&rc)) return;
    if (IsAnchored(elm.Type()) && ::IsRectEmpty(&rc)) {
        Warn(node.nOffset, "the rectangle is empty: nothing is drawn");
        return;
    }
    const RECT rcDrawing{0, 0, m_refSize.cx, m_refSize.cy};
    if (rc.left > rcDrawing.right || rc.top > rcDrawing.bottom || rc.right < 0 || rc.bottom < 0)
        Warn(node.nOffset, "the element lies outside of the drawing");
}

} // namespace

std::vector<Finding> CheckDrawing(const std::string& bytes)
{
    return CChecker().Check(bytes);
}
