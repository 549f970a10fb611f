// Animated pictures as GIF files; see the header.
#include "tools/qel/GifWriter.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <unordered_map>

namespace qel {

namespace {

constexpr std::size_t MAX_COLORS = 256;
constexpr int MAX_DELAY = 65535;
constexpr uint32_t COLOR_MASK = 0xFFFFFF; // the fourth byte of a pixel is of no account

class CBytes {
public:
    void Byte(uint32_t n) { m_bytes.push_back(static_cast<char>(n)); }
    void Word(uint32_t n)
    {
        Byte(n);
        Byte(n >> 8);
    }
    void Text(const char* pszText) { m_bytes += pszText; }
    void Color(uint32_t clr)
    {
        Byte(clr >> 16);
        Byte(clr >> 8);
        Byte(clr);
    }
    [[nodiscard]] const std::string& All() const { return m_bytes; }

private:
    std::string m_bytes;
};

// ---- colours

struct Tally {
    uint32_t clr;
    uint64_t nPixels;

    [[nodiscard]] uint32_t Channel(int nShift) const { return (clr >> nShift) & 0xFF; }
};

// Colours that are to become one.
struct ColorBox {
    std::size_t nFirst;
    std::size_t nEnd;
    int nWidest; // the shift of the channel in which they differ most
    uint32_t nSpan;
    uint64_t nPixels;

    // Which box is to be cut next: where many pixels lie far apart.
    [[nodiscard]] uint64_t Urgency() const { return nSpan * nPixels; }
};

ColorBox MakeBox(const std::vector<Tally>& tallies, std::size_t nFirst, std::size_t nEnd)
{
    ColorBox box{nFirst, nEnd, 0, 0, 0};
    for (const int nShift : {16, 8, 0}) {
        uint32_t nLow = 0xFF;
        uint32_t nHigh = 0;
        for (std::size_t n = nFirst; n < nEnd; ++n) {
            nLow = std::min(nLow, tallies[n].Channel(nShift));
            nHigh = std::max(nHigh, tallies[n].Channel(nShift));
        }
        if (nHigh - nLow <= box.nSpan) continue;
        box.nSpan = nHigh - nLow;
        box.nWidest = nShift;
    }
    for (std::size_t n = nFirst; n < nEnd; ++n) box.nPixels += tallies[n].nPixels;
    return box;
}

// Where half of the pixels lie on each side; each side keeps a colour at least.
std::size_t Median(const std::vector<Tally>& tallies, const ColorBox& box)
{
    uint64_t nPixels = 0;
    std::size_t n = box.nFirst;
    while (n + 1 < box.nEnd - 1 && (nPixels + tallies[n].nPixels) * 2 < box.nPixels)
        nPixels += tallies[n++].nPixels;
    return n + 1;
}

uint32_t MeanColor(const std::vector<Tally>& tallies, const ColorBox& box)
{
    uint32_t clr = 0;
    for (const int nShift : {16, 8, 0}) {
        uint64_t nSum = box.nPixels / 2; // rounds
        for (std::size_t n = box.nFirst; n < box.nEnd; ++n)
            nSum += tallies[n].Channel(nShift) * tallies[n].nPixels;
        clr |= static_cast<uint32_t>(nSum / box.nPixels) << nShift;
    }
    return clr;
}

// Cuts the colours at medians until there are as many boxes as places; the means of the boxes.
std::vector<uint32_t> CutColors(std::vector<Tally>& tallies)
{
    std::vector<ColorBox> boxes{MakeBox(tallies, 0, tallies.size())};
    while (boxes.size() < MAX_COLORS) {
        const auto pBox =
            std::max_element(boxes.begin(), boxes.end(), [](const ColorBox& a, const ColorBox& b) {
                return a.Urgency() < b.Urgency();
            });
        const ColorBox box = *pBox;
        if (box.nSpan == 0) break;
        std::sort(tallies.begin() + static_cast<std::ptrdiff_t>(box.nFirst),
                  tallies.begin() + static_cast<std::ptrdiff_t>(box.nEnd),
                  [&box](const Tally& a, const Tally& b) {
                      const uint32_t nA = a.Channel(box.nWidest);
                      const uint32_t nB = b.Channel(box.nWidest);
                      return nA != nB ? nA < nB : a.clr < b.clr;
                  });
        const std::size_t nCut = Median(tallies, box);
        *pBox = MakeBox(tallies, box.nFirst, nCut);
        boxes.push_back(MakeBox(tallies, nCut, box.nEnd));
    }
    std::vector<uint32_t> colors;
    colors.reserve(boxes.size());
    for (const ColorBox& box : boxes) colors.push_back(MeanColor(tallies, box));
    return colors;
}

uint32_t Distance(uint32_t clrA, uint32_t clrB)
{
    uint32_t nSum = 0;
    for (const int nShift : {16, 8, 0}) {
        const int n =
            static_cast<int>((clrA >> nShift) & 0xFF) - static_cast<int>((clrB >> nShift) & 0xFF);
        nSum += static_cast<uint32_t>(n * n);
    }
    return nSum;
}

std::size_t Nearest(const std::vector<uint32_t>& colors, uint32_t clr)
{
    std::size_t nNearest = 0;
    for (std::size_t n = 1; n < colors.size(); ++n)
        if (Distance(colors[n], clr) < Distance(colors[nNearest], clr)) nNearest = n;
    return nNearest;
}

// The colours of the file, and the place of each colour of the frames among them.
class CPalette {
public:
    void Count(const std::vector<uint32_t>& pixels)
    {
        for (const uint32_t clr : pixels) ++m_counts[clr];
    }

    void Make()
    {
        std::vector<Tally> tallies;
        tallies.reserve(m_counts.size());
        for (const auto& [clr, nPixels] : m_counts) tallies.push_back({clr, nPixels});
        // In an order of their own, so that the same frames give the same file.
        std::sort(tallies.begin(), tallies.end(),
                  [](const Tally& a, const Tally& b) { return a.clr < b.clr; });
        if (tallies.size() > MAX_COLORS)
            m_colors = CutColors(tallies);
        else
            for (const Tally& tally : tallies) m_colors.push_back(tally.clr);
        for (const Tally& tally : tallies)
            m_places[tally.clr] = static_cast<BYTE>(Nearest(m_colors, tally.clr));
        while (1U << m_nBits < m_colors.size()) ++m_nBits;
    }

    [[nodiscard]] int Bits() const { return m_nBits; } // 1 to 8
    [[nodiscard]] BYTE PlaceOf(uint32_t clr) const { return m_places.at(clr); }
    void Write(CBytes& bytes) const
    {
        for (std::size_t n = 0; n < std::size_t{1} << m_nBits; ++n)
            bytes.Color(n < m_colors.size() ? m_colors[n] : 0);
    }

private:
    std::unordered_map<uint32_t, uint64_t> m_counts;
    std::unordered_map<uint32_t, BYTE> m_places;
    std::vector<uint32_t> m_colors;
    int m_nBits = 1;
};

// ---- compression

// Codes of growing length, in blocks of at most 255 bytes.
class CCodeWriter {
public:
    explicit CCodeWriter(CBytes& bytes) : m_bytes(bytes) {}

    void Code(uint32_t nCode, int nBits)
    {
        m_nPending |= nCode << m_nPendingBits;
        m_nPendingBits += nBits;
        for (; m_nPendingBits >= 8; m_nPendingBits -= 8) {
            Put(m_nPending);
            m_nPending >>= 8;
        }
    }
    void Finish()
    {
        if (m_nPendingBits > 0) Put(m_nPending);
        Flush();
        m_bytes.Byte(0);
    }

private:
    void Put(uint32_t n)
    {
        m_block[m_nInBlock++] = static_cast<BYTE>(n);
        if (m_nInBlock == m_block.size()) Flush();
    }
    void Flush()
    {
        if (m_nInBlock == 0) return;
        m_bytes.Byte(static_cast<uint32_t>(m_nInBlock));
        for (std::size_t n = 0; n < m_nInBlock; ++n) m_bytes.Byte(m_block[n]);
        m_nInBlock = 0;
    }

    CBytes& m_bytes;
    std::array<BYTE, 255> m_block{};
    std::size_t m_nInBlock = 0;
    uint32_t m_nPending = 0;
    int m_nPendingBits = 0;
};

// The strings that have a code: by the code of the string without its last place, and that place.
class CStringTable {
public:
    CStringTable() : m_codes(MAX_CODES * MAX_COLORS) {}

    static constexpr std::size_t MAX_CODES = 4096;

    void Clear() { std::fill(m_codes.begin(), m_codes.end(), uint16_t{0}); }
    uint16_t& At(uint32_t nPrefix, BYTE nPlace) { return m_codes[nPrefix * MAX_COLORS + nPlace]; }

private:
    std::vector<uint16_t> m_codes; // 0: none, which is never the code of a longer string
};

void Compress(CBytes& bytes, CStringTable& table, const std::vector<BYTE>& places, int nPaletteBits)
{
    const int nMinBits = std::max(nPaletteBits, 2);
    const uint32_t nClear = 1U << nMinBits;
    const uint32_t nEnd = nClear + 1;
    bytes.Byte(static_cast<uint32_t>(nMinBits));
    CCodeWriter writer(bytes);
    int nBits = nMinBits + 1;
    uint32_t nNext = nEnd + 1;
    table.Clear();
    writer.Code(nClear, nBits);
    uint32_t nPrefix = places[0];
    for (std::size_t n = 1; n < places.size(); ++n) {
        uint16_t& nCode = table.At(nPrefix, places[n]);
        if (nCode) {
            nPrefix = nCode;
            continue;
        }
        writer.Code(nPrefix, nBits);
        if (nNext < CStringTable::MAX_CODES) {
            // The reader learns each string one code later, so the length grows after its number.
            if (nNext == 1U << nBits) ++nBits;
            nCode = static_cast<uint16_t>(nNext++);
        } else {
            writer.Code(nClear, nBits);
            table.Clear();
            nBits = nMinBits + 1;
            nNext = nEnd + 1;
        }
        nPrefix = places[n];
    }
    writer.Code(nPrefix, nBits);
    // The reader has learnt one more string by now.
    if (nNext == 1U << nBits && nNext < CStringTable::MAX_CODES) ++nBits;
    writer.Code(nEnd, nBits);
    writer.Finish();
}

bool WriteBytes(const std::wstring& path, const std::string& bytes)
{
    std::FILE* pFile = _wfopen(path.c_str(), L"wb");
    if (!pFile) return false;
    const bool bWritten = std::fwrite(bytes.data(), 1, bytes.size(), pFile) == bytes.size();
    return std::fclose(pFile) == 0 && bWritten;
}

void WriteHead(CBytes& bytes, SIZE size, const CPalette& palette)
{
    constexpr uint32_t GLOBAL_PALETTE = 0x80;
    constexpr uint32_t EIGHT_BITS_A_CHANNEL = 0x70;
    constexpr uint32_t ENDLESS = 0;
    bytes.Text("GIF89a");
    bytes.Word(static_cast<uint32_t>(size.cx));
    bytes.Word(static_cast<uint32_t>(size.cy));
    bytes.Byte(GLOBAL_PALETTE | EIGHT_BITS_A_CHANNEL | static_cast<uint32_t>(palette.Bits() - 1));
    bytes.Byte(0); // the background's place
    bytes.Byte(0); // square pixels
    palette.Write(bytes);
    bytes.Text("!\xFF\x0BNETSCAPE2.0\x03\x01");
    bytes.Word(ENDLESS);
    bytes.Byte(0);
}

void WriteFrameHead(CBytes& bytes, const RECT& rc, int nDelay)
{
    constexpr uint32_t LEAVE_IN_PLACE = 1 << 2;
    bytes.Text("!\xF9\x04");
    bytes.Byte(LEAVE_IN_PLACE);
    bytes.Word(static_cast<uint32_t>(nDelay));
    bytes.Byte(0); // no transparent place
    bytes.Byte(0);
    bytes.Text(",");
    bytes.Word(static_cast<uint32_t>(rc.left));
    bytes.Word(static_cast<uint32_t>(rc.top));
    bytes.Word(static_cast<uint32_t>(rc.right - rc.left));
    bytes.Word(static_cast<uint32_t>(rc.bottom - rc.top));
    bytes.Byte(0); // rows in their order, and the colours of the file
}

} // namespace

// The smallest rectangle outside of which all is as in the frame before.
RECT CGifMovie::ChangedRect(const uint32_t* pPixels) const
{
    RECT rc{m_size.cx, m_size.cy, 0, 0};
    std::size_t n = 0;
    for (LONG y = 0; y < m_size.cy; ++y) {
        for (LONG x = 0; x < m_size.cx; ++x, ++n) {
            if ((pPixels[n] & COLOR_MASK) == m_last[n]) continue;
            rc.left = std::min(rc.left, x);
            rc.top = std::min(rc.top, y);
            rc.right = std::max(rc.right, x + 1);
            rc.bottom = y + 1;
        }
    }
    return rc;
}

void CGifMovie::Store(const uint32_t* pPixels, const RECT& rc, int nDelay)
{
    Frame frame{rc, {}, nDelay};
    frame.pixels.reserve(static_cast<std::size_t>(rc.right - rc.left) *
                         static_cast<std::size_t>(rc.bottom - rc.top));
    for (LONG y = rc.top; y < rc.bottom; ++y)
        for (LONG x = rc.left; x < rc.right; ++x) {
            const std::size_t n =
                static_cast<std::size_t>(y) * static_cast<std::size_t>(m_size.cx) +
                static_cast<std::size_t>(x);
            m_last[n] = pPixels[n] & COLOR_MASK;
            frame.pixels.push_back(m_last[n]);
        }
    m_frames.push_back(std::move(frame));
}

void CGifMovie::Add(const uint32_t* pPixels, int nDelay)
{
    if (m_frames.empty()) {
        m_last.resize(static_cast<std::size_t>(m_size.cx) * static_cast<std::size_t>(m_size.cy));
        Store(pPixels, {0, 0, m_size.cx, m_size.cy}, nDelay);
        return;
    }
    const RECT rc = ChangedRect(pPixels);
    if (rc.right > rc.left)
        Store(pPixels, rc, nDelay);
    else if (m_frames.back().nDelay <= MAX_DELAY - nDelay)
        m_frames.back().nDelay += nDelay;
    else
        Store(pPixels, {0, 0, 1, 1}, nDelay); // a frame that changes nothing
}

bool CGifMovie::Write(const std::wstring& path) const
{
    CPalette palette;
    for (const Frame& frame : m_frames) palette.Count(frame.pixels);
    palette.Make();
    CBytes bytes;
    WriteHead(bytes, m_size, palette);
    CStringTable table;
    for (const Frame& frame : m_frames) {
        std::vector<BYTE> places(frame.pixels.size());
        std::transform(frame.pixels.begin(), frame.pixels.end(), places.begin(),
                       [&palette](uint32_t clr) { return palette.PlaceOf(clr); });
        WriteFrameHead(bytes, frame.rc, frame.nDelay);
        Compress(bytes, table, places, palette.Bits());
    }
    bytes.Text(";");
    return WriteBytes(path, bytes.All());
}

} // namespace qel
