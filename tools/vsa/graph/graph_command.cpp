#include "tools/vsa/graph/graph_command.h"

#include <algorithm>
#include <filesystem>

#include <vsa/file_replacement.h>
#include "tools/vsa/common/output/exit_status.h"
#include "tools/vsa/common/output/standard_output.h"
#include "tools/vsa/common/scene/scene_file.h"
#include "tools/vsa/graph/dot_text.h"
#include "tools/vsa/graph/graphviz.h"
#include "tools/vsa/graph/scene_graph.h"

namespace vsa_tools {

void GraphCommand::addTo(CommandOptions& options) {
  options.add("FILE", file_, "File to read; - is standard input").required();
  options.add("-o,--output", output_, "File to write or replace; - is standard output")
      .valueName("FILE");
  const CommandOption svg = options.addFlag("--svg", svg_, "Write an SVG picture, by Graphviz");
  options.addFlag("--png", png_, "Write a PNG picture, by Graphviz").excludes(svg);
  options
      .add("--limit", limit_,
           "Draw at most N nodes or, if there are more, at most N groups of them; without it, 100 "
           "nodes or 40 groups")
      .valueName("N")
      .range(1, 10000);
  reading_.addTo(options);
  options.footer(
      "Without --svg and --png, the graph is written in DOT, the language of Graphviz.\n\n"
      "Examples:\n"
      "  vsa graph --svg scene.vsa -o scene.svg\n"
      "  vsa graph --limit 30 --png large.vsa >large.png\n"
      "  vsa graph scene.vsa | neato -Tpdf >scene.pdf\n\n"
      "Exit status:\n"
      "  0  the file was read\n"
      "  1  it was not read completely; the graph has what was read\n"
      "  2  wrong usage, a file that cannot be opened, or a picture that cannot be drawn or "
      "written");
}

// Returns the maximum number of groups: the value of --limit, or a default. By default, each of up
// to 100 nodes has its own group, and more nodes are put into at most 40 groups. With more groups,
// a picture of 10,000 nodes was 13,000 pixels high.
std::size_t GraphCommand::limitFor(std::size_t nodes) const {
  constexpr std::size_t MAX_NODES = 100, MAX_GROUPS = 40;
  if (limit_ > 0) return limit_;
  return nodes <= MAX_NODES ? MAX_NODES : MAX_GROUPS;
}

int GraphCommand::run() {
  const SceneFile file = readAndReport(file_, reading_);
  if (file.exitStatus == EXIT_USAGE || file.exitStatus == EXIT_INTERRUPTED) return file.exitStatus;
  const std::string title = std::filesystem::path(file.name).filename();
  const vsa::Scene& scene = file.result.scene;
  const std::string dot = dotText(graphOf(scene, limitFor(scene.nodes().size())), title);
  if (!svg_ && !png_) return std::max(file.exitStatus, write(dot));
  const Picture picture = renderDot(dot, svg_ ? "svg" : "png");
  if (picture.problem.empty()) return std::max(file.exitStatus, write(picture.bytes));
  printError(picture.problem);
  return EXIT_USAGE;
}

int GraphCommand::write(const std::string& text) const {
  if (output_ == "-") return printText(text);
  vsa::FileReplacement file;
  if (file.open(output_) && file.write(text) && file.replace()) return EXIT_READ;
  printError(file.error());
  return EXIT_USAGE;
}

}  // namespace vsa_tools
