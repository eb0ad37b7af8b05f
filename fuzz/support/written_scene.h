// Writes scenes and reads them back.
#pragma once

#include <string>

#include <vsa/model/scene.h>
#include <vsa/write.h>

namespace vsa_fuzz {

/// Returns the options that the bits of `settings` select.
vsa::WriteOptions writeOptions(unsigned settings);

/// Writes `scene` and reads the text into another scene, which does not have the limits of a
/// FuzzScene. Fails if the two scenes differ, or if the second scene is written as another text.
/// Exception: if the writer sorts the nodes, the scenes are not compared, because their nodes have
/// different orders. If a text cannot represent `scene`, the writer must write nothing and report
/// at least one problem, and as many as for the lossy text. The reader must read the lossy text
/// completely. Returns the result of the first call of the writer.
vsa::TextResult checkWritten(const zn::korvo_sdk::Scene& scene, const vsa::WriteOptions& options);

}  // namespace vsa_fuzz
