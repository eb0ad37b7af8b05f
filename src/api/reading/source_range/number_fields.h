// The numbers of a list as spelled in the text, with their offsets. Internal.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace vsa {

/// One number of a list.
struct NumberField {
  std::size_t begin;  ///< The offset of the first byte from the list's opening bracket.
  std::size_t end;    ///< The offset of the byte after the number.
  std::string text;   ///< The text of the number, without brackets of the list's kind.
  std::size_t index;  ///< The index of the number, from 0.
};

/// The first number for which `isWanted` is true. `list` is "( ... )" or "{ ... }" as written.
std::optional<NumberField> findNumber(std::string_view list,
                                      const std::function<bool(const NumberField&)>& isWanted);

}  // namespace vsa
