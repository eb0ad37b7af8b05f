// Diagnostics about links that could not be resolved.
#pragma once

#include <vsa/reading/read_diagnostic.h>

namespace vsa_tools {

/// Returns whether a diagnostic reports a link that was not made: its node or output does not
/// exist, its source is no path `node.output`, or the input of a reference has another type.
inline bool isBrokenLink(vsa::DiagnosticId id) {
  using vsa::DiagnosticId;
  return id == DiagnosticId::NoNodeToConnect || id == DiagnosticId::NoNodeToAssign ||
         id == DiagnosticId::NoOutputToConnect || id == DiagnosticId::InvalidOutput ||
         id == DiagnosticId::CannotAssignNode;
}

}  // namespace vsa_tools
