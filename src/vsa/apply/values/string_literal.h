// String literals: the text between the quotes, unescaped. Internal.
#pragma once

#include <string_view>

#include <vsa/foundation/string.h>
#include "vsa/apply/read_session.h"

namespace zn::korvo_sdk::impl {

/// The value of a string literal in memory from malloc, NUL-terminated. The caller frees it.
/// `hasBackslash`: whether the literal may contain a backslash. A session, if there is one, is
/// polled while a long literal is unescaped, and may end the reading. Throws std::bad_alloc.
char* copyOfStringValue(std::string_view literal, bool hasBackslash, ReadSession* session);

/// The value of a string literal as a String.
String stringValue(std::string_view literal);

}  // namespace zn::korvo_sdk::impl
