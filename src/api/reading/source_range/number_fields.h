// The numbers of a list with their spelling in the text and their offsets. Internal.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace vsa {

/// One number of a list.
struct NumberField {
  std::size_t begin;  ///< The offset of its first byte, from the opening bracket of the list.
  std::size_t end;    ///< The offset after its last byte, from the opening bracket of the list.
  std::string text;   ///< Its characters. Brackets of the list's own kind are left out.
  std::size_t index;  ///< The index of the number in the list, from 0.
};

/// Returns the first number for which `isWanted` returns true. `list` is "( ... )" or "{ ... }" as
/// written in the text.
std::optional<NumberField> findNumber(std::string_view list,
                                      const std::function<bool(const NumberField&)>& isWanted);

}  // namespace vsa
