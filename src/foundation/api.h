// Marks the names that the shared library exports. Everything else stays hidden inside it.
#pragma once

#if defined(__GNUC__) || defined(__clang__)
#define VSA_API __attribute__((visibility("default")))
#define VSA_PRINTF(text, first) __attribute__((format(printf, text, first)))
#else
#define VSA_API
#define VSA_PRINTF(text, first)
#endif
