// An open drawing for the tests of the Studio's model.
#pragma once

#include "include/QELEngine.h"

#include <gtest/gtest.h>

#include <string>

class COpenDrawing {
public:
    explicit COpenDrawing(const std::string& body, const char* pszEncoding = "utf-8")
        : m_hEngine(CreateQELEngine())
    {
        const std::string bytes = std::string("<?xml version=\"1.0\" encoding=\"") + pszEncoding +
                                  "\" ?><qel width=\"100\" height=\"100\">" + body + "</qel>";
        QELSetTextCodePage(m_hEngine, 1);
        EXPECT_EQ(1, QELOpenMemory(m_hEngine, bytes.data(), static_cast<DWORD>(bytes.size())));
    }
    ~COpenDrawing() { DestroyQELEngine(m_hEngine); }
    COpenDrawing(const COpenDrawing&) = delete;
    COpenDrawing& operator=(const COpenDrawing&) = delete;

    operator HQELENGINE() const { return m_hEngine; }

    // A value by identifier; -1: it has none.
    [[nodiscard]] double Value(const char* pszId) const
    {
        double fValue = -1;
        return QELGetValue(m_hEngine, pszId, &fValue) ? fValue : -1;
    }
    [[nodiscard]] double Selector(const char* pszId, DWORD nSelector) const
    {
        double fValue = -1;
        return QELGetSelector(m_hEngine, pszId, nSelector, &fValue) ? fValue : -1;
    }

private:
    HQELENGINE m_hEngine;
};

inline std::string ScaleText(const std::string& id, int nNumber = 7)
{
    return "<scale id=\"" + id + "\" scid=\"" + std::to_string(nNumber) +
           "\" sctype=\"horizdn\" crd=\"10 10 30 20\"/>";
}
