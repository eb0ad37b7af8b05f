// Converts input paths to text. Internal.
#pragma once

#include <span>

#include <vsa/foundation/string.h>
#include "vsa/lex/token.h"

namespace zn::korvo_sdk::impl {

/// Concatenates the texts of a path's tokens.
String collapsedPath(std::span<const Token> path);

}  // namespace zn::korvo_sdk::impl
