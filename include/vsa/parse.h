// The entry points. Each reads one VSA text into a scene.
//
//   zn::korvo_sdk::Scene scene;
//   const bool read = zn::korvo_sdk::impl::parseVsa(&scene, zn::File::open("scene.vsa"), false);
#pragma once

#include <vsa/foundation/api.h>
#include <vsa/foundation/file.h>
#include <vsa/foundation/string.h>
#include <vsa/scene/scene_interface.h>

namespace zn::korvo_sdk::impl {

/// Reports whether the whole source was read. Set when the call returns, whatever the result.
/// Unchanged when the call throws. Does not affect the result or the log.
struct ReadReport {
  /// True when a byte 0xFF ended the text before the end of the source.
  bool endedAtMark = false;
  /// The message for a string or list that the end of the text cuts off, such as "UNEXPECTED EOF
  /// while parsing STRING". Otherwise empty.
  String cutOff;
  /// The position of the last character read. The lexer reads ahead, so it may be after the
  /// statement that failed. Lines count from 1, and columns count bytes from 1. Both wrap around
  /// past 2^31 - 1.
  int line = 0;
  int column = 0;
};

/// Reads `text` into `scene`. Returns true when the whole text was read and its links were
/// resolved. Returns false when an error stopped the parse; the error has been logged. Statements
/// applied before an error stay applied.
///
/// Throws DiagnosticError (a std::runtime_error) when one of the first three tokens contains a
/// character that no token may contain. Propagates std::bad_alloc, and exceptions of the scene and
/// the log sink that are not std::runtime_error. With a null scene, nothing is found or created.
///
/// May be called again with the same scene to add nodes. May be called from several threads at once
/// with a different scene each. The caller owns the scene.
VSA_API bool parseString(interfaces::IScene* scene, String text);
VSA_API bool parseString(interfaces::IScene* scene, String text, ReadReport& report);

/// Reads `file` from its read position in the same way. Unless `keepHeader`, first resets the
/// scene's header: no comments, version VSX_FILE_VERSION_1, no time. Exceptions of the scene during
/// the reset propagate, including std::runtime_error. If the file is not open or a read fails, the
/// text ends there. Call `failed()` on a copy of the file to detect this.
VSA_API bool parseVsa(interfaces::IScene* scene, File file, bool keepHeader);
VSA_API bool parseVsa(interfaces::IScene* scene, File file, bool keepHeader, ReadReport& report);

}  // namespace zn::korvo_sdk::impl
