// Unescapes string literals. Internal.
#pragma once

#include <string_view>

#include <vsa/foundation/string.h>
#include "vsa/apply/read_session.h"

namespace zn::korvo_sdk::impl {

/// Returns the value of a string literal, NUL-terminated, in memory from malloc. The caller frees
/// it. If `hasBackslash` is false, the literal must not contain a backslash. `session` may be null.
/// Otherwise it is polled while a long literal is unescaped, and may throw ReadStopped. Throws
/// std::bad_alloc.
char* copyOfStringValue(std::string_view literal, bool hasBackslash, ReadSession* session);

/// Returns the value of a string literal as a String, up to its first NUL.
String stringValue(std::string_view literal);

}  // namespace zn::korvo_sdk::impl
