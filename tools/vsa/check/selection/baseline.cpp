#include "tools/vsa/check/selection/baseline.h"

#include <nlohmann/json.hpp>
#include <stdexcept>

#include <vsa/file_replacement.h>
#include "tools/scene_text/printable_text.h"
#include "tools/vsa/check/selection/json_file.h"

namespace vsa_tools {

namespace {

using Json = nlohmann::ordered_json;

// The maximum distance in bytes from a finding to the parts of its line that identify it.
constexpr std::uint64_t LINE_REACH = 100;

std::string trimmed(const std::string& line) {
  const std::size_t begin = line.find_first_not_of(" \t\r");
  if (begin == std::string::npos) return {};
  return line.substr(begin, line.find_last_not_of(" \t\r") - begin + 1);
}

}  // namespace

Baseline Baseline::read(const std::string& path) {
  Baseline baseline;
  try {
    const Json json = readJsonFile<Json>(path);
    for (const Json& row : json.at("findings")) {
      baseline.files_[row.at("file")][{row.at("id"), row.at("message"), row.at("line")}] +=
          row.at("count").get<std::uint64_t>();
    }
  } catch (const Json::exception&) {
    throw std::runtime_error(path + ": this is no baseline of vsa check");
  }
  return baseline;
}

void Baseline::write(const std::string& path) const {
  Json findings = Json::array();
  for (const auto& [file, known] : files_) {
    for (const auto& [key, count] : known) {
      const auto& [id, message, line] = key;
      findings.push_back(
          {{"file", file}, {"id", id}, {"message", message}, {"line", line}, {"count", count}});
    }
  }
  const Json json{{"version", 1}, {"findings", std::move(findings)}};
  vsa::FileReplacement file;
  if (!file.open(path) || !file.write(json.dump(1) + '\n') || !file.replace()) {
    throw std::runtime_error(file.error());
  }
}

KnownFindings Baseline::of(const std::string& file) const {
  if (files_.empty()) return {};
  const auto found = files_.find(printable(file));
  return found == files_.end() ? KnownFindings() : found->second;
}

void Baseline::add(const std::string& file, const KnownFindings& findings) {
  for (const auto& [key, count] : findings) files_[printable(file)][key] += count;
}

// Returns the key of a finding: its id, message and line. Message and line are escaped, because
// they may contain invalid UTF-8, which JSON does not allow.
std::tuple<std::string, std::string, std::string> Baseline::keyOf(const Finding& finding,
                                                                  const CheckedText& text) {
  std::string line;
  if (finding.range) line = trimmed(text.lineAt(finding.range->begin, LINE_REACH).text);
  return {finding.id, printable(finding.message), printable(line)};
}

bool takeKnown(KnownFindings& known, const Finding& finding, const CheckedText& text) {
  if (known.empty()) return false;
  const auto found = known.find(Baseline::keyOf(finding, text));
  if (found == known.end()) return false;
  if (--found->second == 0) known.erase(found);
  return true;
}

}  // namespace vsa_tools
