// The configuration file .vsa-check.json.
#pragma once

#include <map>
#include <memory>
#include <string>

#include "tools/vsa/check/selection/level_table.h"

namespace vsa_tools {

inline constexpr char CONFIG_NAME[] = ".vsa-check.json";

/// The level table of each file. The configuration file is applied first, then the options of the
/// command line.
class LevelTables {
 public:
  /// `configFile` is the configuration file for all files. If it is empty, each file has the
  /// nearest CONFIG_NAME in its folder or above, or none if `isConfigUsed` is false.
  LevelTables(LevelRules commandLine, bool isConfigUsed, std::string configFile)
      : commandLine_(std::move(commandLine)),
        isConfigUsed_(isConfigUsed),
        configFile_(std::move(configFile)) {}

  /// Returns the table for a file. Throws std::runtime_error if its configuration cannot be read or
  /// is wrong, and if the command line contains an unknown id or group.
  std::shared_ptr<const LevelTable> of(const std::string& file);

 private:
  std::shared_ptr<const LevelTable> make(const std::string& configFile) const;

  LevelRules commandLine_;
  bool isConfigUsed_;
  std::string configFile_;
  std::map<std::string, std::shared_ptr<const LevelTable>> byFolder_, byConfig_;
  // The folder and the table of the last file, because most files follow a file of their folder.
  std::string lastFolder_;
  std::shared_ptr<const LevelTable> last_;
};

/// Returns the path of the nearest CONFIG_NAME in `folder` or above, or an empty text if there is
/// none.
std::string configAbove(const std::string& folder);

/// Reads a configuration file. Throws std::runtime_error with the name of the file if it cannot be
/// read or is wrong.
LevelRules readConfig(const std::string& path);

}  // namespace vsa_tools
