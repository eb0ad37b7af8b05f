// workInOrder(): several threads work on items, and their results are consumed in the order of the
// items.
#pragma once

#include <condition_variable>
#include <cstddef>
#include <exception>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>
#include <vector>

namespace vsa_tools {

/// The turn of a worker. await() waits until the results of all earlier items are consumed. If the
/// result of a worker is too large to be kept, the worker awaits its turn and writes the result
/// itself.
class Turn {
 public:
  virtual void await() = 0;

 protected:
  ~Turn() = default;
};

/// The state that the workers and the consumer share. The consumer is at most `window` items behind
/// the workers, so that few results are in memory: a worker waits before it takes a later item.
template <class Result>
class OrderedWork {
 public:
  OrderedWork(std::size_t count, std::size_t window) : count_(count), slots_(window) {}

  /// Works on items until none is left.
  template <class Work>
  void work(const Work& function) {
    while (const std::optional<std::size_t> item = nextItem()) {
      WorkerTurn turn(*this, *item);
      Slot result;
      try {
        result.value.emplace(function(*item, turn));
      } catch (...) {
        result.error = std::current_exception();
      }
      store(*item, std::move(result));
    }
  }

  /// Waits for the result of the next item and returns it. If the work on that item threw an
  /// exception, throws that exception.
  Result take() {
    std::unique_lock lock(mutex_);
    Slot& slot = slots_[consumed_ % slots_.size()];
    stored_.wait(lock, [&] { return slot.value || slot.error; });
    Slot taken = std::exchange(slot, {});
    if (taken.error) std::rethrow_exception(taken.error);
    return std::move(*taken.value);
  }

  /// Allows the workers to continue after the result of take() was consumed.
  void advance() {
    const std::lock_guard lock(mutex_);
    ++consumed_;
    if (waitingWorkers_ > 0) advanced_.notify_all();
  }

  /// Ends the work. After it, no worker begins another item or waits for its turn.
  void stop() {
    const std::lock_guard lock(mutex_);
    stopped_ = true;
    advanced_.notify_all();
  }

 private:
  struct Slot {
    std::optional<Result> value;
    std::exception_ptr error;
  };

  class WorkerTurn final : public Turn {
   public:
    WorkerTurn(OrderedWork& work, std::size_t item) : work_(work), item_(item) {}
    void await() override {
      std::unique_lock lock(work_.mutex_);
      work_.waitUntil(lock, [&] { return work_.stopped_ || work_.consumed_ == item_; });
    }

   private:
    OrderedWork& work_;
    std::size_t item_;
  };

  std::optional<std::size_t> nextItem() {
    std::unique_lock lock(mutex_);
    waitUntil(lock, [&] { return stopped_ || next_ < consumed_ + slots_.size(); });
    if (stopped_ || next_ == count_) return std::nullopt;
    return next_++;
  }

  void store(std::size_t item, Slot result) {
    const std::lock_guard lock(mutex_);
    slots_[item % slots_.size()] = std::move(result);
    if (item == consumed_) stored_.notify_one();
  }

  // Makes a worker wait until `condition` is true. advance() and stop() make it test again.
  template <class Condition>
  void waitUntil(std::unique_lock<std::mutex>& lock, const Condition& condition) {
    ++waitingWorkers_;
    advanced_.wait(lock, condition);
    --waitingWorkers_;
  }

  std::mutex mutex_;
  std::condition_variable stored_;    // tells the consumer that the next result is stored
  std::condition_variable advanced_;  // tells the workers that advance() or stop() was called
  std::size_t waitingWorkers_ = 0;
  std::size_t count_;
  std::size_t next_ = 0, consumed_ = 0;
  bool stopped_ = false;
  std::vector<Slot> slots_;  // the items that are not consumed: item n at n % size
};

/// The maximum number of results for each worker that are kept until the results of earlier items
/// are consumed. Work on a small file takes microseconds. With 4 results, workers wait half of the
/// time.
inline constexpr std::size_t WAITING_RESULTS = 16;

/// Calls `work(item, turn)` on `workers` threads for the items from 0 (inclusive) to `count`
/// (exclusive). Calls `consume(item, result)` on the calling thread for the results in their order.
/// With one worker, calls `work` on the calling thread, too. Ends early if `consume` returns false.
/// If `work` or `consume` throws an exception, throws it after the threads have ended.
template <class Work, class Consume>
void workInOrder(std::size_t count, unsigned workers, const Work& work, const Consume& consume) {
  struct NoTurn final : Turn {
    void await() override {}
  };
  using Result = decltype(work(std::size_t{}, std::declval<Turn&>()));
  if (workers <= 1 || count <= 1) {
    NoTurn turn;
    for (std::size_t i = 0; i < count; ++i) {
      if (!consume(i, work(i, turn))) return;
    }
    return;
  }
  OrderedWork<Result> shared(count, std::size_t{workers} * WAITING_RESULTS);
  std::vector<std::jthread> threads;
  struct StopAtExit {
    ~StopAtExit() { work.stop(); }
    OrderedWork<Result>& work;
  } const stopAtExit{shared};
  for (unsigned i = 0; i < workers; ++i) threads.emplace_back([&] { shared.work(work); });
  for (std::size_t i = 0; i < count && consume(i, shared.take()); ++i) shared.advance();
}

}  // namespace vsa_tools
