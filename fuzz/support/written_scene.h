// Scenes that are written and read again.
#pragma once

#include <string>

#include <vsa/model/scene.h>
#include <vsa/write.h>

namespace vsa_fuzz {

/// The options that the bits of `settings` choose.
vsa::WriteOptions writeOptions(unsigned settings);

/// Writes `scene` and reads the text into a scene without the limits of a FuzzScene, which must be
/// the same one, unless the nodes were sorted. What a text cannot carry must be refused, and a
/// lossy text must be read completely. Returns the result of the first writing.
vsa::TextResult checkWritten(const zn::korvo_sdk::Scene& scene, const vsa::WriteOptions& options);

}  // namespace vsa_fuzz
