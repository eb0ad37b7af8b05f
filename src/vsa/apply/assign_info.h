// AssignInfo: the record of one assignment. Internal.
#pragma once

#include <vsa/foundation/string.h>
#include <vsa/foundation/vector.h>
#include <vsa/scene/attr_data.h>
#include "vsa/lex/token.h"

namespace zn::korvo_sdk::impl {

/// What one assignment statement says. Of a link, a PendingLink waits for the end of the text.
///
/// Copies share the memory behind `data` (a string's characters, a buffer's elements). No record
/// frees it: the scene owns it once the value is assigned.
struct AssignInfo {
  ds::Vector<Token> targetPath;  ///< The left-hand side, in text order.
  ds::Vector<Token> sourcePath;  ///< Connection: the right-hand side, or the one `null` token.
  Token valueToken;              ///< The value's main token: what messages quote.
  Token countToken;              ///< Buffer: the list that holds the element count.
  Token elementsToken;           ///< Buffer: the list that holds the elements.
  Token listToken;               ///< Typed tuple: the list after the type keyword.
  Token referenceToken;          ///< Reference: the node's name, or `null`.
  bool isScalar = false;
  bool isBuffer = false;
  bool isConnection = false;
  bool isReference = false;
  AttrData data;  ///< The value as it is handed to the scene.

  AssignInfo() = default;
  AssignInfo(const AssignInfo&) = default;
  AssignInfo(AssignInfo&&) = default;
  AssignInfo& operator=(const AssignInfo& other);
  /// Takes over the paths, which are left empty; everything else is copied.
  AssignInfo& operator=(AssignInfo&& other) noexcept;
  ~AssignInfo() = default;

  /// Resets every member. The paths keep their memory.
  void clear() noexcept;

  /// The value as messages quote it: the main token's text, with "[]" after it for a buffer, and no
  /// more than 20 characters and "..." of it.
  String valueString() const;
};

}  // namespace zn::korvo_sdk::impl
