// Ending: stores how a reading ends, and ends it. Internal.
#pragma once

#include <exception>
#include <string_view>

#include <vsa/read.h>
#include "diagnostics/reading_sinks.h"

namespace vsa {

class Ending {
 public:
  explicit Ending(ReadOutcome& outcome) noexcept : outcome_(outcome) {}

  /// Sets the status and the message. If there is no memory for the message, it becomes empty.
  /// Removes the limit of the outcome if the status is not OverLimit.
  void set(ReadStatus status, std::string_view message) noexcept;
  /// Stores the exception that is being handled, and sets the status and the message for it. The
  /// status is OutOfMemory for a std::bad_alloc, and HostException for any other exception. The
  /// message is the text of the exception, or says that there is none.
  void setToException() noexcept;

  /// Sets the status and the message, and throws ReadStopped.
  [[noreturn]] void stop(ReadStatus status, std::string_view message);
  /// Calls setToException() and throws ReadStopped.
  [[noreturn]] void stopForHost();

  /// Calls a function of the host and returns its result. An exception of the function ends the
  /// reading. Log lines and diagnostics that the function causes do not belong to this reading.
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
