// Converts the characters of a list of numbers to elements in memory, many numbers per call.
// Internal.
//
// A list is a text of fields separated by exactly one blank each. readNumberRun converts fields
// until it reaches one that it cannot convert, which the caller reports. Each value is equal bit
// for bit to that of number_text.
#pragma once

#include <cstddef>

namespace zn {

/// The result of converting a list.
struct NumberRun {
  /// The start of the first field that was not converted; `end` when all were.
  const char* next;
  /// The number of values stored, at out[0] to out[count - 1].
  size_t count;
};

/// Converts the fields of [from, end), in order, into `out`, at most `capacity` (elements) of them.
/// `from` is the first character of a field. The last field ends at `end`, where one more byte must
/// be readable (the list's closing brace, or a NUL). Nothing else outside is read.
///
/// Stops before a field that is empty, that number_text does not accept for this type, or that
/// exceeds `capacity`. When the last field is empty (a blank before `end`), the field before it is
/// not converted either, so that `next == end` always means that every field was converted. An
/// empty list (from == end) has no field. Throws nothing, allocates nothing.
///
/// Instances: float, double, signed and unsigned char, short, int and long long. The kernel for the
/// processor is chosen at run time.
template <class Number>
NumberRun readNumberRun(const char* from, const char* end, Number* out, size_t capacity);

extern template NumberRun readNumberRun(const char*, const char*, float*, size_t);
extern template NumberRun readNumberRun(const char*, const char*, double*, size_t);
extern template NumberRun readNumberRun(const char*, const char*, signed char*, size_t);
extern template NumberRun readNumberRun(const char*, const char*, unsigned char*, size_t);
extern template NumberRun readNumberRun(const char*, const char*, short*, size_t);
extern template NumberRun readNumberRun(const char*, const char*, unsigned short*, size_t);
extern template NumberRun readNumberRun(const char*, const char*, int*, size_t);
extern template NumberRun readNumberRun(const char*, const char*, unsigned int*, size_t);
extern template NumberRun readNumberRun(const char*, const char*, long long*, size_t);
extern template NumberRun readNumberRun(const char*, const char*, unsigned long long*, size_t);

}  // namespace zn
