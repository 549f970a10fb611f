#include "dynamic/SetTexts.h"

namespace {

std::size_t LengthOf(const char* pszText)
{
    return pszText ? std::strlen(pszText) : 0;
}

void SaveText(CXmlWriter& writer, AttrId nId, const char* pszText)
{
    if (pszText) WriteAttrText(writer, nId, pszText, std::strlen(pszText));
}

} // namespace

const AttrForm g_formSettings = {"settings", nullptr, nullptr, nullptr};
const AttrForm g_formReal = {"number", nullptr, nullptr, nullptr};

int CSetTexts::Load(const XmlContext* pXml, CPool* pPool)
{
    return Take({GetXmlAttr(pXml, ATTR_SET), GetXmlAttr(pXml, ATTR_VALUE)}, pPool);
}

int CSetTexts::Take(const SetTexts& texts, CPool* pPool)
{
    Free(pPool);
    if (texts.IsNone()) return 1;
    const std::size_t nSet = LengthOf(texts.pszSet);
    const std::size_t nValue = LengthOf(texts.pszValue);
    m_pTexts = static_cast<char*>(TakeBlock(pPool, nSet + nValue + 2));
    if (!m_pTexts) return 0;
    if (nSet) std::memcpy(m_pTexts, texts.pszSet, nSet);
    m_pTexts[nSet] = 0;
    char* pszValue = m_pTexts + nSet + 1;
    if (nValue) std::memcpy(pszValue, texts.pszValue, nValue);
    pszValue[nValue] = 0;
    return 1;
}

void CSetTexts::Save(CXmlWriter& writer) const
{
    const SetTexts texts = Get();
    SaveText(writer, ATTR_SET, texts.pszSet);
    SaveText(writer, ATTR_VALUE, texts.pszValue);
}

void CSetTexts::Free(CPool* pPool)
{
    if (!m_pTexts) return;
    const SetTexts texts = Get();
    GiveBlock(pPool, m_pTexts, LengthOf(texts.pszSet) + LengthOf(texts.pszValue) + 2);
    m_pTexts = nullptr;
}

// No attribute is empty, so that an empty text is one that is not there.
SetTexts CSetTexts::Get() const
{
    if (!m_pTexts) return {};
    const char* pszValue = m_pTexts + std::strlen(m_pTexts) + 1;
    return {*m_pTexts ? m_pTexts : nullptr, *pszValue ? pszValue : nullptr};
}
