// Handling of Ctrl-C: a command ends its readings and exits with EXIT_INTERRUPTED. Some commands
// print what they have found until then.
#pragma once

namespace vsa_tools {

/// Handles Ctrl-C (SIGINT) while the object exists: the first signal only sets a flag, and the
/// second one ends the process. If the process was started with SIGINT ignored, it continues to
/// ignore the signal. At most one object may exist at a time.
class InterruptScope {
 public:
  InterruptScope() noexcept;
  ~InterruptScope();
  InterruptScope(const InterruptScope&) = delete;
  InterruptScope& operator=(const InterruptScope&) = delete;
};

/// Returns whether Ctrl-C was pressed during an InterruptScope of this process. May be called from
/// any thread.
bool isInterrupted() noexcept;

/// Waits until the descriptor can be read without blocking, and returns true. Returns false if
/// isInterrupted() is true or becomes true before that. Also returns true if waiting fails: the
/// read then reports the error.
bool waitForInput(int descriptor) noexcept;

/// Opens a file for reading. Returns its descriptor, or -1 with the error in `errno`. Waits for the
/// first bytes of a named pipe. If isInterrupted() becomes true before that, the error is EINTR.
int openForReading(const char* name) noexcept;

}  // namespace vsa_tools
