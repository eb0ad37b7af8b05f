// A host's scene whose functions do almost nothing. A benchmark that reads into this scene measures
// the time of the reader alone.
#pragma once

#include <string>

#include "bench/measure/comparison.h"
#include "bench/scenes/text_generator.h"

namespace bench {

// Returns a candidate that reads the text into such a scene. Reads the text once first, and checks
// how many values the read assigned.
Candidate nullSceneReader(const Text& vsa);

}  // namespace bench
