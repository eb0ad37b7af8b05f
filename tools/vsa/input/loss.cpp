#include "tools/vsa/input/loss.h"

#include <utility>

#include "tools/vsa/common/interrupt.h"
#include "tools/vsa/input/encoding.h"

namespace vsa_tools {

namespace {

Position beginOf(const vsa::Diagnostic& diagnostic) {
  const vsa::TextPosition& begin = diagnostic.range.begin;
  return {static_cast<long>(begin.line), static_cast<long>(begin.column)};
}

}  // namespace

std::optional<Loss> lossOf(const vsa::Diagnostic& diagnostic) {
  if (diagnostic.id == vsa::DiagnosticId::EndMark) {
    return Loss{"a byte 0xFF ended the text before the file ended", beginOf(diagnostic)};
  }
  if (diagnostic.id == vsa::DiagnosticId::UnexpectedEof && diagnostic.endedReading) {
    return Loss{"the text is cut off: " + diagnostic.message, beginOf(diagnostic)};
  }
  return std::nullopt;
}

std::optional<Loss> byteLoss(const InspectedSource& source) {
  if (const char* compressor = compressorOf(source.head())) {
    return Loss{std::string("this file is compressed with ") + compressor + "; a text is not",
                std::nullopt};
  }
  if (const char* encoding = foreignEncoding(source.head())) {
    return Loss{std::string("this looks like ") + encoding + "; a VSA text is UTF-8", std::nullopt};
  }
  if (!source.firstNul()) return std::nullopt;
  return Loss{"a NUL byte, at which a string, comment or name ends", source.firstNul()};
}

bool ReadingEnd::isToldBy(const vsa::Diagnostic& diagnostic) {
  if (diagnostic.endedReading) return isTold_ = true;
  return diagnostic.id == vsa::DiagnosticId::OverLimit && !std::exchange(isTold_, true);
}

std::optional<Loss> ReadingEnd::loss(const vsa::ReadOutcome& read) const {
  if (read.isComplete()) return std::nullopt;
  if (isInterrupted() || read.status == vsa::ReadStatus::Cancelled) {
    return Loss{"interrupted", std::nullopt};
  }
  if (read.status == vsa::ReadStatus::Unreadable) {
    return Loss{"reading failed midway: " + read.message, std::nullopt};
  }
  if (isTold_) return std::nullopt;
  return Loss{read.message, std::nullopt};
}

}  // namespace vsa_tools
