// What is wrong with a drawing, for its author. The checker has the engine's own parser and tables,
// so that what the engine learns it knows at once.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace qel {

struct Finding {
    std::size_t nOffset; // in the file's bytes
    bool bError; // else a warning: it is read, but has no effect or hardly the one that was meant
    std::string text; // in the bytes of the drawing's code page
};

// All findings of a file's bytes, in the order of the file.
std::vector<Finding> CheckDrawing(const std::string& bytes);

} // namespace qel
