// The log of a dump: the diagnostics of a reading as JSON text, up to a maximum number and a
// maximum size.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include <vsa/read.h>
#include "tools/scene_text/read_outcome.h"
#include "tools/scene_text/text_output.h"
#include "tools/vsa/common/read_arguments.h"

namespace vsa_tools {

/// The dump starts with the result of the reading, which is known only after the whole log. So the
/// log is kept in memory.
class DumpLog {
 public:
  /// Diagnostics beyond this number of bytes are only counted.
  static constexpr std::uint64_t MAX_BYTES = std::uint64_t{64} << 20;

  /// `arguments` must outlive the object.
  explicit DumpLog(const ReadArguments& arguments) : arguments_(arguments) {}

  /// The options for the reading whose log this object keeps.
  vsa::ReadOptions options();

  /// The part of the dump about the end of the reading. Call it once, after the reading.
  ReadStatus end(const vsa::ReadOutcome& read);
  /// The elements of the array "log", separated by commas. Complete after end().
  const std::string& json() const { return json_.text(); }
  /// Diagnostics that are not in json().
  std::uint64_t notKept() const { return notKept_; }

 private:
  void add(const vsa::Diagnostic& diagnostic);
  void put(vsa::Severity severity, std::string_view line);

  const ReadArguments& arguments_;
  TextOutput json_;
  std::optional<std::string> fatal_;  // the line of the diagnostic that ended the reading
  std::uint64_t kept_ = 0, notKept_ = 0;
};

}  // namespace vsa_tools
