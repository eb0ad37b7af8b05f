#include "tests/faults/fault_texts.h"

#include <filesystem>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string_view>
#include <utility>

#include <vsa/diagnostics/diagnostic_table.h>
#include <vsa/parse.h>
#include "tests/faults/watched_scene.h"
#include "tests/support/case_run.h"
#include "tools/scene_text/read_outcome.h"

namespace vsa_tests {

namespace fs = std::filesystem;

namespace {

// Returns whether a case is small. A large case would make the tests slow, because each text is
// read, and its scene dumped, many times.
bool isSmall(const Case& each) {
  return fs::file_size(each.text) <= 4096 && fs::file_size(each.expectation) < 16384;
}

// Adds small cases. If several cases in a folder raise the same set of messages, only the first of
// them is added.
void addCases(std::vector<Text>& texts) {
  std::set<std::pair<std::string, std::set<zn::korvo_sdk::DiagnosticId>>> seen;
  for (const Case& each : findCases(VSA_CASE_DIR).cases) {
    if (!isSmall(each)) continue;
    const std::string text = contentOf(each.text);
    const std::string folder = each.name.substr(0, each.name.find('/'));
    if (seen.emplace(folder, messagesOf(text)).second) texts.push_back({each.name, text});
  }
}

std::string repeated(const std::string& part, std::uint64_t times) {
  std::string text;
  for (; times > 0; --times) text += part;
  return text;
}

void addOwn(std::vector<Text>& texts) {
  texts.push_back({"deeper than the limit", "rig r; r" + repeated(".m", LEVELS + 1) + " = 1;"});
  texts.push_back({"a header", "# version: 3\n# time: noon\n# and no more\n"});
  texts.push_back({"cut off in a string", "t n; n.s = \"on"});
  texts.push_back({"cut off in a list", "t n; n.v = vec3(1 2"});
  texts.push_back({"a disconnected input", "t n; n.i |= null;"});
  texts.push_back({"missing input of the with node", "t n: .i = null; .i[0] = 1;"});
  texts.push_back({"nodes created, defined and removed",
                   "lamp a; define b; define a; a.on = true; b.a |= a.out; remove b; remove c;"
                   "define b; b.on = false;"});
  // Adds a text with enough links for the prefetching of inputs during the resolution.
  std::string links = "lamp a:";
  for (int i = 0; i < 30; ++i) {
    links += ".c" + std::to_string(i) + " |= a.out; .r" + std::to_string(i) + " = a;";
  }
  texts.push_back({"many links", links});
}

// Makes the allocations that are made once and stay until the process exits.
void readOnce() {
  declareCaseTypes();
  zn::korvo_sdk::Scene scene;
  const auto outcome = vsa_tools::captureRead([&] {
    return zn::korvo_sdk::impl::parseString(&scene, "t n: .v = vec3(1 2 3); .b = float[1] {1};");
  });
  if (!outcome.result) throw std::runtime_error("the first reading failed");
}

}  // namespace

void setSmallLimits(zn::korvo_sdk::Scene& scene) {
  scene.setEmptyElementLimit(EMPTY_ELEMENTS);
  scene.setDepthLimit(LEVELS);
}

const std::vector<Text>& faultTexts() {
  static const std::vector<Text> found = [] {
    std::vector<Text> texts;
    addCases(texts);
    addOwn(texts);
    readOnce();
    return texts;
  }();
  return found;
}

const std::map<zn::korvo_sdk::DiagnosticId, std::string>& neverRaised() {
  using enum zn::korvo_sdk::DiagnosticId;
  static const std::map<zn::korvo_sdk::DiagnosticId, std::string> reasons = {
      {HostError, "thrown by a host, as in HostFaultTest"},
      {TooManyArrayElements, "2^32 elements take 200 GiB"},
  };
  return reasons;
}

std::vector<std::string> operationsOfInterface() {
  constexpr std::string_view CLASS = "class VSA_API ", OPERATION = "  virtual ";
  std::istringstream lines(
      contentOf(fs::path(VSA_TEST_DIR).parent_path() / "include/vsa/scene/scene_interface.h"));
  std::vector<std::string> found;
  std::string prefix;
  for (std::string line; std::getline(lines, line);) {
    if (line.starts_with(CLASS)) {
      // WatchedScene adds a prefix to the operations of nodes, because inputs have operations of
      // the same names.
      const std::string type =
          line.substr(CLASS.size(), line.find(' ', CLASS.size()) - CLASS.size());
      prefix = type == "INode" ? "node " : "";
    } else if (line.starts_with(OPERATION)) {
      const std::size_t end = line.find('(');
      const std::size_t begin = line.find_last_of(" *&", end) + 1;
      found.push_back(prefix + line.substr(begin, end - begin));
    }
  }
  return found;
}

}  // namespace vsa_tests
