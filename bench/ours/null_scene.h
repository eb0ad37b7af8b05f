// NullScene: a host's scene whose functions do nothing, to measure the time of the reader alone.
#pragma once

#include <string>

#include "bench/measure/comparison.h"
#include "bench/scenes/text_generator.h"

namespace bench {

// A candidate that reads the text into a scene that stores nothing. It checks how many values a
// first read assigned.
Candidate nullSceneReader(const Text& vsa);

}  // namespace bench
