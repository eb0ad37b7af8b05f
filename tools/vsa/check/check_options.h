// The options on the command line of vsa check. The texts of options that were not given are empty,
// unless a default is shown.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "tools/vsa/check/output/format.h"
#include "tools/vsa/check/selection/level_table.h"
#include "tools/vsa/common/files/file_list.h"
#include "tools/vsa/common/read_arguments.h"

namespace vsa_tools {

struct CheckOptions {
  std::vector<std::string> files;
  NameSeparator separator = NameSeparator::LineEnd;
  FormatName format = FormatName::Full;
  std::string colour = "auto";
  unsigned workers = 1;
  LevelRules levels;
  std::string configFile;
  bool isConfigIgnored = false;
  std::string typesFile;
  std::string baseline;
  std::string newBaseline;
  bool isStrict = false;
  bool isQuiet = false;
  bool isFirstOnly = false;
  bool isFixing = false;
  std::string stdinName;  ///< The file name to show for "-". If it is empty, "<stdin>" is shown.
  ReadArguments reading;
};

}  // namespace vsa_tools
