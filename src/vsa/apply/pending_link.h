// PendingLink: what of an assignment waits for the end of the text. Internal; the door is vsa.h.
//
// A text may hold millions of links, and their records are all kept until the last statement has
// been read: of an AssignInfo only what the resolution reads is filed, and names share their texts.
#pragma once

#include <vsa/foundation/string.h>
#include <vsa/foundation/vector.h>
#include "vsa/apply/assign_info.h"

namespace zn::korvo_sdk::impl {

struct PendingLink {
  /// Reference: the node's name; empty for `null`. Connection: the node's name, where the source is
  /// written `node.output`; the whole source as it is written, where it is anything else.
  String source;
  /// Connection to `node.output`: the output's name; empty for anything else.
  String output;

  PendingLink() = default;
  /// What is filed of a connection or a reference.
  PendingLink(const AssignInfo& info);  // implicit: a record stands for its link
};

}  // namespace zn::korvo_sdk::impl

template <>
inline constexpr bool zn::ds::MOVES_AS_BYTES<zn::korvo_sdk::impl::PendingLink> = true;
