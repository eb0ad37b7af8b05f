#include <vsa/view.h>

namespace vsa {

std::string InputView::path() const {
  if (input_ == nullptr) return {};
  return std::string(input_->path().view());
}

std::optional<std::int64_t> InputView::integer() const noexcept {
  const ValueType held = type();
  if (held != ValueType::Int && held != ValueType::UInt) return std::nullopt;
  const std::int64_t bits = input_->integer();
  if (held == ValueType::UInt && bits < 0) return std::nullopt;
  return bits;
}

std::optional<std::uint64_t> InputView::unsignedInteger() const noexcept {
  const ValueType held = type();
  if (held != ValueType::Int && held != ValueType::UInt) return std::nullopt;
  const std::int64_t bits = input_->integer();
  if (held == ValueType::Int && bits < 0) return std::nullopt;
  return static_cast<std::uint64_t>(bits);
}

std::optional<double> InputView::realOfInteger() const noexcept {
  switch (type()) {
    case ValueType::Int:
      return static_cast<double>(input_->integer());
    case ValueType::UInt:
      return static_cast<double>(static_cast<std::uint64_t>(input_->integer()));
    default:
      return std::nullopt;
  }
}

namespace {

// Returns the number of components and a blank, such as "3 ". Returns an empty string for 1.
std::string countBefore(std::size_t components) {
  if (components == 1) return {};
  return std::to_string(components) + " ";
}

}  // namespace

namespace detail {

std::string describe(BufferProblem problem, ElementType found, ElementType component,
                     std::size_t count) {
  switch (problem) {
    case BufferProblem::None:
      return {};
    case BufferProblem::Missing:
      return "no such input";
    case BufferProblem::NotABuffer:
      return "not a buffer";
    default:
      return "a buffer of " + std::string(typeName(found)) + ", not of " + countBefore(count) +
             std::string(typeName(component));
  }
}

}  // namespace detail
}  // namespace vsa
