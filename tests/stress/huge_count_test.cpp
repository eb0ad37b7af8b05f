// Tests of element counts beyond 32 bits, which messages must print completely. The wrapped calloc
// (see CMakeLists.txt) only reserves address space for such buffers, so that the test needs little
// memory.
#include <gtest/gtest.h>
#include <sys/mman.h>

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include <vsa/parse.h>
#include "tests/support/parser_fixture.h"

extern "C" {
void* __real_calloc(std::size_t count, std::size_t size);
void __real_free(void* block);
}

namespace vsa_tests {

namespace {

constexpr std::size_t HUGE_BYTES = std::size_t{1} << 32;

// Returns the huge blocks by address. The map is never destroyed, because free is called until the
// process ends.
std::map<void*, std::size_t>& hugeBlocks() {
  static auto& blocks = *new std::map<void*, std::size_t>;
  return blocks;
}

/// Whether calloc only reserves address space for huge blocks.
thread_local bool reservesOnly = false;

void* addressSpace(std::size_t bytes) {
  void* const block = ::mmap(nullptr, bytes, PROT_READ | PROT_WRITE,
                             MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
  if (block == MAP_FAILED) return nullptr;
  hugeBlocks()[block] = bytes;
  return block;
}

}  // namespace

}  // namespace vsa_tests

extern "C" {

void* __wrap_calloc(std::size_t count, std::size_t size) {
  using namespace vsa_tests;
  if (reservesOnly && count != 0 && size >= HUGE_BYTES / count) return addressSpace(count * size);
  return __real_calloc(count, size);
}

void __wrap_free(void* block) {
  using namespace vsa_tests;
  if (!reservesOnly || hugeBlocks().count(block) == 0) return __real_free(block);
  ::munmap(block, hugeBlocks()[block]);
  hugeBlocks().erase(block);
}

}  // extern "C"

namespace vsa_tests {

namespace {

using Lines = std::vector<std::string>;

class HugeCount : public testing::Test {
 protected:
  HugeCount() { reservesOnly = true; }
  ~HugeCount() override {
    EXPECT_TRUE(hugeBlocks().empty()) << "a buffer outlives its scene";
    reservesOnly = false;
  }
};

TEST_F(HugeCount, WithFewerElements) {
  struct Row {
    const char* literal;
    const char* assigned;
    const char* message;
  };
  constexpr Row ROWS[] = {
      {"byte[5000000000] {1}", "Byte 5000000000", "(1) for byte[5000000000]"},
      {"byte[4294967296] {}", "Byte 4294967296", "(0) for byte[4294967296]"},
      {"Vec3f[2147483648] {1 2 3 4}", "Vec3f 2147483648", "(1) for Vec3f[2147483648]"},
      {"double[4294967297] {}", "Double 4294967297", "(0) for double[4294967297]"},
  };
  for (const Row& row : ROWS) {
    HostScene scene;
    scene.add("lamp", "n");
    const LoggedLines log;
    EXPECT_TRUE(zn::korvo_sdk::impl::parseString(
        &scene, string(std::string("n.b = ") + row.literal + ";")));
    EXPECT_EQ(log.lines(), Lines{std::string("warning: Too few elements ") + row.message +
                                 " buffer, remainder set to zero."});
    EXPECT_EQ(scene.options.calls,
              (Lines{"n.createInput b Buffer", std::string("n.b.assign Buffer ") + row.assigned}));
  }
}

TEST_F(HugeCount, ThatCannotBeAllocated) {
  HostScene scene;
  scene.add("lamp", "n");
  const LoggedLines log;
  EXPECT_FALSE(zn::korvo_sdk::impl::parseString(&scene, "n.b = mat4d[144115188075855872] {1};"));
  EXPECT_EQ(log.lines(),
            Lines{"error: PARSE ERROR (1,35): cannot allocate mat4d[144115188075855872]."});
}

}  // namespace

}  // namespace vsa_tests
