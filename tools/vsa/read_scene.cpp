#include "tools/vsa/read_scene.h"

#include <algorithm>
#include <string_view>

#include "vsa/vsa.h"

namespace vsa_tools {

namespace {

using zn::korvo_sdk::impl::ReadReport;

/// The first bytes of a file that nobody has read from yet.
std::string headOf(zn::File& file) {
  constexpr std::ptrdiff_t MOST = 16;
  const zn::File::Window window = file.fill();
  return std::string(window.begin, window.begin + std::min(MOST, window.end - window.begin));
}

/// By its mark at the start, or because every other byte is a NUL.
bool looksLikeUtf16(std::string_view head) {
  if (head.starts_with("\xFF\xFE") || head.starts_with("\xFE\xFF")) return true;
  size_t even = 0, odd = 0;
  for (size_t i = 0; i < head.size(); ++i) (i % 2 == 0 ? even : odd) += head[i] == '\0';
  const size_t half = head.size() / 2;
  return half > 1 && ((even == 0 && odd == half) || (even >= half && odd == 0));
}

std::vector<Loss> lossesOf(const zn::File& file, const std::string& head, const ReadReport& report,
                           bool result) {
  std::vector<Loss> losses;
  const Position end{report.line, report.column};
  if (looksLikeUtf16(head))
    losses.push_back({"this looks like UTF-16; a VSA text is UTF-8", std::nullopt});
  if (report.endedAtMark)
    losses.push_back({"a byte 0xFF ended the text before the file ended", end});
  if (file.failed())
    losses.push_back({std::string("reading failed midway: ") + file.error().buf(), end});
  if (result && !report.cutOff.isEmpty()) {
    losses.push_back({std::string("the text is cut off: ") + report.cutOff.buf(), end});
  }
  return losses;
}

}  // namespace

FileReading readScene(zn::korvo_sdk::Scene& scene, zn::File file) {
  FileReading reading;
  ReadReport report;
  const std::string head = headOf(file);
  static_cast<ReadOutcome&>(reading) =
      watchRead([&] { return zn::korvo_sdk::impl::parseVsa(&scene, file, false, report); });
  reading.losses = lossesOf(file, head, report, reading.result);
  return reading;
}

}  // namespace vsa_tools
