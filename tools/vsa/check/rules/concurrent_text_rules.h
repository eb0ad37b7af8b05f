// ConcurrentTextRules: runs the rules about a text on a second thread while the reader reads the
// text.
#pragma once

#include <condition_variable>
#include <cstddef>
#include <exception>
#include <mutex>
#include <optional>
#include <stop_token>
#include <string_view>
#include <thread>
#include <vector>

#include "tools/vsa/check/rules/rule.h"

namespace vsa_tools {

class ConcurrentTextRules {
 public:
  /// Starts the rules. The arguments must outlive this object. Throws std::system_error if no
  /// thread can be started.
  ConcurrentTextRules(std::string_view text, const RuleSet& rules)
      : text_(text), rules_(rules), thread_([this](const std::stop_token& stop) { run(stop); }) {}

  /// Delivers all findings in the order of runTextRules(). Returns when the rules have ended. Call
  /// it once, when the text is read. Throws what the rules or the consumer have thrown. `scene` is
  /// the scene of the text. If the consumer throws, the thread may still use the scene, which must
  /// then outlive this object.
  void deliver(const vsa::SceneView& scene, const FindingConsumer& consumer);

 private:
  // The maximum number of findings that are kept until deliver() is called. A thread with more
  // findings waits.
  static constexpr std::size_t MAX_STORED = 1024;

  void run(const std::stop_token& stop);
  vsa::SceneView waitForScene(const std::stop_token& stop);
  void store(Finding&& finding, const std::stop_token& stop);

  std::string_view text_;
  const RuleSet& rules_;
  std::mutex mutex_;
  std::condition_variable_any changed_;
  std::vector<Finding> stored_;
  std::optional<vsa::SceneView> scene_;  // the scene, when the text is read
  bool hasEnded_ = false;
  std::exception_ptr error_;
  std::jthread thread_;  // the destructor stops and joins it first
};

}  // namespace vsa_tools
