// Converts a whole text to a number, independent of the locale. Scalars, tuples and
// buffers share these conversions, so a text has the same value everywhere. Internal.
//
// White space around the number (blank, \t \n \v \f \r) is ignored; an empty text is refused.
//
//   integer = ["+" | "-"] digits [("e" | "E") ["+"] digits] ["u"]
//   real    = ["+" | "-"] (digits ["." [digits]] | "." digits) [("e" | "E") ["+" | "-"] digits]
//             ["f" | "F"]
//           | ["+" | "-"] ("inf" | "nan")          in any letter case
//
// Both conversions take time linear in the length of the text, even if it or its exponent has many
// digits.
#pragma once

#include <type_traits>

namespace zn {

/// Converts [first, last) to an integer; `1e5` is 100000. Returns false, with `out` unchanged, when
/// the text has another form, is out of the target's range, or has a "-" and the target is unsigned
/// (even `-0`). Throws nothing, allocates nothing. Targets: signed and unsigned char, short, int,
/// long, long long.
template <class Integer>
bool integerFromText(const char* first, const char* last, Integer& out);

/// Converts [first, last) to a real, rounded to the nearest value of the target, ties to even. A
/// float is rounded from the text itself, not from a double. A text too small for the target gives
/// the nearest denormal or a zero, with its sign. Returns false, with `out` unchanged, when the
/// text has another form or a finite text overflows. Throws nothing, allocates nothing.
bool realFromText(const char* first, const char* last, float& out);
bool realFromText(const char* first, const char* last, double& out);

/// Calls the function above for the type.
template <class Number>
bool numberFromText(const char* first, const char* last, Number& out) {
  if constexpr (std::is_floating_point_v<Number>) {
    return realFromText(first, last, out);
  } else {
    return integerFromText(first, last, out);
  }
}

extern template bool integerFromText(const char*, const char*, signed char&);
extern template bool integerFromText(const char*, const char*, unsigned char&);
extern template bool integerFromText(const char*, const char*, short&);
extern template bool integerFromText(const char*, const char*, unsigned short&);
extern template bool integerFromText(const char*, const char*, int&);
extern template bool integerFromText(const char*, const char*, unsigned int&);
extern template bool integerFromText(const char*, const char*, long&);
extern template bool integerFromText(const char*, const char*, unsigned long&);
extern template bool integerFromText(const char*, const char*, long long&);
extern template bool integerFromText(const char*, const char*, unsigned long long&);

}  // namespace zn
