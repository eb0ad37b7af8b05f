// Ctrl-C: a command ends its readings, prints what was found so far and exits with
// EXIT_INTERRUPTED.
#pragma once

namespace vsa_tools {

/// While an object of this class exists, the first Ctrl-C (SIGINT) only sets a flag, and a second
/// one ends the process. A process that was started with SIGINT ignored continues to ignore it. At
/// most one object may exist.
class InterruptScope {
 public:
  InterruptScope() noexcept;
  ~InterruptScope();
  InterruptScope(const InterruptScope&) = delete;
  InterruptScope& operator=(const InterruptScope&) = delete;
};

/// Whether Ctrl-C was pressed during an InterruptScope of this process. Safe from any thread.
bool isInterrupted() noexcept;

/// Waits until the descriptor can be read without blocking. Returns false if the process is
/// interrupted first.
bool waitForInput(int descriptor) noexcept;

}  // namespace vsa_tools
