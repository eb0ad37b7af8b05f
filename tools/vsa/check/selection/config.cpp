#include "tools/vsa/check/selection/config.h"

#include <filesystem>
#include <nlohmann/json.hpp>
#include <stdexcept>

#include "tools/vsa/check/selection/json_file.h"
#include "tools/vsa/common/did_you_mean.h"

namespace vsa_tools {

namespace {

namespace fs = std::filesystem;

}  // namespace

std::string configAbove(const std::string& folder) {
  std::error_code ignored;
  fs::path at = fs::absolute(folder.empty() ? "." : folder, ignored).lexically_normal();
  while (true) {
    const fs::path candidate = at / CONFIG_NAME;
    if (fs::is_regular_file(candidate, ignored)) return candidate.native();
    const fs::path parent = at.parent_path();
    if (parent == at || parent.empty()) return {};
    at = parent;
  }
}

LevelRules readConfig(const std::string& path) {
  LevelRules rules;
  try {
    const auto json = readJsonFile<nlohmann::json>(path);
    for (const auto& [key, value] : json.get<nlohmann::json::object_t>()) {
      if (key == "$schema") continue;
      const std::vector<std::string> known{"error", "warn", "ignore"};
      if (key == "error") {
        rules.errors = value.get<std::vector<std::string>>();
      } else if (key == "warn") {
        rules.warnings = value.get<std::vector<std::string>>();
      } else if (key == "ignore") {
        rules.ignored = value.get<std::vector<std::string>>();
      } else {
        throw std::runtime_error(path + ": there is no setting " + key + didYouMean(key, known));
      }
    }
  } catch (const nlohmann::json::exception& error) {
    throw std::runtime_error(path + ": " + error.what());
  }
  return rules;
}

std::shared_ptr<const LevelTable> LevelTables::of(const std::string& file) {
  if (!isConfigUsed_ || !configFile_.empty()) {
    std::shared_ptr<const LevelTable>& table = byConfig_[configFile_];
    if (!table) table = make(configFile_);
    return table;
  }
  const std::size_t nameBegin = file.rfind('/') + 1;
  if (last_ && file.compare(0, nameBegin, lastFolder_) == 0) return last_;
  lastFolder_ = file.substr(0, nameBegin);
  const std::string folder = fs::path(file).parent_path().native();
  std::shared_ptr<const LevelTable>& table = byFolder_[folder];
  if (!table) {
    const std::string config = configAbove(folder);
    std::shared_ptr<const LevelTable>& shared = byConfig_[config];
    if (!shared) shared = make(config);
    table = shared;
  }
  return last_ = table;
}

std::shared_ptr<const LevelTable> LevelTables::make(const std::string& configFile) const {
  auto table = std::make_shared<LevelTable>();
  if (!configFile.empty()) {
    const LevelRules rules = readConfig(configFile);
    try {
      table->apply(rules);
    } catch (const std::runtime_error& error) {
      throw std::runtime_error(configFile + ": " + error.what());
    }
  }
  table->apply(commandLine_);
  return table;
}

}  // namespace vsa_tools
