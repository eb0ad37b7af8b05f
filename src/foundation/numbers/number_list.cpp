// The way through a list: a form takes the usual pieces in long runs, number_text an unusual one in
// between; the last few dozen bytes are first copied to where the form can read past them.

#include "foundation/numbers/number_list.h"

#include <algorithm>
#include <cstring>
#include <string_view>
#include <type_traits>

#include "foundation/base/cpu_features.h"
#include "foundation/numbers/number_field.h"
#include "foundation/numbers/number_list_kernels.h"
#include "foundation/numbers/number_text.h"

namespace zn {
namespace numbers {
namespace {

template <class Number>
bool numberFromText(const char* first, const char* last, Number& out) {
  if constexpr (std::is_floating_point_v<Number>) {
    return realFromText(first, last, out);
  } else {
    return integerFromText(first, last, out);
  }
}

/// The pieces of a text shorter than the form's window, from a copy with blanks after it.
template <class Number>
NumberRun readTail(NumberForm<Number> form, const char* from, size_t length, Number* out,
                   size_t room) {
  char copy[2 * FORM_WINDOW];
  std::memset(copy, ' ', sizeof copy);
  std::memcpy(copy, from, length);
  const NumberRun run = form(copy, copy + length - 1, out, room);
  // The last piece's blank is the copy's own, so the step over it must not count.
  return {from + std::min(static_cast<size_t>(run.next - copy), length), run.count};
}

/// As many usual pieces as follow each other, up to the very end.
template <class Number>
NumberRun readUsual(NumberForm<Number> form, const char* from, const char* end, Number* out,
                    size_t room) {
  NumberRun run{from, 0};
  if (static_cast<size_t>(end - from) >= FORM_WINDOW) {
    const char* const limit = end - FORM_WINDOW;
    run = form(from, limit, out, room);
    if (run.next <= limit) return run;
  }
  // At least one: no usual piece is as long as the window.
  const auto length = static_cast<size_t>(end - run.next);
  const NumberRun tail = readTail(form, run.next, length, out + run.count, room - run.count);
  return {tail.next, run.count + tail.count};
}

/// `run` without its last number, when a blank after that is all that is left of the list: the
/// empty piece behind the blank would go unseen.
NumberRun withoutLastOfBlankEnd(const char* from, const char* end, NumberRun run) {
  if (run.count == 0 || run.next != end || end[-1] != ' ') return run;
  const std::string_view before(from, static_cast<size_t>(end - from) - 1);
  const size_t blank = before.rfind(' ');
  return {blank == std::string_view::npos ? from : from + blank + 1, run.count - 1};
}

}  // namespace

template <class Number>
NumberRun readNumberRunWith(NumberForm<Number> form, const char* from, const char* end, Number* out,
                            size_t room) {
  NumberRun run{from, 0};
  while (run.next != end && run.count < room) {
    const NumberRun usual = readUsual(form, run.next, end, out + run.count, room - run.count);
    run = {usual.next, run.count + usual.count};
    if (run.next == end || run.count == room) break;
    const char* const pieceEnd = std::find(run.next, end, ' ');
    if (!numberFromText(run.next, pieceEnd, out[run.count])) break;
    run = {pieceEnd == end ? end : pieceEnd + 1, run.count + 1};
  }
  return withoutLastOfBlankEnd(from, end, run);
}

template <class Number>
NumberRun readPiecesPortably(const char* at, const char* limit, Number* out, size_t room) {
  NumberRun run{at, 0};
  while (run.next <= limit && run.count < room) {
    const char* const pieceEnd = numberPiece(run.next, out[run.count]);
    if (pieceEnd == nullptr) break;
    run = {pieceEnd + 1, run.count + 1};
  }
  return run;
}

namespace {

template <class Number>
NumberForm<Number> bestForm() {
#if VSA_HAS_AVX2_FORM
  if constexpr (HAS_AVX2_FORM<Number>) {
    if (cpuHasAvx2()) return readPiecesAvx2<Number>;
  }
#endif
#if VSA_HAS_SSE41_FORM
  if (cpuHasSse41()) return readPiecesSse41<Number>;
#endif
  return readPiecesPortably<Number>;
}

}  // namespace
}  // namespace numbers

template <class Number>
NumberRun readNumberRun(const char* from, const char* end, Number* out, size_t room) {
  return numbers::readNumberRunWith(numbers::bestForm<Number>(), from, end, out, room);
}

// NOLINTBEGIN(bugprone-macro-parentheses): no parentheses fit around a type
#define VSA_INSTANCES(Number)                                                                \
  template NumberRun readNumberRun(const char*, const char*, Number*, size_t);               \
  template NumberRun numbers::readPiecesPortably(const char*, const char*, Number*, size_t); \
  template NumberRun numbers::readNumberRunWith(numbers::NumberForm<Number>, const char*,    \
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
