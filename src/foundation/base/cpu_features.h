// What the processor at hand can do beyond its family's common ground. The code with a faster form
// for some processors asks here once per call, so that one build serves them all.

#pragma once

namespace zn {

/// True on an x86 processor with SSE4.1, false on every other one.
bool cpuHasSse41();

/// True on an x86 processor with SSE4.2 and POPCNT, false on every other one.
bool cpuHasSse42();

/// True on an x86 processor with AVX2, BMI, BMI2 and POPCNT, where the system also keeps the wide
/// registers; false on every other one.
bool cpuHasAvx2();

}  // namespace zn
