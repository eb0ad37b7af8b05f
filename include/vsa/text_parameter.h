// TextParameter: a name or another short text that a function takes.
#pragma once

#include <concepts>
#include <cstddef>
#include <string_view>
#include <type_traits>

namespace vsa {

/// A parameter that is made from a string literal, a `const char*` that ends in a NUL, a
/// std::string, a std::string_view or anything else that converts to a std::string_view. A null
/// pointer is the empty text, which is no name; the literals `0` and `nullptr` do not compile. The
/// characters are not copied: they must exist until the call returns.
class TextParameter {
 public:
  constexpr TextParameter(const char* text) noexcept  // implicit: it is a parameter
      : text_(text != nullptr ? std::string_view(text) : std::string_view()) {}
  template <class T>
  requires(std::convertible_to<const T&, std::string_view> && !std::is_pointer_v<T> &&
           !std::is_array_v<T>) constexpr TextParameter(const T& text) noexcept  // implicit
      : text_(text) {}
  TextParameter(std::nullptr_t) = delete;

  constexpr std::string_view view() const noexcept { return text_; }
  constexpr operator std::string_view() const noexcept { return text_; }  // implicit

 private:
  std::string_view text_;
};

}  // namespace vsa
