// Exemptions from sanitizer checks. Internal.
#pragma once

// Marks a function in which unsigned arithmetic intentionally wraps around or shifts bits out.
#if defined(__clang__)
#define VSA_WRAPS_AROUND \
  __attribute__((no_sanitize("unsigned-integer-overflow", "unsigned-shift-base")))
#else
#define VSA_WRAPS_AROUND
#endif
