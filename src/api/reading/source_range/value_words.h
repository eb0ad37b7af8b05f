// The keywords of tuples and buffers, and the numbers that a buffer accepts. Internal.
#pragma once

#include <string_view>

#include <vsa/scene/data_type.h>
#include "vsa/parser.h"

namespace vsa {

/// Whether `word` is the keyword of a buffer or a tuple, in any letter case.
bool isTypeWord(std::string_view word);

/// Tests whether the parser can convert the text of a number to a component of a buffer.
class ComponentReader {
 public:
  explicit ComponentReader(zn::korvo_sdk::DataType bufferType) noexcept;
  /// Whether `text` can be converted to a component of the buffer.
  bool accepts(std::string_view text);

 private:
  zn::korvo_sdk::DataType component_;
  zn::korvo_sdk::impl::VsaParser parser_;
};

}  // namespace vsa
