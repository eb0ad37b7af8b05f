#include "tools/vsa/common/interrupt.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

namespace vsa_tools {

namespace {

volatile std::sig_atomic_t interrupted = 0;
struct sigaction before;

void interrupt(int) {
  interrupted = 1;
}

}  // namespace

InterruptScope::InterruptScope() noexcept {
  struct sigaction action = {};
  action.sa_handler = interrupt;
  action.sa_flags = static_cast<int>(SA_RESETHAND);
  ::sigaction(SIGINT, nullptr, &before);
  if (before.sa_handler != SIG_IGN) ::sigaction(SIGINT, &action, nullptr);
}

InterruptScope::~InterruptScope() {
  if (before.sa_handler != SIG_IGN) ::sigaction(SIGINT, &before, nullptr);
}

bool isInterrupted() noexcept {
  return interrupted != 0;
}

// The loop tests the flag again after each short wait, because a signal does not always end the
// wait. The wait continues if another thread receives the signal, or if the signal comes just
// before the wait.
bool waitForInput(int descriptor) noexcept {
  constexpr int MILLISECONDS = 100;
  while (!isInterrupted()) {
    pollfd input = {descriptor, POLLIN, 0};
    const int ready = ::poll(&input, 1, MILLISECONDS);
    if (ready > 0 || (ready < 0 && errno != EINTR)) return true;
  }
  return false;
}

// Without O_NONBLOCK, open() would wait for a process that writes to the pipe. Ctrl-C would not end
// this wait if another thread received the signal.
int openForReading(const char* name) noexcept {
  int descriptor;
  do {
    descriptor = ::open(name, O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  } while (descriptor < 0 && errno == EINTR && !isInterrupted());
  struct stat status {};
  if (descriptor < 0 || ::fstat(descriptor, &status) != 0) return descriptor;
  if (S_ISREG(status.st_mode)) return descriptor;  // O_NONBLOCK has no effect
  if (S_ISFIFO(status.st_mode) && !waitForInput(descriptor)) {
    ::close(descriptor);
    errno = EINTR;
    return -1;
  }
  ::fcntl(descriptor, F_SETFL, ::fcntl(descriptor, F_GETFL) & ~O_NONBLOCK);
  return descriptor;
}

}  // namespace vsa_tools
