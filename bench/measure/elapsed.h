// The elapsed time of a piece of work.
#pragma once

#include <chrono>
#include <functional>

namespace bench {

/// The seconds that `work` takes.
inline double elapsed(const std::function<void()>& work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

}  // namespace bench
