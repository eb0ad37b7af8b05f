#include "tools/vsa/check/rules/types/value_fit.h"

#include <fmt/format.h>

namespace vsa_tools {

namespace {

using vsa::InputView;
using vsa::ValueType;

bool isInteger(ValueType type) {
  return type == ValueType::Bool || type == ValueType::Int || type == ValueType::UInt;
}

bool isMatrix(ValueType type) {
  return type == ValueType::Mat3 || type == ValueType::Mat4;
}

bool isVector(ValueType type) {
  return zn::korvo_sdk::componentCount(type) != 0 && !isMatrix(type);
}

// Returns whether values convert without loss, as the table "Conversions" in docs/format.md
// describes.
bool converts(ValueType from, ValueType to) {
  if (from == to) return true;
  const bool isNumber = to == ValueType::Int || to == ValueType::UInt || to == ValueType::Real;
  if (isInteger(from)) return isNumber;
  if (from == ValueType::Real) return isVector(to);
  if (from == ValueType::Mat3) return to == ValueType::Mat4;
  return isVector(from) && isVector(to) &&
         zn::korvo_sdk::componentCount(from) <= zn::korvo_sdk::componentCount(to);
}

template <class Type>
std::string difference(Type found, Type described) {
  return fmt::format("{}, and its type has {} here", vsa::typeName(found),
                     vsa::typeName(described));
}

std::string outside(double number, const vsa::InputDescription& described) {
  if (described.minimum && number < *described.minimum) {
    return fmt::format("{} is below {}", number, *described.minimum);
  }
  if (described.maximum && number > *described.maximum) {
    return fmt::format("{} is above {}", number, *described.maximum);
  }
  return {};
}

}  // namespace

std::string misfit(const InputView& input, const vsa::InputDescription& described) {
  const zn::korvo_sdk::InputDeclaration& declared = described.declaration;
  const ValueType found = input.type();
  if (found == ValueType::Null) return {};  // an input with only a connection has no type
  if (declared.refusesValues && found != ValueType::Node) {
    return fmt::format("{}, and takes links only", vsa::typeName(found));
  }
  if (declared.type == ValueType::Null) return {};
  if (!converts(found, declared.type)) return difference(found, declared.type);
  const ValueType element = input.elementType();
  const bool hasElement = declared.elementType != ValueType::Null && element != ValueType::Null;
  if (hasElement && element != declared.elementType) {
    return "an array of " + difference(element, declared.elementType);
  }
  const vsa::ElementType numbers = input.buffer().elementType();
  const bool hasNumbers =
      declared.bufferType != vsa::ElementType::Null && numbers != vsa::ElementType::Null;
  if (hasNumbers && numbers != declared.bufferType) {
    return "a buffer of " + difference(numbers, declared.bufferType);
  }
  return {};
}

std::string outOfRange(const InputView& input, const vsa::InputDescription& described) {
  if (!described.minimum && !described.maximum) return {};
  if (const std::optional<double> real = input.real()) return outside(*real, described);
  for (const double component : input.components()) {
    std::string problem = outside(component, described);
    if (!problem.empty()) return problem;
  }
  return {};
}

}  // namespace vsa_tools
