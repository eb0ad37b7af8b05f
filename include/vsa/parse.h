// The entry points: each reads one VSA text into a scene.
//
//   zn::korvo_sdk::Scene scene;
//   const bool read = zn::korvo_sdk::impl::parseVsa(&scene, zn::File::open("scene.vsa"), false);
#pragma once

#include <vsa/foundation/api.h>
#include <vsa/foundation/file.h>
#include <vsa/foundation/string.h>
#include <vsa/scene/scene_interface.h>

namespace zn::korvo_sdk::impl {

/// Tells whether all of the source was read. Filled when the call returns, whatever the result; an
/// exception leaves it unchanged. Result and log do not depend on it.
struct ReadReport {
  /// True when a byte 0xFF ended the text before the source ended.
  bool endedAtMark = false;
  /// The message for a string or list that the end of the text cuts off, such as "UNEXPECTED EOF
  /// while parsing STRING". Empty when there is none.
  String cutOff;
  /// The position of the last character read; the lexer reads ahead, so it may lie behind the
  /// statement that failed. Lines from 1, columns in bytes from 1. Both wrap around past 2^31 - 1.
  int line = 0;
  int column = 0;
};

/// Reads `text` into `scene`. Returns true when the whole text was read and its links were
/// resolved, false when an error ended the reading; the error has been logged. Statements applied
/// before an error stay applied.
///
/// Throws DiagnosticError (a std::runtime_error) when one of the first three tokens contains a
/// character that no token may contain; and every exception of the scene and the log sink that is
/// not a std::runtime_error, and std::bad_alloc. With a null scene, nothing is found or created.
///
/// May be called again with the same scene, which then gets more nodes, and from several threads at
/// once, each with a scene of its own. The caller owns the scene.
VSA_API bool parseString(interfaces::IScene* scene, String text);
VSA_API bool parseString(interfaces::IScene* scene, String text, ReadReport& report);

/// Reads `file` from its read position in the same way. Unless `keepHeader`, first resets the
/// scene's header: no comments, version VSX_FILE_VERSION_1, no time. Exceptions of the scene during
/// the reset leave the call, std::runtime_error included. A file that is not open, or whose reading
/// fails, reads like one that ends there: `failed()` of a copy tells.
VSA_API bool parseVsa(interfaces::IScene* scene, File file, bool keepHeader);
VSA_API bool parseVsa(interfaces::IScene* scene, File file, bool keepHeader, ReadReport& report);

}  // namespace zn::korvo_sdk::impl
