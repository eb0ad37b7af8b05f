#include "tests/stress/stack_usage.h"

#include <pthread.h>
#include <sys/mman.h>

#include <algorithm>
#include <cstring>
#include <stdexcept>

namespace vsa_tests {

namespace {

constexpr std::size_t STACK_BYTES = std::size_t{4} << 20;
constexpr unsigned char PATTERN = 0xA5;

/// A stack filled with PATTERN.
class PatternedStack {
 public:
  PatternedStack() {
    void* const memory = mmap(nullptr, STACK_BYTES, PROT_READ | PROT_WRITE,
                              MAP_PRIVATE | MAP_ANONYMOUS | MAP_STACK, -1, 0);
    if (memory == MAP_FAILED) throw std::runtime_error("no memory for a stack");
    bytes_ = static_cast<unsigned char*>(memory);
    std::memset(bytes_, PATTERN, STACK_BYTES);
  }
  PatternedStack(const PatternedStack&) = delete;
  PatternedStack& operator=(const PatternedStack&) = delete;
  ~PatternedStack() { munmap(bytes_, STACK_BYTES); }

  void run(const std::function<void()>& work) {
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setstack(&attributes, bytes_, STACK_BYTES);
    pthread_t thread;
    const auto enter = [](void* given) -> void* {
      (*static_cast<const std::function<void()>*>(given))();
      return nullptr;
    };
    const int refused =
        pthread_create(&thread, &attributes, enter, const_cast<std::function<void()>*>(&work));
    pthread_attr_destroy(&attributes);
    if (refused != 0) throw std::runtime_error("cannot start a thread");
    pthread_join(thread, nullptr);
  }

  /// Returns the number of used bytes. Stacks grow downwards.
  std::size_t used() const {
    const unsigned char* const end = bytes_ + STACK_BYTES;
    return static_cast<std::size_t>(end - std::find_if(bytes_, bytes_ + STACK_BYTES,
                                                       [](auto byte) { return byte != PATTERN; }));
  }

 private:
  unsigned char* bytes_;
};

std::size_t usedWith(const std::function<void()>& work) {
  PatternedStack stack;
  stack.run(work);
  return stack.used();
}

}  // namespace

std::size_t stackUsedBy(const std::function<void()>& work) {
  static const std::size_t idle = usedWith([] {});
  return usedWith(work) - idle;
}

}  // namespace vsa_tests
