// Measures the elapsed time of a function.
#pragma once

#include <chrono>
#include <functional>

namespace bench {

/// Returns the elapsed time of `work` in seconds.
inline double elapsed(const std::function<void()>& work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

}  // namespace bench
