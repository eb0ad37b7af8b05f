// Converts a whole text to a number, independent of the locale. Internal.
//
// Scalars, tuples and buffers use these conversions, so that a text has the same value everywhere.
// The functions ignore white space before and after the number (blank, \t \n \v \f \r). They do not
// accept an empty text.
//
//   integer = ["+" | "-"] digits [("e" | "E") ["+"] digits] ["u"]
//   real    = ["+" | "-"] (digits ["." [digits]] | "." digits) [("e" | "E") ["+" | "-"] digits]
//             ["f" | "F"]
//           | ["+" | "-"] ("inf" | "nan")          in any letter case
//
// Both conversions take time linear in the length of the text, even if the text has many digits or
// a large exponent.
#pragma once

#include <type_traits>

namespace zn {

/// Converts [first, last) to an integer. For example, `1e5` is 100000. Returns false and does not
/// change `out` if the text has another form or is out of the range of the target type. Also
/// returns false for a "-" if the target type is unsigned, even for `-0`. Throws nothing and
/// allocates nothing.
///
/// Target types: signed and unsigned char, short, int, long, long long.
template <class Integer>
bool integerFromText(const char* first, const char* last, Integer& out);

/// Converts [first, last) to a real. Rounds to the nearest value of the target type, with ties to
/// even. A float is rounded from the text itself and not from a double. If the number is too small
/// for the target type, the result is the nearest denormal or a zero, with the sign of the text.
/// Returns false and does not change `out` if the text has another form or a finite number
/// overflows. Throws nothing and allocates nothing.
bool realFromText(const char* first, const char* last, float& out);
bool realFromText(const char* first, const char* last, double& out);

/// Calls realFromText or integerFromText, depending on the type.
template <class Number>
bool numberFromText(const char* first, const char* last, Number& out) {
  if constexpr (std::is_floating_point_v<Number>) {
    return realFromText(first, last, out);
  } else {
    return integerFromText(first, last, out);
  }
}

}  // namespace zn
