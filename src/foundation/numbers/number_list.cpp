// Converts lists of numbers. A kernel converts sequences of plain fields (see number_field.h).
// There is one kernel for each kind of processor. number_text converts the fields that the kernel
// does not convert. The end of the list is converted from a copy, so that the kernel may read past
// the end.
#include "foundation/numbers/number_list.h"

#include <algorithm>
#include <cstring>
#include <string_view>

#include "foundation/base/cpu_features.h"
#include "foundation/numbers/number_field.h"
#include "foundation/numbers/number_list_kernels.h"
#include "foundation/numbers/number_text.h"

namespace zn {
namespace numbers {
namespace {

/// Converts the fields in the last `length` bytes of a list from a copy that is followed by blanks.
/// `length` must be less than FIELD_WINDOW.
template <class Number>
NumberRun readTail(NumberKernel<Number> kernel, const char* from, size_t length, Number* out,
                   size_t capacity) {
  char copy[2 * FIELD_WINDOW];
  std::memset(copy, ' ', sizeof copy);
  std::memcpy(copy, from, length);
  const NumberRun run = kernel(copy, copy + length - 1, out, capacity);
  // The blank after the last field is in the copy and not in the list.
  return {from + std::min(static_cast<size_t>(run.next - copy), length), run.count};
}

/// Converts plain fields. Stops at the first field that the kernel does not convert, at the end of
/// the list, and when `capacity` values are stored.
template <class Number>
NumberRun readPlainFields(NumberKernel<Number> kernel, const char* from, const char* end,
                          Number* out, size_t capacity) {
  NumberRun run{from, 0};
  if (static_cast<size_t>(end - from) >= FIELD_WINDOW) {
    const char* const limit = end - FIELD_WINDOW;
    run = kernel(from, limit, out, capacity);
    if (run.next <= limit) return run;
  }
  // At least one character remains: a kernel converts no field of more than 31 characters, so the
  // last field that it converted and its blank end before `end`.
  const auto length = static_cast<size_t>(end - run.next);
  const NumberRun tail = readTail(kernel, run.next, length, out + run.count, capacity - run.count);
  return {tail.next, run.count + tail.count};
}

/// Removes the last number of `run` if only a blank follows it in the list. In this case the list
/// ends in an empty field, which cannot be converted. If the number stayed in the run, `next` would
/// be equal to `end`, which means that all fields were converted.
NumberRun withoutLastBeforeBlank(const char* from, const char* end, NumberRun run) {
  if (run.count == 0 || run.next != end || end[-1] != ' ') return run;
  const std::string_view before(from, static_cast<size_t>(end - from) - 1);
  const size_t blank = before.rfind(' ');
  return {blank == std::string_view::npos ? from : from + blank + 1, run.count - 1};
}

}  // namespace

template <class Number>
NumberRun readNumberRunWith(NumberKernel<Number> kernel, const char* from, const char* end,
                            Number* out, size_t capacity) {
  NumberRun run{from, 0};
  while (run.next != end && run.count < capacity) {
    const NumberRun plain =
        readPlainFields(kernel, run.next, end, out + run.count, capacity - run.count);
    run = {plain.next, run.count + plain.count};
    if (run.next == end || run.count == capacity) break;
    const char* const fieldEnd = std::find(run.next, end, ' ');
    if (!numberFromText(run.next, fieldEnd, out[run.count])) break;
    run = {fieldEnd == end ? end : fieldEnd + 1, run.count + 1};
  }
  return withoutLastBeforeBlank(from, end, run);
}

template <class Number>
NumberRun readFieldsPortably(const char* at, const char* limit, Number* out, size_t capacity) {
  NumberRun run{at, 0};
  while (run.next <= limit && run.count < capacity) {
    const char* const fieldEnd = readField(run.next, out[run.count]);
    if (fieldEnd == nullptr) break;
    run = {fieldEnd + 1, run.count + 1};
  }
  return run;
}

namespace {

template <class Number>
NumberKernel<Number> bestKernel() {
#if defined(__x86_64__)
  if constexpr (HAS_AVX2_KERNEL<Number>) {
    if (cpuHasAvx2()) return readFieldsAvx2<Number>;
  }
  if (cpuHasSse41()) return readFieldsSse41<Number>;
#endif
  return readFieldsPortably<Number>;
}

}  // namespace
}  // namespace numbers

template <class Number>
NumberRun readNumberRun(const char* from, const char* end, Number* out, size_t capacity) {
  return numbers::readNumberRunWith(numbers::bestKernel<Number>(), from, end, out, capacity);
}

// NOLINTBEGIN(bugprone-macro-parentheses): no parentheses fit around a type
#define VSA_INSTANCES(Number)                                                                \
  template NumberRun readNumberRun(const char*, const char*, Number*, size_t);               \
  template NumberRun numbers::readFieldsPortably(const char*, const char*, Number*, size_t); \
  template NumberRun numbers::readNumberRunWith(numbers::NumberKernel<Number>, const char*,  \
                                                const char*, Number*, size_t);
// NOLINTEND(bugprone-macro-parentheses)
VSA_INSTANCES(float)
VSA_INSTANCES(double)
VSA_INSTANCES(signed char)
VSA_INSTANCES(unsigned char)
VSA_INSTANCES(short)
VSA_INSTANCES(unsigned short)
VSA_INSTANCES(int)
VSA_INSTANCES(unsigned int)
VSA_INSTANCES(long long)
VSA_INSTANCES(unsigned long long)
#undef VSA_INSTANCES

}  // namespace zn
