// The C functions are wrapped by the linker, operator new and delete are replaced; all of them come
// through `Tally`.
#include "tests/support/allocation_tracker.h"

#include <malloc.h>

#include <atomic>
#include <cstdlib>
#include <new>

extern "C" {
void* __real_malloc(std::size_t size);
void* __real_calloc(std::size_t count, std::size_t size);
void* __real_realloc(void* block, std::size_t size);
void* __real_aligned_alloc(std::size_t alignment, std::size_t size);
void __real_free(void* block);
}

namespace vsa_tests {

namespace {

// One thread counts at a time, so loads and stores suffice; they are atomic because other threads
// free blocks, too, and pass by here.
struct Tally {
  std::atomic<std::int64_t> liveBytes{0};
  std::atomic<std::int64_t> peakBytes{0};
  std::atomic<std::int64_t> liveBlocks{0};
  std::atomic<std::uint64_t> calls{0};
  std::atomic<std::uint64_t> failing{0};  // the call that fails; 0: none
  std::atomic<bool> failsEverAfter{false};
  std::atomic<bool> hasFailed{false};
};

constinit Tally tally;
constinit thread_local bool isTracked = false;

template <class T, class D>
T add(std::atomic<T>& to, D difference) {
  const T sum = to.load(std::memory_order_relaxed) + static_cast<T>(difference);
  to.store(sum, std::memory_order_relaxed);
  return sum;
}

bool mayAllocate() {
  if (!isTracked) return true;
  const std::uint64_t call = add(tally.calls, 1);
  const std::uint64_t failing = tally.failing.load(std::memory_order_relaxed);
  if (failing == 0 || call < failing) return true;
  if (call > failing && !tally.failsEverAfter.load(std::memory_order_relaxed)) return true;
  tally.hasFailed.store(true, std::memory_order_relaxed);
  return false;
}

void* taken(void* block) {
  if (block == nullptr || !isTracked) return block;
  add(tally.liveBlocks, 1);
  const std::int64_t live = add(tally.liveBytes, malloc_usable_size(block));
  if (live > tally.peakBytes.load(std::memory_order_relaxed)) {
    tally.peakBytes.store(live, std::memory_order_relaxed);
  }
  return block;
}

void given(void* block) {
  if (block == nullptr || !isTracked) return;
  add(tally.liveBlocks, -1);
  add(tally.liveBytes, -static_cast<std::int64_t>(malloc_usable_size(block)));
}

void* newBlock(std::size_t size) {
  void* const block = mayAllocate() ? __real_malloc(size == 0 ? 1 : size) : nullptr;
  if (block == nullptr) throw std::bad_alloc();
  return taken(block);
}

void* newBlock(std::size_t size, std::align_val_t alignment) {
  const auto to = static_cast<std::size_t>(alignment);
  const std::size_t whole = (size + to - 1) / to * to;
  void* const block = mayAllocate() ? __real_aligned_alloc(to, whole) : nullptr;
  if (block == nullptr) throw std::bad_alloc();
  return taken(block);
}

void deleteBlock(void* block) {
  given(block);
  __real_free(block);
}

}  // namespace

void AllocationTracker::start() {
  failAt(0, false);
  tally.liveBytes = 0;
  tally.peakBytes = 0;
  tally.liveBlocks = 0;
  tally.calls = 0;
  isTracked = true;
}

void AllocationTracker::stop() {
  isTracked = false;
}

void AllocationTracker::resume() {
  failAt(0, false);
  isTracked = true;
}

AllocationCount AllocationTracker::count() {
  return {tally.liveBytes, tally.peakBytes, tally.liveBlocks, tally.calls};
}

void AllocationTracker::failAt(std::uint64_t n, bool everAfter) {
  tally.hasFailed = false;
  tally.failsEverAfter = everAfter;
  tally.failing = n == 0 ? 0 : tally.calls + n;
}

bool AllocationTracker::hasFailed() {
  return tally.hasFailed;
}

}  // namespace vsa_tests

extern "C" {

void* __wrap_malloc(std::size_t size) {
  return vsa_tests::mayAllocate() ? vsa_tests::taken(__real_malloc(size)) : nullptr;
}

void* __wrap_calloc(std::size_t count, std::size_t size) {
  return vsa_tests::mayAllocate() ? vsa_tests::taken(__real_calloc(count, size)) : nullptr;
}

void* __wrap_realloc(void* block, std::size_t size) {
  if (!vsa_tests::mayAllocate()) return nullptr;
  // While it moves a block, an allocator holds both; a large one is moved by remapping it.
  vsa_tests::given(block);
  void* const moved = __real_realloc(block, size);
  vsa_tests::taken(moved != nullptr || size == 0 ? moved : block);
  return moved;
}

void* __wrap_aligned_alloc(std::size_t alignment, std::size_t size) {
  if (!vsa_tests::mayAllocate()) return nullptr;
  return vsa_tests::taken(__real_aligned_alloc(alignment, size));
}

void __wrap_free(void* block) {
  vsa_tests::given(block);
  __real_free(block);
}

}  // extern "C"

void* operator new(std::size_t size) {
  return vsa_tests::newBlock(size);
}
void* operator new[](std::size_t size) {
  return vsa_tests::newBlock(size);
}
void* operator new(std::size_t size, std::align_val_t alignment) {
  return vsa_tests::newBlock(size, alignment);
}
void* operator new[](std::size_t size, std::align_val_t alignment) {
  return vsa_tests::newBlock(size, alignment);
}
void operator delete(void* block) noexcept {
  vsa_tests::deleteBlock(block);
}
void operator delete[](void* block) noexcept {
  vsa_tests::deleteBlock(block);
}
void operator delete(void* block, std::size_t) noexcept {
  vsa_tests::deleteBlock(block);
}
void operator delete[](void* block, std::size_t) noexcept {
  vsa_tests::deleteBlock(block);
}
void operator delete(void* block, std::align_val_t) noexcept {
  vsa_tests::deleteBlock(block);
}
void operator delete[](void* block, std::align_val_t) noexcept {
  vsa_tests::deleteBlock(block);
}
void operator delete(void* block, std::size_t, std::align_val_t) noexcept {
  vsa_tests::deleteBlock(block);
}
void operator delete[](void* block, std::size_t, std::align_val_t) noexcept {
  vsa_tests::deleteBlock(block);
}
