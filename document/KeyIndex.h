// Which row of a keyword table a name may be in, by the key that the XML tree has of it: each row
// stands in the first free place from the one that its name's key asks for.
#pragma once

#include "xml/XmlTree.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

inline constexpr std::size_t NO_ROW = 0xFF;

template <std::size_t ROWS> // the row that ends the table counted
class CKeyIndex {
public:
    template <class Row>
    constexpr explicit CKeyIndex(const Row (&rows)[ROWS])
    {
        for (uint8_t& n : m_places) n = NO_ROW;
        for (std::size_t nRow = 0; nRow + 1 < ROWS; ++nRow) {
            const std::string_view name = rows[nRow].pszName;
            std::size_t n = PlaceOf(XmlNameKey(name.data(), name.size()));
            while (m_places[n] != NO_ROW) n = (n + 1) % PLACES;
            m_places[n] = static_cast<uint8_t>(nRow);
        }
    }

    // The first row for which isIt, of those that a name of that key may be in; NO_ROW for none.
    template <class IsIt>
    [[nodiscard]] std::size_t Find(uint32_t nKey, const IsIt& isIt) const
    {
        std::size_t n = PlaceOf(nKey);
        while (m_places[n] != NO_ROW && !isIt(std::size_t{m_places[n]})) n = (n + 1) % PLACES;
        return m_places[n];
    }

private:
    static constexpr std::size_t PLACES = 128;
    static_assert(2 * ROWS <= PLACES, "some places stay free, and most names are in their own");

    static constexpr std::size_t PlaceOf(uint32_t nKey) { return nKey >> 25; }

    std::array<uint8_t, PLACES> m_places{};
};
