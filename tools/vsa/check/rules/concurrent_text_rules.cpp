#include "tools/vsa/check/rules/concurrent_text_rules.h"

#include <utility>

namespace vsa_tools {

namespace {

// This exception ends the rules when their findings are not needed any more.
struct Stopped {};

}  // namespace

void ConcurrentTextRules::run(const std::stop_token& stop) {
  std::exception_ptr error;
  try {
    runTextRules({text_, [&] { return waitForScene(stop); }, stop}, rules_,
                 [&](Finding&& finding) { store(std::move(finding), stop); });
  } catch (const Stopped&) {
    // Nothing waits for the findings.
  } catch (...) {
    error = std::current_exception();
  }
  const std::lock_guard lock(mutex_);
  error_ = error;
  hasEnded_ = true;
  changed_.notify_all();
}

vsa::SceneView ConcurrentTextRules::waitForScene(const std::stop_token& stop) {
  std::unique_lock lock(mutex_);
  if (!changed_.wait(lock, stop, [&] { return scene_.has_value(); })) throw Stopped();
  return *scene_;
}

void ConcurrentTextRules::store(Finding&& finding, const std::stop_token& stop) {
  std::unique_lock lock(mutex_);
  if (!changed_.wait(lock, stop, [&] { return stored_.size() < MAX_STORED; })) throw Stopped();
  stored_.push_back(std::move(finding));
  if (stored_.size() == MAX_STORED) changed_.notify_all();
}

void ConcurrentTextRules::deliver(const vsa::SceneView& scene, const FindingConsumer& consumer) {
  std::unique_lock lock(mutex_);
  scene_ = scene;
  changed_.notify_all();
  bool isLast = false;
  while (!isLast) {
    changed_.wait(lock, [&] { return hasEnded_ || stored_.size() == MAX_STORED; });
    isLast = hasEnded_;
    std::vector<Finding> findings = std::exchange(stored_, {});
    changed_.notify_all();
    lock.unlock();
    for (Finding& finding : findings) consumer(std::move(finding));
    lock.lock();
  }
  if (error_) std::rethrow_exception(error_);
}

}  // namespace vsa_tools
