// StringSlabs: short texts that are created together, such as the names and comments of a scene.
// Internal.
//
// Most of these texts have the same lifetime. Their buffers are adjacent in slabs, and several
// texts share one slab. This saves an allocation for each text and improves locality.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include <vsa/foundation/ref_counted.h>
#include <vsa/foundation/string.h>

namespace zn {

namespace detail {

/// The header of a slab. The buffers of the slab follow it. The slab is freed when it contains no
/// buffers and no StringSlabs uses it.
class StringSlab {
 public:
  /// Creates a slab of `bytes` bytes, including the header. The StringSlabs that calls this
  /// function is its first user. Throws std::bad_alloc.
  static StringSlab* make(std::size_t bytes);

  /// Returns the slab of a buffer. `offset` is the offset of the buffer in the slab, in bytes.
  static StringSlab* of(StringBuffer* buffer, std::uint32_t offset) noexcept {
    return reinterpret_cast<StringSlab*>(reinterpret_cast<std::byte*>(buffer) - offset);
  }

  /// Adds or removes one user. The last `release` frees the slab.
  void retain() noexcept { users_.increment(); }
  void release() noexcept;

 private:
  StringSlab() = default;

  HandleCount users_;
};

}  // namespace detail

/// Creates Strings, most of them in slabs. A String keeps its slab in memory, so the String may
/// outlive the StringSlabs.
class StringSlabs {
 public:
  StringSlabs() = default;
  StringSlabs(const StringSlabs&) = delete;
  StringSlabs& operator=(const StringSlabs&) = delete;
  ~StringSlabs() {
    if (slab_ != nullptr) slab_->release();
  }

  /// Returns a copy of `text`. `hash` is `String::hashOf(text)`, or 0 if the hash is not known.
  /// Throws std::bad_alloc.
  String copyOf(std::string_view text, std::uint64_t hash = 0);

 private:
  // The sizes of slabs. Slabs are small, because one text keeps its whole slab in memory. The first
  // slab has MIN_SLAB_BYTES, or four times the size of its first buffer if that is more, so that a
  // host that reads one statement at a time does not allocate a large slab for each statement. The
  // size then at least doubles with each slab, up to MAX_SLAB_BYTES.
  static constexpr std::uint32_t MIN_SLAB_BYTES = 256;
  static constexpr std::uint32_t MAX_SLAB_BYTES = 16384;
  // The maximum size of a buffer in a slab. A longer buffer has its own allocation.
  static constexpr std::uint32_t MAX_BUFFER_BYTES = MAX_SLAB_BYTES / 16;

  void addSlab(std::uint32_t wanted);

  detail::StringSlab* slab_ = nullptr;  // The current slab.
  // The number of bytes used in the current slab, including its header.
  std::uint32_t used_ = 0;
  // The size of the current slab in bytes.
  std::uint32_t size_ = 0;
};

}  // namespace zn
