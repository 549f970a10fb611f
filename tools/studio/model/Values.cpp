// The values that were set in a drawing; see the header.
#include "tools/studio/model/Values.h"

#include "tools/qel/Command.h"
#include "tools/qel/ValuesFile.h"

#include <exception>
#include <utility>

namespace studio {

namespace {

bool IsUtf8(const std::string& bytes)
{
    return bytes.empty() || ::MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, bytes.data(),
                                                  static_cast<int>(bytes.size()), nullptr, 0) != 0;
}

} // namespace

const qel::CNamedValues& CValues::NamesOf(HQELENGINE hEngine)
{
    if (m_pNames && m_hNamed == hEngine) return *m_pNames;
    m_nPage = qel::PageOf(hEngine);
    const qel::CPageScope page(m_nPage);
    m_pNames = std::make_unique<qel::CNamedValues>(hEngine);
    m_hNamed = hEngine;
    return *m_pNames;
}

void CValues::Remember(qel::NamedValue value)
{
    m_bModified = true;
    const auto [at, bNew] = m_places.emplace(value.name, m_values.size());
    if (bNew)
        m_values.push_back(std::move(value));
    else
        m_values[at->second] = std::move(value);
}

int CValues::Set(HQELENGINE hEngine, const std::string& name, const std::string& text,
                 std::string* pWhy)
{
    try {
        if (!IsUtf8(name) || !IsUtf8(text)) throw qel::CTrouble("the bytes are no text in UTF-8");
        const qel::CNamedValues& names = NamesOf(hEngine);
        const qel::CPageScope page(m_nPage);
        const qel::LiveAction action = names.Read(name, {name, text});
        names.Set(action);
        Remember({name, text, action.kind == qel::LiveAction::Kind::Text});
        return 1;
    } catch (const std::exception& trouble) {
        *pWhy = trouble.what();
        return 0;
    }
}

int CValues::Apply(HQELENGINE hEngine)
{
    m_pNames.reset();
    const bool bModified = m_bModified;
    int nTaken = 0;
    std::string why;
    const std::vector<qel::NamedValue> values = m_values;
    for (const qel::NamedValue& value : values)
        nTaken += Set(hEngine, value.name, value.text, &why);
    m_bModified = bModified;
    return nTaken;
}

void CValues::Reset(HQELENGINE hEngine)
{
    QELResetLive(hEngine, nullptr);
    m_bModified |= !m_values.empty();
    m_values.clear();
    m_places.clear();
}

int CValues::Load(const std::wstring& path, std::string* pWhy)
{
    try {
        const std::vector<qel::NamedValue> values = qel::ReadValuesFile(path);
        m_values.clear();
        m_places.clear();
        for (const qel::NamedValue& value : values) Remember(value);
        m_bModified = false;
        return 1;
    } catch (const std::exception& trouble) {
        *pWhy = trouble.what();
        return 0;
    }
}

int CValues::Save(const std::wstring& path, std::string* pWhy)
{
    try {
        qel::WriteValuesFile(path, m_values);
        m_bModified = false;
        return 1;
    } catch (const std::exception& trouble) {
        *pWhy = trouble.what();
        return 0;
    }
}

void CValues::TakeFrom(const CValues& other)
{
    m_values = other.m_values;
    m_places = other.m_places;
    m_bModified = other.m_bModified;
}

bool CValues::Knows(HQELENGINE hEngine, const std::string& name)
{
    return NamesOf(hEngine).Knows(name);
}

const std::string* CValues::Find(const std::string& name) const
{
    const auto at = m_places.find(name);
    return at == m_places.end() ? nullptr : &m_values[at->second].text;
}

std::wstring ValuesPath(const std::wstring& drawing)
{
    const std::size_t nFolder = drawing.find_last_of(L"\\/");
    const std::size_t nPoint = drawing.rfind(L'.');
    const bool bExtension =
        nPoint != std::wstring::npos && (nFolder == std::wstring::npos || nPoint > nFolder);
    return drawing.substr(0, bExtension ? nPoint : drawing.size()) + L".values.json";
}

} // namespace studio
