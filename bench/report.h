// The table of ratios: what is aimed at, what must hold, what was measured.
#pragma once

#include <string>
#include <vector>

namespace bench {

// One ratio of a row. Both limits are met from the same side.
struct Figure {
  double measured;
  double aim;
  double mustHold;
};

enum class Better { Low, High };

struct Row {
  std::string what;
  Better better;
  std::string unit;  // after each number; empty for a ratio
  std::vector<Figure> figures;
};

// Every contender's own figures, below the table.
struct Detail {
  std::string scene;
  std::string reader;
  double milliseconds;
  double perSecond;  // of `what`
  std::string what;  // "MB", "M numbers", "k statements"
};

struct Report {
  std::string machine;
  std::vector<Row> rows;
  std::vector<Detail> details;
};

// "OK" when every figure reaches its aim, "below aim" when each still holds, "MISSED" otherwise.
const char* verdict(const Row& row);

void printTable(const Report& report);

// Throws std::runtime_error when the file cannot be written.
void writeJson(const Report& report, const std::string& path);

// The processor's name and how many there are.
std::string machineName();

}  // namespace bench
