// Diagnostics about links that could not be made.
#pragma once

#include <vsa/reading/read_diagnostic.h>

namespace vsa_tools {

/// Whether a diagnostic reports a link that was not made: to a node or an output that does not
/// exist, or from an input of another type.
inline bool isBrokenLink(vsa::DiagnosticId id) {
  using vsa::DiagnosticId;
  return id == DiagnosticId::NoNodeToConnect || id == DiagnosticId::NoNodeToAssign ||
         id == DiagnosticId::NoOutputToConnect || id == DiagnosticId::InvalidOutput ||
         id == DiagnosticId::CannotAssignNode;
}

}  // namespace vsa_tools
