// Ending: sets how a reading ended, and ends it. Internal.
#pragma once

#include <exception>
#include <string_view>

#include <vsa/read.h>
#include "diagnostics/reading_sinks.h"

namespace vsa {

class Ending {
 public:
  explicit Ending(ReadOutcome& outcome) noexcept : outcome_(outcome) {}

  /// Sets status and message. Keeps the status without the message if there is no memory.
  void set(ReadStatus status, std::string_view message) noexcept;
  /// The same for the exception that is being handled, with its text as the message: OutOfMemory
  /// for a std::bad_alloc, HostException for any other.
  void setToException() noexcept;

  /// Sets the status and throws ReadStopped.
  [[noreturn]] void stop(ReadStatus status, std::string_view message);
  /// The same for the exception that is being handled.
  [[noreturn]] void stopForHost();

  /// Calls a function of the host. Its exceptions end the reading. Its log lines, and the
  /// diagnostics of texts that it parses, do not belong to this reading.
  template <class Function>
  auto callHost(const Function& function) {
    const zn::korvo_sdk::ScopedHostSinks sinks;
    try {
      return function();
    } catch (...) {
      stopForHost();
    }
  }

 private:
  ReadOutcome& outcome_;
};

}  // namespace vsa
