// The operations of a life on texts as Unicode: what is taken comes back, and what is refused
// leaves all as it was.
#include "fuzz/Life.h"

#include <algorithm>
#include <vector>

namespace {

constexpr DWORD PAGES[] = {0, 1, 936, 65001, 1252, 932, 12345}; // the last one is none
constexpr DWORD PAGE_COUNT = sizeof PAGES / sizeof PAGES[0];

// Letters of every block, halves of pairs among them.
std::vector<wchar_t> WideOf(const std::string& bytes, DWORD nBlock)
{
    std::vector<wchar_t> text;
    for (const char c : bytes)
        text.push_back(static_cast<wchar_t>(nBlock << 8 | static_cast<unsigned char>(c)));
    text.push_back(0);
    return text;
}

DWORD TextPageOf(HQELENGINE h)
{
    DWORD nPage = 12345;
    FUZZ_CHECK(QELGetTextCodePage(h, &nPage) && !QELGetTextCodePage(h, nullptr));
    return nPage;
}

} // namespace

// Another engine reads texts as this one does.
void CLife::TakeTextPage(HQELENGINE h) const
{
    FUZZ_CHECK(QELSetTextCodePage(h, TextPageOf(m_hEngine)));
}

void CLife::SetWideTexts(const std::string& id)
{
    const DWORD nBefore = TextPageOf(m_hEngine);
    const DWORD nPage = PAGES[m_input.Below(PAGE_COUNT)];
    const int nTaken = QELSetTextCodePage(m_hEngine, nPage);
    FUZZ_CHECK(nTaken == (nPage != 12345));
    FUZZ_CHECK(TextPageOf(m_hEngine) == (nTaken ? nPage : nBefore));
    const std::vector<wchar_t> text = WideOf(m_input.Text(), m_input.Below(256));
    FUZZ_CHECK(!QELSetTextW(m_hEngine, id.c_str(), nullptr));
    QELSetTextW(m_hEngine, id.c_str(), text.data());
    const HQELELEM hElem = AnyElem();
    if (!QELSetElemTextW(m_hEngine, hElem, text.data())) return;
    FUZZ_CHECK(IsLive(hElem) && QELGetElemType(m_hEngine, hElem) == QEL_TYPE_TEXT);
    const auto end = std::find(text.begin(), text.end(), wchar_t{0});
    wchar_t back[QEL_TEXT_SIZE];
    FUZZ_CHECK(QELGetElemTextW(m_hEngine, hElem, back, QEL_TEXT_SIZE));
    FUZZ_CHECK(std::equal(text.begin(), end + 1, back));
    FUZZ_CHECK(!QELGetElemTextW(m_hEngine, hElem, back, static_cast<int>(end - text.begin())));
}
