// What a drawing's file says of the code page of its texts, and what a save of it says.
#pragma once

#include "base/TextPages.h"

struct XmlContext;

constexpr std::size_t ENCODING_SIZE = 48; // of a name, the ending zero included

struct TextEncoding {
    uint32_t nPage = PAGE_GB2312;          // as the drawing declares it
    char szName[ENCODING_SIZE] = "gb2312"; // as a save declares it
    bool bMark = false;                    // a save begins with a byte order mark
};

// Of a file that was read. nSetPage: what the host had set for its texts; with PAGE_ANSI a save
// declares what it does for all drawings.
TextEncoding EncodingOfFile(const XmlContext& xml, uint32_t nSetPage);

// Of a new drawing in a page that has a name.
TextEncoding EncodingFor(uint32_t nPage);
