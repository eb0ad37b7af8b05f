// vsa fmt: formats texts.
#pragma once

#include <string>
#include <vector>

#include "tools/vsa/command.h"
#include "tools/vsa/common/files/file_arguments.h"
#include "tools/vsa/fmt/format_file.h"

namespace vsa_tools {

/// Formats each file. Depending on the options, it prints the formatted text or its difference from
/// the file, replaces the file, or lists the files that would change.
class FmtCommand final : public Command {
 public:
  FmtCommand() : Command("fmt", "Format texts; every token stays as it is written") {}
  void addTo(CommandOptions& options) override;
  int run() override;

 private:
  FormatMode mode() const;
  int formatAll(const std::vector<std::string>& files) const;

  FileArguments files_;
  bool replaces_ = false, checks_ = false, diffs_ = false;
  ReadArguments arguments_;
};

}  // namespace vsa_tools
