#include "vsa/assign_info.h"

#include <cstddef>
#include <utility>

namespace zn::korvo_sdk::impl {

namespace {

constexpr std::size_t LONGEST_SHOWN = 20;

}  // namespace

// Both paths are copied before anything is let go, so a copy that fails changes nothing.
AssignInfo& AssignInfo::operator=(const AssignInfo& other) {
  AssignInfo copy(other);
  return *this = std::move(copy);
}

String AssignInfo::valueString() const {
  const bool isList = static_cast<int>(countToken.type) >= static_cast<int>(Token::Type::Id);
  const String text = isList ? valueToken.text + "[]" : valueToken.text;
  return text.len() > LONGEST_SHOWN ? text.substring(0, LONGEST_SHOWN) + "..." : text;
}

}  // namespace zn::korvo_sdk::impl
