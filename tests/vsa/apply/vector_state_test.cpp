// Tests that reading buffers leaves the upper halves of the vector registers cleared. Functions
// that use AVX2 instructions must clear them. Otherwise later SSE instructions may be slow.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#if defined(__x86_64__)
#include <cpuid.h>
#endif

#include <vsa/model/scene.h>
#include <vsa/parse.h>

namespace zn::korvo_sdk::impl {
namespace {

#if defined(__x86_64__)
// Returns whether the processor can report which registers are in use (XGETBV with ECX = 1).
bool reportsRegistersInUse() {
  unsigned a = 0, b = 0, c = 0, d = 0;
  if (__get_cpuid(1, &a, &b, &c, &d) == 0 || (c & bit_OSXSAVE) == 0) return false;
  return __get_cpuid_count(0xD, 1, &a, &b, &c, &d) != 0 && (a & 4) != 0;
}

bool upperHalvesAreInUse() {
  unsigned low = 0, high = 0;
  asm volatile("xgetbv" : "=a"(low), "=d"(high) : "c"(1));
  return (low & 4) != 0;
}

std::string listOf(const char* number) {
  std::string list;
  for (int i = 0; i < 1000; ++i)
    list += i == 0 ? number : std::string(i % 7 == 0 ? ", " : " ") + number;
  return list;
}

TEST(VectorState, UpperHalvesAreNotInUseAfterARead) {
  // Without a processor that reports which registers are in use, the test checks nothing.
  if (!__builtin_cpu_supports("avx") || !reportsRegistersInUse()) return;
  const char* const lists[][2] = {{"float", "1"},
                                  {"float", "1.5"},
                                  {"float", "0.000001234"},
                                  {"double", "-7.25"},
                                  {"double", "123456789.123456789"},
                                  {"int32", "-1"},
                                  {"int32", "123456789"},
                                  {"uint32", "77"},
                                  {"byte", "7"}};
  for (const auto& [type, number] : lists) {
    const std::string text =
        "mesh m; m.v = " + std::string(type) + "[1000] {" + listOf(number) + "};";
    Scene scene;
    asm volatile("vzeroupper");
    const bool isRead = parseString(&scene, String::copyOf(text));
    EXPECT_FALSE(upperHalvesAreInUse()) << type << " of " << number;
    EXPECT_TRUE(isRead) << text;
  }
}
#endif

}  // namespace
}  // namespace zn::korvo_sdk::impl
