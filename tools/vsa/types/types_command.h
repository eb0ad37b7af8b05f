// vsa types: describes the node types that scenes use.
#pragma once

#include <string>
#include <vector>

#include "tools/vsa/command.h"
#include "tools/vsa/common/files/file_arguments.h"
#include "tools/vsa/common/read_arguments.h"

namespace vsa_tools {

/// Reads texts and writes their node types to standard output as JSON. Writes nothing if a text
/// cannot be opened or was not read completely. vsa::readTypes() accepts that JSON.
class TypesCommand final : public Command {
 public:
  TypesCommand() : Command("types", "Describe the node types of scenes as JSON") {}
  void addTo(CommandOptions& options) override;
  int run() override;

 private:
  FileArguments files_;
  ReadArguments reading_;
};

}  // namespace vsa_tools
