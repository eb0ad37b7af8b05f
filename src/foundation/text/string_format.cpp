// Formats texts by the conventions of printf. The result can have any length.
//
// A plain %s is appended without the C library, which cannot format a text of more than INT_MAX
// bytes: its lengths have type int. Every other known conversion except %% is passed to the C
// library, one conversion at a time. If the C library fails, for example because the result would
// be too long for it, the conversion adds nothing. An unknown conversion is copied unchanged. %n is
// unknown, so no format can write to memory.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>
#include <string_view>

#include <vsa/foundation/string.h>
#include "foundation/base/argument_list.h"

namespace zn {

namespace {

// A va_list in a struct. The struct can be passed by reference even if va_list is an array type.
struct Arguments {
  va_list list;
};

// The length modifier of a conversion. Int represents no modifier, `h` and `hh`, and an invalid
// one: an integer argument is then an int, because a char or a short is promoted.
enum class Length { Int, Long, LongLong, Size, IntMax, PtrDiff, LongDouble };

class Formatter {
 public:
  Formatter(const char* format, Arguments& arguments) : at_(format), arguments_(arguments) {}

  // Returns the formatted text. If %c writes a NUL, the text ends before it, as in C.
  String run() {
    while (*at_ != '\0') {
      const char* const percent = std::strchr(at_, '%');
      if (percent == nullptr) {
        text_ += at_;
        break;
      }
      text_.append(at_, percent);
      at_ = percent;
      conversion();
    }
    return String::copyOf(std::string_view(text_).substr(0, end_));
  }

 private:
  void conversion() {
    const char* const start = at_++;
    conversion_ = "%";
    copyWhile("-+ #0'");
    numberOrStar();
    if (*at_ == '.') precision();
    const Length length = lengthModifier();
    const char kind = *at_;
    if (kind != '\0') ++at_;
    conversion_ += kind;
    if (!convert(kind, length)) text_.append(start, at_);
  }

  void copyWhile(const char* set) {
    while (*at_ != '\0' && std::strchr(set, *at_) != nullptr) conversion_ += *at_++;
  }

  // Reads a precision. A negative precision from an argument has the same effect as no precision.
  void precision() {
    const std::size_t before = conversion_.size();
    conversion_ += *at_++;
    numberOrStar();
    if (conversion_[before + 1] == '-') conversion_.resize(before);
  }

  void numberOrStar() {
    if (*at_ == '*') {
      ++at_;
      conversion_ += std::to_string(va_arg(arguments_.list, int));
    } else {
      copyWhile("0123456789");
    }
  }

  Length lengthModifier() {
    const char* const start = at_;
    copyWhile("hlzjtL");
    const std::string_view modifier(start, static_cast<std::size_t>(at_ - start));
    if (modifier == "l") return Length::Long;
    if (modifier == "ll") return Length::LongLong;
    if (modifier == "z") return Length::Size;
    if (modifier == "j") return Length::IntMax;
    if (modifier == "t") return Length::PtrDiff;
    if (modifier == "L") return Length::LongDouble;
    return Length::Int;
  }

  // Appends the result of one conversion. Returns false if the conversion is unknown. The caller
  // then copies the conversion unchanged.
  bool convert(char kind, Length length) {
    switch (kind) {
      case '%':
        text_ += '%';
        return true;
      case 's':
        string(va_arg(arguments_.list, const char*));
        return true;
      case 'c':
        character(va_arg(arguments_.list, int));
        return true;
      case 'p':
        print(va_arg(arguments_.list, void*));
        return true;
      case 'd':
      case 'i':
      case 'u':
      case 'x':
      case 'X':
      case 'o':
        integer(length);
        return true;
      case 'f':
      case 'F':
      case 'e':
      case 'E':
      case 'g':
      case 'G':
      case 'a':
      case 'A':
        if (length == Length::LongDouble) {
          print(va_arg(arguments_.list, long double));
        } else {
          print(va_arg(arguments_.list, double));
        }
        return true;
      default:
        return false;
    }
  }

  void string(const char* value) {
    if (value == nullptr) value = "(null)";
    if (conversion_ == "%s") {
      // Room for the rest of the format, so that a long value is not moved when that is appended.
      const std::string_view text(value);
      text_.reserve(text_.size() + text.size() + std::strlen(at_));
      text_ += text;
    } else {
      print(value);
    }
  }

  // Converts a character. This is the only conversion that can write a NUL.
  void character(int value) {
    const std::size_t start = text_.size();
    print(value);
    if (static_cast<unsigned char>(value) == 0) end_ = std::min(end_, text_.find('\0', start));
  }

  // Converts an integer. Signed and unsigned types of one width are passed in the same way.
  void integer(Length length) {
    switch (length) {
      case Length::Long:
        return print(va_arg(arguments_.list, long));
      case Length::LongLong:
        return print(va_arg(arguments_.list, long long));
      case Length::Size:
        return print(va_arg(arguments_.list, std::size_t));
      // The next two branches are equal on systems where intmax_t and ptrdiff_t are the same type.
      case Length::IntMax:  // NOLINT(bugprone-branch-clone)
        return print(va_arg(arguments_.list, std::intmax_t));
      case Length::PtrDiff:
        return print(va_arg(arguments_.list, std::ptrdiff_t));
      case Length::Int:
      case Length::LongDouble:
        return print(va_arg(arguments_.list, int));
    }
  }

// Disables the warning about a format that is not a literal: the format is one conversion, composed
// above of characters that were checked one by one.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
  template <class Value>
  void print(Value value) {
    const int length = std::snprintf(nullptr, 0, conversion_.c_str(), value);
    if (length <= 0) return;
    const std::size_t added = static_cast<std::size_t>(length);
    const std::size_t start = text_.size();
    text_.resize(start + added);
    std::snprintf(text_.data() + start, added + 1, conversion_.c_str(), value);
  }
#pragma GCC diagnostic pop

  const char* at_;
  Arguments& arguments_;
  std::string conversion_;  // The current conversion, from its % to its letter.
  std::string text_;
  std::size_t end_ = std::string::npos;  // The position of the first NUL.
};

}  // namespace

String String::format(const char* fmt, ...) {
  va_list args;
  va_start(args, fmt);
  const detail::ArgumentListEnd end(args);
  // cppcheck-suppress va_end_missing ; ArgumentListEnd calls it
  return formatv(fmt, args);
}

String String::formatv(const char* fmt, va_list args) {
  Arguments arguments;
  va_copy(arguments.list, args);
  const detail::ArgumentListEnd end(arguments.list);
  return Formatter(fmt, arguments).run();
}

}  // namespace zn
