// Measures the elapsed time of vsa fmt relative to reading the same file, and its peak memory.
// Formatting uses two threads, so the elapsed time is shorter if each thread has a processor.
#include <sys/resource.h>
#include <unistd.h>
#include <CLI/CLI.hpp>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <stdexcept>
#include <string>

#include <vsa/read.h>
#include "bench/measure/comparison.h"
#include "bench/measure/elapsed.h"
#include "bench/measure/report.h"
#include "bench/scenes/text_generator.h"
#include "tools/vsa/fmt/format_file.h"

namespace bench {
namespace {

namespace fs = std::filesystem;
using vsa_tools::FormatMode;

// The average size of a statement in the texts of small nodes.
constexpr size_t BYTES_PER_STATEMENT = 35;

// Returns the time of reading the file. Throws std::runtime_error if the file is not read
// completely.
double timeOfReading(const std::string& path) {
  std::optional<vsa::ReadResult> result;
  const double seconds = elapsed([&] { result = vsa::readFile(path.c_str()); });
  requireCount("read", "complete files", result->isComplete() ? 1 : 0, 1);
  return seconds;
}

double timeOfFormatting(const std::string& path, FormatMode mode) {
  vsa_tools::FormatOutcome outcome;
  const double seconds = elapsed([&] { outcome = vsa_tools::formatFile(path, mode); });
  if (outcome.status > 1) throw std::runtime_error("vsa fmt failed: " + outcome.messages.at(0));
  return seconds;
}

// Returns the peak memory of formatting in MiB. Formats in a new process, because this process has
// already read the file.
double megabytesOfFormatting(const std::string& program, const std::string& path) {
  const std::string command = "\"" + program + "\" --format-once \"" + path + "\"";
  std::FILE* const pipe = ::popen(command.c_str(), "r");
  double megabytes = 0;
  const bool isRead = pipe != nullptr && std::fscanf(pipe, "%lf", &megabytes) == 1;
  const bool isEnded = pipe != nullptr && ::pclose(pipe) == 0;
  if (!isRead || !isEnded) throw std::runtime_error("cannot measure the memory of vsa fmt");
  return megabytes;
}

int formatOnce(const std::string& path) {
  timeOfFormatting(path, FormatMode::Check);
  rusage usage{};
  ::getrusage(RUSAGE_SELF, &usage);
  std::printf("%.1f\n", static_cast<double>(usage.ru_maxrss) / 1024);
  return 0;
}

// Returns the time of formatting a copy of the file, which replaces the copy.
double timeOfReplacing(const std::string& unformatted) {
  const std::string copy = unformatted + ".copy";
  fs::copy_file(unformatted, copy, fs::copy_options::overwrite_existing);
  const double seconds = timeOfFormatting(copy, FormatMode::Replace);
  fs::remove(copy);
  return seconds;
}

// Returns the text with a second blank before and after each "=". Formatting changes every
// statement of it.
std::string widelySpaced(const std::string& text) {
  std::string wide;
  for (const char c : text) {
    if (c == '=') {
      wide += " = ";
    } else {
      wide += c;
    }
  }
  return wide;
}

void addRows(Report& report, const std::string& what, const std::string& path,
             const std::string& unformatted, const std::string& program, size_t rounds) {
  const std::vector<double> seconds =
      compare({{"read", [&] { return timeOfReading(path); }},
               {"check", [&] { return timeOfFormatting(path, FormatMode::Check); }},
               {"replace", [&] { return timeOfFormatting(path, FormatMode::Replace); }},
               {"changed", [&] { return timeOfReplacing(unformatted); }}},
              rounds);
  constexpr double AIM = 1.5, LIMIT = 2;
  report.rows.push_back({"elapsed, fmt --check over reading, " + what,
                         Better::Low,
                         "",
                         {{seconds[1] / seconds[0], AIM, LIMIT}}});
  report.rows.push_back({"elapsed, fmt -i unchanged over reading, " + what,
                         Better::Low,
                         "",
                         {{seconds[2] / seconds[0], AIM, LIMIT}}});
  report.rows.push_back({"elapsed, fmt -i changed over reading, " + what,
                         Better::Low,
                         "",
                         {{seconds[3] / seconds[0], AIM, LIMIT}}});
  report.rows.push_back({"peak memory, fmt --check, " + what,
                         Better::Low,
                         "MB",
                         {{megabytesOfFormatting(program, path), 100, 200}}});
}

void write(const fs::path& path, const std::string& text) {
  std::ofstream file(path, std::ios::binary);
  file << text;
  if (!file.flush()) throw std::runtime_error("cannot write " + path.string());
}

}  // namespace
}  // namespace bench

int main(int argc, char** argv) try {
  std::string json, scratch = "/tmp", once;
  size_t rounds = 5, megabytes = 250;
  CLI::App app("Measures vsa fmt over reading.", "vsa_bench_format");
  app.add_option("--rounds", rounds, "Rounds of each comparison");
  app.add_option("--big", megabytes, "Size of the texts in MB");
  app.add_option("--scratch", scratch, "Folder for the files that are formatted");
  app.add_option("--json", json, "Also write the results to FILE")->type_name("FILE");
  app.add_option("--format-once", once, "Only format FILE and print the memory that it takes")
      ->type_name("FILE");
  CLI11_PARSE(app, argc, argv);
  if (!once.empty()) return bench::formatOnce(once);
  bench::Report report;
  report.machine = bench::machineName();
  const std::filesystem::path path = std::filesystem::path(scratch) / "vsa_bench_format.vsa";
  const size_t bytes = megabytes * 1'000'000;
  const std::string size = std::to_string(megabytes) + " MB of ";
  for (const bool isGeo : {true, false}) {
    const bench::Text text =
        isGeo ? bench::geo(bytes) : bench::nodes(bytes / bench::BYTES_PER_STATEMENT);
    bench::write(path, isGeo ? text.text : bench::widelySpaced(text.text));
    const std::string unformatted = path.string() + ".raw";
    std::filesystem::copy_file(path, unformatted,
                               std::filesystem::copy_options::overwrite_existing);
    bench::timeOfFormatting(path, vsa_tools::FormatMode::Replace);
    bench::addRows(report, size + (isGeo ? "geo" : "nodes"), path, unformatted, argv[0], rounds);
    std::filesystem::remove(unformatted);
  }
  std::filesystem::remove(path);
  bench::printTable(report);
  if (!json.empty()) bench::writeJson(report, json);
  return 0;
} catch (const std::exception& error) {
  std::fprintf(stderr, "vsa_bench_format: %s\n", error.what());
  return 1;
}
