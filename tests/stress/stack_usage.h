// Measures how much stack a function uses. The function runs in a thread whose stack is filled with
// a pattern. The used bytes are those that have changed.
#pragma once

#include <cstddef>
#include <functional>

namespace vsa_tests {

/// Runs `work` in a new thread and returns the number of bytes of stack that it used. Bytes that an
/// idle thread uses do not count. An exception from `work` ends the program.
std::size_t stackUsedBy(const std::function<void()>& work);

}  // namespace vsa_tests
