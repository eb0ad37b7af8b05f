// Writes scenes and reads them back.
#pragma once

#include <string>

#include <vsa/model/scene.h>
#include <vsa/write.h>

namespace vsa_fuzz {

/// The options for the bits of `settings`.
vsa::WriteOptions writeOptions(unsigned settings);

/// Writes `scene` and reads the text into another scene without the limits of a FuzzScene. Both
/// scenes must be equal, unless the nodes were sorted. The writer must report whatever a text
/// cannot represent, and a lossy text must be read completely. Returns the result of the first call
/// of the writer.
vsa::TextResult checkWritten(const zn::korvo_sdk::Scene& scene, const vsa::WriteOptions& options);

}  // namespace vsa_fuzz
