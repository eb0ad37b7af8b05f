#include "vsa/apply/values/typed_elements.h"

#include <algorithm>

#include "scene/library_scene.h"

namespace zn::korvo_sdk::impl {

using interfaces::IInput;

namespace {

bool isEmpty(const IInput& element, AttrType type) {
  if (type == AttrType::Buffer) return element.bufferType() == DataType::Null;
  return element.elementType() == AttrType::Null;
}

void setIfEmpty(IInput* element, const AttrData& empty) {
  if (element != nullptr && isEmpty(*element, empty.type)) element->set(empty);
}

}  // namespace

void TypedElements::setEmptyElements(interfaces::IInput& array, std::uint64_t countBefore,
                                     std::int32_t elementType) {
  const AttrData empty{.type = array.elementType(), .elementType = elementType};
  if (empty.type != AttrType::Buffer && empty.type != AttrType::Array) return;

  Known& known = known_[&array];
  known.count = std::min(known.count, countBefore);
  const bool isValid = known.count != 0 && known.count <= array.count() &&
                       array.element(known.count - 1) == known.last;
  if (!isValid) known = Known();
  const std::uint64_t firstUnknown = isValid ? known.count : typedPrefixOf(array);

  // Reads the size again in each iteration, because set() may change the array.
  for (std::uint64_t left = std::min(RECHECKED, known.count); left > 0; --left) {
    if (known.recheck >= known.count) known.recheck = 0;
    if (known.recheck >= array.count()) break;
    setIfEmpty(array.element(known.recheck++), empty);
  }
  for (std::uint64_t i = firstUnknown; i < array.count(); ++i) {
    setIfEmpty(array.element(i), empty);
  }
  known.count = array.count();
  known.last = known.count == 0 ? nullptr : array.element(known.count - 1);
}

}  // namespace zn::korvo_sdk::impl
