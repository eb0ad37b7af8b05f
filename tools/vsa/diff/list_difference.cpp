#include "tools/vsa/diff/list_difference.h"

#include <algorithm>
#include <cstring>
#include <span>

#include <vsa/scene/data_type.h>

namespace vsa_tools {

namespace {

/// Collects the differences between two lists. Elements must be compared in ascending order.
class ListComparison {
 public:
  ListComparison(std::uint64_t countA, std::uint64_t countB, const Tolerance& tolerance)
      : tolerance_(tolerance) {
    found.countA = countA;
    found.countB = countB;
  }

  std::uint64_t common() const { return std::min(found.countA, found.countB); }

  void addDifferent(std::uint64_t element) {
    if (found.differing > 0 && last_ == element) return;
    if (found.differing++ == 0) found.first = element;
    last_ = element;
  }

  template <class Number>
  void addNumbers(std::uint64_t element, Number a, Number b) {
    if (tolerance_.accepts(a, b)) return;
    addDifferent(element);
    const double distance = deviation(a, b);
    if (found.largestDeviation && !(distance > *found.largestDeviation)) return;
    if (std::isnan(distance)) return;
    found.largestDeviation = distance;
    found.largestAt = element;
  }

  ListDifference found;

 private:
  const Tolerance& tolerance_;
  std::uint64_t last_ = 0;  // the index of the last element that differs
};

template <class Number>
void compareNumbers(const std::byte* a, const std::byte* b, std::uint64_t perElement,
                    ListComparison& comparison) {
  const std::uint64_t count = comparison.common() * perElement;
  for (std::uint64_t i = 0; i < count; ++i) {
    Number numberA, numberB;
    std::memcpy(&numberA, a + i * sizeof(Number), sizeof(Number));
    std::memcpy(&numberB, b + i * sizeof(Number), sizeof(Number));
    comparison.addNumbers(i / perElement, numberA, numberB);
  }
}

bool haveSameBytes(std::span<const std::byte> a, std::span<const std::byte> b) {
  return a.size() == b.size() && (a.empty() || std::memcmp(a.data(), b.data(), a.size()) == 0);
}

void compareElements(vsa::InputView a, vsa::InputView b, std::uint64_t index,
                     ListComparison& comparison, const Tolerance& tolerance) {
  const auto integerA = a.integer(), integerB = b.integer();
  if (a.type() == vsa::ValueType::Real) {
    comparison.addNumbers(index, a.real(0), b.real(0));
  } else if (integerA && integerB) {
    comparison.addNumbers(index, *integerA, *integerB);
  } else if (!isSameValue(a, b, tolerance)) {
    comparison.addDifferent(index);
  }
}

}  // namespace

ListDifference compareBuffers(const vsa::BufferView& a, const vsa::BufferView& b,
                              const Tolerance& tolerance) {
  ListComparison comparison(a.count(), b.count(), tolerance);
  if (haveSameBytes(a.bytes(), b.bytes())) return comparison.found;
  const unsigned perElement = zn::korvo_sdk::componentCount(a.elementType());
  zn::korvo_sdk::visitComponent(zn::korvo_sdk::componentType(a.elementType()), [&](auto number) {
    compareNumbers<decltype(number)>(a.bytes().data(), b.bytes().data(), perElement, comparison);
  });
  return comparison.found;
}

bool isValueArray(vsa::InputView array) {
  using vsa::ValueType;
  const ValueType type = array.elementType();
  return type != ValueType::Null && type < ValueType::Node;
}

ListDifference compareArrays(vsa::InputView a, vsa::InputView b, const Tolerance& tolerance) {
  ListComparison comparison(a.elements().size(), b.elements().size(), tolerance);
  for (std::uint64_t i = 0; i < comparison.common(); ++i) {
    compareElements(a[i], b[i], i, comparison, tolerance);
  }
  return comparison.found;
}

ListDifference compareTuples(vsa::InputView a, vsa::InputView b, const Tolerance& tolerance) {
  const auto numbersA = a.components(), numbersB = b.components();
  ListComparison comparison(numbersA.size(), numbersB.size(), tolerance);
  for (std::uint64_t i = 0; i < comparison.common(); ++i) {
    comparison.addNumbers(i, numbersA[i], numbersB[i]);
  }
  return comparison.found;
}

bool isSameValue(vsa::InputView a, vsa::InputView b, const Tolerance& tolerance) {
  switch (a.type()) {
    case vsa::ValueType::Bool:
      return a.boolean() == b.boolean();
    case vsa::ValueType::Int:
      return tolerance.accepts(a.integer(0), b.integer(0));
    case vsa::ValueType::UInt:
      return tolerance.accepts(a.unsignedInteger(0), b.unsignedInteger(0));
    case vsa::ValueType::Real:
      return tolerance.accepts(a.real(0), b.real(0));
    case vsa::ValueType::String:
      return a.string() == b.string();
    default:
      return compareTuples(a, b, tolerance).isSame();
  }
}

}  // namespace vsa_tools
