// AssignInfo: the record of one assignment. Internal.
#pragma once

#include <string_view>

#include <vsa/foundation/string.h>
#include <vsa/foundation/vector.h>
#include <vsa/scene/attr_data.h>
#include "vsa/lex/token.h"

namespace zn::korvo_sdk::impl {

/// The parsed form of one assignment statement. A link is stored as a PendingLink until the end of
/// the text.
///
/// Copies share the memory that `data` points to (a string's characters, a buffer's elements). The
/// destructor does not free it. assign() of the scene takes ownership of it.
struct AssignInfo {
  ds::Vector<Token> targetPath;  ///< The left-hand side, in text order.
  ds::Vector<Token> sourcePath;  ///< Connection: the right-hand side, or the one `null` token.
  Token valueToken;              ///< The value's first token, which messages quote.
  Token countToken;              ///< Buffer: the list with the element count.
  Token elementsToken;           ///< Buffer: the list with the elements.
  Token listToken;               ///< Typed tuple: the list after the type keyword.
  Token referenceToken;          ///< Reference: the node's name, or `null`.
  bool isScalar = false;
  bool isBuffer = false;
  bool isConnection = false;
  bool isReference = false;
  AttrData data;  ///< The value that is assigned in the scene.

  AssignInfo() = default;
  AssignInfo(const AssignInfo&) = default;
  AssignInfo(AssignInfo&&) = default;
  AssignInfo& operator=(const AssignInfo& other);
  /// Moves the paths, which leaves them empty in `other`. Copies everything else.
  AssignInfo& operator=(AssignInfo&& other) noexcept;
  ~AssignInfo() = default;

  /// Resets every member. The paths keep their capacity.
  void clear() noexcept;
  /// Resets `data`.
  void clearValue() noexcept;

  /// The value as messages quote it.
  String valueString() const;
};

/// A value as messages quote it: its first token as written, followed by "[]" for a buffer. If this
/// is longer than 20 characters, the first 20 followed by "...".
String quotedValue(std::string_view firstToken, bool isBuffer);

}  // namespace zn::korvo_sdk::impl
