// The identifiers of a drawing and what the host can set by each, for qel info.
#pragma once

#include "tools/qel/HostElements.h"

#include <nlohmann/json_fwd.hpp>

#include <string>
#include <vector>

namespace qel {

void PrintIds(const HostElements& elements); // lines; nothing when no element has an identifier
nlohmann::ordered_json IdsJson(const HostElements& elements); // a list, which may be empty

// In lines of at most a hundred characters, indented, with commas between.
void PrintIndented(const std::vector<std::string>& words);

// A text on one line, whatever is in it.
std::string Quoted(const std::string& utf8);

} // namespace qel
