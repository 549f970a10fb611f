// Why a call failed, as the layers below the exported functions tell it to them. The codes are
// QEL_ERROR_... of the exported header; their sentences stand in engine/Errors.cpp.
#pragma once

#include <cstdint>

struct Failure {
    uint32_t nCode = 0;
    uint32_t nLine = 0; // in the text that could not be read, from 1; 0: no place in a text
    uint32_t nColumn = 0;
    uint32_t nSystem = 0; // what GetLastError told; 0: the system was not asked
};
