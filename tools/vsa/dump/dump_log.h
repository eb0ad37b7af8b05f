// DumpLog: collects the diagnostics of a reading as JSON text, up to a maximum number and size.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include <vsa/read.h>
#include "tools/scene_text/read_outcome.h"
#include "tools/scene_text/text_output.h"
#include "tools/vsa/common/read_arguments.h"
#include "tools/vsa/input/loss.h"

namespace vsa_tools {

/// The log of a dump. It is kept in memory, because the dump begins with the result of the reading,
/// which is known only after the whole log.
class DumpLog {
 public:
  /// The maximum size in bytes of json() is about this. The first diagnostic that does not
  /// fit and those after it are only counted, except for the one that tells why the reading is not
  /// complete.
  static constexpr std::uint64_t MAX_BYTES = std::uint64_t{64} << 20;

  /// `arguments` must outlive the object.
  explicit DumpLog(const ReadArguments& arguments) : arguments_(arguments) {}

  /// Returns options for a reading whose log this object keeps. The object must outlive the
  /// reading.
  vsa::ReadOptions options();

  /// Returns what the dump contains about the end of the reading. Must be called once, after the
  /// reading.
  ReadStatus end(const vsa::ReadOutcome& read);
  /// Returns the elements of the array "log" with commas between them. Complete after end().
  const std::string& json() const { return json_.text(); }
  /// Returns the number of diagnostics that were only counted.
  std::uint64_t notKept() const { return notKept_; }

 private:
  bool hasRoom();
  void add(const vsa::Diagnostic& diagnostic);
  void put(vsa::Severity severity, std::string_view line);

  const ReadArguments& arguments_;
  TextOutput json_;
  std::optional<std::string> fatal_;  // the line of the diagnostic that ended the reading
  ReadingEnd end_;
  std::uint64_t kept_ = 0, notKept_ = 0;
  bool isFull_ = false;  // whether a diagnostic did not fit
};

}  // namespace vsa_tools
