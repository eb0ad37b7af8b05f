// PendingLink: what of an assignment waits for the end of the text. Internal; the door is vsa.h.
//
// A text may hold millions of links, and their records are all kept until the last statement has
// been read: of an AssignInfo only what the resolution reads is filed.
#pragma once

#include "foundation/vector.h"
#include "vsa/token.h"

namespace zn::korvo_sdk::impl {

struct PendingLink {
  ds::Vector<Token> sourcePath;  ///< Connection: the right-hand side, or the one `null` token.
  Token referenceToken;          ///< Reference: the node's name, or `null`.
};

}  // namespace zn::korvo_sdk::impl

template <>
inline constexpr bool zn::ds::MOVES_AS_BYTES<zn::korvo_sdk::impl::PendingLink> = true;
