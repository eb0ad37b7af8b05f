// The option -j of the commands that work on several files at the same time.
#pragma once

#include "tools/vsa/common/command_options.h"

namespace vsa_tools {

/// Adds -j, which sets `jobs`: 0 to 1024.
void addJobs(CommandOptions& options, unsigned& jobs);

/// The number of threads: `jobs`, or one for each core if `jobs` is 0.
unsigned workersFor(unsigned jobs);

}  // namespace vsa_tools
