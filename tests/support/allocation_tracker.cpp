// The tracked functions, which update `Counters`: the C functions are wrapped by the linker, and
// operator new and delete are replaced.
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

// The counts. Only one thread counts at a time, so that a load and a store are sufficient to change
// a count.
struct Counters {
  std::atomic<std::int64_t> liveBytes{0};
  std::atomic<std::int64_t> peakBytes{0};
  std::atomic<std::int64_t> liveBlocks{0};
  std::atomic<std::uint64_t> calls{0};
  std::atomic<std::uint64_t> failingCall{0};  // 0 makes no call fail
  std::atomic<bool> failsEverAfter{false};
  std::atomic<bool> hasFailed{false};
};

constinit Counters counters;
constinit thread_local bool isTracked = false;

template <class T, class D>
T add(std::atomic<T>& to, D difference) {
  const T sum = to.load(std::memory_order_relaxed) + static_cast<T>(difference);
  to.store(sum, std::memory_order_relaxed);
  return sum;
}

bool mayAllocate() {
  if (!isTracked) return true;
  const std::uint64_t call = add(counters.calls, 1);
  const std::uint64_t failingCall = counters.failingCall.load(std::memory_order_relaxed);
  if (failingCall == 0 || call < failingCall) return true;
  if (call > failingCall && !counters.failsEverAfter.load(std::memory_order_relaxed)) return true;
  counters.hasFailed.store(true, std::memory_order_relaxed);
  return false;
}

void* countAllocated(void* block) {
  if (block == nullptr || !isTracked) return block;
  add(counters.liveBlocks, 1);
  const std::int64_t live = add(counters.liveBytes, malloc_usable_size(block));
  if (live > counters.peakBytes.load(std::memory_order_relaxed)) {
    counters.peakBytes.store(live, std::memory_order_relaxed);
  }
  return block;
}

void countFreed(void* block) {
  if (block == nullptr || !isTracked) return;
  add(counters.liveBlocks, -1);
  add(counters.liveBytes, -static_cast<std::int64_t>(malloc_usable_size(block)));
}

void* newBlock(std::size_t size) {
  void* const block = mayAllocate() ? __real_malloc(size == 0 ? 1 : size) : nullptr;
  if (block == nullptr) throw std::bad_alloc();
  return countAllocated(block);
}

void* newBlock(std::size_t size, std::align_val_t alignment) {
  const auto to = static_cast<std::size_t>(alignment);
  const std::size_t whole = (size + to - 1) / to * to;
  void* const block = mayAllocate() ? __real_aligned_alloc(to, whole) : nullptr;
  if (block == nullptr) throw std::bad_alloc();
  return countAllocated(block);
}

void deleteBlock(void* block) {
  countFreed(block);
  __real_free(block);
}

}  // namespace

void AllocationTracker::start() {
  failAt(0, false);
  counters.liveBytes = 0;
  counters.peakBytes = 0;
  counters.liveBlocks = 0;
  counters.calls = 0;
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
  return {counters.liveBytes, counters.peakBytes, counters.liveBlocks, counters.calls};
}

void AllocationTracker::failAt(std::uint64_t n, bool everAfter) {
  counters.hasFailed = false;
  counters.failsEverAfter = everAfter;
  counters.failingCall = n == 0 ? 0 : counters.calls + n;
}

bool AllocationTracker::hasFailed() {
  return counters.hasFailed;
}

}  // namespace vsa_tests

extern "C" {

void* __wrap_malloc(std::size_t size) {
  return vsa_tests::mayAllocate() ? vsa_tests::countAllocated(__real_malloc(size)) : nullptr;
}

void* __wrap_calloc(std::size_t count, std::size_t size) {
  return vsa_tests::mayAllocate() ? vsa_tests::countAllocated(__real_calloc(count, size)) : nullptr;
}

void* __wrap_realloc(void* block, std::size_t size) {
  if (!vsa_tests::mayAllocate()) return nullptr;
  // realloc moves a large block by remapping its pages, so the old and the new block do not need
  // memory at the same time. Therefore the old block is counted as freed before the new block is
  // counted.
  vsa_tests::countFreed(block);
  void* const moved = __real_realloc(block, size);
  vsa_tests::countAllocated(moved != nullptr || size == 0 ? moved : block);
  return moved;
}

void* __wrap_aligned_alloc(std::size_t alignment, std::size_t size) {
  if (!vsa_tests::mayAllocate()) return nullptr;
  return vsa_tests::countAllocated(__real_aligned_alloc(alignment, size));
}

void __wrap_free(void* block) {
  vsa_tests::countFreed(block);
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
