// The table of results. Each row has one or more measured values, each with an aim and a limit.
#pragma once

#include <string>
#include <vector>

namespace bench {

// One measured value of a row, with its aim and limit.
struct Figure {
  double measured;
  double aim;
  double mustHold;  // The limit.
};

enum class Better { Low, High };

struct Row {
  std::string what;
  Better better;
  // The unit, which is printed after each number. Empty for a ratio.
  std::string unit;
  std::vector<Figure> figures;
};

// The time of one candidate. It is printed below the table.
struct Detail {
  std::string scene;
  std::string reader;
  double milliseconds;
  double perSecond;
  // The unit of `perSecond`, such as "MB", "M numbers" or "k statements".
  std::string what;
};

struct Report {
  std::string machine;
  std::vector<Row> rows;
  std::vector<Detail> details;
};

// Returns "OK" if every figure reaches its aim, "below aim" if every figure is within its limit,
// and otherwise "MISSED".
const char* verdict(const Row& row);

void printTable(const Report& report);

// Writes the report to the file at `path`. Throws std::runtime_error if the file cannot be written.
void writeJson(const Report& report, const std::string& path);

// Returns the name of the processor and the number of processors.
std::string machineName();

}  // namespace bench
