// Measures the elapsed time of vsa fmt relative to reading the same file, and its peak memory. Each
// measured run is a new process, as it is for a user: a process that has read the file once reads
// it again in two thirds of the time, because the kernel has given it the memory already.
// Formatting uses two threads, so the elapsed time is shorter if each thread has a processor.
#include <fcntl.h>
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
#include <utility>
#include <vector>

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

// What a new process does with the file.
enum class Work { Read, Check, Print, Replace };

// Formats a file. Standard output goes to the file `path`.out.
vsa_tools::FormatOutcome printToFile(const std::string& path) {
  const int shown = ::dup(STDOUT_FILENO);
  const int out = ::open((path + ".out").c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
  if (shown < 0 || out < 0 || ::dup2(out, STDOUT_FILENO) < 0) {
    throw std::runtime_error("cannot write " + path + ".out");
  }
  ::close(out);
  vsa_tools::FormatOutcome outcome = vsa_tools::formatFile(path, FormatMode::Print);
  ::dup2(shown, STDOUT_FILENO);
  ::close(shown);
  return outcome;
}

vsa_tools::FormatOutcome format(Work work, const std::string& path) {
  if (work == Work::Print) return printToFile(path);
  return vsa_tools::formatFile(path, work == Work::Check ? FormatMode::Check : FormatMode::Replace);
}

// Does the work in this process and prints its peak memory in MiB. Throws std::runtime_error if the
// work fails.
int runOnce(Work work, const std::string& path) {
  if (work == Work::Read) {
    const vsa::ReadResult result = vsa::readFile(path.c_str());
    requireCount("read", "complete files", result.isComplete() ? 1 : 0, 1);
  } else {
    const vsa_tools::FormatOutcome outcome = format(work, path);
    if (outcome.status > 1) throw std::runtime_error("vsa fmt failed: " + outcome.messages.at(0));
  }
  rusage usage{};
  ::getrusage(RUSAGE_SELF, &usage);
  std::printf("%.1f\n", static_cast<double>(usage.ru_maxrss) / 1024);
  return 0;
}

// Waits until the file is on the disk, so that writing it does not slow down the next measurement.
void waitForDisk(const std::string& path) {
  const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  const bool isWritten = file >= 0 && ::fsync(file) == 0;
  if (file >= 0) ::close(file);
  if (!isWritten) throw std::runtime_error("cannot write " + path);
}

// Starts this program again, to do one work in a new process.
class NewProcess {
 public:
  explicit NewProcess(std::string program) : program_(std::move(program)) {}

  double seconds(Work work, const std::string& path) const {
    return elapsed([&] { megabytes(work, path); });
  }

  // Returns the elapsed time of writing the formatted text to a new file.
  double secondsOfPrint(const std::string& path) const {
    const double taken = seconds(Work::Print, path);
    fs::remove(path + ".out");
    return taken;
  }

  // Returns the elapsed time of formatting a copy of the file, which replaces the copy.
  double secondsOfChange(const std::string& unformatted) const {
    const std::string copy = unformatted + ".copy";
    fs::copy_file(unformatted, copy, fs::copy_options::overwrite_existing);
    waitForDisk(copy);
    const double taken = seconds(Work::Replace, copy);
    fs::remove(copy);
    return taken;
  }

  // Returns the peak memory of the process in MiB.
  double megabytes(Work work, const std::string& path) const {
    const std::string command = "\"" + program_ + "\" --only-run " +
                                std::to_string(static_cast<int>(work)) + " --file \"" + path + "\"";
    std::FILE* const pipe = ::popen(command.c_str(), "r");
    double peak = 0;
    const bool isRead = pipe != nullptr && std::fscanf(pipe, "%lf", &peak) == 1;
    const bool isEnded = pipe != nullptr && ::pclose(pipe) == 0;
    if (!isRead || !isEnded) throw std::runtime_error("cannot measure " + path);
    return peak;
  }

 private:
  std::string program_;
};

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
             const std::string& unformatted, const NewProcess& process, size_t rounds) {
  const std::vector<double> seconds =
      compare({{"read", [&] { return process.seconds(Work::Read, path); }},
               {"check", [&] { return process.seconds(Work::Check, path); }},
               {"print", [&] { return process.secondsOfPrint(unformatted); }},
               {"replace", [&] { return process.seconds(Work::Replace, path); }},
               {"changed", [&] { return process.secondsOfChange(unformatted); }}},
              rounds);
  constexpr double AIM = 1.5, LIMIT = 2;
  const std::pair<const char*, double> timed[] = {{"fmt --check", seconds[1]},
                                                  {"fmt >OUT", seconds[2]},
                                                  {"fmt -i unchanged", seconds[3]},
                                                  {"fmt -i changed", seconds[4]}};
  for (const auto& [name, time] : timed) {
    report.rows.push_back({std::string("elapsed, ") + name + " over reading, " + what,
                           Better::Low,
                           "",
                           {{time / seconds[0], AIM, LIMIT}}});
  }
  report.rows.push_back({"peak memory, fmt --check, " + what,
                         Better::Low,
                         "MB",
                         {{process.megabytes(Work::Check, path), 100, 200}}});
}

void write(const fs::path& path, const std::string& text) {
  std::ofstream file(path, std::ios::binary);
  file << text;
  if (!file.flush()) throw std::runtime_error("cannot write " + path.string());
}

}  // namespace
}  // namespace bench

int main(int argc, char** argv) try {
  std::string json, scratch = "/tmp", file;
  std::optional<int> work;
  size_t rounds = 5, megabytes = 500;
  CLI::App app("Measures vsa fmt over reading.", "vsa_bench_format");
  app.add_option("--rounds", rounds, "Rounds of each comparison");
  app.add_option("--big", megabytes, "Size of the texts in MB");
  app.add_option("--scratch", scratch, "Folder for the files that are formatted");
  app.add_option("--json", json, "Also write the results to FILE")->type_name("FILE");
  // For the new processes. Options without a group are not in the help.
  app.add_option("--only-run", work)->group("");
  app.add_option("--file", file)->group("");
  CLI11_PARSE(app, argc, argv);
  if (work) return bench::runOnce(static_cast<bench::Work>(*work), file);
  const bench::NewProcess process(argv[0]);
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
    process.seconds(bench::Work::Replace, path);
    bench::addRows(report, size + (isGeo ? "geo" : "nodes"), path, unformatted, process, rounds);
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
