// Measures the time of vsa check relative to reading the same files: many small files, and two big
// files. Also measures the gain of a second worker, and texts of mistakes, for which the time must
// be proportional to the number of mistakes.
#include <unistd.h>
#include <CLI/CLI.hpp>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

#include <vsa/read.h>
#include "bench/measure/comparison.h"
#include "bench/measure/elapsed.h"
#include "bench/measure/report.h"
#include "bench/scenes/text_generator.h"
#include "tools/vsa/check/check_run.h"
#include "tools/vsa/common/command_options.h"

namespace bench {
namespace {

namespace fs = std::filesystem;

constexpr size_t SMALL_FILES = 2000;
constexpr size_t MISTAKES = 100'000;
// The maximum number of rounds for the texts of mistakes. One round takes several seconds.
constexpr size_t MAX_MISTAKE_ROUNDS = 3;

// Redirects standard output to the null device, because the measured checks print their findings
// there.
class SilentOutput {
 public:
  SilentOutput() : kept_(::dup(STDOUT_FILENO)) { reopen("/dev/null"); }
  ~SilentOutput() {
    std::fflush(stdout);
    ::dup2(kept_, STDOUT_FILENO);
    ::close(kept_);
  }

 private:
  static void reopen(const char* path) {
    std::fflush(stdout);
    if (std::FILE* const file = std::fopen(path, "w")) {
      ::dup2(::fileno(file), STDOUT_FILENO);
      std::fclose(file);
    }
  }

  int kept_;
};

// Returns a typical small scene of about 7 KB: nodes, short tuples, two lists and references.
std::string smallScene(size_t number) {
  const std::string name = "box" + std::to_string(number);
  std::string text = "# version: 3\n# a box\n\ntransform root:\n  .children[*] = " + name + ";\n\n";
  text += "mesh " + name + ":\n  .label = \"a box\";\n  .bounds.min = pos3(-0.5 -0.5 -0.5);\n";
  text += "  .points = vec3f[24] {";
  for (int i = 0; i < 72; ++i) text += i % 2 == 0 ? "-0.5 " : "0.5 ";
  text += "};\n  .faceSize = 4;\n  .indices = int32[24] {";
  for (int i = 0; i < 24; ++i) text += std::to_string(i) + ' ';
  text += "};\n";
  for (int i = 0; i < 14; ++i) {
    const std::string material = "Material" + std::to_string(i);
    text += "\nmaterial " + material + ";\n";
    text += material + ".name = \"" + material + "\";\n" + material + ".shading = 2;\n";
    for (const char* const input : {"ambient", "diffuse", "specular", "emissive", "transparent"}) {
      text += material + '.' + input + " = rgba(0.6000000238418579 0.4 0.25 1);\n";
    }
    text += material + ".shininess = 32.0;\n" + material + ".opacity = 1.0;\n";
    text += name + ".materials[*] = " + material + ";\n";
  }
  return text;
}

void write(const fs::path& path, const std::string& text) {
  std::ofstream file(path, std::ios::binary);
  file << text;
  if (!file.flush()) throw std::runtime_error("cannot write " + path.string());
}

vsa_tools::CheckOptions optionsFor(const std::string& path) {
  vsa_tools::CheckOptions options;
  options.files = {path};
  options.isQuiet = true;
  options.isConfigIgnored = true;
  return options;
}

Candidate checker(const std::string& path, int expectedStatus) {
  return {"check", [=] {
            const vsa_tools::CheckOptions options = optionsFor(path);
            const SilentOutput silent;
            const Stopwatch watch;
            const int status = vsa_tools::CheckRun(options).run();
            const double seconds = watch.seconds();
            requireCount("vsa check", "as its exit status", static_cast<size_t>(status),
                         static_cast<size_t>(expectedStatus));
            return seconds;
          }};
}

Candidate reader(const std::vector<std::string>& files) {
  return {"read", [=] {
            size_t complete = 0;
            const Stopwatch watch;
            for (const std::string& file : files) {
              complete += vsa::readFile(file.c_str()).isComplete() ? 1 : 0;
            }
            const double seconds = watch.seconds();
            requireCount("read", "complete files", complete, files.size());
            return seconds;
          }};
}

class CheckBench {
 public:
  CheckBench(const fs::path& scratch, size_t rounds) : scratch_(scratch), rounds_(rounds) {
    report.machine = machineName();
  }

  void addSmallFiles() {
    const fs::path folder = scratch_ / "vsa_bench_check";
    std::vector<std::string> files;
    fs::create_directories(folder);
    for (size_t i = 0; i < SMALL_FILES; ++i) {
      files.push_back(folder / (std::to_string(10000 + i) + ".vsa"));
      write(files.back(), smallScene(i));
    }
    constexpr double AIM = 1.3, LIMIT = 1.3;
    addRatio("2,000 small files", files, folder, AIM, LIMIT);
    const auto check = [&](unsigned workers) {
      vsa_tools::CheckOptions options = optionsFor(folder);
      options.workers = workers;
      return elapsed([&] { vsa_tools::CheckRun(options).run(); });
    };
    std::vector<double> ratios;
    for (size_t i = 0; i < rounds_; ++i) ratios.push_back(check(2) / check(1));
    report.rows.push_back({"elapsed time, -j 2 over -j 1, 2,000 small files",
                           Better::Low,
                           "",
                           {{median(ratios), 0.55, 0.65}}});
    fs::remove_all(folder);
  }

  // Adds the ratio for one big file. For a file of more than 64 MiB, vsa check does not apply the
  // rules about texts.
  void addBigFile(size_t megabytes) {
    const fs::path path = scratch_ / "vsa_bench_check.vsa";
    write(path, geo(megabytes * 1'000'000, Format::Vsa, 1).text);
    constexpr double AIM = 1.25, LIMIT = 1.25;
    addRatio("one file of " + std::to_string(megabytes) + " MB", {path.string()}, path, AIM, LIMIT);
    fs::remove(path);
  }

  // Adds two ratios. The first is the time for all mistakes, divided by ten times the time for a
  // tenth of the mistakes. It is 1 if the time is proportional to the number of mistakes. The
  // second ratio is the time of a check that ends early, divided by the time for all mistakes.
  void addMistakes() {
    const fs::path many = scratch_ / "many.vsa", few = scratch_ / "few.vsa";
    write(many, mistakes(MISTAKES));
    write(few, mistakes(MISTAKES / 10));
    const std::vector<double> seconds =
        compare({checkerOfAll(many), checkerOfAll(few), checker(many, 1)},
                std::min(rounds_, MAX_MISTAKE_ROUNDS));
    report.rows.push_back({"time, 100,000 mistakes over ten times 10,000",
                           Better::Low,
                           "",
                           {{seconds[0] / seconds[1] / 10, 1.1, 1.3}}});
    report.rows.push_back({"time, ended at 10,000 of 100,000 mistakes over all of them",
                           Better::Low,
                           "",
                           {{seconds[2] / seconds[0], 0.15, 0.2}}});
    for (const fs::path& path : {many, few}) fs::remove(path);
  }

  Report report;

 private:
  static std::string mistakes(size_t count) {
    std::string text = "lamp sun;\n";
    for (size_t i = 0; i < count; ++i) text += "sun.power = 1e-5;\n";
    return text;
  }

  static Candidate checkerOfAll(const std::string& path) {
    return {"check", [=] {
              vsa_tools::CheckOptions options = optionsFor(path);
              CLI::App app;
              vsa_tools::CommandOptions arguments(app);
              options.reading.addTo(arguments);
              app.parse("--max-diagnostics " + std::to_string(2 * MISTAKES));
              const SilentOutput silent;
              const Stopwatch watch;
              vsa_tools::CheckRun(options).run();
              return watch.seconds();
            }};
  }

  void addRatio(const std::string& what, const std::vector<std::string>& files,
                const std::string& checked, double aim, double limit) {
    const std::vector<double> seconds = compare({reader(files), checker(checked, 0)}, rounds_);
    report.rows.push_back({"time, check over reading, " + what,
                           Better::Low,
                           "",
                           {{seconds[1] / seconds[0], aim, limit}}});
    const char* const names[] = {"read", "check"};
    for (size_t i = 0; i < seconds.size(); ++i) {
      const auto count = static_cast<double>(files.size());
      report.details.push_back({what, names[i], 1e3 * seconds[i], count / seconds[i], "files"});
    }
  }

  fs::path scratch_;
  size_t rounds_;
};

}  // namespace
}  // namespace bench

int main(int argc, char** argv) try {
  std::string json, scratch = "/tmp";
  size_t rounds = 7, megabytes = 100;
  CLI::App app("Measures vsa check over reading.", "vsa_bench_check");
  app.add_option("--rounds", rounds, "Rounds of each comparison");
  app.add_option("--big", megabytes, "Size of the second big file in MB, such as 500");
  app.add_option("--scratch", scratch, "Folder for the files that are read");
  app.add_option("--json", json, "Also write the results to FILE")->type_name("FILE");
  CLI11_PARSE(app, argc, argv);
  bench::CheckBench bench(scratch, rounds);
  bench.addSmallFiles();
  constexpr size_t MEGABYTES_WITH_ALL_RULES = 60;
  bench.addBigFile(MEGABYTES_WITH_ALL_RULES);
  bench.addBigFile(megabytes);
  bench.addMistakes();
  bench::printTable(bench.report);
  if (!json.empty()) bench::writeJson(bench.report, json);
  return 0;
} catch (const std::exception& error) {
  std::fprintf(stderr, "vsa_bench_check: %s\n", error.what());
  return 1;
}
