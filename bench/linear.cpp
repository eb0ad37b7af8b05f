// Measures how the time of a read grows with its input. Each case generates a text of n similar
// parts, such as statements, or of one statement with n parts. The benchmark reads the text for n
// and the text for 4n. A linear reader takes four times as long for 4n. The limit is five, to allow
// for cache misses.
#include <malloc.h>

#include <CLI/CLI.hpp>
#include <cstdio>
#include <cstring>
#include <exception>
#include <stdexcept>

#include "bench/measure/report.h"
#include "bench/ours/our_reader.h"

namespace bench {
namespace {

using zn::korvo_sdk::Input;
using zn::korvo_sdk::Scene;

struct Case {
  const char* name;
  size_t size;  // The size n.
  std::string (*make)(size_t n);
  // Returns n for the scene of a text of size n. The pointer is null if the scene is not checked.
  uint64_t (*count)(Scene& scene);
};

// Joins the texts that `add` returns for each index from 0 to n - 1.
template <class Add>
std::string repeated(size_t n, Add add) {
  std::string text;
  for (size_t i = 0; i < n; ++i) text += add(std::to_string(i));
  return text;
}

std::string linksText(size_t n) {
  return links(3 * n - 3).text;
}

std::string bufferElements(size_t n) {
  return "mesh m;\n" +
         repeated(n, [](const std::string& i) { return "m.list[*] = int32[2] {" + i + " 7};\n"; });
}

std::string bufferElementsBackwards(size_t n) {
  std::string text = "mesh m;\n";
  for (size_t i = n; i > 0; --i) {
    text += "m.list[" + std::to_string(i - 1) + "] = float[2] {0.5 7};\n";
  }
  return text;
}

std::string arrayElements(size_t n) {
  return "mesh m;\n" + repeated(n, [](const std::string& i) {
           return "m.list[" + i + "][0] = 1;\nm.list[" + i + "][1] = " + i + ";\n";
         });
}

std::string plainElements(size_t n) {
  return "mesh m;\n" + repeated(n, [](const std::string& i) { return "m.list[*] = " + i + ";\n"; });
}

std::string manyInputs(size_t n) {
  return "mesh m;\n" + repeated(n, [](const std::string& i) { return "m.input_" + i + " = 1;\n"; });
}

std::string manyMembers(size_t n) {
  return "mesh m;\n" +
         repeated(n, [](const std::string& i) { return "m.list.member_" + i + " = 1;\n"; });
}

std::string manyDefines(size_t n) {
  return repeated(n, [](const std::string& i) { return "define node_" + i + ";\n"; });
}

std::string manyRemoves(size_t n) {
  const std::string nodes =
      repeated(2 * n, [](const std::string& i) { return "mesh node_" + i + ";\n"; });
  return nodes + repeated(n, [](const std::string& i) { return "remove node_" + i + ";\n"; });
}

std::string manyWiths(size_t n) {
  const std::string nodes =
      repeated(n, [](const std::string& i) { return "mesh node_" + i + ";\n"; });
  return nodes +
         repeated(n, [](const std::string& i) { return "with node_" + i + ":\n.size = 1;\n"; });
}

std::string hugeTuple(size_t n) {
  return "mesh m;\nm.size = vec3(1" + repeated(n, [](const std::string&) { return " 0.25"; }) +
         ");\n";
}

std::string hugeString(size_t n) {
  return "mesh m;\nm.label = \"" +
         repeated(n / 8, [](const std::string&) { return "a \\\"b\\\" "; }) + "\";\n";
}

std::string hugeBuffer(size_t n) {
  return "mesh m;\nm.data = float[" + std::to_string(n) + "] {" +
         repeated(n, [](const std::string&) { return "0.25, "; }) + "};\n";
}

std::string manyComments(size_t n) {
  return repeated(n, [](const std::string&) { return "# note\n"; });
}

std::string oneInputAgain(size_t n) {
  return "mesh m;\nmesh t;\n" + repeated(n, [](const std::string&) { return "m.in |= t.out;\n"; });
}

Input& inputOf(Scene& scene, const char* name) {
  Input* const input = scene.findNode("m")->input(name);
  if (input == nullptr) throw std::runtime_error(std::string("no input ") + name);
  return *input;
}

uint64_t nodeCount(Scene& scene) {
  return scene.nodeCount();
}
uint64_t elementCount(Scene& scene) {
  return inputOf(scene, "list").count();
}
uint64_t memberCount(Scene& scene) {
  return inputOf(scene, "list").memberCount();
}
uint64_t inputCount(Scene& scene) {
  return scene.findNode("m")->inputCount();
}
uint64_t commentCount(Scene& scene) {
  return scene.fileCommentCount();
}
uint64_t bufferCount(Scene& scene) {
  return inputOf(scene, "data").buffer().count;
}
uint64_t stringLength(Scene& scene) {
  return std::strlen(inputOf(scene, "label").string()) / 6 * 8;
}

constexpr Case CASES[] = {
    {"links", 50'000, linksText, nodeCount},
    {"array of buffers, appended", 50'000, bufferElements, elementCount},
    {"array of buffers, last first", 50'000, bufferElementsBackwards, elementCount},
    {"array of arrays, by index", 50'000, arrayElements, elementCount},
    {"array of integers, appended", 100'000, plainElements, elementCount},
    {"inputs of one node", 100'000, manyInputs, inputCount},
    {"members of one object", 100'000, manyMembers, memberCount},
    {"define", 100'000, manyDefines, nodeCount},
    {"remove", 100'000, manyRemoves, nodeCount},
    {"with", 100'000, manyWiths, nodeCount},
    {"one input connected again", 100'000, oneInputAgain, nullptr},
    {"one huge tuple", 1'000'000, hugeTuple, nullptr},
    {"one huge string", 8'000'000, hugeString, stringLength},
    {"one huge buffer", 1'000'000, hugeBuffer, bufferCount},
    {"small comments", 200'000, manyComments, commentCount},
};

Candidate readerOf(const Case& measured, size_t n) {
  const std::string generated = measured.make(n);
  const zn::String text(generated.data(), generated.size());
  Scene checked;
  readString(checked, text);
  if (measured.count != nullptr) {
    requireCount(measured.name, "items", measured.count(checked), n);
  }
  return sceneCandidate(measured.name, [text](Scene& scene) { readString(scene, text); });
}

void measure(Report& report, const Case& measured) {
  constexpr size_t ROUNDS = 5;
  const std::vector<double> seconds =
      compare({readerOf(measured, measured.size), readerOf(measured, 4 * measured.size)}, ROUNDS);
  report.rows.push_back({std::string("t(4n)/t(n), ") + measured.name,
                         Better::Low,
                         "",
                         {{seconds[1] / seconds[0], 5, 5}}});
  for (const size_t times : {size_t{1}, size_t{4}}) {
    const auto amount = static_cast<double>(times * measured.size) / 1e3;
    const double time = seconds[times / 4];
    report.details.push_back(
        {times == 1 ? "n" : "4n", measured.name, 1e3 * time, amount / time, "k items"});
  }
}

}  // namespace
}  // namespace bench

int main(int argc, char** argv) try {
  std::string only, json;
  CLI::App app("Measures how the time of a read grows with its input.", "vsa_bench_linear");
  app.add_option("--only", only, "Run the cases with TEXT in their name")->type_name("TEXT");
  app.add_option("--json", json, "Also write the results to FILE")->type_name("FILE");
  CLI11_PARSE(app, argc, argv);
  // Makes the allocator keep all memory, so that only the first reads cause page faults. Otherwise
  // the number of page faults would depend on the size of the text.
  mallopt(M_MMAP_MAX, 0);
  mallopt(M_TRIM_THRESHOLD, -1);
  bench::Report report;
  report.machine = bench::machineName();
  for (const bench::Case& each : bench::CASES) {
    if (std::strstr(each.name, only.c_str()) != nullptr) bench::measure(report, each);
  }
  bench::printTable(report);
  if (!json.empty()) bench::writeJson(report, json);
  return 0;
} catch (const std::exception& error) {
  std::fprintf(stderr, "vsa_bench_linear: %s\n", error.what());
  return 1;
}
