// TextParameter: the type of parameters that are a name or another short text.
#pragma once

#include <concepts>
#include <cstddef>
#include <string_view>
#include <type_traits>

namespace vsa {

/// A parameter that accepts a string literal, a `const char*` that ends in a NUL, a std::string or
/// a std::string_view. Everything else that converts to a std::string_view is accepted, too. A null
/// pointer is the empty text, which is not a valid name. A string literal ends at its first NUL.
/// The literals `0` and `nullptr` do not compile. The characters are not copied and must exist
/// until the call returns. The conversions are implicit: a caller passes a text, and a function
/// uses the parameter as a std::string_view.
class TextParameter {
 public:
  constexpr TextParameter(const char* text) noexcept  // implicit
      : text_(text != nullptr ? std::string_view(text) : std::string_view()) {}
  template <class T>
  requires(std::convertible_to<const T&, std::string_view> && !std::is_pointer_v<T> &&
           !std::is_array_v<T>) constexpr TextParameter(const T& text) noexcept  // implicit
      : text_(text) {}
  TextParameter(std::nullptr_t) = delete;

  /// The characters.
  constexpr std::string_view view() const noexcept { return text_; }
  constexpr operator std::string_view() const noexcept { return text_; }  // implicit

 private:
  std::string_view text_;
};

}  // namespace vsa
