// Converts a list of numbers to elements in memory, many numbers per call. Internal.
//
// A list is a text of fields with exactly one blank between two fields. readNumberRun converts
// fields until it reaches a field that it cannot convert. The caller handles that field. Each value
// is equal bit for bit to the value that number_text returns.
#pragma once

#include <cstddef>

namespace zn {

/// The result of converting a list.
struct NumberRun {
  /// The start of the first field that was not converted. `end` if all fields were converted.
  const char* next;
  /// The number of stored values. They are out[0] to out[count - 1].
  size_t count;
};

/// Converts the fields of [from, end) in order and stores at most `capacity` values in `out`.
/// `from` is the first character of a field. The last field ends at `end`. The byte at `end` must
/// be readable, such as the list's closing brace or a NUL. The function reads no other byte outside
/// of the list.
///
/// Stops before an empty field, before a field that number_text does not accept for this type, and
/// when `capacity` values are stored. If the last field is empty (a blank is before `end`), the
/// field before it is not converted either. Therefore `next == end` always means that every field
/// was converted. A list with from == end has no field. Throws nothing and allocates nothing.
///
/// Instances: float, double, signed and unsigned char, short, int and long long. The function
/// selects the implementation for the processor at run time.
template <class Number>
NumberRun readNumberRun(const char* from, const char* end, Number* out, size_t capacity);

}  // namespace zn
