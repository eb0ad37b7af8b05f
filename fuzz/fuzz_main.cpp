// One fuzzer as a libFuzzer program; the build says which: VSA_FUZZ_TARGET is a name of targets.h.
#include <cstddef>
#include <cstdint>

#include "fuzz/targets.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  vsa_fuzz::VSA_FUZZ_TARGET({reinterpret_cast<const char*>(data), size});
  return 0;
}
