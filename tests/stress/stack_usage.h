// Measures the stack that a function uses: it runs in a thread whose stack is filled with a
// pattern, and the bytes that changed were used.
#pragma once

#include <cstddef>
#include <functional>

namespace vsa_tests {

/// Runs `work` in a new thread and returns the bytes of stack that it used, without those that an
/// idle thread uses. An exception from `work` ends the program.
std::size_t stackUsedBy(const std::function<void()>& work);

}  // namespace vsa_tests
