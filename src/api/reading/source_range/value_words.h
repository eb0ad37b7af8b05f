// The keywords of typed values, and the numbers that a buffer accepts. Internal.
#pragma once

#include <string_view>

#include <vsa/scene/data_type.h>
#include "vsa/parser.h"

namespace vsa {

/// Whether a word is the keyword of a buffer or a tuple, ignoring case.
bool isTypeWord(std::string_view word);

/// Converts numbers of a list as the parser does.
class ComponentReader {
 public:
  /// Creates the reader for a buffer of that type.
  explicit ComponentReader(zn::korvo_sdk::DataType bufferType) noexcept;
  /// Whether `text` converts to a component of the buffer.
  bool accepts(std::string_view text);

 private:
  zn::korvo_sdk::DataType component_;
  zn::korvo_sdk::impl::VsaParser parser_;
};

}  // namespace vsa
