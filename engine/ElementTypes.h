// The element types of this engine; the rows and what they tell are document/ElementTypes.h.
#pragma once

#include "document/ElementTypes.h"

extern const CElementTypes g_elementTypes;
