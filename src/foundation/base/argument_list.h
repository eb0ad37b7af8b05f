// Calls va_end when a function returns or throws. Internal.
#pragma once

#include <cstdarg>

namespace zn::detail {

/// Calls va_end in its destructor. Declare the object directly after va_start or va_copy, in the
/// same function.
class ArgumentListEnd {
 public:
  explicit ArgumentListEnd(va_list& args) noexcept : args_(args) {}
  ~ArgumentListEnd() { va_end(args_); }
  ArgumentListEnd(const ArgumentListEnd&) = delete;
  ArgumentListEnd& operator=(const ArgumentListEnd&) = delete;

 private:
  va_list& args_;
};

}  // namespace zn::detail
