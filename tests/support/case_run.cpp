#include "tests/support/case_run.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include <vsa/foundation/file.h>
#include <vsa/model/scene.h>
#include <vsa/parse.h>
#include <vsa/scene/node_type.h>
#include "tools/scene_text/read_outcome.h"
#include "tools/scene_text/scene_dump.h"

namespace vsa_tests {

namespace fs = std::filesystem;

namespace {

/// Delivers a text in pieces of at most `most` bytes.
class TextSource : public zn::ByteSource {
 public:
  TextSource(std::string_view text, size_t most) : rest_(text), most_(most) {}

  size_t read(char* to, size_t capacity) override {
    const size_t count = std::min({capacity, most_, rest_.size()});
    std::copy_n(rest_.data(), count, to);
    rest_.remove_prefix(count);
    return count;
  }

 private:
  std::string_view rest_;
  size_t most_;
};

bool readFrom(Source source, std::string_view text, zn::korvo_sdk::Scene& scene) {
  using namespace zn::korvo_sdk::impl;
  if (source == Source::String) return parseString(&scene, zn::String::copyOf(text));
  const size_t most = source == Source::ByteByByte ? 1 : text.size();
  return parseVsa(&scene, zn::File(new TextSource(text, most)), true);
}

/// The one node type that cases find declared: an enumeration, an input that takes links only, an
/// output, and names that it had before.
void declareLamp() {
  using namespace zn::korvo_sdk;
  static const bool once = [] {
    NodeType lamp;
    lamp.name = "declaredLamp";
    InputDeclaration power{"power", AttrType::Real, {}, {}, {}, false};
    InputDeclaration shape{"shape", AttrType::String, {}, {}, {"point", "spot"}, false};
    InputDeclaration filter{"filter", AttrType::Rgba, {}, {}, {}, true};
    InputDeclaration samples{"samples", AttrType::Buffer, {}, DataType::Float, {}, false};
    InputDeclaration keys{"keys", AttrType::Array, AttrType::Real, {}, {}, false};
    lamp.inputs = {power, shape, filter, samples, keys};
    lamp.outputs = {"outColor"};
    lamp.formerInputs = {{"intensity", "power"}};
    lamp.formerOutputs = {{"color", "outColor"}};
    registerNodeType(lamp);
    return true;
  }();
  static_cast<void>(once);
}

/// How a line of an expectation starts that shows a warning of this row.
std::string startOfWarning(const zn::korvo_sdk::DiagnosticRow& row) {
  const std::string_view format = row.format;
  return "  warning " + std::string(format.substr(0, format.find('%')));
}

/// A warning of the resolution, as a line of an expectation.
bool isResolutionWarning(std::string_view line) {
  using enum zn::korvo_sdk::DiagnosticId;
  constexpr std::array IDS = {InvalidOutput, NoNodeToConnect, NoOutputToConnect, NoNodeToAssign};
  return std::any_of(IDS.begin(), IDS.end(), [&](auto id) {
    return line.starts_with(startOfWarning(zn::korvo_sdk::rowOf(id)));
  });
}

std::vector<std::string> linesOf(const std::string& text) {
  std::vector<std::string> lines;
  size_t start = 0;
  while (start < text.size()) {
    const size_t end = std::min(text.find('\n', start), text.size());
    lines.push_back(text.substr(start, end - start));
    start = end + 1;
  }
  return lines;
}

}  // namespace

CaseFolder findCases(const fs::path& folder) {
  CaseFolder found;
  for (const auto& entry : fs::recursive_directory_iterator(folder)) {
    if (!entry.is_regular_file() || entry.path().parent_path() == folder) continue;
    fs::path text = entry.path(), expectation = entry.path();
    text.replace_extension(".vsa");
    expectation.replace_extension(".expect");
    if (!fs::exists(text) || !fs::exists(expectation) ||
        (entry.path() != text && entry.path() != expectation)) {
      found.orphans.push_back(entry.path());
    } else if (entry.path() == text) {
      found.cases.push_back(
          {fs::relative(text, folder).replace_extension().generic_string(), text, expectation});
    }
  }
  std::sort(found.cases.begin(), found.cases.end(),
            [](auto& a, auto& b) { return a.name < b.name; });
  return found;
}

std::string outcomeOf(std::string_view text, Source source) {
  declareLamp();
  zn::korvo_sdk::Scene scene;
  const vsa_tools::ReadOutcome outcome =
      vsa_tools::captureRead([&] { return readFrom(source, text, scene); });
  vsa_tools::TextOutput out;
  vsa_tools::dumpCase(outcome, scene, out);
  return out.text();
}

std::set<zn::korvo_sdk::DiagnosticId> messagesOf(std::string_view text) {
  declareLamp();
  zn::korvo_sdk::Scene scene;
  zn::korvo_sdk::impl::ReadReport report;
  const vsa_tools::ReadOutcome outcome = vsa_tools::captureRead(
      [&] { return zn::korvo_sdk::impl::parseString(&scene, zn::String::copyOf(text), report); });
  std::set<zn::korvo_sdk::DiagnosticId> ids;
  for (const auto& diagnostic : outcome.diagnostics) ids.insert(diagnostic.id);
  if (outcome.escapedDiagnostic) ids.insert(outcome.escapedDiagnostic->id);
  if (!report.cutOff.isEmpty()) ids.insert(zn::korvo_sdk::DiagnosticId::UnexpectedEof);
  return ids;
}

std::string comparable(const std::string& expectation) {
  std::vector<std::string> lines = linesOf(expectation);
  auto run = lines.begin();
  while (run != lines.end()) {
    run = std::find_if(run, lines.end(), isResolutionWarning);
    const auto end = std::find_if_not(run, lines.end(), isResolutionWarning);
    std::sort(run, end);
    run = end;
  }
  std::string text;
  for (const std::string& line : lines) text += line + '\n';
  return text;
}

std::string contentOf(const fs::path& file) {
  std::ifstream in(file, std::ios::binary);
  if (!in) throw std::runtime_error(file.string() + ": cannot be read");
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

}  // namespace vsa_tests
