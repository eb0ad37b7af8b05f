// Diagnostics about links that could not be resolved.
#pragma once

#include <vsa/reading/read_diagnostic.h>

namespace vsa_tools {

/// Returns whether a diagnostic reports a link that was not made. Its node or output does not
/// exist, or its input has another type.
inline bool isBrokenLink(vsa::DiagnosticId id) {
  using vsa::DiagnosticId;
  return id == DiagnosticId::NoNodeToConnect || id == DiagnosticId::NoNodeToAssign ||
         id == DiagnosticId::NoOutputToConnect || id == DiagnosticId::InvalidOutput ||
         id == DiagnosticId::CannotAssignNode;
}

}  // namespace vsa_tools
