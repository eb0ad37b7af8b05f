// The door of the reader: a VSA text goes in, its scene comes out.
//
//   zn::korvo_sdk::Scene scene;
//   const bool read = zn::korvo_sdk::impl::parseVsa(&scene, zn::File::open("scene.vsa"), false);
#pragma once

#include <vsa/foundation/api.h>
#include <vsa/foundation/file.h>
#include <vsa/foundation/string.h>
#include <vsa/scene/scene_interface.h>

namespace zn::korvo_sdk::impl {

/// What became of the source, for a host that wants to know whether all of it was read. The result
/// and the log do not depend on it. Filled when the call returns, whatever the result; an exception
/// leaves it as it was.
struct ReadReport {
  /// A byte 0xFF ended the text, and not the end of the source.
  bool endedAtMark = false;
  /// The text was cut off inside a string or a list: "UNEXPECTED EOF while parsing STRING", say.
  /// Empty when it was not.
  String cutOff;
  /// The position of the last character read, which may be behind the statement that failed: lines
  /// from 1, columns in bytes from 1. Both wrap around past 2^31 - 1.
  int line = 0;
  int column = 0;
};

/// Reads `text` into `scene`. True when the whole text was read and its links were resolved; false
/// when an error ended the reading, which has been logged. What was applied before stays applied.
///
/// Throws std::runtime_error when one of the first three tokens holds a character that no token may
/// hold, with the text of that error; and whatever the scene, the log sink or the memory throw that
/// is not a std::runtime_error. A null scene finds and creates nothing.
///
/// May be called again with the same scene, whose nodes and header are added to, and from several
/// threads at once, each with a scene of its own. The scene stays the caller's.
VSA_API bool parseString(interfaces::IScene* scene, String text);
VSA_API bool parseString(interfaces::IScene* scene, String text, ReadReport& report);

/// Reads `file`, from wherever it stands, in the same way. Unless `keepHeader`, the scene's header
/// is first reset: no comments, version VSX_FILE_VERSION_1, no time (what the scene throws there
/// leaves, a std::runtime_error too). A file that is not open, or cannot be read on, reads like one
/// that ends there: ask `file.failed()` of a copy.
VSA_API bool parseVsa(interfaces::IScene* scene, File file, bool keepHeader);
VSA_API bool parseVsa(interfaces::IScene* scene, File file, bool keepHeader, ReadReport& report);

}  // namespace zn::korvo_sdk::impl
