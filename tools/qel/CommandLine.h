// Reads the arguments of a command: options as users of such tools write them, names, and what
// stands for arguments in files.
#pragma once

#include "tools/qel/Command.h"

namespace qel {

// CTrouble for what is no option, has no value, or cannot be read. The commands are those that the
// help lists.
CommandLine ReadCommandLine(const CommandRow& command, const Arguments& words,
                            const CommandRows& commands = {});

} // namespace qel
