// Reading: one call of a reading function of the public API. Internal.
//
// A Reading has three roles. As the session of the parser, it counts statements and memory, checks
// the limits, and owns the values that no input owns yet. As the observer of the blocks of the
// text, it finds positions, the size of the text and the progress. As the sink for the diagnostics
// and log lines of the thread, it records them. It prints nothing. The functions that read a text
// throw no exception. The functions of its base classes throw ReadStopped to end the reading. They
// also throw std::bad_alloc, and the exceptions of the host's nodes and inputs that they ask for a
// name or a path.
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include <vsa/diagnostics/diagnostic.h>
#include <vsa/foundation/log.h>
#include <vsa/model/scene.h>
#include <vsa/read.h>
#include "api/reading/outcome/diagnostic_recorder.h"
#include "api/reading/outcome/ending.h"
#include "api/reading/text/block_observer.h"
#include "api/reading/text/text_index.h"
#include "api/reading/text/text_store.h"
#include "api/reading/wanted_nodes.h"
#include "diagnostics/reading_sinks.h"
#include "vsa/apply/read_session.h"
#include "vsa/parser.h"

namespace vsa {

class Reading final : public zn::korvo_sdk::impl::ReadSession,
                      public BlockObserver,
                      public zn::korvo_sdk::RecordSink,
                      public zn::LogSink {
 public:
  using IInput = zn::korvo_sdk::interfaces::IInput;
  using INode = zn::korvo_sdk::interfaces::INode;
  using IScene = zn::korvo_sdk::interfaces::IScene;

  /// All arguments must exist as long as the reading.
  Reading(IScene& scene, const ReadOptions& options, ReadOutcome& outcome);
  ~Reading() override;

  // Each function reads a whole text. Call only one of them, and only once. They do not throw: the
  // outcome contains the status.

  void readText(std::string_view text) noexcept;
  void readFile(const char* path) noexcept;
  void readSource(Source& source) noexcept;

 private:
  using AssignInfo = zn::korvo_sdk::impl::AssignInfo;
  using Clock = std::chrono::steady_clock;
  using Lexer = zn::korvo_sdk::impl::Lexer;

  // The functions of BlockObserver.
  void beforeBlock() override;
  void afterBlock(std::string_view block) override;

  // The functions of ReadSession.
  [[noreturn]] void exceed(Budget budget) override;
  void poll() override;
  std::uint64_t bytesHeldBy(IInput& input) override;
  void keepSkipped(IInput& input, const AssignInfo& info, std::uint64_t count) override;
  void refuse(Refusal refusal, const AssignInfo& info) override;
  bool isDroppedNode(INode& node) override;
  void dropLink(IInput& input) override;
  bool isKeptLink(IInput& input, INode& node) override;
  bool isOfLibrary(IInput& input) override;

  // The functions of RecordSink and LogSink.
  bool wants(zn::korvo_sdk::DiagnosticId id) override;
  void report(const zn::korvo_sdk::Diagnostic& diagnostic) override;
  void write(zn::LogLevel level, const zn::String& text) override;

  template <class Body>
  void guarded(const Body& body) noexcept;
  bool isSceneBusy() const noexcept;
  template <class Body>
  void callScene(const Body& body);
  void readFrom(zn::ByteSource& source, std::unique_ptr<TextStore> store,
                std::optional<std::uint64_t> size);
  void begin(std::unique_ptr<TextStore> store, std::optional<std::uint64_t> size);
  void checkTextBytes(std::uint64_t bytes);
  void resetHeader();
  void parse(Lexer& lexer);
  bool parseWith(Lexer& lexer);
  void finish(bool isParsed);
  void finishCutOff();
  void finishRefused();
  void endAtSceneLimit(Limit limit, const zn::String& line);
  void endByError(const zn::korvo_sdk::Diagnostic& record);
  [[noreturn]] void stopAtLimit(Limit limit, std::uint64_t maximum, const std::string& message);
  void notifyProgress();
  void notifyComplete();
  ReadProgress progress() const noexcept;
  std::uint64_t linksTotal() const noexcept;
  void fillCounts() noexcept;

  const Reading* outer_ = nullptr;  // the enclosing reading of the same thread, or null
  IScene& scene_;
  const bool isLibraryScene_;  // true if the scene is a Scene of the library
  const ReadOptions& options_;
  ReadOutcome& outcome_;
  Ending ending_;
  WantedNodes wanted_;
  std::unique_ptr<TextStore> store_;
  std::unique_ptr<TextIndex> index_;
  zn::korvo_sdk::impl::VsaParser parser_;
  std::unique_ptr<DiagnosticRecorder> recorder_;
  std::optional<std::uint64_t> size_;
  Clock::time_point lastProgress_;
  std::uint64_t recordedBytes_ = 0;  // the bytes of kept diagnostics that were counted as memory
  std::optional<Limit> refusedFor_;  // the limit that the first omitted buffer exceeds
  std::string refusal_;              // the message about that buffer
};

}  // namespace vsa
