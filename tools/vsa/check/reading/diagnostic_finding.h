// findingOf(): converts a diagnostic of the reader to a finding.
#pragma once

#include <vsa/reading/read_diagnostic.h>
#include "tools/vsa/check/finding.h"
#include "tools/vsa/common/read_arguments.h"

namespace vsa_tools {

/// Returns the finding of a diagnostic. `reading` determines whether long names and values are
/// shortened.
Finding findingOf(const vsa::Diagnostic& diagnostic, const ReadArguments& reading);

}  // namespace vsa_tools
