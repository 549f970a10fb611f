// A second engine with the drawing that another one has open, for pictures and pages of it.
#pragma once

#include "include/QELEngine.h"

namespace studio {

HQELENGINE CopyOf(HQELENGINE hShown); // null when there is none; the caller destroys it

} // namespace studio
