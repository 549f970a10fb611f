// The encoding of the drawing that the program is at: as it declares it, and what is wrong with it.
#pragma once

#include "tools/qel/Checker.h"

#include <cstddef>
#include <string>
#include <vector>

namespace qel {

// The code page that the bytes of a drawing are in.
unsigned DeclaredPage(const std::string& bytes);

// That of the drawing at hand; of gb2312 before there is one.
void SetDrawingPage(unsigned nPage);
unsigned DrawingPage();

// How many bytes the character at a place has; 0 for bytes that are none of the drawing's page.
std::size_t CharacterAt(const std::string& text, std::size_t nAt);

// The bytes of the drawing at hand that are no text, and declarations that do not hold.
std::vector<Finding> EncodingFindings(const std::string& bytes);

} // namespace qel
