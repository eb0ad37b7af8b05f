// The options of the commands that write a scene as a text: the output file and the layout.
#pragma once

#include <string>

#include <vsa/scene.h>
#include <vsa/write_options.h>
#include "tools/vsa/common/command_options.h"

namespace vsa_tools {

class WriteArguments {
 public:
  /// Adds -o, --compress, --expand, --full-paths, --by-name, --links-last, --width, --numbers,
  /// --no-header and --lossy. The object must not move after that, because the parser of the
  /// command line stores values in its members.
  void addTo(CommandOptions& options);

  vsa::WriteOptions options() const;

  /// Writes the scene to the output file or, without -o, to standard output. Prints which parts the
  /// text cannot represent, or why the text cannot be written. `name` is the name of the read file,
  /// for the messages about parts. Returns the exit status. Ctrl-C ends the writing: nothing is
  /// then printed, and an old file remains, but standard output may have received a part of the
  /// text. The caller must not have an InterruptScope.
  int write(const vsa::Scene& scene, const std::string& name) const;

 private:
  std::string output_ = "-";
  vsa::WriteOptions options_;
  bool compress_ = false, expand_ = false, fullPaths_ = false, byName_ = false;
  bool linksLast_ = false, noHeader_ = false;
};

}  // namespace vsa_tools
