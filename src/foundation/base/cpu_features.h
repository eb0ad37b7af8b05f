// The instruction sets of the processor. Code with several kernels calls these functions to select
// one at run time, so that one build runs on all processors. Internal.
#pragma once

namespace zn {

/// True on an x86 processor with SSE4.1, false on every other one.
bool cpuHasSse41();

/// True on an x86 processor with SSE4.2 and POPCNT, false on every other one.
bool cpuHasSse42();

/// True on an x86 processor with AVX2, BMI, BMI2 and POPCNT whose system saves the wide registers;
/// false on every other one.
bool cpuHasAvx2();

}  // namespace zn
