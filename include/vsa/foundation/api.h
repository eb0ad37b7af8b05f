// Two marks on declarations; both mean nothing to a compiler that does not know them.
//
// VSA_API: a name that the shared library exports. Everything else stays hidden inside it.
// VSA_PRINTF(text, first): a function that formats as printf does. Its parameter number `text` is
// the format and number `first` the first argument (0: a va_list), so that the compiler checks each
// call. A member function counts its object as parameter 1.
#pragma once

#if defined(__GNUC__) || defined(__clang__)
#define VSA_API __attribute__((visibility("default")))
#define VSA_PRINTF(text, first) __attribute__((format(printf, text, first)))
#else
#define VSA_API
#define VSA_PRINTF(text, first)
#endif
