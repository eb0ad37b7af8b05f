// Loss: a problem of a file that the reader does not log.
#pragma once

#include <optional>
#include <string>

#include <vsa/read.h>
#include "tools/vsa/input/inspected_source.h"

namespace vsa_tools {

/// A problem that the reader does not log. The text is cut off, a byte 0xFF ended it, a NUL byte is
/// in it, the file is compressed or has another encoding, or the reading ended early. A part of the
/// file may therefore be missing from the scene.
struct Loss {
  std::string text;
  /// Where the problem is. Not set if that is unknown.
  std::optional<Position> position;
};

/// Returns the problem that a diagnostic reports, or nothing if it reports none of these: the text
/// is cut off, or a byte 0xFF ended it.
std::optional<Loss> lossOf(const vsa::Diagnostic& diagnostic);

/// Returns the problem that the bytes of the file show, as far as they were read: the file is
/// compressed, has another encoding, or has a NUL byte. Returns only the first of these, because
/// the others follow from it: a text in UTF-16 has many NUL bytes.
std::optional<Loss> byteLoss(const InspectedSource& source);

/// Finds the reason why a reading is not complete. It is shown even after --max-diagnostics.
class ReadingEnd {
 public:
  /// Whether the diagnostic tells the reason: it ended the reading, or is the first one about a
  /// limit, after which the reading may go on. Must be called for each diagnostic.
  bool isToldBy(const vsa::Diagnostic& diagnostic);
  /// Returns the reason if no diagnostic tells it: the file could not be read, Ctrl-C was pressed,
  /// or something else. Returns nothing if the reading is complete.
  std::optional<Loss> loss(const vsa::ReadOutcome& read) const;

 private:
  bool isTold_ = false;
};

}  // namespace vsa_tools
