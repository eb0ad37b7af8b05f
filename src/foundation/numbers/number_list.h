// From the characters of a list of numbers straight into element memory, many numbers a call.
//
// A list is a text of pieces separated by exactly one blank each. readNumberRun converts as many of
// them in a row as it can and leaves the first one that it cannot to the caller, who knows what to
// say about it. Each value equals, bit for bit, what number_text makes of the piece.

#pragma once

#include <cstddef>

namespace zn {

/// How far a run went.
struct NumberRun {
  /// The start of the first piece that was not converted; `end` when all were.
  const char* next;
  /// Numbers stored, at out[0] to out[count - 1].
  size_t count;
};

/// Converts the pieces of [from, end), in order, into `out`, at most `room` (elements) of them.
/// `from` is the first character of a piece; the last piece ends at `end`, where one more byte
/// stands that may be read (the list's closing brace, or a NUL). Nothing outside is ever read.
///
/// Stops in front of a piece that is empty, that number_text refuses for this type, or that finds
/// no room. A last piece that is empty (a blank in front of `end`) keeps the piece before it from
/// being converted too, so that `next == end` always says that every piece was converted; an empty
/// list (from == end) has none. Throws nothing, allocates nothing.
///
/// Instances: float, double, signed and unsigned char, short, int and long long. The form that
/// suits the processor is chosen at run time.
template <class Number>
NumberRun readNumberRun(const char* from, const char* end, Number* out, size_t room);

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
