// PendingLink: the data needed to resolve a reference or connection. Internal.
//
// All links are kept until the last statement has been parsed, and a text may contain millions of
// links. A PendingLink takes 24 bytes, and the source texts are adjacent in an arena. An AssignInfo
// would take 352 bytes, plus 96 bytes for a path of three tokens. With Strings as sources, the
// benchmark links 1M would take 7 % more time.
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
  /// The source of the link, NUL-terminated. Reference: the node's name, or empty for `null`.
  /// Connection of the form `node.output`: the node's name. Any other connection: the tokens of the
  /// whole source, without the white space between them.
  const char* source = "";
  /// The output's name for a connection of the form `node.output`. Empty for any other link.
  String output;
  /// Where the statement of the link is, for messages while the link is resolved: the position of
  /// the last token before the statement. Zero in readings without a ReadSession (the plain
  /// interface).
  TextPlace place;
};

/// An arena of copied texts. The destructor frees all copies.
class TextArena {
 public:
  TextArena() = default;
  TextArena(const TextArena&) = delete;
  TextArena& operator=(const TextArena&) = delete;
  ~TextArena();

  /// Returns a NUL-terminated copy of `text`. The copy is valid as long as the arena. Throws
  /// std::bad_alloc.
  const char* copyOf(std::string_view text);

 private:
  // The usual size of the first chunk. It is small, so that a text of one statement takes little
  // memory. The usual size doubles with each chunk, up to MAX_CHUNK_BYTES. A text that is longer
  // gets a chunk of its own size.
  static constexpr std::size_t MIN_CHUNK_BYTES = 256;
  static constexpr std::size_t MAX_CHUNK_BYTES = std::size_t{1} << 16;

  void addChunk(std::size_t bytes);

  ds::Vector<char*> chunks_;
  // The first unused byte of the last chunk. From there on, `left_` bytes are unused.
  char* next_ = nullptr;
  std::size_t left_ = 0;
  std::size_t chunkBytes_ = MIN_CHUNK_BYTES;  // the usual size of the next chunk
};

/// A set of addresses with false positives but no false negatives. It stores the highest address
/// added in each page of 64 KiB.
///
/// PendingTable uses it to find out whether an input may already have a link. Most inputs are
/// created at ascending addresses, so the address of a new input is above the highest stored
/// address of its page. The first link of such an input needs no look-up in the table of links,
/// which may be larger than the CPU caches. This saves 30 % of the time of the benchmark links
/// 100k.
class AddressFilter {
 public:
  AddressFilter() = default;
  AddressFilter(const AddressFilter&) = delete;
  AddressFilter& operator=(const AddressFilter&) = delete;

  /// False if `address` was not added. True if it may have been added.
  bool mayContain(const void* address) const noexcept;
  void add(const void* address);

 private:
  // Maps the number of a page to the highest address added in that page.
  using Pages = std::unordered_map<std::uintptr_t, std::uintptr_t>;

  Pages highest_;
  // The entry of the page that the last `add` changed.
  Pages::value_type* last_ = nullptr;
};

/// The pending links, indexed by target input.
class PendingTable : public ds::HashMap<interfaces::IInput*, PendingLink> {
 public:
  /// Stores the link of an input. A later link replaces the earlier one. The first link retains the
  /// input, which then exists at least until LinkResolver releases it.
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
