// Prints the tables of docs/format.md, docs/live-values.md and docs/embedding.md from the engine's
// own tables, each between a line
// "<!-- table NAME -->" and a line "<!-- end -->"; scripts/docs.sh puts them into the pages.
#include "engine/ElementTypes.h"
#include "engine/Errors.h"

#include "document/QELDocQEL.h"
#include "document/QELDocShape.h"
#include "dynamic/QELDocDrawRgn.h"
#include "dynamic/QELDocMeter.h"
#include "dynamic/QELDocScale.h"
#include "dynamic/QELDocStatus.h"
#include "dynamic/Selectors.h"
#include "render/Mapping.h"
#include "render/QELViewShape.h"

#include <cstdio>

namespace {

void Begin(const char* pszName, const char* pszHead, const char* pszRule)
{
    std::printf("<!-- table %s -->\n%s\n%s\n", pszName, pszHead, pszRule);
}

void End()
{
    std::puts("<!-- end -->");
}

void PrintDefault(const AttrInfo& info)
{
    char szValue[ATTR_TEXT_SIZE] = "";
    if (info.pForm->pfnFormat) info.pForm->pfnFormat(info.nDefault, szValue, sizeof szValue);
    if (info.pszWrittenWhen && *szValue)
        std::printf("| `%s` | %s |", szValue, info.pszWrittenWhen);
    else if (info.pszWrittenWhen)
        std::printf("| none | %s |", info.pszWrittenWhen);
    else if (*szValue)
        std::printf("| `%s` | not `%s` |", szValue, szValue);
    else if (info.nId == ATTR_CRD)
        std::printf("| see the element | always |");
    else
        std::printf("| empty | not empty |");
}

void PrintAttr(const AttrInfo& info, void*)
{
    const bool bText = info.nId == ATTR_TEXT;
    std::printf(bText ? "| the element's text | %s " : "| `%s` | %s ",
                bText ? info.pForm->pszName : AttrName(info.nId), bText ? "" : info.pForm->pszName);
    PrintDefault(info);
    std::printf(" %s |\n", info.pszMeaning);
}

void PrintAttrs(const char* pszName, void (*pfnVisit)(AttrVisitor, void*))
{
    Begin(pszName, "| attribute | form | default | written when | meaning |",
          "|---|---|---|---|---|");
    pfnVisit(PrintAttr, nullptr);
    End();
}

void PrintTags()
{
    Begin("tags", "| tag | type | `crd` | default `crd` | what it is |", "|---|---|---|---|---|");
    for (const ElementType* pRow = g_elementTypes.Rows(); pRow->pszName; ++pRow) {
        std::printf("| `%s` | %d |", pRow->pszName, static_cast<int>(pRow->nId));
        if (pRow->pForm)
            std::printf(" %s | `%s` |", pRow->pForm->pszMeaning, pRow->pForm->pszDefault);
        else
            std::printf(" | |");
        std::printf(" %s |\n", pRow->pszMeaning);
    }
    End();
}

// The coordinates of the classes whose form goes by the type.
template <class Row>
void PrintForms(const char* pszName, const Row* pRows, const CrdForm& (*pfnFormOf)(int32_t))
{
    Begin(pszName, "| type | number | `crd` | default `crd` |", "|---|---|---|---|");
    for (; pRows->pszName; ++pRows) {
        const CrdForm& form = pfnFormOf(pRows->nId);
        std::printf("| `%s` | %d | %s | `%s` |\n", pRows->pszName, static_cast<int>(pRows->nId),
                    form.pszMeaning, form.pszDefault);
    }
    End();
}

const char* NameOfForm(SelectorForm form)
{
    switch (form) {
    case SelectorForm::Count:
        return "count";
    case SelectorForm::Switch:
        return "switch";
    case SelectorForm::Color:
        return "colour";
    case SelectorForm::Code:
        return "code";
    default:
        return "number";
    }
}

// One row a selector, one column a meter type.
void PrintSelectors()
{
    std::printf("<!-- table selectors -->\n| selector | name | form | default |");
    for (const MeterTypeRow* pType = g_meterTypeRows; pType->pszName; ++pType)
        std::printf(" %s |", pType->pszName);
    std::printf(" what it does |\n|---|---|---|---|");
    for (int32_t n = 0; n <= METER_TYPE_COUNT; ++n) std::printf("---|");
    std::printf("\n");
    for (const SelectorRow* pRow = g_selectorRows; pRow->pszName; ++pRow) {
        if (!pRow->pszMeaning) continue;
        std::printf("| %d | `%s` | %s |", static_cast<int>(pRow->nId), pRow->pszName,
                    NameOfForm(pRow->form));
        std::printf(pRow->form == SelectorForm::Color ? " `0x%06x` |" : " `%u` |",
                    static_cast<unsigned>(pRow->nDefault));
        for (int32_t n = 0; n < METER_TYPE_COUNT; ++n)
            std::printf(" %s |", pRow->nMeterTypes & MeterTypeBit(n) ? "•" : "");
        std::printf(" %s |\n", pRow->pszMeaning);
    }
    End();
}

void PrintScaleSelectors()
{
    Begin("scale-selectors", "| selector | name | what it does |", "|---|---|---|");
    for (const SelectorRow* pRow = g_selectorRows; pRow->pszName; ++pRow)
        if (pRow->pszForScale)
            std::printf("| %d | `%s` | %s |\n", static_cast<int>(pRow->nId), pRow->pszName,
                        pRow->pszForScale);
    End();
}

void PrintErrors()
{
    Begin("errors", "| code | name | what it means |", "|---|---|---|");
    for (const ErrorRow& row : ErrorRows()) {
        std::printf("| %u | `%s` | ", static_cast<unsigned>(row.nCode), row.pszName);
        for (const char* p = row.pszSentence; *p; ++p)
            if (*p == '<')
                std::printf("&lt;");
            else
                std::putchar(*p);
        std::printf(" |\n");
    }
    End();
}

void PrintKeywords(const char* pszName, const KeywordRow* pRows)
{
    Begin(pszName, "| keyword | value |", "|---|---|");
    for (; pRows->pszName; ++pRows)
        std::printf("| \"%s\" | `0x%x` |\n", pRows->pszName, static_cast<unsigned>(pRows->nId));
    End();
}

} // namespace

int main()
{
    PrintTags();
    PrintAttrs("root", &CQELDocQEL::VisitAttrs);
    PrintAttrs("shape", &CQELDocShape::VisitAttrs);
    PrintAttrs("status", &CQELDocStatus::VisitAttrs);
    PrintAttrs("drawrgn", &CQELDocDrawRgn::VisitAttrs);
    PrintAttrs("scale", &CQELDocScale::VisitAttrs);
    PrintForms("scale-types", g_scaleTypeRows, &CQELDocScale::CrdFormOf);
    PrintAttrs("meter", &CQELDocMeter::VisitAttrs);
    PrintForms("meter-types", g_meterTypeRows, &CQELDocMeter::CrdFormOf);
    PrintSelectors();
    PrintScaleSelectors();
    PrintErrors();
    PrintKeywords("fill", g_fillStyleRows);
    PrintKeywords("anchor", g_keepAnchors);
    PrintKeywords("along", g_keepAlong);
    PrintKeywords("away", g_keepAway);
    return 0;
}
