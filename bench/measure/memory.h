// The peak memory of a read. It is measured in a new process, because a read after another one
// reuses memory that the process already has.
#pragma once

#include <cstddef>
#include <string>

#include "bench/ours/our_reader.h"

namespace bench {

// The peak growth of resident memory in bytes while the file is read, including the scene. With
// Route::String and Route::Text the text is loaded before and does not count. Starts this program
// as a child process, so main must call handlePeakRequest first. Linux only.
size_t peakOfRead(const std::string& path, Route route);

// If peakOfRead started this process: measures, prints the result and returns true.
bool handlePeakRequest(int argc, char** argv);

}  // namespace bench
