// NulSearch: finds out whether a text has a NUL byte, while it is read.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <span>
#include <string>

#include <vsa/read.h>

namespace vsa_tools {

/// Delivers the bytes of another source. The tokens of a text do not show all NUL bytes, because a
/// NUL between two tokens is skipped like white space.
class NulSearch final : public vsa::Source {
 public:
  /// `source` must outlive the object.
  explicit NulSearch(vsa::Source& source) : source_(source) {}

  std::size_t read(std::span<char> to) override {
    const std::size_t count = source_.read(to);
    hasNul_ = hasNul_ || (count > 0 && std::memchr(to.data(), 0, count) != nullptr);
    return count;
  }
  std::optional<std::uint64_t> size() const override { return source_.size(); }
  std::string error() const override { return source_.error(); }

  /// Whether one of the bytes that were read is a NUL.
  bool hasNul() const { return hasNul_; }

 private:
  vsa::Source& source_;
  bool hasNul_ = false;
};

}  // namespace vsa_tools
