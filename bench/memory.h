// How much memory a whole read takes at its peak. Each figure is taken in a process of its own, so
// that nothing left behind by an earlier read is used again unseen.
#pragma once

#include <cstddef>
#include <string>

#include "bench/our_reader.h"

namespace bench {

// Bytes by which the resident memory grows at most while the file's text is read, the scene
// included. By Route::String the text is in memory before the count begins, and does not count.
// Works in programs that call answerPeakRequest first thing in main. Linux only.
size_t peakOfRead(const std::string& path, Route route);

// True when this process was started to take such a figure; it has then been printed.
bool answerPeakRequest(int argc, char** argv);

}  // namespace bench
