// Value: a value for an input, constructed from a standard type or a Tuple. BufferMemory: the
// memory of the elements of a buffer.
#pragma once

#include <array>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <type_traits>

#include <vsa/values/value_types.h>

namespace vsa {

/// A vector, position, quaternion, colour or matrix. Functions such as vec3 and mat4 create it.
class Tuple {
 public:
  /// Returns a tuple with this type and these components. Returns std::nullopt if `type` is not one
  /// of Vec2 to Mat4, or if the number of components does not fit the type.
  static std::optional<Tuple> of(ValueType type, std::span<const double> components) noexcept {
    const std::size_t count = zn::korvo_sdk::componentCount(type);
    if (count == 0 || count != components.size()) return std::nullopt;
    Tuple tuple(type, {});
    for (std::size_t i = 0; i < count; ++i) tuple.components_[i] = components[i];
    return tuple;
  }

  /// The type of the tuple.
  constexpr ValueType type() const noexcept { return type_; }
  /// The components, in the order in which a text lists them. Their number depends on the type.
  std::span<const double> components() const noexcept {
    return {components_.data(), zn::korvo_sdk::componentCount(type_)};
  }

 private:
  friend constexpr Tuple vec2(double, double) noexcept;
  friend constexpr Tuple vec3(double, double, double) noexcept;
  friend constexpr Tuple vec4(double, double, double, double) noexcept;
  friend constexpr Tuple pos2(double, double) noexcept;
  friend constexpr Tuple pos3(double, double, double) noexcept;
  friend constexpr Tuple quat(double, double, double, double) noexcept;
  friend constexpr Tuple rgba(double, double, double, double) noexcept;

  constexpr Tuple(ValueType type, const std::array<double, 16>& components) noexcept
      : type_(type), components_(components) {}

  ValueType type_;
  std::array<double, 16> components_;
};

// Functions that create a tuple. The name of each is the keyword of its type in a text.

constexpr Tuple vec2(double x, double y) noexcept {
  return {ValueType::Vec2, {x, y}};
}
constexpr Tuple vec3(double x, double y, double z) noexcept {
  return {ValueType::Vec3, {x, y, z}};
}
constexpr Tuple vec4(double x, double y, double z, double w) noexcept {
  return {ValueType::Vec4, {x, y, z, w}};
}
constexpr Tuple pos2(double x, double y) noexcept {
  return {ValueType::Pos2, {x, y}};
}
constexpr Tuple pos3(double x, double y, double z) noexcept {
  return {ValueType::Pos3, {x, y, z}};
}
constexpr Tuple quat(double x, double y, double z, double w) noexcept {
  return {ValueType::Quat, {x, y, z, w}};
}
constexpr Tuple rgba(double red, double green, double blue, double alpha = 1.0) noexcept {
  return {ValueType::Rgba, {red, green, blue, alpha}};
}
/// Creates a 3 by 3 matrix from its numbers, row by row.
inline Tuple mat3(std::span<const double, 9> rows) noexcept {
  return *Tuple::of(ValueType::Mat3, rows);
}
/// Creates a 4 by 4 matrix from its numbers, row by row.
inline Tuple mat4(std::span<const double, 16> rows) noexcept {
  return *Tuple::of(ValueType::Mat4, rows);
}

/// A Bool, Int, UInt, Real, String or tuple, for parameters that accept all of these types. Numbers
/// and tuples are copied. A signed integer is an Int, and an unsigned one a UInt. A long double is
/// rounded to a double. The characters of a string are not copied, and must exist as long as the
/// object is used. A single character such as 'x' does not convert to a Value, because it could
/// mean a string or a number.
class Value {
 public:
  template <std::same_as<bool> T>
  constexpr Value(T value) noexcept : type_(ValueType::Bool), boolean_(value) {}
  template <std::integral T>
  requires(!std::same_as<T, bool> && !std::same_as<T, char> && !std::same_as<T, wchar_t> &&
           !std::same_as<T, char8_t> && !std::same_as<T, char16_t> &&
           !std::same_as<T, char32_t>) constexpr Value(T value) noexcept
      : type_(std::is_signed_v<T> ? ValueType::Int : ValueType::UInt),
        integer_(static_cast<std::int64_t>(value)) {}
  template <std::floating_point T>
  constexpr Value(T value) noexcept : type_(ValueType::Real), real_(static_cast<double>(value)) {}
  constexpr Value(std::string_view text) noexcept : type_(ValueType::String), text_(text) {}
  /// A String. A null pointer is the empty string.
  constexpr Value(const char* text) noexcept
      : Value(text != nullptr ? std::string_view(text) : std::string_view()) {}
  template <class T>
  requires(std::convertible_to<const T&, std::string_view> && !std::is_pointer_v<T> &&
           !std::is_array_v<T>) constexpr Value(const T& text) noexcept
      : Value(std::string_view(text)) {}
  constexpr Value(const Tuple& tuple) noexcept : type_(tuple.type()), tuple_(tuple) {}
  Value(std::nullptr_t) = delete;

  /// The type of the value. It decides which function below returns the value: boolean() for a
  /// Bool, integer() for an Int or UInt, real() for a Real, text() for a String, and tuple() for a
  /// tuple. The other functions return false, 0, an empty text or null.
  constexpr ValueType type() const noexcept { return type_; }
  constexpr bool boolean() const noexcept { return boolean_; }
  constexpr std::int64_t integer() const noexcept { return integer_; }
  constexpr double real() const noexcept { return real_; }
  constexpr std::string_view text() const noexcept { return text_; }
  /// The tuple. It is null if the value is not a tuple.
  constexpr const Tuple* tuple() const noexcept { return tuple_ ? &*tuple_ : nullptr; }

 private:
  ValueType type_;
  bool boolean_ = false;
  std::int64_t integer_ = 0;
  double real_ = 0;
  std::string_view text_;
  std::optional<Tuple> tuple_;
};

namespace detail {

struct Free {
  void operator()(void* memory) const noexcept { std::free(memory); }
};

}  // namespace detail

/// The memory of the elements of a buffer. It is from malloc, calloc or realloc.
using BufferMemory = std::unique_ptr<unsigned char[], detail::Free>;

/// Allocates `bytes` bytes without initialising them. Returns null if `bytes` is 0 or if memory
/// runs out.
inline BufferMemory allocateBuffer(std::size_t bytes) noexcept {
  return BufferMemory(static_cast<unsigned char*>(bytes != 0 ? std::malloc(bytes) : nullptr));
}

}  // namespace vsa
