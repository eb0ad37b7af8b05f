// Measures the cost of the public API relative to the plain entry points: the time and the peak
// memory of the same read, from memory and from a file.
#include <CLI/CLI.hpp>
#include <cstdio>
#include <exception>
#include <stdexcept>
#include <string>

#include "bench/measure/memory.h"
#include "bench/measure/report.h"
#include "bench/ours/our_reader.h"

namespace bench {
namespace {

// The limits of the public API: its time and its peak memory, divided by the time and the peak
// memory of the plain entry point.
constexpr double MAX_TIME = 1.03;
constexpr double MAX_MEMORY = 1.02;

struct SceneRow {
  const char* name;
  Text (*make)(size_t, Format, uint64_t);
  size_t amount;
};

constexpr SceneRow SCENES[] = {
    {"geo", geo, 50'000'000},
    {"nodes", nodes, 300'000},
    {"links", links, 300'000},
    {"text", text, 20'000'000},
};

void writeFile(const std::string& path, const std::string& text) {
  std::FILE* const file = std::fopen(path.c_str(), "wb");
  const bool isWritten =
      file != nullptr && std::fwrite(text.data(), 1, text.size(), file) == text.size();
  if (!isWritten || std::fclose(file) != 0) throw std::runtime_error("cannot write " + path);
}

void addTime(Report& report, const SceneRow& row, const Text& vsa, const std::string& path,
             size_t rounds) {
  const std::vector<double> seconds = compare(
      {stringReader(vsa), textReader(vsa), fileReader(vsa, path), pathReader(vsa, path)}, rounds);
  report.rows.push_back({std::string("time, public API over plain, ") + row.name + " (text; file)",
                         Better::Low,
                         "",
                         {{seconds[1] / seconds[0], MAX_TIME, MAX_TIME},
                          {seconds[3] / seconds[2], MAX_TIME, MAX_TIME}}});
  const char* const readers[] = {"plain, text", "public API, text", "plain, file",
                                 "public API, file"};
  for (size_t i = 0; i < seconds.size(); ++i) {
    const double megabytes = static_cast<double>(vsa.text.size()) / 1e6;
    report.details.push_back(
        {row.name, readers[i], 1e3 * seconds[i], megabytes / seconds[i], "MB"});
  }
}

double peakRatio(const std::string& path, Route route, Route plain) {
  return static_cast<double>(peakOfRead(path, route)) /
         static_cast<double>(peakOfRead(path, plain));
}

void addMemory(Report& report, const SceneRow& row, const std::string& path) {
  report.rows.push_back(
      {std::string("memory, public API over plain, ") + row.name + " (text; file)",
       Better::Low,
       "",
       {{peakRatio(path, Route::Text, Route::String), MAX_MEMORY, MAX_MEMORY},
        {peakRatio(path, Route::Path, Route::File), MAX_MEMORY, MAX_MEMORY}}});
}

}  // namespace
}  // namespace bench

int main(int argc, char** argv) try {
  if (bench::handlePeakRequest(argc, argv)) return 0;
  std::string only, json, scratch = "/tmp";
  size_t rounds = 7;
  CLI::App app("Measures the public API over the plain entry points.", "vsa_bench_api");
  app.add_option("--only", only, "Run the scenes with TEXT in their name")->type_name("TEXT");
  app.add_option("--rounds", rounds, "Rounds of each comparison");
  app.add_option("--scratch", scratch, "Folder for the files that are read");
  app.add_option("--json", json, "Also write the results to FILE")->type_name("FILE");
  CLI11_PARSE(app, argc, argv);
  bench::Report report;
  report.machine = bench::machineName();
  const std::string path = scratch + "/vsa_bench_api.vsa";
  for (const bench::SceneRow& row : bench::SCENES) {
    if (std::string(row.name).find(only) == std::string::npos) continue;
    const bench::Text vsa = row.make(row.amount, bench::Format::Vsa, 1);
    bench::writeFile(path, vsa.text);
    bench::addTime(report, row, vsa, path, rounds);
    bench::addMemory(report, row, path);
  }
  std::remove(path.c_str());
  bench::printTable(report);
  if (!json.empty()) bench::writeJson(report, json);
  return 0;
} catch (const std::exception& error) {
  std::fprintf(stderr, "vsa_bench_api: %s\n", error.what());
  return 1;
}
