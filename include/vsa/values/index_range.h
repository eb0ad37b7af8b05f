// IndexRange: a range that creates the view of an object from the index of the object.
#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <ranges>

namespace vsa {

/// A random-access range of views, or of texts. Its i-th value is `source(i)`. Source is a small
/// copyable class with a member type `Value`. If there is no object with this index, `source`
/// returns a missing view (see view.h) or an empty text. Each iterator contains a copy of the
/// source, so it stays valid after the range is destroyed. The size does not change after
/// construction. Objects that are added later are therefore not in the range. If an object is
/// removed later, each object after it moves to the previous index, and the last views of the range
/// are missing.
///
/// The class does not derive from std::ranges::view_interface, because clang 14 cannot compile such
/// a class.
template <class Source>
class IndexRange {
 public:
  class Iterator {
   public:
    using value_type = typename Source::Value;
    using difference_type = std::ptrdiff_t;
    using iterator_concept = std::random_access_iterator_tag;
    // For C++17, this is only an input iterator, because `*i` is a value and not a reference.
    using iterator_category = std::input_iterator_tag;

    Iterator() = default;
    Iterator(Source source, std::uint64_t index) noexcept : source_(source), index_(index) {}

    value_type operator*() const noexcept { return source_(index_); }
    value_type operator[](difference_type n) const noexcept { return *(*this + n); }
    Iterator& operator++() noexcept { return *this += 1; }
    Iterator& operator--() noexcept { return *this -= 1; }
    Iterator operator++(int) noexcept {
      const Iterator before = *this;
      ++index_;
      return before;
    }
    Iterator operator--(int) noexcept {
      const Iterator before = *this;
      --index_;
      return before;
    }
    Iterator& operator+=(difference_type n) noexcept {
      index_ += static_cast<std::uint64_t>(n);
      return *this;
    }
    Iterator& operator-=(difference_type n) noexcept {
      index_ -= static_cast<std::uint64_t>(n);
      return *this;
    }
    friend Iterator operator+(Iterator i, difference_type n) noexcept { return i += n; }
    friend Iterator operator+(difference_type n, Iterator i) noexcept { return i += n; }
    friend Iterator operator-(Iterator i, difference_type n) noexcept { return i -= n; }
    friend difference_type operator-(const Iterator& a, const Iterator& b) noexcept {
      return static_cast<difference_type>(a.index_ - b.index_);
    }
    friend bool operator==(const Iterator& a, const Iterator& b) noexcept {
      return a.index_ == b.index_;
    }
    friend auto operator<=>(const Iterator& a, const Iterator& b) noexcept {
      return a.index_ <=> b.index_;
    }

   private:
    Source source_{};
    std::uint64_t index_ = 0;
  };

  IndexRange() = default;
  IndexRange(Source source, std::uint64_t size) noexcept : source_(source), size_(size) {}

  Iterator begin() const noexcept { return {source_, 0}; }
  Iterator end() const noexcept { return {source_, size_}; }
  std::size_t size() const noexcept { return static_cast<std::size_t>(size_); }
  bool empty() const noexcept { return size_ == 0; }
  /// Returns the value at `index`, a missing view or an empty text if there is no such object. An
  /// index that is not less than the size can find an object that was added later.
  auto operator[](std::uint64_t index) const noexcept { return source_(index); }

 private:
  Source source_{};
  std::uint64_t size_ = 0;
};

}  // namespace vsa

template <class Source>
inline constexpr bool std::ranges::enable_view<vsa::IndexRange<Source>> = true;
template <class Source>
inline constexpr bool std::ranges::enable_borrowed_range<vsa::IndexRange<Source>> = true;
