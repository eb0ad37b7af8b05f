// How much stack a piece of work needs: it runs in a thread whose stack was painted before, and
// what lost its paint was used.
#pragma once

#include <cstddef>
#include <functional>

namespace vsa_tests {

/// Runs `work` in a thread of its own and returns the bytes of stack that it used, without those of
/// an idle thread. What `work` throws ends the program.
std::size_t stackUsedBy(const std::function<void()>& work);

}  // namespace vsa_tests
