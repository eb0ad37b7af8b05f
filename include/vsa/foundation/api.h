// Three attributes for declarations. Each is empty for a compiler that does not support it.
//
// VSA_API: the shared library exports this name. Names without it are hidden.
//
// VSA_LOCAL: the shared library hides this member although it exports the class.
//
// VSA_PRINTF(text, first): the function takes a printf format, and the compiler checks the
// arguments of its calls. `text` is the number of the parameter with the format. `first` is the
// number of the first argument, or 0 for a va_list. Parameters count from 1. In a member function
// the object is parameter 1.
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
