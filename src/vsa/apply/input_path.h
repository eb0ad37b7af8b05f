// Input paths as text. Internal.
#pragma once

#include <vsa/foundation/string.h>
#include <vsa/foundation/vector.h>
#include "vsa/lex/token.h"

namespace zn::korvo_sdk::impl {

/// Concatenates the texts of a path's tokens.
String collapsedPath(const ds::Vector<Token>& path);

}  // namespace zn::korvo_sdk::impl
