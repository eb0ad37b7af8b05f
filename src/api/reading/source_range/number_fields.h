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
  /// Its characters. Further brackets of the list's own kind do not end a number and are left out,
  /// as in the lexer, and so is a separator directly before a closing one: the text of the number
  /// in "(1(2)" and in "((1,)2)" is "12".
  std::string text;
  std::size_t index;  ///< The index of the number in the list, from 0.
};

/// Returns the first number for which `isWanted` returns true. Returns std::nullopt if there is
/// none. `list` is "( ... )" or "{ ... }" as written in the text.
std::optional<NumberField> findNumber(std::string_view list,
                                      const std::function<bool(const NumberField&)>& isWanted);

}  // namespace vsa
