// Three attributes of declarations. All are empty for compilers that do not support them.
//
// VSA_API: the shared library exports the name. It hides all other names.
// VSA_LOCAL: the shared library hides this member of an exported class.
// VSA_PRINTF(text, first): the function formats like printf, so the compiler checks its calls.
// Parameter number `text` is the format, number `first` is the first argument (0 for a va_list).
// In a member function the object is parameter 1.
#pragma once

#if defined(__GNUC__) || defined(__clang__)
#define VSA_API __attribute__((visibility("default")))
#define VSA_LOCAL __attribute__((visibility("hidden")))
#define VSA_PRINTF(text, first) __attribute__((format(printf, text, first)))
#else
#define VSA_API
#define VSA_LOCAL
#define VSA_PRINTF(text, first)
#endif
