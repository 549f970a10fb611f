// What the host can set in a drawing, for qel info: status numbers, meters and scales with their
// settings, and whether their values show.
#pragma once

#include "tools/qel/Drawing.h"

void PrintHostText(const CDrawing& drawing); // lines; nothing when there is nothing to set
void PrintHostJson(const CDrawing& drawing); // members of an object, each with a comma behind it
