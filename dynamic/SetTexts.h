// What a drawing says of a scale or a meter that a host would otherwise have to set: the attributes
// "set" and "value", kept as the file spells them. What they do is in dynamic/SetWords.h.
#pragma once

#include "document/Attributes.h"
#include "document/QELDocElm.h"

extern const AttrForm g_formSettings; // names of settings with numbers
extern const AttrForm g_formReal;     // a number, whole or real

// The rows of both, for the tables of the classes that have them.
constexpr AttrInfo SET_INFO{
    ATTR_SET,     &g_formSettings, 0, 0, 0, "settings by name, such as `max=100 ticks=20`",
    "it is there"};
constexpr AttrInfo VALUE_INFO{ATTR_VALUE,   &g_formReal, 0, 0, 0, "the value until a host sets one",
                              "it is there"};

class CSetTexts {
public:
    // Of the XML element under the cursor. 0 without memory.
    int Load(const XmlContext* pXml, CPool* pPool);
    int Take(const SetTexts& texts, CPool* pPool);
    void Save(CXmlWriter& writer) const;
    void Free(CPool* pPool);
    [[nodiscard]] SetTexts Get() const;

private:
    char* m_pTexts = nullptr; // both, each with its zero; null without either
};
