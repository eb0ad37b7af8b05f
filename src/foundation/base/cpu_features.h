// Detects the instruction sets of the processor. Internal.
//
// Code with several kernels calls these functions to select a kernel at run time. One build
// therefore runs on all processors.
#pragma once

namespace zn {

/// True if the processor is an x86 processor with SSE4.1.
bool cpuHasSse41();

/// True if the processor is an x86 processor with SSE4.2 and POPCNT.
bool cpuHasSse42();

/// True if the processor is an x86 processor with AVX2, BMI, BMI2 and POPCNT, and the operating
/// system saves the wide registers.
bool cpuHasAvx2();

}  // namespace zn
