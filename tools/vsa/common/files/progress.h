// A progress line on standard error, for a person at a terminal.
#pragma once

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <mutex>
#include <string>

namespace vsa_tools {

/// Shows the progress of a command, on a terminal only, and only after a delay. The destructor
/// removes the line. All functions may be called by several threads.
class Progress {
 public:
  using Clock = std::chrono::steady_clock;

  /// `what` begins the line: "checking". Shows nothing if standard error is not a terminal.
  explicit Progress(std::string what);
  /// Shows the line on another stream, which need not be a terminal.
  Progress(std::string what, std::FILE* stream, Clock::duration delay);
  ~Progress();
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  /// Shows that `done` of `total` steps are done, at most ten times a second.
  void update(std::uint64_t done, std::uint64_t total);
  /// Removes the line until the next update. Call it before anything else is printed.
  void hide();

 private:
  void erase();

  std::string what_;
  std::FILE* stream_;  // the output; null if nothing is to be shown
  Clock::time_point next_;
  bool isShown_ = false;
  std::mutex mutex_;
};

/// The text of a progress line: "checking [#####               ]  25 %". A total of 0 counts as
/// done.
std::string progressLine(const std::string& what, std::uint64_t done, std::uint64_t total);

}  // namespace vsa_tools
