// vsa dump: prints the scene of a file as JSON.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include <vsa/scene.h>
#include "tools/scene_text/scene_dump.h"
#include "tools/vsa/command.h"
#include "tools/vsa/common/read_arguments.h"
#include "tools/vsa/dump/dump_log.h"
#include "tools/vsa/dump/dump_selection.h"

namespace vsa_tools {

class DumpCommand final : public Command {
 public:
  DumpCommand() : Command("dump", "Print the scene of a file as JSON") {}
  void addTo(CommandOptions& options) override;
  int run() override;

 private:
  int write(const vsa::Scene& scene, const ReadStatus& status, const DumpLog& log) const;
  DumpOptions options(const DumpSelection& selection) const;

  std::string file_;
  ReadArguments reading_;
  std::vector<std::string> selected_;
  std::optional<std::uint64_t> maxElements_;
  bool noBuffers_ = false, largeBuffers_ = false;
  bool lines_ = false, pretty_ = false;
};

}  // namespace vsa_tools
