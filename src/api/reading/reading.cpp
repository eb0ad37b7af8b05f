// Reading: opens the source, parses the text, records its blocks and stores the result.
#include "api/reading/reading.h"

#include <limits>
#include <new>
#include <optional>
#include <utility>

#include <vsa/foundation/file.h>
#include <vsa/foundation/ref_counted.h>
#include <vsa/scene/file_version.h>
#include "api/reading/block_source.h"
#include "api/reading/text/text_lexer.h"
#include "foundation/io/descriptor_source.h"
#include "vsa/lex/lexer_source.h"
#include "vsa/read_report.h"

namespace vsa {

namespace {

using zn::RefersTo;
using zn::detail::DescriptorSource;
using zn::korvo_sdk::DiagnosticError;
using zn::korvo_sdk::impl::FileLexer;
using zn::korvo_sdk::impl::ReadStopped;

// The default memory limit: BASE_MEMORY bytes, plus MEMORY_PER_BYTE bytes for each byte of the
// text. ReadLimits::memory describes which texts need less than this.
constexpr std::uint64_t BASE_MEMORY = std::uint64_t{64} << 20;
constexpr std::uint64_t MEMORY_PER_BYTE = 100;

// The innermost reading of this thread: the one that began last and has not ended.
thread_local const Reading* innermost = nullptr;

std::uint64_t defaultMemory(std::uint64_t textBytes) {
  if (textBytes > (UNLIMITED - BASE_MEMORY) / MEMORY_PER_BYTE) return UNLIMITED;
  return BASE_MEMORY + MEMORY_PER_BYTE * textBytes;
}

// Returns the store for the text of a file. Some system files contain bytes although their size is
// 0. Reading them again may return other bytes, so a KeptText keeps the last part of them, as for a
// pipe.
std::unique_ptr<TextStore> storeOf(const DescriptorSource& source,
                                   std::optional<std::uint64_t> size) {
  if (size && *size != 0) return std::make_unique<FileText>(source);
  return std::make_unique<KeptText>();
}

}  // namespace

Reading::Reading(IScene& scene, const ReadOptions& options, ReadOutcome& outcome)
    : scene_(scene),
      isLibraryScene_(dynamic_cast<zn::korvo_sdk::Scene*>(&scene) != nullptr),
      options_(options),
      outcome_(outcome),
      ending_(outcome),
      wanted_(scene) {
}

Reading::~Reading() = default;

// --- the three kinds of sources ---

void Reading::readText(std::string_view text) noexcept {
  guarded([&] {
    begin(std::make_unique<MemoryText>(text), text.size());
    resetHeader();
    TextLexer lexer(text, *this);
    parse(lexer);
    notifyComplete();
  });
}

void Reading::readFile(const char* path) noexcept {
  guarded([&] {
    int error = 0;
    DescriptorSource* const source = DescriptorSource::open(path, error);
    if (source == nullptr) {
      ending_.set(ReadStatus::Unreadable, zn::detail::messageOfError(error).view());
      return;
    }
    const RefersTo<zn::ByteSource> held(source);
    const std::optional<std::uint64_t> size = source->textBytes();
    readFrom(*source, storeOf(*source, size), size);
  });
}

void Reading::readSource(Source& source) noexcept {
  guarded([&] {
    // NOLINTNEXTLINE(bugprone-unhandled-exception-at-new): `guarded` handles it
    auto* const bytes = new HostSource(source, ending_);
    const RefersTo<zn::ByteSource> held(bytes);
    const std::optional<std::uint64_t> size = ending_.callHost([&] { return source.size(); });
    readFrom(*bytes, std::make_unique<KeptText>(), size);
  });
}

void Reading::readFrom(zn::ByteSource& source, std::unique_ptr<TextStore> store,
                       std::optional<std::uint64_t> size) {
  begin(std::move(store), size);
  const zn::File file(new BlockSource(source, *this));
  zn::File(file).fill();  // detects a directory, which can be opened, but not read
  if (const zn::String error = source.error(); !error.isEmpty()) {
    ending_.set(ReadStatus::Unreadable, error.view());
    return;
  }
  resetHeader();
  FileLexer lexer(file);
  parse(lexer);
  // A failed read determines the status. It also ends the text at that point, which can cause
  // diagnostics of the parser.
  if (const zn::String error = source.error(); !error.isEmpty()) {
    ending_.set(ReadStatus::Unreadable, error.view());
  }
  notifyComplete();
}

// Calls `body` and sets the status if it throws an exception. If this thread already reads into the
// scene, only sets the status to Unreadable. During the call, this object is the diagnostic sink
// and the log sink of the thread.
template <class Body>
void Reading::guarded(const Body& body) noexcept {
  if (isSceneBusy()) {
    ending_.set(ReadStatus::Unreadable, "the scene is being read into already");
    return;
  }
  outer_ = innermost;
  innermost = this;
  try {
    const zn::korvo_sdk::ScopedReadingSinks sinks(*this, *this);
    body();
  } catch (const ReadStopped&) {
    // The function that threw ReadStopped has set the status.
  } catch (...) {
    ending_.setToException();
  }
  innermost = outer_;
  fillCounts();
}

// Whether this thread is already reading into the same scene. If so, a callback, source or scene
// that the other reading called has started this reading.
bool Reading::isSceneBusy() const noexcept {
  const Reading* reading = innermost;
  while (reading != nullptr && &reading->scene_ != &scene_) reading = reading->outer_;
  return reading != nullptr;
}

// Calls `body`. If it throws an exception, sets the status and throws ReadStopped. `body` parses
// the text or calls the scene in another way. The parser itself handles only a std::runtime_error,
// but a scene may throw any exception.
template <class Body>
void Reading::callScene(const Body& body) {
  try {
    body();
  } catch (const ReadStopped&) {
    throw;
  } catch (...) {
    ending_.setToException();
    if (outcome_.status == ReadStatus::HostException) {
      recorder_->add(DiagnosticId::HostError, Severity::Error, true, outcome_.message,
                     outcome_.message);
    }
    throw ReadStopped();
  }
}

// --- before and after the parse ---

void Reading::begin(std::unique_ptr<TextStore> store, std::optional<std::uint64_t> size) {
  store_ = std::move(store);
  index_ = std::make_unique<TextIndex>(*store_);
  recorder_ =
      std::make_unique<DiagnosticRecorder>(options_, outcome_, ending_, *store_, *index_, parser_);
  size_ = size && *size != 0 ? size : std::nullopt;
  skipsBuffers = options_.buffers == BufferMode::Skip;
  wanted_.want(options_.wantedNames, options_.wantedTypes);
  dropsNodes = !options_.wantedNames.empty() || !options_.wantedTypes.empty();
  isDefaultMemory = !options_.limits.memory;
  limits = {options_.limits.nodes, options_.limits.elements, options_.limits.depth,
            options_.limits.bufferBytes,
            options_.limits.memory.value_or(defaultMemory(size_.value_or(0)))};
  checkTextBytes(size_.value_or(0));
  notifyProgress();
}

void Reading::resetHeader() {
  if (options_.keepHeader) return;
  callScene([&] {
    scene_.clearComments();
    scene_.setFileVersion(zn::korvo_sdk::VSX_FILE_VERSION_1);
    scene_.setFileTime(zn::String());
  });
}

void Reading::parse(Lexer& lexer) {
  struct BytesRead {
    const TextIndex& index;
    const Lexer& lexer;
    ReadOutcome& outcome;
    ~BytesRead() { outcome.bytesRead = index.offsetOf(lexer); }
  } const bytesRead{*index_, lexer, outcome_};
  parser_.session = this;
  bool isParsed = false;
  callScene([&] { isParsed = parseWith(lexer); });
  finish(isParsed);
}

bool Reading::parseWith(Lexer& lexer) {
  IScene& scene = dropsNodes ? wanted_ : scene_;
  try {
    return parser_.parse(&scene, &lexer);
  } catch (const DiagnosticError& error) {
    // The parser throws this diagnostic, and does not log it, if one of the first three tokens
    // contains an invalid character.
    report(error.diagnostic());
    return false;
  }
}

void Reading::finish(bool isParsed) {
  outcome_.applied.linksResolved = isParsed;
  if (!isParsed) return;
  finishRefused();
  finishCutOff();
}

// Sets the status if a buffer was omitted because it exceeds a limit. Such a buffer does not end
// the reading, so the status is set only here. A text that is cut off or unreadable replaces this
// status later.
void Reading::finishRefused() {
  if (!refusedFor_) return;
  ending_.set(ReadStatus::OverLimit, refusal_);
  outcome_.limit = refusedFor_;
}

// Reports a string or list that is cut off at the beginning of a statement, or a byte 0xFF that
// ends the text between statements. The parser treats both like the end of the text and does not
// report them.
void Reading::finishCutOff() {
  const auto report = zn::korvo_sdk::impl::reportOf(*parser_.lexer);
  if (!report.cutOff.isEmpty()) {
    const std::string message(report.cutOff.view());
    const zn::String what = parser_.lexer->problem().argument("what");
    recorder_->add(DiagnosticId::UnexpectedEof, Severity::Error, true, message, what.view());
    ending_.set(ReadStatus::CutOff, message);
  } else if (report.endedAtMark) {
    const std::string message = "a byte 0xFF ends the text before the end of its source";
    recorder_->add(DiagnosticId::EndMark, Severity::Error, true, message);
    ending_.set(ReadStatus::CutOff, message);
  }
}

void Reading::fillCounts() noexcept {
  outcome_.applied.statements = counts.statements;
  outcome_.applied.nodes = counts.nodes;
  outcome_.applied.elements = counts.elements;
  outcome_.applied.values = counts.values;
  outcome_.applied.links = outcome_.applied.linksResolved ? counts.links : 0;
}

// --- blocks ---

void Reading::beforeBlock() {
  store_->keepBlock();
  index_->addBlock(index_->end(), parser_.lexer);
  if (parser_.lexer != nullptr) requireMemory(parser_.lexer->collectedBytes());
  poll();
}

void Reading::afterBlock(std::string_view block) {
  index_->setEnd(index_->end() + block.size());
  store_->addBlock(block);
  checkTextBytes(index_->end());
  const bool grows = isDefaultMemory && !size_ && limits.memory < UNLIMITED / 2;
  if (grows) raiseMemory(MEMORY_PER_BYTE * block.size());
}

void Reading::checkTextBytes(std::uint64_t bytes) {
  const std::uint64_t limit = options_.limits.textBytes;
  if (bytes <= limit) return;
  stopAtLimit(Limit::TextBytes, limit,
              "the text is longer than " + std::to_string(limit) + " bytes");
}

}  // namespace vsa
