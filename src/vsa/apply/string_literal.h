// String literals: the text between the quotes, unescaped. Internal.
#pragma once

#include <vsa/foundation/string.h>
#include "vsa/lex/token.h"

namespace zn::korvo_sdk::impl {

/// The value of a string token in memory from malloc, with a NUL after it; the caller frees it.
/// Throws std::bad_alloc.
char* copyOfStringValue(const Token& literal);

/// The value of a string token as a String.
String stringValue(const Token& literal);

}  // namespace zn::korvo_sdk::impl
