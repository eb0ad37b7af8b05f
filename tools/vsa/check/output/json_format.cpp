#include "tools/vsa/check/output/json_format.h"

#include <nlohmann/json.hpp>

#include "tools/scene_text/printable_text.h"

namespace vsa_tools {

namespace {

using Json = nlohmann::ordered_json;

Json jsonOf(const vsa::TextPosition& position) {
  return {{"offset", position.offset}, {"line", position.line}, {"column", position.column}};
}

Json jsonOf(const vsa::TextRange& range) {
  return {{"begin", jsonOf(range.begin)}, {"end", jsonOf(range.end)}};
}

}  // namespace

std::string JsonFormat::render(const Finding& finding, const FindingPlace& place) const {
  Json record{{"file", place.file},
              {"level", name(finding.level)},
              {"id", finding.id},
              {"message", finding.message},
              {"range", finding.range ? jsonOf(*finding.range) : Json()},
              {"hint", finding.hint},
              {"notes", Json::array()},
              {"edits", Json::array()},
              {"log", finding.logLine.empty() ? Json() : Json(finding.logLine)},
              {"afterStop", finding.isAfterStop}};
  for (const FindingNote& note : finding.notes) {
    record["notes"].push_back({{"message", note.text}, {"range", jsonOf(note.range)}});
  }
  for (const TextEdit& edit : finding.edits) {
    record["edits"].push_back({{"begin", edit.begin}, {"end", edit.end}, {"text", edit.text}});
  }
  return printableJson(record.dump(-1, ' ', false, Json::error_handler_t::replace)) + '\n';
}

}  // namespace vsa_tools
