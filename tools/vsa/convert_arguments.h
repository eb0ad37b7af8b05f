// The options and arguments of vsa convert.
#pragma once

#include <CLI/CLI.hpp>
#include <string>

#include <vsa/write_options.h>
#include "tools/vsa/commands.h"

namespace vsa_tools {

/// Filled by the parser of the command line, so it must not move between `addTo` and `run`.
class ConvertArguments {
 public:
  void addTo(CLI::App& command) {
    command.add_option("FILE", file_, "File to read; - is standard input")
        ->required()
        ->type_name("");
    command.add_option("-o,--output", output_, "File to write or replace; - is standard output")
        ->type_name("FILE");
    CLI::Option* const compress =
        command.add_flag("--compress", compress_, "Write buffers of bytes as compressed blocks");
    command.add_flag("--expand", expand_, "Write buffers of bytes as numbers, as without it")
        ->excludes(compress);
    command.add_flag("--full-paths", fullPaths_, "Write the node's name in every statement");
    command.add_flag("--by-name", byName_, "Sort the nodes by name");
    command.add_flag("--links-last", linksLast_, "Write references and connections last");
    command.add_option("--width", options_.lineWidth, "Columns of a line of numbers; 0: no limit")
        ->type_name("N");
    command
        .add_option("--numbers", options_.numbersPerLine,
                    "Numbers in a line of a list; 0: as many as fit")
        ->type_name("N");
    command.add_flag("--no-header", noHeader_, "Leave out comments, version and time");
    command.add_flag("--lossy", options_.lossy, "Leave out what a text cannot carry");
    command.footer(
        "Examples:\n"
        "  vsa convert scene.vsa -o copy.vsa\n"
        "  vsa convert --compress textures.vsa -o textures.vsa\n"
        "  vsa convert --by-name --full-paths - <a.vsa | less");
  }

  int run() const {
    vsa::WriteOptions options = options_;
    if (compress_) options.buffers = vsa::BufferForm::Compressed;
    if (fullPaths_) options.paths = vsa::PathForm::Full;
    if (byName_) options.order = vsa::NodeOrder::Name;
    if (linksLast_) options.links = vsa::LinkPlace::Last;
    if (noHeader_) options.header = vsa::HeaderForm::None;
    return commandConvert(file_, output_, options);
  }

 private:
  std::string file_;
  std::string output_ = "-";
  vsa::WriteOptions options_;
  bool compress_ = false, fullPaths_ = false, byName_ = false, linksLast_ = false;
  bool noHeader_ = false, expand_ = false;
};

}  // namespace vsa_tools
