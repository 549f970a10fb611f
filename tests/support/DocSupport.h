// Documents for the tests: drawings loaded from a text and saved to one, trees and coordinates as
// text, and the rules of coordinates worked out for every shape class.
#pragma once

#include "document/QELDocShape.h"
#include "document/QELDocument.h"
#include "engine/ElementTypes.h"
#include "include/QELEngine.h"
#include "tests/support/Files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

// In a namespace, so that the helpers of other tests may bear the same names in the same program.
namespace DocSupport {

// ---- files ----

constexpr const char* FILE_HEAD = "<?xml version=\"1.0\" encoding=\"gb2312\" ?>\r\n";

inline std::string DrawingText(const std::string& body)
{
    return FILE_HEAD + std::string("<qel>\r\n") + body + "</qel>\r\n";
}

class CTestDocument { // a document loaded from the text of a whole file
public:
    explicit CTestDocument(const std::string& text) { m_nLoaded = LoadText(text); }
    CTestDocument(const CTestDocument&) = delete;
    CTestDocument& operator=(const CTestDocument&) = delete;

    int LoadText(const std::string& text)
    {
        const std::string path = m_folder.Path("in.qel");
        EXPECT_TRUE(WriteBytes(path, text));
        return m_document.Load(path.c_str());
    }
    int Loaded() const { return m_nLoaded; }
    CQELDocument* operator->() { return &m_document; }
    CQELDocQEL* Root() { return m_document.GetRoot(); }
    CQELDocElm* First() { return m_document.GetRoot()->FirstChild(); }
    const CTestFolder& Folder() const { return m_folder; }

    // The text of the saved file, without the zero byte that ends it.
    std::string Saved()
    {
        const std::string path = m_folder.Path("out.qel");
        if (m_document.Save(path.c_str()) != 1) return "not saved";
        std::string bytes = ReadBytes(path);
        if (bytes.empty() || bytes.back() != 0) return "no zero at the end";
        bytes.pop_back();
        return bytes;
    }
    // The same without declaration and root, for a root without attributes and with children.
    std::string SavedBody()
    {
        const std::string saved = Saved();
        const std::string head = FILE_HEAD + std::string("<qel>\r\n");
        const std::string tail = "</qel>\r\n";
        if (!saved.starts_with(head) || !saved.ends_with(tail)) return "not a body: " + saved;
        return saved.substr(head.size(), saved.size() - head.size() - tail.size());
    }

private:
    CTestFolder m_folder;
    CQELDocument m_document{g_elementTypes};
    int m_nLoaded = 0;
};

// What a save writes for a drawing with this body.
inline std::string SavedBody(const std::string& body)
{
    CTestDocument document(DrawingText(body));
    return document.Loaded() ? document.SavedBody() : "not loaded";
}

// ---- records and rectangles ----

inline QELSHAPEATTR ShapeAttr(const CQELDocElm& elm)
{
    QELSHAPEATTR attr{};
    EXPECT_EQ(1, elm.GetAttr(&attr));
    return attr;
}

inline std::string RectText(const RECT& rc)
{
    return std::to_string(rc.left) + " " + std::to_string(rc.top) + " " + std::to_string(rc.right) +
           " " + std::to_string(rc.bottom);
}

inline std::string RectOf(const CQELDocElm& elm)
{
    RECT rc{-1, -2, -3, -4};
    const int nResult = elm.GetRect(&rc);
    return nResult ? RectText(rc) : "none";
}

// ---- trees ----

// The children of an element as text: identifiers, or type numbers where there is none, those with
// children of their own followed by these: "a b(c 2)".
inline std::string TreeOf(const CQELDocElm& parent)
{
    std::string text;
    for (const CQELDocElm* p = parent.FirstChild(); p; p = p->NextSibling()) {
        if (!text.empty()) text += ' ';
        text += *p->Id() ? p->Id() : std::to_string(p->Type());
        if (p->FirstChild()) text += "(" + TreeOf(*p) + ")";
    }
    return text;
}

// "" when all links below an element agree with each other in both directions.
inline std::string BrokenLink(const CQELDocElm& parent)
{
    const CQELDocElm* pPrev = nullptr;
    for (const CQELDocElm* p = parent.FirstChild(); p; pPrev = p, p = p->NextSibling()) {
        if (p->Parent() != &parent) return std::string("parent of ") + p->Id();
        if (p->PrevSibling() != pPrev) return std::string("previous sibling of ") + p->Id();
        const std::string inside = BrokenLink(*p);
        if (!inside.empty()) return inside;
    }
    return parent.LastChild() == pPrev ? "" : std::string("last child of ") + parent.Id();
}

inline CQELDocElm* FindById(CQELDocElm* pTop, const std::string& id)
{
    if (id == pTop->Id()) return pTop;
    for (CQELDocElm* p = pTop->FirstChild(); p; p = p->NextSibling())
        if (CQELDocElm* pFound = FindById(p, id)) return pFound;
    return nullptr;
}

// The number of an element; whether an element stands behind it shows whether it was deleted.
inline uintptr_t NumberOf(CQELDocElm* pElm)
{
    return pElm->HandleValue();
}
inline bool IsLive(uintptr_t nNumber)
{
    return CQELDocElm::OfHandle(nNumber) != nullptr;
}

// ---- coordinates ----

inline std::string GeometryOf(const CQELDocElm& elm, int nWords = QEL_SHAPE_WORDS)
{
    const QELSHAPEATTR attr = ShapeAttr(elm);
    std::string text;
    for (int n = 0; n < nWords; ++n) text += (n ? " " : "") + std::to_string(attr.nGeometry[n]);
    return text;
}

inline void SetGeometry(CQELDocElm* pElm, const std::vector<int32_t>& words)
{
    QELSHAPEATTR attr = ShapeAttr(*pElm);
    std::copy(words.begin(), words.end(), attr.nGeometry);
    ASSERT_EQ(1, pElm->SetAttr(&attr));
}

// A shape of a type with its defaults, in a document of its own.
class CTestShape {
public:
    explicit CTestShape(int nType)
    {
        EXPECT_EQ(1, m_document.New());
        m_pShape = static_cast<CQELDocShape*>(
            m_document.CreateElement(m_document.GetRoot(), nullptr, nType));
        EXPECT_NE(nullptr, m_pShape);
    }
    CTestShape(const CTestShape&) = delete;
    CTestShape& operator=(const CTestShape&) = delete;

    CQELDocShape* operator->() { return m_pShape; }
    CQELDocShape& operator*() { return *m_pShape; }
    CQELDocShape* Get() { return m_pShape; }

    std::string Crd() const
    {
        char szCrd[CRD_TEXT_SIZE];
        return m_pShape->FormatCrd(szCrd) ? szCrd : "refused";
    }

private:
    CQELDocument m_document{g_elementTypes};
    CQELDocShape* m_pShape = nullptr;
};

struct CrdRow {
    const char* pszCrd;
    const char* pszWords; // null: refused, and the coordinates stay
};

// Reads each text into a shape that holds other coordinates.
template <std::size_t N>
void ExpectCrdRows(int nType, const char* pszBefore, int nWords, const CrdRow (&rows)[N])
{
    CTestShape shape(nType);
    for (const CrdRow& row : rows) {
        SCOPED_TRACE(std::string("crd ") + row.pszCrd);
        ASSERT_EQ(1, shape->ParseCrd(pszBefore));
        const std::string before = GeometryOf(*shape);
        EXPECT_EQ(row.pszWords ? 1 : 0, shape->ParseCrd(row.pszCrd));
        if (row.pszWords)
            EXPECT_EQ(row.pszWords, GeometryOf(*shape, nWords));
        else
            EXPECT_EQ(before, GeometryOf(*shape));
    }
}

// What a class with a fixed count of signed numbers reads: blanks of every kind between them, signs
// as separators, more numbers than asked for, and numbers beyond 32 bits; what it refuses: one
// number too few and whatever is no whole number.
inline void ExpectFixedCrd(int nType, int nCount)
{
    const auto list = [&](int nNumbers, const char* pszBetween, const char* pszLast = nullptr) {
        std::string text;
        for (int n = 0; n < nNumbers; ++n) {
            if (n) text += pszBetween;
            text += pszLast && n + 1 == nNumbers ? pszLast : std::to_string(3 * n + 1);
        }
        return text;
    };
    const auto repeated = [&](const char* pszNumber) {
        std::string text;
        for (int n = 0; n < nCount; ++n) text += (n ? " " : "") + std::string(pszNumber);
        return text;
    };
    CTestShape shape(nType);
    const auto after = [&](const std::string& crd) -> std::string {
        EXPECT_EQ(1, shape->ParseCrd(repeated("77").c_str()));
        const int nResult = shape->ParseCrd(crd.c_str());
        const std::string words = GeometryOf(*shape, nCount);
        if (nResult == 0) return words == repeated("77") ? "refused" : "refused, but changed";
        return nResult == 1 ? words : "neither 0 nor 1";
    };

    const std::string numbers = list(nCount, " ");
    EXPECT_EQ(numbers, after(numbers));
    EXPECT_EQ(numbers, after(list(nCount, "\t")));
    EXPECT_EQ(numbers, after(" \t " + list(nCount, " \t  ") + "  "));
    EXPECT_EQ(numbers, after(list(nCount, "\r\n")));
    EXPECT_EQ(numbers, after(list(nCount, "+")));
    EXPECT_EQ(numbers, after(list(nCount + 3, " ")));
    EXPECT_EQ(numbers, after(numbers + "mm"));
    EXPECT_EQ(repeated("-2147483648"), after(repeated("-2147483648")));
    EXPECT_EQ(repeated("2147483647"), after(repeated("2147483647")));
    EXPECT_EQ(repeated("2147483647"), after(repeated("99999999999999999999")));
    EXPECT_EQ(repeated("-2147483648"), after(repeated("-99999999999999999999")));

    EXPECT_EQ("refused", after(""));
    EXPECT_EQ("refused", after("   "));
    EXPECT_EQ("refused", after(list(nCount - 1, " ")));
    EXPECT_EQ("refused", after(list(nCount, " ", "x")));
    EXPECT_EQ("refused", after(list(nCount, " ", "-")));
    EXPECT_EQ("refused", after(list(nCount, ",")));
    EXPECT_EQ("refused", after(list(nCount, ".5 ")));
    EXPECT_EQ("refused", after("x" + numbers));
}

// ---- resizing ----

struct ResizeCase {
    RECT rcOld;
    RECT rcNew;
    int32_t nX; // by which every x moves, worked out by hand
    int32_t nY;
    bool bFlatX; // the old or the new width is 0
    bool bFlatY;
};

inline constexpr LONG LONG_LEAST = -2147483647 - 1;
inline constexpr ResizeCase g_resizeCases[] = {
    // The size stays: 5 and 5.
    {{0, 0, 10, 10}, {5, 5, 15, 15}, 5, 5, false, false},
    // 5 + (20 - 10) * 20 / 10; 7 + (5 - 10) * 5 / 10, where -25 / 10 is cut to -2.
    {{0, 0, 10, 10}, {5, 7, 25, 12}, 25, 5, false, false},
    // -3 + (2 - 3) * 2 / 3, where -2 / 3 is cut to 0; 0 + (7 - 3) * 7 / 3, where 28 / 3 is 9.
    {{3, 3, 6, 6}, {0, 3, 2, 10}, -3, 9, false, false},
    // No new width: 5 alone. 7 + (20 - 10) * 20 / 10.
    {{0, 0, 10, 10}, {5, 7, 5, 27}, 5, 27, true, false},
    // No old width: 3 alone. 4.
    {{0, 0, 0, 10}, {3, 4, 13, 14}, 3, 4, true, false},
    // No old height, no new height: -1 and 6 alone.
    {{1, 2, 11, 2}, {0, 8, 10, 18}, -1, 6, false, true},
    {{1, 2, 11, 12}, {0, 8, 10, 8}, -1, 6, false, true},
    // Turned over: the differences are those of left and top as given, the sizes have no sign:
    // -10 + (20 - 10) * 20 / 10.
    {{10, 10, 0, 0}, {0, 0, 20, 20}, 10, 10, false, false},
    {{0, 0, 10, 10}, {20, 20, 0, 0}, 40, 40, false, false},
    // 99999 * 100000 = 9999900000, less two times 2^32.
    {{0, 0, 1, 10}, {0, 0, 100000, 10}, 1409965408, 0, false, false},
    // 49997 * 50000 = 2499850000, less 2^32 = -1795117296, by 3.
    {{0, 0, 10, 3}, {0, 0, 10, 50000}, 0, -598372432, false, false},
    // 2147483647 - -1 is -2147483648; the width is 10 across the end of the range.
    {{-1, 0, 9, 10}, {2147483647, 0, -2147483639, 10}, LONG_LEAST, 0, false, false},
    // The width -2147483648 has no positive: (10 + 2147483648) * 10 is 100, and 100 / -2147483648
    // is 0.
    {{0, 0, LONG_LEAST, 10}, {0, 0, 10, 10}, 0, 0, false, false},
};

// Maps a shape through every case. The layout has one letter a word: x and y move, L T R B are a
// rectangle's edges, which move too and whose R and B fall on L and T when a side is 0; all others
// stay.
inline void ExpectResized(int nType, const std::string& layout, const std::vector<int32_t>& words)
{
    ASSERT_EQ(layout.size(), words.size());
    for (const ResizeCase& row : g_resizeCases) {
        SCOPED_TRACE("from " + RectText(row.rcOld) + " to " + RectText(row.rcNew));
        std::string expected;
        std::vector<int32_t> moved;
        for (std::size_t n = 0; n < words.size(); ++n) {
            const bool bX = layout[n] == 'x' || layout[n] == 'L' || layout[n] == 'R';
            const bool bY = layout[n] == 'y' || layout[n] == 'T' || layout[n] == 'B';
            const int32_t nShift = bX ? row.nX : bY ? row.nY : 0;
            moved.push_back(static_cast<int32_t>(static_cast<uint32_t>(words[n]) +
                                                 static_cast<uint32_t>(nShift)));
            if ((layout[n] == 'R' && row.bFlatX) || (layout[n] == 'B' && row.bFlatY))
                moved.back() = moved[n - 2];
            expected += (n ? " " : "") + std::to_string(moved.back());
        }
        CTestShape shape(nType);
        SetGeometry(shape.Get(), words);
        EXPECT_EQ(1, shape->MapRect(row.rcOld, row.rcNew));
        EXPECT_EQ(expected, GeometryOf(*shape, static_cast<int>(words.size())));
    }
}

} // namespace DocSupport

using namespace DocSupport;
