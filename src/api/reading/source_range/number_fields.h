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
  std::size_t end;    ///< The offset of the byte after the last one.
  std::string text;   ///< As in the token: without brackets of the same kind as the list's.
  std::size_t index;  ///< From 0.
};

/// The first number of `list`, "( ... )" or "{ ... }" as written, for which `isWanted` is true.
std::optional<NumberField> findNumber(std::string_view list,
                                      const std::function<bool(const NumberField&)>& isWanted);

}  // namespace vsa
