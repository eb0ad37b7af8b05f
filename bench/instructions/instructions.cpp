// Reads a generated scene once, for callgrind. `vsa_bench_instructions SCENE` prints the number of
// statements and bytes of the scene. callgrind counts the instructions of bench::readString.
#include <CLI/CLI.hpp>
#include <cstdio>
#include <exception>
#include <map>
#include <string>

#include "bench/ours/our_reader.h"

namespace bench {
namespace {

constexpr size_t STATEMENTS = 100'000;
constexpr size_t BYTES = 5'000'000;

const std::map<std::string, Text (*)()> SCENES = {
    {"nodes", [] { return nodes(STATEMENTS); }}, {"mixed", [] { return mixed(STATEMENTS); }},
    {"links", [] { return links(STATEMENTS); }}, {"text", [] { return text(BYTES); }},
    {"short", [] { return shortText(BYTES); }},  {"indexed", [] { return indexed(STATEMENTS); }},
};

void read(const Text& vsa) {
  zn::korvo_sdk::Scene scene;
  readString(scene, zn::String(vsa.text.data(), vsa.text.size()));
  requireScene(scene, vsa.expected);
  std::printf("%zu %zu\n", vsa.expected.statements, vsa.text.size());
}

}  // namespace
}  // namespace bench

int main(int argc, char** argv) try {
  std::string name;
  CLI::App app("Reads one scene, for callgrind.", "vsa_bench_instructions");
  app.add_option("SCENE", name)->required()->check(CLI::IsMember(bench::SCENES));
  CLI11_PARSE(app, argc, argv);
  bench::read(bench::SCENES.at(name)());
  return 0;
} catch (const std::exception& error) {
  std::fprintf(stderr, "vsa_bench_instructions: %s\n", error.what());
  return 1;
}
