// PendingLink: the part of a reference or connection that its resolution needs. Internal.
//
// A text may hold millions of links, all kept until its last statement has been read. An AssignInfo
// takes 500 bytes and more with its paths; a PendingLink takes 16, and shares its names.
#pragma once

#include <cstdint>
#include <unordered_map>

#include <vsa/foundation/string.h>
#include <vsa/foundation/vector.h>
#include <vsa/scene/scene_interface.h>
#include "foundation/containers/hash_map.h"
#include "vsa/apply/assign_info.h"

namespace zn::korvo_sdk::impl {

struct PendingLink {
  /// Reference: the node's name; empty for `null`. Connection written `node.output`: the node's
  /// name. Any other connection: the whole source as it is written.
  String source;
  /// Connection written `node.output`: the output's name; empty for anything else.
  String output;

  PendingLink() = default;
  /// The link that a statement describes.
  PendingLink(const AssignInfo& info);  // implicit: a record stands for its link
};

/// Proves for most addresses that they were not added. Inputs are mostly created at ascending
/// addresses, so the highest address added of each page of 64 KiB is all it keeps: an input that
/// was just created lies above it. A link that is known to be the first of its input skips a
/// look-up in a table that does not fit the caches (links 1M: 4 % of the time).
class AddressFilter {
 public:
  AddressFilter() = default;
  AddressFilter(const AddressFilter&) = delete;
  AddressFilter& operator=(const AddressFilter&) = delete;

  /// False when `address` was not added.
  bool mayContain(const void* address) const noexcept;
  void add(const void* address);

 private:
  using Pages = std::unordered_map<std::uintptr_t, std::uintptr_t>;  // page -> highest address

  Pages highest_;
  Pages::value_type* last_ = nullptr;  // the page added to last
};

/// Pending links by target input.
class PendingTable : public ds::HashMap<interfaces::IInput*, PendingLink> {
 public:
  /// Files a link. The first one of an input retains the input; a later one replaces it.
  void file(interfaces::IInput* input, PendingLink&& link);

 private:
  AddressFilter filed_;
};

}  // namespace zn::korvo_sdk::impl

template <>
inline constexpr bool zn::ds::MOVES_AS_BYTES<zn::korvo_sdk::impl::PendingLink> = true;
