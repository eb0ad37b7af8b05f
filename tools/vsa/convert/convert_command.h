// vsa convert: reads a file and writes its scene as a text again.
#pragma once

#include <string>

#include <vsa/write_options.h>
#include "tools/vsa/command.h"
#include "tools/vsa/common/read_arguments.h"

namespace vsa_tools {

/// Reads one file and writes its scene as a text to another file, which may be the same one. Writes
/// nothing unless the file was read completely.
class ConvertCommand final : public Command {
 public:
  ConvertCommand() : Command("convert", "Read a file and write its scene as a text") {}
  void addTo(CLI::App& app) override;
  int run() override;

 private:
  vsa::WriteOptions options() const;

  std::string file_;
  std::string output_ = "-";
  vsa::WriteOptions options_;
  ReadArguments reading_;
  bool compress_ = false, fullPaths_ = false, byName_ = false, linksLast_ = false;
  bool noHeader_ = false, expand_ = false;
};

}  // namespace vsa_tools
