// PendingLink: the data needed to resolve a reference or connection. Internal.
//
// A text may contain millions of links. All are kept until its last statement has been parsed. An
// AssignInfo with its paths takes at least 500 bytes. A PendingLink takes 24 and shares its names.
#pragma once

#include <cstdint>
#include <unordered_map>

#include <vsa/foundation/string.h>
#include <vsa/foundation/vector.h>
#include <vsa/scene/scene_interface.h>
#include "foundation/containers/hash_map.h"
#include "vsa/apply/assign_info.h"
#include "vsa/apply/read_session.h"

namespace zn::korvo_sdk::impl {

struct PendingLink {
  /// Reference: the node's name; empty for `null`. Connection written `node.output`: the node's
  /// name. Any other connection: the whole source as it is written.
  String source;
  /// Connection written `node.output`: the output's name; empty for anything else.
  String output;
  /// The token before the statement; set if a ReadSession is attached.
  TextPlace place;

  PendingLink() = default;
  /// The link that a statement describes.
  PendingLink(const AssignInfo& info);  // implicit: a record converts to its link
  PendingLink(const String& node, const String& outputName) : source(node), output(outputName) {}
};

/// A filter with false positives but no false negatives. It stores the highest address added in
/// each page of 64 KiB. Most inputs are created at ascending addresses, so a new input is above the
/// highest one. The first link of such an input then needs no look-up in a table larger than the
/// CPU caches (links 1M: 4 % of the time).
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
  Pages::value_type* last_ = nullptr;  // the page of the last `add`
};

/// Pending links by target input.
class PendingTable : public ds::HashMap<interfaces::IInput*, PendingLink> {
 public:
  /// Stores the link of an input. The first link retains the input. A later link replaces the
  /// earlier one.
  void setLink(interfaces::IInput* input, PendingLink&& link);

 private:
  AddressFilter addresses_;
};

}  // namespace zn::korvo_sdk::impl

template <>
inline constexpr bool zn::ds::MOVES_AS_BYTES<zn::korvo_sdk::impl::PendingLink> = true;
