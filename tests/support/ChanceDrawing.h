// Drawings by chance, with elements of all types and settings, and the dice of the tests.
#pragma once

#include <random>
#include <string>

constexpr const char* CHANCE_METERS[] = {"vert",       "vert3d", "horz", "horz3d",
                                         "round",      "Arc",    "pie",  "roundUpgrade",
                                         "pieUpgrade", "sector", "clock"};
constexpr const char* CHANCE_SCALES[] = {"vrtleft", "vrtright", "horizup",
                                         "horizdn", "round",    "Arc"};
constexpr int CHANCE_SIDE = 160; // of a drawing, units

class CTestDice { // the same numbers in every run
public:
    explicit CTestDice(unsigned nSeed) : m_random(nSeed) {}
    int Below(int n) { return static_cast<int>(m_random() % static_cast<unsigned>(n)); }
    bool OneIn(int n) { return Below(n) == 0; }
    unsigned Color() { return static_cast<unsigned>(m_random()) & 0x80FFFFFFU; }
    std::string Id() { return "i" + std::to_string(Below(12)); }
    // An anchor of the keep modes, along it and away from it; none of it half of the time.
    unsigned Keep()
    {
        static constexpr unsigned anchors[] = {0x1000, 0x8000, 0x10000, 0x40000, 0x80000};
        static constexpr unsigned along[] = {0, 0x100000, 0x200000};
        static constexpr unsigned away[] = {0, 0x20000, 0x400000, 0x800000};
        if (OneIn(2)) return 0;
        const unsigned nAnchor = anchors[Below(5)];
        return nAnchor == 0x1000 ? nAnchor : nAnchor | along[Below(3)] | away[Below(4)];
    }
    // What follows the host, the pressed shift, or a keep mode. That may make a round figure so
    // narrow that the system fills it from what lies in its memory by chance.
    unsigned ShapeFlags(bool bRound)
    {
        static constexpr unsigned flags[] = {0x1, 0x80, 0x81, 0x4000};
        return OneIn(3) ? flags[Below(4)] | (bRound ? 0 : Keep()) : 0;
    }

private:
    std::mt19937 m_random;
};

class CChanceDrawing {
public:
    explicit CChanceDrawing(CTestDice* pDice) : m_dice(*pDice) {}

    std::string Text()
    {
        const std::string side = std::to_string(CHANCE_SIDE);
        std::string text = "<qel width='" + side + "' height='" + side + "'>";
        for (int n = Below(6) + 4; n > 0; --n) text += Element(3);
        return text + "</qel>";
    }

private:
    int Below(int n) { return m_dice.Below(n); }
    static std::string Hex(unsigned n)
    {
        char sz[16];
        std::snprintf(sz, sizeof sz, "0x%x", n);
        return sz;
    }
    static std::string Numbers(std::initializer_list<int> numbers)
    {
        std::string text;
        for (const int n : numbers) text += std::to_string(n) + " ";
        return text;
    }
    std::string Color()
    {
        const unsigned n = m_dice.Color();
        return Hex(n & 0xFFFFFF) + (n >> 31 ? " glt" : "");
    }
    std::string Box(int nLeast = 14)
    {
        const int x = Below(CHANCE_SIDE - 40), y = Below(CHANCE_SIDE - 40);
        return Numbers({x, y, x + nLeast + Below(60), y + nLeast + Below(60)});
    }
    std::string Style(bool bRound)
    {
        static constexpr const char* styles[] = {"0x0", "0x1", "0x1", "0x3", "0x5"};
        return std::string(" style='") + styles[Below(5)] + "' dr='" + std::to_string(Below(38)) +
               "' fg='" + Color() + "' bg='" + Color() + "' clr='" + Color() + "' lnstyle='" +
               std::to_string(Below(7)) + "' lnwid='" + std::to_string(Below(7)) + "' flag='" +
               Hex(m_dice.ShapeFlags(bRound)) + "' ";
    }
    std::string IdText() { return Below(3) ? " id='" + m_dice.Id() + "' " : " "; }
    std::string Points(int nLeast)
    {
        std::string text;
        for (int n = nLeast + Below(5); n > 0; --n)
            text += Numbers({Below(CHANCE_SIDE), Below(CHANCE_SIDE)});
        return text;
    }
    std::string Shape()
    {
        static constexpr const char* boxes[] = {"rect", "line"};
        static constexpr const char* radials[] = {"arc", "chord", "pie"};
        const int nForm = Below(10);
        const std::string begin = IdText() + Style(nForm == 2 || nForm == 5 || nForm == 6);
        switch (nForm) {
        case 0:
        case 1:
            return "<text" + begin + "crd='" + Box() + "'>" + (Below(4) ? "v=##.#" : "a&b ##") +
                   "</text>";
        case 2:
            return "<circle" + begin + "crd='" +
                   Numbers({30 + Below(90), 30 + Below(90), 10 + Below(30)}) + "'/>";
        case 3:
            return "<polygon" + begin + "crd='" + Points(3) + "'/>";
        case 4:
            return "<polyline" + begin + "crd='" + Points(2) + "'/>";
        case 5:
            return std::string("<") + radials[Below(3)] + begin + "crd='" + Box() + Points(2) +
                   "'/>";
        case 6:
            return (Below(2) ? "<ellipse" : "<rndrect") + begin + "crd='" + Box() + "8 8'/>";
        default:
            return std::string("<") + boxes[Below(2)] + begin + "crd='" + Box() + "'/>";
        }
    }
    std::string Looks() // of a meter or scale
    {
        static constexpr const char* words[] = {"ticks=4", "major-every=2", "alarm=1",
                                                "min=-10", "max=50",        "read-out=1",
                                                "font=1",  "fill-only=1",   "reverse=1"};
        if (m_dice.OneIn(2)) return " ";
        return std::string(" set='") + words[Below(9)] + " " + words[Below(9)] + "' value='" +
               std::to_string(Below(14)) + "' ";
    }
    std::string Scale()
    {
        const int nType = Below(6);
        return "<scale" + IdText() + Looks() + "scid='" + std::to_string(Below(4)) + "' sctype='" +
               CHANCE_SCALES[nType] + "' style='" + Hex(static_cast<unsigned>(Below(2))) +
               "' pin='1' crd='" +
               (nType < 4 ? Box(20) : Numbers({40 + Below(80), 70, 30, 24, 6, 0, 270})) + "'/>";
    }
    std::string Meter()
    {
        const int nType = Below(11);
        const std::string crd = nType < 4 ? Box(40)
                                          : Numbers({50 + Below(60), 50 + Below(60), 25 + Below(25),
                                                     0, 0, CHANCE_SIDE, CHANCE_SIDE, 45, 315});
        std::string text = "<meter" + IdText() + Looks() + "mtid='" +
                           std::to_string(Below(3) * 40) + "' upin='1' flag='" +
                           Hex(m_dice.Keep()) + "' mtype='" + CHANCE_METERS[nType] + "' crd='" +
                           crd + "'>";
        for (int n = Below(3); n > 0; --n) text += Shape();
        return text + "</meter>";
    }
    std::string Element(int nDeep)
    {
        const int n = Below(12);
        if (n < 2) return Meter();
        if (n == 2) return Scale();
        if (n == 3) return "<drawrgn" + IdText() + "style='0x3' crd='" + Box() + "'/>";
        if (n > 6 || nDeep == 0) return Shape();
        static constexpr const char* holders[] = {"status", "frame", "pattern", "g"};
        const std::string tag = m_dice.OneIn(3) ? "g" : holders[n - 4];
        std::string text = "<" + tag + IdText() +
                           (tag == "status" ? "stx='" + std::to_string(Below(3)) + "'" : "") + ">";
        for (int m = Below(4); m > 0; --m) text += Element(nDeep - 1);
        return text + "</" + tag + ">";
    }

    CTestDice& m_dice;
};
