// The drawing as its file spells it; see the header. It is read with the engine's own parser and
// table of elements, so that both see the same.
#include "tools/studio/model/Source.h"

#include "engine/ElementTypes.h"
#include "tools/qel/Checker.h"
#include "tools/qel/Encoding.h"
#include "tools/studio/model/Convert.h"
#include "xml/XmlTree.h"

#include <algorithm>
#include <memory>

namespace studio {

namespace {

// Where the lines of a text begin.
class CLines {
public:
    explicit CLines(const std::string& bytes)
    {
        for (std::size_t n = 0; n < bytes.size(); ++n)
            if (bytes[n] == '\n') m_starts.push_back(n + 1);
    }
    [[nodiscard]] std::size_t Of(std::size_t nOffset) const // from 1
    {
        return static_cast<std::size_t>(
            std::upper_bound(m_starts.begin(), m_starts.end(), nOffset) - m_starts.begin());
    }
    [[nodiscard]] std::size_t Column(std::size_t nOffset) const
    {
        return nOffset - m_starts[Of(nOffset) - 1] + 1;
    }

private:
    std::vector<std::size_t> m_starts{0};
};

class CReader {
public:
    explicit CReader(const std::string& bytes)
        : m_bytes(bytes), m_lines(bytes), m_nPage(qel::DeclaredPage(bytes))
    {
    }
    Source Read()
    {
        ReadElements();
        ReadFindings();
        return std::move(m_source);
    }

private:
    void ReadElements();
    bool ReadElement(const XmlNode& node); // false: the engine skips it with all that is in it
    void ReadAttrs(const XmlNode& node, SourceElement* pElement) const;
    void ReadFindings();
    [[nodiscard]] int ElementAt(std::size_t nOffset) const;

    const std::string& m_bytes;
    CLines m_lines;
    unsigned m_nPage;
    Source m_source;
};

void CReader::ReadElements()
{
    std::string text = m_bytes; // the parser writes into it
    const std::unique_ptr<XmlContext, int (*)(XmlContext*)> xml(XmlCreate(), XmlDestroy);
    if (!xml) throw std::bad_alloc();
    xml->bTakesMark = true;
    XmlParseText(xml.get(), text.data()); // what could be read stands in the tree in any case
    for (const XmlNode* pNode = xml->pRoot->pszName ? xml->pRoot : nullptr; pNode;) {
        if (ReadElement(*pNode) && pNode->pFirstChild) {
            pNode = pNode->pFirstChild;
            continue;
        }
        while (pNode && !pNode->pNext) pNode = pNode->pParent;
        if (pNode) pNode = pNode->pNext;
    }
}

bool CReader::ReadElement(const XmlNode& node)
{
    const int32_t nType = LookupKeyword(g_elementTypes.Rows(), node.pszName);
    const ElementType* pRow = g_elementTypes.Row(nType);
    if (!pRow || !pRow->pfnMakeDoc || (nType == QEL_TYPE_ROOT) != !node.pParent) return false;
    SourceElement element{nType, node.nOffset, m_lines.Of(node.nOffset), {}, {}, 0};
    ReadAttrs(node, &element);
    if (node.pszText) {
        element.text = FromPage(node.pszText, m_nPage);
        element.nTextLine = m_lines.Of(node.nTextOffset);
    }
    m_source.elements.push_back(std::move(element));
    return true;
}

void CReader::ReadAttrs(const XmlNode& node, SourceElement* pElement) const
{
    for (const XmlAttr* p = node.pAttrs ? node.pAttrs->pHead : nullptr; p; p = p->pNext)
        pElement->attrs.push_back({FromPage(p->pszName, m_nPage), FromPage(p->pszValue, m_nPage),
                                   m_lines.Of(p->nNameOffset)});
}

void CReader::ReadFindings()
{
    qel::SetDrawingPage(m_nPage);
    for (const qel::Finding& finding : qel::CheckDrawing(m_bytes))
        m_source.findings.push_back({finding.bError, m_lines.Of(finding.nOffset),
                                     m_lines.Column(finding.nOffset), ElementAt(finding.nOffset),
                                     FromPage(finding.text, m_nPage)});
}

// The last one that begins before the place.
int CReader::ElementAt(std::size_t nOffset) const
{
    const auto at = std::upper_bound(
        m_source.elements.begin(), m_source.elements.end(), nOffset,
        [](std::size_t nPlace, const SourceElement& element) { return nPlace < element.nOffset; });
    return static_cast<int>(at - m_source.elements.begin()) - 1;
}

} // namespace

Source ReadSource(const std::string& bytes)
{
    return CReader(bytes).Read();
}

std::wstring KindName(int nType)
{
    const std::string_view name = g_elementTypes.Name(nType);
    return {name.begin(), name.end()};
}

} // namespace studio
