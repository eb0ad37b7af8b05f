// vsa convert: reads a file and writes its scene as a text again.
#pragma once

#include <string>

#include "tools/vsa/command.h"
#include "tools/vsa/common/read_arguments.h"
#include "tools/vsa/common/writing/write_arguments.h"

namespace vsa_tools {

/// Reads one file and writes its scene as a text to another file, to the same file or to standard
/// output. If the file was not read completely, writes nothing.
class ConvertCommand final : public Command {
 public:
  ConvertCommand() : Command("convert", "Read a file and write its scene as a text") {}
  void addTo(CommandOptions& options) override;
  int run() override;

 private:
  std::string file_;
  std::string types_;
  WriteArguments writing_;
  ReadArguments reading_;
};

}  // namespace vsa_tools
