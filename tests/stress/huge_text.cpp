#include "tests/stress/huge_text.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>
#include <string_view>

#include <vsa/foundation/file.h>
#include <vsa/foundation/log.h>
#include <vsa/model/scene.h>
#include <vsa/parse.h>
#include "tests/support/allocation_tracker.h"

namespace vsa_tests {

namespace {

constexpr std::uint64_t GIB = std::uint64_t{1} << 30;

/// A source that returns `head`, then at least `bytes` bytes of `unit` repeated, then `tail`.
class GeneratedSource final : public zn::ByteSource {
 public:
  GeneratedSource(std::string_view head, std::string_view unit, std::uint64_t bytes,
                  std::string_view tail)
      : parts_{head, unit, tail}, left_(bytes) {
    // The block has many units, so that generating the text takes little time.
    while (block_.size() < (std::size_t{1} << 16)) block_ += unit;
  }

  std::size_t read(char* to, std::size_t capacity) override {
    if (!parts_[0].empty()) return copy(parts_[0], to, capacity);
    if (left_ > 0) return copyUnits(to, capacity);
    return copy(parts_[2], to, capacity);
  }

 private:
  static std::size_t copy(std::string_view& part, char* to, std::size_t capacity) {
    const std::size_t count = std::min(capacity, part.size());
    std::memcpy(to, part.data(), count);
    part.remove_prefix(count);
    return count;
  }

  std::size_t copyUnits(char* to, std::size_t capacity) {
    std::string_view rest = std::string_view(block_).substr(at_);
    const std::size_t limit =
        static_cast<std::size_t>(std::min<std::uint64_t>({capacity, rest.size(), left_}));
    const std::size_t count = copy(rest, to, limit);
    at_ = (at_ + count) % block_.size();
    left_ -= count;
    // The last unit must be complete before the tail.
    if (left_ == 0)
      left_ = at_ % parts_[1].size() == 0 ? 0 : parts_[1].size() - at_ % parts_[1].size();
    return count;
  }

  std::string_view parts_[3];
  std::string block_;
  std::size_t at_ = 0;
  std::uint64_t left_;
};

/// A sink that keeps only the last message.
class LastSink final : public zn::LogSink {
 public:
  void write(zn::LogLevel, const zn::String& text) override { last = text; }
  zn::String last;
};

struct HugeText {
  const char* name;
  std::string_view head;
  std::string_view unit;
  std::uint64_t bytes;
  std::string_view tail;
  bool result;
};

// The texts. In most of them, the input `last` is assigned at the end, and so shows that the reader
// reached the end.
constexpr HugeText TEXTS[] = {
    {"a text of 5 GiB", "t n;\n", "n.aLongNameForAnInput = 1234567890;\n", 5 * GIB, "n.last = 7;\n",
     true},
    {"a line of 2.2 GiB", "t n; ", "n.aLongNameForAnInput = 1234567890; ", GIB * 22 / 10,
     "n.last = 7;", true},
    {"2.2 Gi lines", "t n;", "\n", GIB * 22 / 10, "n.last = 7;", true},
    {"an error after 2.2 Gi lines", "t n; n.last = 7;", "\n", GIB * 22 / 10, "42;", false},
    {"a string of 2.2 GiB", "t n; n.s = \"", "0123456789abcdef", GIB * 22 / 10, "\"; n.last = 7;",
     true},
    {"4 GiB - 1 of blanks", "t n; t w: .a = 1;", " ", 4 * GIB - 1, "n.last = 7; n.b = 2;", true},
    {"a list of 2.2 GiB, too long", "t n; n.last = 7; n.b = byte[3] {", "1 ", GIB * 22 / 10, "};",
     false},
};

bool readHuge(const HugeText& huge) {
  using namespace zn::korvo_sdk;
  LastSink sink;
  const zn::ScopedLogSink scope(&sink);
  Scene scene;
  AllocationTracker::start();
  const bool result = impl::parseVsa(
      &scene, zn::File(new GeneratedSource(huge.head, huge.unit, huge.bytes, huge.tail)), true);
  AllocationTracker::stop();
  Node* const node = scene.findNode("n");
  Input* const last = node == nullptr ? nullptr : node->input("last");
  const bool isRight = result == huge.result && last != nullptr && last->integer() == 7;
  std::printf("%-32s heap %6lld MiB  %s%s%s\n", huge.name,
              static_cast<long long>(AllocationTracker::count().peakBytes >> 20),
              isRight ? "as expected" : "FAILS", sink.last.isEmpty() ? "" : ": ", sink.last.buf());
  std::fflush(stdout);
  return isRight;
}

}  // namespace

int readHugeTexts() {
  bool isRight = true;
  for (const HugeText& huge : TEXTS) isRight = readHuge(huge) && isRight;
  return isRight ? 0 : 1;
}

}  // namespace vsa_tests
