// PendingLink: the data needed to resolve a reference or connection. Internal.
//
// A text may contain millions of links. All are kept until its last statement has been parsed. An
// AssignInfo takes 352 bytes, and 96 for the three tokens of each path. A PendingLink takes 24, and
// the texts of all sources are adjacent in an arena.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
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
  /// name. Any other connection: the whole source as it is written. NUL-terminated.
  const char* source = "";
  /// Connection written `node.output`: the output's name; empty for anything else.
  String output;
  /// The token before the statement; set if a ReadSession is attached.
  TextPlace place;
};

/// Copies of texts that are freed together.
class TextArena {
 public:
  TextArena() = default;
  TextArena(const TextArena&) = delete;
  TextArena& operator=(const TextArena&) = delete;
  ~TextArena();

  /// A NUL-terminated copy, valid as long as the arena. Throws std::bad_alloc.
  const char* copyOf(std::string_view text);

 private:
  // The first chunk is small, because a host may read a text of one statement.
  static constexpr std::size_t MIN_CHUNK_BYTES = 256;
  static constexpr std::size_t MAX_CHUNK_BYTES = std::size_t{1} << 16;

  void addChunk(std::size_t bytes);

  ds::Vector<char*> chunks_;
  char* next_ = nullptr;  // the unused rest of the last chunk
  std::size_t left_ = 0;
  std::size_t chunkBytes_ = MIN_CHUNK_BYTES;  // the size of the next chunk
};

/// A filter with false positives but no false negatives. It stores the highest address added in
/// each page of 64 KiB. Most inputs are created at ascending addresses, so a new input is above the
/// highest one. The first link of such an input then needs no look-up in the table, which may be
/// larger than the CPU caches. This saves 4 % of the time of the benchmark links 1M.
class AddressFilter {
 public:
  AddressFilter() = default;
  AddressFilter(const AddressFilter&) = delete;
  AddressFilter& operator=(const AddressFilter&) = delete;

  /// Returns false when `address` was not added.
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
  void setLink(interfaces::IInput* input, std::string_view source, const String& output,
               const TextPlace& place = {});
  /// Stores the link of an assignment.
  void setLink(interfaces::IInput* input, const AssignInfo& info, const TextPlace& place = {});

 private:
  AddressFilter addresses_;
  TextArena sources_;
};

}  // namespace zn::korvo_sdk::impl

template <>
inline constexpr bool zn::ds::MOVES_AS_BYTES<zn::korvo_sdk::impl::PendingLink> = true;
