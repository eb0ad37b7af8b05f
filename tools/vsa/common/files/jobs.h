// The option -j of the commands that work on several files at the same time.
#pragma once

#include "tools/vsa/common/command_options.h"

namespace vsa_tools {

/// Adds -j, which sets `jobs` to a number from 0 to 1024, both inclusive.
void addJobs(CommandOptions& options, unsigned& jobs);

/// Returns the number of threads: `jobs`, or one for each core if `jobs` is 0, but at least one.
unsigned workersFor(unsigned jobs);

}  // namespace vsa_tools
