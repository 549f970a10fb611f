// What the tests of the XML tree share: a tree as one line of text.
#pragma once

#include "xml/XmlTree.h"

#include <string>

// In a namespace, so that the helpers of other tests may bear the same names in the same program.
namespace XmlDump {

// name, [attribute=value], {text}, (children)
inline std::string Dump(const XmlNode* pNode)
{
    if (!pNode) return "nothing";
    std::string out = pNode->pszName ? pNode->pszName : "?";
    for (const XmlAttr* p = pNode->pAttrs ? pNode->pAttrs->pHead : nullptr; p; p = p->pNext)
        out.append("[").append(p->pszName).append("=").append(p->pszValue).append("]");
    if (pNode->pszText) out.append("{").append(pNode->pszText).append("}");
    if (!pNode->pFirstChild) return out;
    out += "(";
    for (const XmlNode* p = pNode->pFirstChild; p; p = p->pNext)
        out += Dump(p) + (p->pNext ? " " : ")");
    return out;
}

} // namespace XmlDump

using namespace XmlDump;
