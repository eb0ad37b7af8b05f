// StringSlabs: short texts that are created together and mostly have the same lifetime, such as the
// names and comments of a scene. Their buffers are adjacent in slabs that the texts share. This
// saves an allocation for each text and improves locality. Internal.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include <vsa/foundation/ref_counted.h>
#include <vsa/foundation/string.h>

namespace zn {

namespace detail {

/// The header of a slab; buffers follow. The slab is freed when it has no buffers and no
/// StringSlabs uses it.
class StringSlab {
 public:
  /// Creates a slab of `bytes` in all. Its first user is the StringSlabs that calls this. Throws
  /// std::bad_alloc.
  static StringSlab* make(std::size_t bytes);

  /// The slab of a buffer that is `offset` bytes after the start of the slab.
  static StringSlab* of(StringBuffer* buffer, std::uint32_t offset) noexcept {
    return reinterpret_cast<StringSlab*>(reinterpret_cast<std::byte*>(buffer) - offset);
  }

  /// Adds or removes one user.
  void retain() noexcept { users_.increment(); }
  void release() noexcept;

 private:
  StringSlab() = default;

  HandleCount users_;
};

}  // namespace detail

/// Creates Strings in slabs. A String keeps its slab in memory, so it may outlive this object.
class StringSlabs {
 public:
  StringSlabs() = default;
  StringSlabs(const StringSlabs&) = delete;
  StringSlabs& operator=(const StringSlabs&) = delete;
  ~StringSlabs() { finish(); }

  /// A copy of exactly these characters. `hash` is `String::hashOf(text)`, or 0 when it is not
  /// known. Throws std::bad_alloc.
  String copyOf(std::string_view text, std::uint64_t hash = 0);

 private:
  // One text keeps its whole slab in memory, so slabs are small. The first one is tiny, because a
  // host may send one statement at a time.
  static constexpr std::uint32_t MIN_SLAB_BYTES = 256;
  static constexpr std::uint32_t MAX_SLAB_BYTES = 16384;
  // A longer buffer has its own allocation.
  static constexpr std::uint32_t MAX_BUFFER_BYTES = MAX_SLAB_BYTES / 16;

  void addSlab(std::uint32_t wanted);
  void finish() noexcept;

  detail::StringSlab* slab_ = nullptr;  // the current slab
  std::uint32_t used_ = 0;              // bytes used in the current slab, including its header
  std::uint32_t size_ = 0;              // size of the current slab in bytes
};

}  // namespace zn
