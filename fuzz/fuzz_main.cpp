// The libFuzzer program of one fuzzer. The build sets VSA_FUZZ_TARGET to the name of a function in
// targets.h.
#include <cstddef>
#include <cstdint>

#include "fuzz/targets.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  vsa_fuzz::VSA_FUZZ_TARGET({reinterpret_cast<const char*>(data), size});
  return 0;
}
