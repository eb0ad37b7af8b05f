// reportJson(): returns the JSON of `vsa stats`.
#include <nlohmann/json.hpp>

#include <vsa/values/value_types.h>
#include "tools/scene_text/printable_text.h"
#include "tools/vsa/stats/file_statistics.h"

namespace vsa_tools {

namespace {

// Is not ordered_json, because ordered_json searches all keys when a key is added, and a text may
// have a million types.
using StatisticsJson = nlohmann::json;

StatisticsJson inputsJson(const SceneStatistics& counts) {
  StatisticsJson types = StatisticsJson::object();
  for (std::size_t i = 0; i < counts.inputsByType.size(); ++i) {
    const InputCounts& row = counts.inputsByType[i];
    if (row.inputs + row.members + row.elements == 0) continue;
    types[std::string(vsa::typeName(static_cast<vsa::ValueType>(i)))] = {
        {"ofNodes", row.inputs}, {"ofObjects", row.members}, {"ofArrays", row.elements}};
  }
  return types;
}

StatisticsJson buffersJson(const SceneStatistics& counts) {
  StatisticsJson types = StatisticsJson::object();
  for (std::size_t i = 0; i < counts.buffersByType.size(); ++i) {
    const BufferCounts& row = counts.buffersByType[i];
    if (row.buffers == 0) continue;
    types[std::string(vsa::typeName(static_cast<vsa::ElementType>(i)))] = {
        {"buffers", row.buffers}, {"elements", row.elements}, {"bytes", row.bytes}};
  }
  return types;
}

StatisticsJson largestJson(const SceneStatistics& counts) {
  StatisticsJson largest = StatisticsJson::array();
  for (const LargeInput& input : counts.largestInputs) {
    const double share = static_cast<double>(input.bytes) / static_cast<double>(counts.dataBytes);
    largest.push_back({{"file", input.file},
                       {"input", input.path},
                       {"value", input.value},
                       {"bytes", input.bytes},
                       {"share", share}});
  }
  return largest;
}

StatisticsJson countsJson(const SceneStatistics& counts) {
  StatisticsJson nodes = StatisticsJson::object();
  for (const auto& [type, count] : counts.nodesByType) nodes[type] = count;
  return {{"textBytes", counts.textBytes},
          {"dataBytes", counts.dataBytes},
          {"comments", counts.comments},
          {"commentBytes", counts.commentBytes},
          {"nodes", counts.nodes()},
          {"nodesByType", std::move(nodes)},
          {"inputsByType", inputsJson(counts)},
          {"links",
           {{"references", counts.references},
            {"connections", counts.connections},
            {"broken", counts.brokenLinks}}},
          {"buffersByType", buffersJson(counts)},
          {"largestInputs", largestJson(counts)},
          {"longestPath", counts.longestPath},
          {"deepestPath", counts.deepestPath},
          {"seconds", counts.seconds}};
}

}  // namespace

std::string reportJson(const StatisticsReport& report) {
  StatisticsJson files = StatisticsJson::array();
  for (const FileStatistics& file : report.files) {
    StatisticsJson row = {{"name", file.name}, {"status", file.status}};
    row.update(countsJson(file.counts));
    files.push_back(std::move(row));
  }
  const StatisticsJson json = {{"files", std::move(files)},
                               {"total", countsJson(report.total)},
                               {"peakMemoryBytes", report.peakMemoryBytes}};
  return printableJson(json.dump(1, ' ', false, StatisticsJson::error_handler_t::replace)) + '\n';
}

}  // namespace vsa_tools
