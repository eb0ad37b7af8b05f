#include "tools/vsa/common/read_scene.h"

#include <vsa/parse.h>
#include "tools/vsa/input/encoding.h"

namespace vsa_tools {

namespace {

using zn::korvo_sdk::impl::ReadReport;

/// Adds the losses that show in the bytes of the file. Half of the bytes of a foreign encoding are
/// NUL, so there the encoding is the only loss.
void addByteLosses(const InspectedSource& source, std::vector<Loss>& losses) {
  if (const char* encoding = foreignEncoding(source.head())) {
    losses.push_back(
        {std::string("this looks like ") + encoding + "; a VSA text is UTF-8", std::nullopt});
  } else if (source.firstNul()) {
    losses.push_back({"a NUL byte, at which a string, comment or name ends", source.firstNul()});
  }
}

std::vector<Loss> lossesOf(const InputFile& input, const ReadReport& report, bool result) {
  std::vector<Loss> losses;
  const Position end{report.line, report.column};
  addByteLosses(*input.source, losses);
  if (report.endedAtMark)
    losses.push_back({"a byte 0xFF ended the text before the file ended", end});
  if (input.file.failed())
    losses.push_back({std::string("reading failed midway: ") + input.file.error().buf(), end});
  if (result && !report.cutOff.isEmpty()) {
    losses.push_back({std::string("the text is cut off: ") + report.cutOff.buf(), end});
  }
  return losses;
}

}  // namespace

FileOutcome readScene(zn::korvo_sdk::Scene& scene, const InputFile& input, zn::LogSink& log) {
  FileOutcome outcome;
  ReadReport report;
  static_cast<ReadStatus&>(outcome) = captureRead(
      [&] { return zn::korvo_sdk::impl::parseVsa(&scene, input.file, false, report); }, log);
  outcome.losses = lossesOf(input, report, outcome.result);
  return outcome;
}

}  // namespace vsa_tools
