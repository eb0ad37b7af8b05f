#include "tools/vsa/check/output/sarif_format.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "tools/scene_text/printable_text.h"
#include "tools/vsa/check/kinds.h"

namespace vsa_tools {

namespace {

using Json = nlohmann::ordered_json;

// Columns count characters. Exception: only the last COUNTED_BYTES bytes before a position are read
// to count their characters. If the line has other bytes before these, each of those other bytes
// counts as one character. A long line is therefore not read as a whole.
constexpr std::uint64_t COUNTED_BYTES = 4096;

/// Returns a relative or absolute path as a URI: all bytes except letters, digits and "-._~/" are
/// written as "%HH".
std::string uriOf(std::string_view path) {
  std::string uri;
  for (const char c : path) {
    const bool isPlain = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') ||
                         (c >= '0' && c <= '9') || std::string_view("-._~/").find(c) < 5;
    uri += isPlain ? std::string(1, c) : fmt::format("%{:02X}", static_cast<unsigned char>(c));
  }
  return uri;
}

std::uint64_t columnInCharacters(const CheckedText& text, const vsa::TextPosition& position) {
  const LinePart part = text.lineAt(position, COUNTED_BYTES);
  const std::uint64_t before = part.column - 1;
  return before + vsa::columnInCharacters(part.text, position.column - before);
}

Json regionOf(const vsa::TextRange& range, const CheckedText& text) {
  return {
      {"startLine", range.begin.line},    {"startColumn", columnInCharacters(text, range.begin)},
      {"endLine", range.end.line},        {"endColumn", columnInCharacters(text, range.end)},
      {"byteOffset", range.begin.offset}, {"byteLength", range.end.offset - range.begin.offset}};
}

Json locationOf(const std::optional<vsa::TextRange>& range, const FindingPlace& place) {
  Json physical{{"artifactLocation", {{"uri", uriOf(place.file)}}}};
  if (range) physical["region"] = regionOf(*range, place.text);
  return {{"physicalLocation", std::move(physical)}};
}

Json fixOf(const Finding& finding, const FindingPlace& place) {
  Json replacements = Json::array();
  for (const TextEdit& edit : finding.edits) {
    replacements.push_back(
        {{"deletedRegion", {{"byteOffset", edit.begin}, {"byteLength", edit.end - edit.begin}}},
         {"insertedContent", {{"text", edit.text}}}});
  }
  Json change{{"artifactLocation", {{"uri", uriOf(place.file)}}},
              {"replacements", std::move(replacements)}};
  return {{"description", {{"text", finding.hint}}},
          {"artifactChanges", Json::array({std::move(change)})}};
}

Json driver() {
  Json rules = Json::array();
  for (const FindingKind& kind : allKinds()) {
    rules.push_back({{"id", kind.id},
                     {"defaultConfiguration", {{"level", name(kind.level)}}},
                     {"help",
                      {{"text", fmt::format("vsa explain {}", kind.id)},
                       {"markdown", fmt::format("[{0}]({1}#{0})", kind.id, kind.page)}}}});
  }
  return {{"name", "vsa check"}, {"rules", std::move(rules)}};
}

std::string dump(const Json& json) {
  return printableJson(json.dump(-1, ' ', false, Json::error_handler_t::replace));
}

}  // namespace

std::string SarifFormat::render(const Finding& finding, const FindingPlace& place) const {
  std::string message = finding.message;
  if (!finding.hint.empty()) message += "\nhint: " + finding.hint;
  Json result{{"ruleId", finding.id},
              {"level", name(finding.level)},
              {"message", {{"text", std::move(message)}}},
              {"locations", Json::array({locationOf(finding.range, place)})}};
  for (const FindingNote& note : finding.notes) {
    Json related = locationOf(note.range, place);
    related["message"] = {{"text", note.text}};
    result["relatedLocations"].push_back(std::move(related));
  }
  if (!finding.edits.empty()) result["fixes"] = Json::array({fixOf(finding, place)});
  return dump(result);
}

std::string SarifFormat::begin() {
  return "{\"version\":\"2.1.0\",\"$schema\":\"https://json.schemastore.org/sarif-2.1.0.json\","
         "\"runs\":[{\"columnKind\":\"unicodeCodePoints\",\"results\":[";
}

std::string SarifFormat::add(std::string rendered) {
  return (std::exchange(isFirst_, false) ? "\n" : ",\n") + rendered;
}

std::string SarifFormat::end(const Totals& totals) {
  const Json tool{{"driver", driver()}};
  const bool isWhole = totals.unreadable == 0 && !totals.isInterrupted;
  const Json invocations = Json::array({{{"executionSuccessful", isWhole}}});
  return "\n],\n\"tool\":" + dump(tool) + ",\n\"invocations\":" + dump(invocations) + "}]}\n";
}

}  // namespace vsa_tools
