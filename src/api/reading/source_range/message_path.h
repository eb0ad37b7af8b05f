// The path of the input that a message names. Internal.
#pragma once

#include <string_view>

#include <vsa/diagnostics/diagnostic_table.h>

namespace vsa {

/// The path that stands in the message of that id; empty if the message has none.
std::string_view pathInMessage(zn::korvo_sdk::DiagnosticId id, std::string_view message);

}  // namespace vsa
