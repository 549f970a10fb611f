// Reads the arguments of a command: options as users of such tools write them, names, and what
// stands for arguments in files.
#pragma once

#include "tools/qel/Command.h"

namespace qel {

// CTrouble for what is no option, has no value, or cannot be read.
CommandLine ReadCommandLine(const CommandRow& command, const Arguments& words);

} // namespace qel
