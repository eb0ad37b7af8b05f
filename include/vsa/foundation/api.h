// Two attributes of declarations, empty for compilers without them.
//
// VSA_API: a name that the shared library exports. All other names are hidden.
// VSA_PRINTF(text, first): a function that formats as printf does, so that the compiler checks its
// calls. Parameter number `text` is the format, number `first` the first argument (0: a va_list). A
// member function counts its object as parameter 1.
#pragma once

#if defined(__GNUC__) || defined(__clang__)
#define VSA_API __attribute__((visibility("default")))
#define VSA_PRINTF(text, first) __attribute__((format(printf, text, first)))
#else
#define VSA_API
#define VSA_PRINTF(text, first)
#endif
