// Reading: limits, skipped buffers, nodes that are not kept, progress and diagnostics.
#include <cstring>
#include <exception>
#include <new>
#include <utility>

#include "api/reading/cut_off.h"
#include "api/reading/reading.h"

namespace vsa {

namespace {

using zn::korvo_sdk::AttrType;
using zn::korvo_sdk::impl::AssignInfo;
using zn::korvo_sdk::impl::TextPlace;
using zn::korvo_sdk::impl::Token;
using FatalId = zn::korvo_sdk::DiagnosticId;

// The estimated memory of one element in the set of dropped links.
constexpr std::uint64_t DROPPED_LINK_BYTES = 40;
constexpr std::chrono::milliseconds PROGRESS_INTERVAL{5};

TextPlace placeOf(const Token& token) {
  return {token.line, token.column};
}

constexpr const char* HOW_TO_ALLOW = "; raise the limit of memory to allow it";
constexpr std::size_t MAX_PATH_IN_MESSAGE = 200;

// Returns how many numbers a normalized list contains.
std::uint64_t numbersIn(std::string_view list) {
  std::uint64_t numbers = 0;
  for (std::size_t i = 1; i + 1 < list.size(); ++i) {
    if (list[i] != ' ' && (i == 1 || list[i - 1] == ' ')) ++numbers;
  }
  return numbers;
}

// Returns a description such as "3 numbers written" or "44 bytes of compressed text written".
std::string describedElements(const AssignInfo& info) {
  const std::string_view list = info.elementsToken.text.view();
  if (info.isCompressed()) {
    return std::to_string(list.size() - 2) + " bytes of compressed text written";
  }
  const std::uint64_t numbers = numbersIn(list);
  return std::to_string(numbers) + (numbers == 1 ? " number written" : " numbers written");
}

// Returns a description such as "the buffer float[3] of sun.points (12 bytes, 1 number written)". A
// path of more than 200 bytes is shortened.
std::string describedBuffer(const AssignInfo& info, std::string_view path) {
  std::string text("the buffer ");
  text += info.valueToken.text.view();
  text += info.countToken.text.view();
  text += " of ";
  text += path.substr(0, MAX_PATH_IN_MESSAGE);
  if (path.size() > MAX_PATH_IN_MESSAGE) text += "...";
  text += " (" + std::to_string(info.data.payload.buffer.bytes) + " bytes, ";
  return text + describedElements(info) + ')';
}

}  // namespace

// --- limits ---

void Reading::exceed(Budget budget) {
  switch (budget) {
    case Budget::Nodes:
      stopAtLimit(Limit::Nodes, limits.nodes,
                  "more than " + std::to_string(limits.nodes) + " nodes");
    case Budget::Elements:
      stopAtLimit(Limit::Elements, limits.elements,
                  "more than " + std::to_string(limits.elements) + " array elements");
    case Budget::Depth:
      stopAtLimit(Limit::Depth, limits.depth,
                  "a path of more than " + std::to_string(limits.depth) + " inputs");
    case Budget::Memory:
      stopAtLimit(Limit::Memory, limits.memory,
                  "the text needs more memory than the limit of " + std::to_string(limits.memory) +
                      " bytes" + HOW_TO_ALLOW);
  }
  stopAtLimit(Limit::Memory, limits.memory, "over a limit");
}

// Reports an omitted buffer. The message about the first omitted buffer is always created, because
// it becomes the message of the outcome. The messages about further buffers are created only if the
// recorder wants them.
void Reading::refuse(Refusal refusal, const AssignInfo& info) {
  if (refusedFor_ && !recorder_->wants(DiagnosticId::OverLimit, Severity::Error)) return;
  std::string message = describedBuffer(info, recorder_->statementPath());
  if (refusal == Refusal::BufferBytes) {
    message += " is larger than the limit of " + std::to_string(limits.bufferBytes) + " bytes";
  } else {
    message += refusal == Refusal::Memory ? " needs" : " and those before it need";
    message += " more memory than the limit of " + std::to_string(limits.memory);
    message += " bytes leaves for buffers";
    message += HOW_TO_ALLOW;
  }
  const bool isOfOneBuffer = refusal == Refusal::BufferBytes;
  const Limit limit = isOfOneBuffer ? Limit::BufferBytes : Limit::Memory;
  if (!refusedFor_) {
    refusedFor_ = limit;
    refusal_ = message;
  }
  recorder_->addOverLimit(limit, isOfOneBuffer ? limits.bufferBytes : limits.memory, false,
                          std::move(message));
}

void Reading::stopAtLimit(Limit limit, std::uint64_t maximum, const std::string& message) {
  recorder_->addOverLimit(limit, maximum, true, message);
  outcome_.limit = limit;
  ending_.stop(ReadStatus::OverLimit, message);
}

std::uint64_t Reading::bytesHeldBy(IInput& input) {
  if (!isLibraryScene_) return 0;
  const auto& held = static_cast<const zn::korvo_sdk::Input&>(input);
  if (held.type() == AttrType::Buffer) return held.buffer().bytes;
  return held.type() == AttrType::String ? std::strlen(held.string()) : 0;
}

// --- skipped buffers ---

void Reading::keepSkipped(IInput& input, const AssignInfo& info, std::uint64_t count) {
  const zn::String path = input.path();
  charge(sizeof(SkippedBuffer) + path.len());
  SkippedBuffer skipped;
  skipped.inputPath = path.view();
  skipped.type = info.data.payload.buffer.type;
  skipped.count = count;
  const std::uint64_t keywordEnd = index_->offsetOf(placeOf(info.valueToken)) + 1;
  const std::uint64_t end = index_->offsetOf(placeOf(info.elementsToken)) + 1;
  skipped.literal = index_->rangeOf(keywordEnd - info.valueToken.text.len(), end);
  outcome_.skippedBuffers.push_back(std::move(skipped));
}

// --- nodes that are not kept ---

bool Reading::isDroppedNode(INode& node) {
  return wanted_.isDropped(node);
}

void Reading::dropLink(IInput& input) {
  charge(DROPPED_LINK_BYTES);
  wanted_.dropLinksOf(input);
}

bool Reading::isKeptLink(IInput& input, INode& node) {
  return wanted_.isDropped(input) == wanted_.isDropped(node);
}

bool Reading::isOfLibrary(IInput& input) {
  return isLibraryScene_ || wanted_.isDropped(input);
}

// --- progress ---

void Reading::poll() {
  if (options_.onProgress == nullptr) return;
  if (Clock::now() - lastProgress_ >= PROGRESS_INTERVAL) notifyProgress();
}

void Reading::notifyProgress() {
  if (options_.onProgress == nullptr) return;
  const ReadProgress now = progress();
  const bool goesOn = ending_.callHost([&] { return options_.onProgress(now); });
  if (!goesOn) ending_.stop(ReadStatus::Cancelled, "cancelled");
  lastProgress_ = Clock::now();
}

// After a complete reading, makes the last call of the progress callback and ignores its result.
// The total is the number of bytes read, because the size that a source returned may be wrong.
void Reading::notifyComplete() {
  if (options_.onProgress == nullptr || outcome_.status != ReadStatus::Complete) return;
  ReadProgress last = progress();
  last.bytesTotal = last.bytesRead;
  ending_.callHost([&] { return options_.onProgress(last); });
}

ReadProgress Reading::progress() const noexcept {
  ReadProgress progress;
  progress.bytesRead = index_->end();
  progress.bytesTotal = size_;
  if (isResolving()) {
    progress.linksResolved = counts.links;
    progress.linksTotal = linksTotal();
  }
  return progress;
}

std::uint64_t Reading::linksTotal() const noexcept {
  std::uint64_t links = 0;
  for (const auto& bucket : parser_.connections.buckets) links += bucket.size;
  for (const auto& bucket : parser_.references.buckets) links += bucket.size;
  return links;
}

// --- diagnostics ---

bool Reading::wants(zn::korvo_sdk::DiagnosticId id) {
  const bool isWarning = rowOf(id).severity == zn::korvo_sdk::Severity::Warning;
  return recorder_->wants(static_cast<DiagnosticId>(id),
                          isWarning ? Severity::Warning : Severity::Error);
}

void Reading::report(const zn::korvo_sdk::Diagnostic& diagnostic) {
  const bool isFatal = diagnostic.severity() == zn::korvo_sdk::Severity::Fatal;
  if (isFatal) endByError(diagnostic);
  recorder_->add(diagnostic);
  if (isFatal) return;
  const std::uint64_t bytes = recorder_->keptBytes();
  charge(bytes - recordedBytes_);
  recordedBytes_ = bytes;
}

// Records a message that the host's scene has logged. Diagnostics do not come here, because they
// are not logged as lines during a reading. There is one exception: while the host's scene has
// installed a DiagnosticSink of its own, they are logged.
void Reading::write(zn::LogLevel level, const zn::String& text) {
  const Severity severity = level == zn::LogLevel::Warning ? Severity::Warning : Severity::Error;
  recorder_->add(DiagnosticId::HostMessage, severity, false, std::string(text.view()), text.view());
}

void Reading::endAtSceneLimit(Limit limit, const zn::String& line) {
  ending_.set(ReadStatus::OverLimit, line.view());
  outcome_.limit = limit;
}

void Reading::endByError(const zn::korvo_sdk::Diagnostic& record) {
  const zn::String line = record.logLine();
  switch (record.id) {
    case FatalId::HostError:
      return ending_.setToException();
    case FatalId::CannotAllocate:
      outcome_.exception = std::make_exception_ptr(std::bad_alloc());
      return ending_.set(ReadStatus::OutOfMemory, line.view());
    case FatalId::TooManyEmptyElements:
      return endAtSceneLimit(Limit::EmptyElements, line);
    case FatalId::TooManyArrayElements:
      return endAtSceneLimit(Limit::Elements, line);
    case FatalId::NestedTooDeeply:
      return endAtSceneLimit(Limit::Depth, line);
    case FatalId::BadToken:
    case FatalId::UnrecognizedToken:
      return ending_.set(
          endsInsideStatement(parser_) ? ReadStatus::CutOff : ReadStatus::StoppedByError,
          line.view());
    default:
      return ending_.set(ReadStatus::StoppedByError, line.view());
  }
}

}  // namespace vsa
