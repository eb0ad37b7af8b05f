// Progress: shows a progress line on standard error, for a person at a terminal.
#pragma once

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <mutex>
#include <string>

namespace vsa_tools {

/// Shows the progress of a command after a delay. The destructor removes the line. Several threads
/// may call all functions.
class Progress {
 public:
  using Clock = std::chrono::steady_clock;

  /// The line begins with `what`, such as "checking". It is shown on standard error, and only if
  /// that is a terminal.
  explicit Progress(std::string what);
  /// Shows the line on another stream, even if that stream is not a terminal.
  Progress(std::string what, std::FILE* stream, Clock::duration delay);
  ~Progress();
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  /// Shows that `done` of `total` steps are done, once the delay has passed. Changes the line at
  /// most ten times a second.
  void update(std::uint64_t done, std::uint64_t total);
  /// Removes the line until the next update. Must be called before anything else is printed.
  void hide();

 private:
  void erase();

  std::string what_;
  std::FILE* stream_;  // the output, or null if nothing is shown
  Clock::time_point next_;
  bool isShown_ = false;
  std::mutex mutex_;
};

/// Returns the text of a progress line: "checking [#####               ]  25 %". If `total` is 0,
/// the line shows 100 %.
std::string progressLine(const std::string& what, std::uint64_t done, std::uint64_t total);

}  // namespace vsa_tools
