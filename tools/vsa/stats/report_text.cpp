// reportText(): returns the tables of `vsa stats`.
#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include <vsa/values/value_types.h>
#include "tools/scene_text/printable_text.h"
#include "tools/vsa/common/scene/short_value.h"
#include "tools/vsa/stats/file_statistics.h"
#include "tools/vsa/stats/quantity.h"
#include "tools/vsa/stats/text_table.h"

namespace vsa_tools {

namespace {

constexpr auto LEFT = TextTable::Align::Left, RIGHT = TextTable::Align::Right;
constexpr std::size_t SHOWN_TYPES = 20, NAME_CHARACTERS = 40;

using TypeCount = std::pair<std::string, std::uint64_t>;

/// Returns the node types, the most frequent one first.
std::vector<TypeCount> typesByFrequency(const SceneStatistics& counts) {
  std::vector<TypeCount> types(counts.nodesByType.begin(), counts.nodesByType.end());
  std::stable_sort(types.begin(), types.end(),
                   [](const TypeCount& a, const TypeCount& b) { return a.second > b.second; });
  return types;
}

std::string nodesTable(const SceneStatistics& counts) {
  TextTable table({LEFT, RIGHT, RIGHT});
  const std::uint64_t nodes = counts.nodes();
  table.add({"Nodes by type", "nodes", "share"});
  const auto types = typesByFrequency(counts);
  std::uint64_t others = 0;
  for (std::size_t i = 0; i < types.size(); ++i) {
    const auto& [type, count] = types[i];
    if (i >= SHOWN_TYPES) {
      others += count;
    } else {
      table.add(
          {"  " + shortText(type, NAME_CHARACTERS), countText(count), shareText(count, nodes)});
    }
  }
  if (others > 0) {
    table.add({fmt::format("  {} other types", types.size() - SHOWN_TYPES), countText(others),
               shareText(others, nodes)});
  }
  table.add({"  all", countText(nodes)});
  return table.text();
}

std::vector<std::string> inputRow(const std::string& name, const InputCounts& counts) {
  return {name, countText(counts.inputs), countText(counts.members), countText(counts.elements)};
}

std::string inputsTable(const SceneStatistics& counts) {
  TextTable table({LEFT, RIGHT, RIGHT, RIGHT});
  table.add({"Inputs by type", "of nodes", "of objects", "of arrays"});
  for (std::size_t i = 0; i < counts.inputsByType.size(); ++i) {
    const InputCounts& row = counts.inputsByType[i];
    if (row.inputs + row.members + row.elements == 0) continue;
    table.add(inputRow(fmt::format("  {}", vsa::typeName(static_cast<vsa::ValueType>(i))), row));
  }
  table.add(inputRow("  all", counts.inputs()));
  return table.text();
}

std::vector<std::string> bufferRow(const std::string& name, const BufferCounts& counts,
                                   std::uint64_t dataBytes) {
  return {name, countText(counts.buffers), countText(counts.elements), sizeText(counts.bytes),
          shareText(counts.bytes, dataBytes)};
}

std::string buffersTable(const SceneStatistics& counts) {
  if (counts.buffers().buffers == 0) return {};
  TextTable table({LEFT, RIGHT, RIGHT, RIGHT, RIGHT});
  table.add({"Buffers by element type", "buffers", "elements", "size", "share of data"});
  for (std::size_t i = 0; i < counts.buffersByType.size(); ++i) {
    const BufferCounts& row = counts.buffersByType[i];
    if (row.buffers == 0) continue;
    table.add(bufferRow(fmt::format("  {}", vsa::typeName(static_cast<vsa::ElementType>(i))), row,
                        counts.dataBytes));
  }
  table.add(bufferRow("  all", counts.buffers(), counts.dataBytes));
  return '\n' + table.text();
}

std::string largestTable(const SceneStatistics& counts, bool hasFiles) {
  if (counts.largestInputs.empty()) return {};
  TextTable table({LEFT, RIGHT, RIGHT, LEFT});
  table.add({"Largest inputs", "size", "share of data", "value"});
  for (const LargeInput& input : counts.largestInputs) {
    const std::string file = hasFiles ? shortText(input.file, NAME_CHARACTERS) + ": " : "";
    table.add({"  " + file + shortText(input.path, NAME_CHARACTERS), sizeText(input.bytes),
               shareText(input.bytes, counts.dataBytes), input.value});
  }
  return '\n' + table.text();
}

std::string speedText(const SceneStatistics& counts) {
  const auto speed = static_cast<double>(counts.textBytes) / std::max(counts.seconds, 1e-9);
  return fmt::format("{:.3f} s, {}/s", counts.seconds, sizeText(static_cast<std::uint64_t>(speed)));
}

std::string factsTable(const SceneStatistics& counts, std::uint64_t peakMemory) {
  TextTable table({LEFT, LEFT});
  table.add({"Text", fmt::format("{} ({} bytes)", sizeText(counts.textBytes),
                                 countText(counts.textBytes))});
  table.add({"Data", fmt::format("{}, {} of the text", sizeText(counts.dataBytes),
                                 shareText(counts.dataBytes, counts.textBytes))});
  table.add({"Comments",
             fmt::format("{} ({})", countText(counts.comments), sizeText(counts.commentBytes))});
  table.add({"Links", fmt::format("{} made ({} references, {} connections), {} broken",
                                  countText(counts.references + counts.connections),
                                  countText(counts.references), countText(counts.connections),
                                  countText(counts.brokenLinks))});
  table.add({"Longest path", counts.longestPath.empty()
                                 ? "-"
                                 : fmt::format("{} ({} bytes)", shortText(counts.longestPath),
                                               countText(counts.longestPath.size()))});
  table.add({"Deepest path", fmt::format("{} inputs", countText(counts.deepestPath))});
  table.add({"Reading", speedText(counts)});
  if (peakMemory > 0) table.add({"Peak memory", sizeText(peakMemory)});
  return table.text();
}

std::string filesTable(const StatisticsReport& report) {
  TextTable table({LEFT, RIGHT, RIGHT, RIGHT, RIGHT, RIGHT, RIGHT, LEFT});
  table.add({"Files", "text", "data", "nodes", "inputs", "broken links", "seconds", "status"});
  const auto row = [](const std::string& name, const SceneStatistics& counts,
                      const std::string& status) {
    return std::vector<std::string>{name,
                                    sizeText(counts.textBytes),
                                    sizeText(counts.dataBytes),
                                    countText(counts.nodes()),
                                    countText(counts.inputs().inputs),
                                    countText(counts.brokenLinks),
                                    fmt::format("{:.3f}", counts.seconds),
                                    status};
  };
  for (const FileStatistics& file : report.files) {
    table.add(row("  " + printableLine(file.name), file.counts, file.status));
  }
  table.add(row("  all", report.total, ""));
  return table.text();
}

/// Returns the name of a file, with the status of a reading that is not complete.
std::string titleOf(const FileStatistics& file) {
  const bool isComplete = file.status == vsa::name(vsa::ReadStatus::Complete);
  return printableLine(file.name) + (isComplete ? "" : " (" + file.status + ')');
}

}  // namespace

std::string reportText(const StatisticsReport& report) {
  const bool hasFiles = report.files.size() != 1;
  const std::string head = hasFiles ? filesTable(report) : titleOf(report.files[0]) + '\n';
  return head + '\n' + factsTable(report.total, report.peakMemoryBytes) + '\n' +
         nodesTable(report.total) + '\n' + inputsTable(report.total) + buffersTable(report.total) +
         largestTable(report.total, hasFiles);
}

}  // namespace vsa_tools
