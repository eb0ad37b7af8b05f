// The instruction sets of the processor. Code with a kernel for one of them asks here once a call,
// so that one build serves all processors. Internal.
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
