// AssignInfo: the record of one assignment. Internal.
#pragma once

#include <string_view>

#include <vsa/foundation/string.h>
#include <vsa/foundation/vector.h>
#include <vsa/scene/attr_data.h>
#include "vsa/lex/token.h"

namespace zn::korvo_sdk::impl {

/// The parsed form of one assignment statement.
///
/// A copy shares the memory that `data` points to: the characters of a string or the elements of a
/// buffer. The destructor does not free this memory. IInput::assign takes ownership of it.
struct AssignInfo {
  ds::Vector<Token> targetPath;  ///< The left-hand side, in text order.
  /// Connection: the right-hand side. For `|= null`, its only token is `null`.
  ds::Vector<Token> sourcePath;
  /// The first token of a value or reference, or the `null` of a connection. Messages quote it.
  Token valueToken;
  Token countToken;      ///< Buffer: the list with the element count.
  Token elementsToken;   ///< Buffer: the list with the elements.
  Token listToken;       ///< Typed tuple: the list after the type keyword.
  Token referenceToken;  ///< Reference: the node's name, or `null`.
  bool isScalar = false;
  bool isBuffer = false;
  bool isConnection = false;
  bool isReference = false;
  /// The value to assign to the input.
  AttrData data;

  AssignInfo() = default;
  AssignInfo(const AssignInfo&) = default;
  AssignInfo(AssignInfo&&) = default;
  AssignInfo& operator=(const AssignInfo& other);
  /// Moves the paths and copies every other member. The paths of `other` are empty afterwards.
  AssignInfo& operator=(AssignInfo&& other) noexcept;
  ~AssignInfo() = default;

  /// Resets every member. The paths keep their capacity.
  void clear() noexcept;
  /// Resets `data` to the type Null and a payload of zeros.
  void clearValue() noexcept;

  /// Whether the elements of the buffer are written as compressed text. Only buffers with
  /// components of one byte may be compressed. For all other buffers, "." begins a number.
  bool isCompressed() const noexcept;

  /// Returns the value in the form that messages quote. See quotedValue.
  String valueString() const;
};

/// Returns a value in the form that messages quote: its first token, followed by "[]" for a buffer.
/// Shortens a form of more than 20 bytes to its first 20 bytes and "...".
String quotedValue(std::string_view firstToken, bool isBuffer);

}  // namespace zn::korvo_sdk::impl
