// The element tags: one row a type, with the name in the file, the makers of the document element
// and of the view element, and the attributes of the class. Loading, saving, the view, the checker
// and the documentation all go by these rows.
#pragma once

#include "document/Attributes.h"
#include "document/QELDocElm.h"
#include "include/QELEngine.h"

#include <string_view>

struct TagRow {
    int32_t nId;
    const char* pszName;
    // Null: known, and skipped with its contents.
    CQELDocElm* (*pfnMakeDoc)(XmlContext** ppXml, CPool* pPool);
    void (*pfnVisitAttrs)(AttrVisitor pfnVisit,
                          void* pUser); // null: no attributes but the identifier
    const char* pszMeaning;             // one line for the documentation
};

extern const TagRow* const g_tagRows;

// The tag of a type, empty when it has none.
std::string_view TagName(int32_t nType);

// The row of an element's tag, null for an unknown one.
const TagRow* TagOf(XmlNode* pNode);

// A new document element of a type; null when the type has no class, or without memory.
CQELDocElm* MakeDocElement(int32_t nType, XmlContext** ppXml, CPool* pPool = nullptr);
