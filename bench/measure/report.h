// The table of results: the aim, the limit and the measured value of each row.
#pragma once

#include <string>
#include <vector>

namespace bench {

// One value of a row.
struct Figure {
  double measured;
  double aim;
  double mustHold;  // the limit
};

enum class Better { Low, High };

struct Row {
  std::string what;
  Better better;
  std::string unit;  // printed after each number; empty for a ratio
  std::vector<Figure> figures;
};

// The time of one candidate, printed below the table.
struct Detail {
  std::string scene;
  std::string reader;
  double milliseconds;
  double perSecond;
  std::string what;  // what perSecond counts: "MB", "M numbers", "k statements"
};

struct Report {
  std::string machine;
  std::vector<Row> rows;
  std::vector<Detail> details;
};

// "OK" if every figure reaches its aim, "below aim" if every figure is within its limit, otherwise
// "MISSED".
const char* verdict(const Row& row);

void printTable(const Report& report);

// Throws std::runtime_error if the file cannot be written.
void writeJson(const Report& report, const std::string& path);

// The name of the processor and the number of processors.
std::string machineName();

}  // namespace bench
