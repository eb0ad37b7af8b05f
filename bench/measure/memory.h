// Measures the peak memory of a read. Each measurement runs in a new process, because a second read
// would reuse the memory of the first.
#pragma once

#include <cstddef>
#include <string>

#include "bench/ours/our_reader.h"

namespace bench {

// Returns the peak growth of resident memory in bytes during the read of the file, including the
// scene. With Route::String and Route::Text, the text is loaded before the measurement and does not
// count. Starts this program as a child process, so main must call handlePeakRequest first. Works
// on Linux only.
size_t peakOfRead(const std::string& path, Route route);

// If peakOfRead started this process: measures, prints the result and returns true. Otherwise
// returns false.
bool handlePeakRequest(int argc, char** argv);

}  // namespace bench
