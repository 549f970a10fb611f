// What the host can set in a drawing, for qel info: status numbers, meters and scales with their
// settings, and whether their values show.
#pragma once

#include "tools/qel/Drawing.h"

#include <nlohmann/json_fwd.hpp>

namespace qel {

void PrintHostText(const CDrawing& drawing); // lines; nothing when there is nothing to set
nlohmann::ordered_json HostJson(const CDrawing& drawing); // an object of lists, each may be empty

} // namespace qel
