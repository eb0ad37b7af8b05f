// StringSlabs: many short texts that are made together and mostly stay together, such as the names
// and comments of a scene. Their buffers lie side by side, in slabs that the texts share: no
// allocation each, and whoever goes through them finds them in few places. Internal; see String.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include <vsa/foundation/ref_counted.h>
#include <vsa/foundation/string.h>

namespace zn {

namespace detail {

/// The head of a slab; buffers follow. It goes with the last of them, once its maker is done too.
class StringSlab {
 public:
  /// A slab of `bytes` in all, counted once for its maker. Throws std::bad_alloc.
  static StringSlab* make(std::size_t bytes);

  /// The slab in which a buffer lies `offset` bytes behind the beginning.
  static StringSlab* of(StringBuffer* buffer, std::uint32_t offset) noexcept {
    return reinterpret_cast<StringSlab*>(reinterpret_cast<std::byte*>(buffer) - offset);
  }

  /// One more, or one fewer, needs the slab.
  void retain() noexcept { users_.add(); }
  void release() noexcept;

 private:
  StringSlab() = default;

  HandleCount users_;
};

}  // namespace detail

/// Makes such texts. They live as long as any other String.
class StringSlabs {
 public:
  StringSlabs() = default;
  StringSlabs(const StringSlabs&) = delete;
  StringSlabs& operator=(const StringSlabs&) = delete;
  ~StringSlabs() { finish(); }

  /// A copy of exactly these characters, whose `String::hashOf` is `hash`, or 0 while nobody has
  /// asked for it. Throws std::bad_alloc.
  String copyOf(std::string_view text, std::uint64_t hash = 0);

 private:
  // One text that stays keeps its whole slab, so slabs are short. The first of few texts is tiny: a
  // host may send one statement at a time.
  static constexpr std::uint32_t LEAST_BYTES = 256;
  static constexpr std::uint32_t MOST_BYTES = 16384;
  // A longer text has memory of its own.
  static constexpr std::uint32_t LONGEST_BYTES = MOST_BYTES / 16;

  void addSlab(std::uint32_t wanted);
  void finish() noexcept;

  detail::StringSlab* slab_ = nullptr;  // the one at hand
  std::uint32_t used_ = 0;              // bytes of it, its head included
  std::uint32_t size_ = 0;              // in all
};

}  // namespace zn
