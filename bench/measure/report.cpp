// Prints the results as a table and writes them as JSON.
#include "bench/measure/report.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <nlohmann/json.hpp>
#include <stdexcept>

namespace bench {
namespace {

using Json = nlohmann::ordered_json;

bool reaches(Better better, double measured, double limit) {
  return better == Better::Low ? measured <= limit : measured >= limit;
}

std::string rounded(double number) {
  char text[32];
  std::snprintf(text, sizeof text, number >= 100 ? "%.0f" : number >= 10 ? "%.1f" : "%.2f", number);
  return text;
}

// Returns one number of each figure of the row, such as "0.98; 1.10": the measured values, the aims
// or the limits. If the aims or limits of all figures are equal, the number appears once.
std::string listed(const Row& row, double Figure::*number) {
  std::string text;
  for (const Figure& figure : row.figures) {
    const std::string next = rounded(figure.*number) + row.unit;
    if (number != &Figure::measured && text == next) continue;
    text += (text.empty() ? "" : "; ") + next;
  }
  return text;
}

void printRow(const char* what, const char* aim, const char* mustHold, const char* measured,
              const char* result) {
  std::printf("| %-62s | %10s | %10s | %16s | %-9s |\n", what, aim, mustHold, measured, result);
}

Json jsonOf(const Row& row) {
  Json figures = Json::array();
  for (const Figure& figure : row.figures) {
    figures.push_back(
        {{"aim", figure.aim}, {"mustHold", figure.mustHold}, {"measured", figure.measured}});
  }
  return {{"what", row.what},
          {"better", row.better == Better::Low ? "low" : "high"},
          {"unit", row.unit},
          {"figures", std::move(figures)},
          {"verdict", verdict(row)}};
}

Json jsonOf(const Detail& detail) {
  return {{"scene", detail.scene},
          {"reader", detail.reader},
          {"milliseconds", detail.milliseconds},
          {"perSecond", detail.perSecond},
          {"of", detail.what}};
}

}  // namespace

const char* verdict(const Row& row) {
  const auto all = [&](double Figure::*limit) {
    return std::all_of(row.figures.begin(), row.figures.end(), [&](const Figure& figure) {
      return reaches(row.better, figure.measured, figure.*limit);
    });
  };
  return all(&Figure::aim) ? "OK" : all(&Figure::mustHold) ? "below aim" : "MISSED";
}

void printTable(const Report& report) {
  std::printf("%s\n\n", report.machine.c_str());
  printRow("what", "aim", "must hold", "measured", "");
  printRow("---", "---:", "---:", "---:", "---");
  for (const Row& row : report.rows) {
    printRow(row.what.c_str(), listed(row, &Figure::aim).c_str(),
             listed(row, &Figure::mustHold).c_str(), listed(row, &Figure::measured).c_str(),
             verdict(row));
  }
  std::printf("\n| %-20s | %-30s | %11s | %-24s |\n", "scene", "reader", "ms", "a second");
  std::printf("| %-20s | %-30s | %11s | %-24s |\n", "---", "---", "---:", "---");
  for (const Detail& detail : report.details) {
    const std::string rate = rounded(detail.perSecond) + " " + detail.what;
    std::printf("| %-20s | %-30s | %11.2f | %-24s |\n", detail.scene.c_str(), detail.reader.c_str(),
                detail.milliseconds, rate.c_str());
  }
}

void writeJson(const Report& report, const std::string& path) {
  Json json = {{"machine", report.machine}, {"rows", Json::array()}, {"details", Json::array()}};
  for (const Row& row : report.rows) json["rows"].push_back(jsonOf(row));
  for (const Detail& detail : report.details) json["details"].push_back(jsonOf(detail));
  std::ofstream out(path);
  out << json.dump(2) << '\n';
  if (!out.flush()) throw std::runtime_error("cannot write " + path);
}

std::string machineName() {
  std::ifstream file("/proc/cpuinfo");
  std::string line;
  while (std::getline(file, line)) {
    if (line.starts_with("model name")) break;
  }
  const size_t colon = line.find(": ");
  const std::string model = colon == std::string::npos ? "processor" : line.substr(colon + 2);
  return model + ", " + std::to_string(sysconf(_SC_NPROCESSORS_ONLN)) + " processors";
}

}  // namespace bench
