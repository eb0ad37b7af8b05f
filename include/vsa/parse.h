// The entry points of the plain interface. Each function reads one VSA text into a scene.
//
//   zn::korvo_sdk::Scene scene;  // needs <vsa/model/scene.h>
//   const bool read = zn::korvo_sdk::impl::parseVsa(&scene, zn::File::open("scene.vsa"), false);
#pragma once

#include <vsa/foundation/api.h>
#include <vsa/foundation/file.h>
#include <vsa/foundation/string.h>
#include <vsa/scene/scene_interface.h>

namespace zn::korvo_sdk::impl {

/// Additional results of a reading, such as whether a byte 0xFF ended the text. The functions below
/// set them when they return, and do not change them when they throw an exception. They have no
/// effect on the return value and on the log.
struct ReadReport {
  /// Whether a byte 0xFF ended the text before the end of the source.
  bool endedAtMark = false;
  /// The message for a string or list that the end of the text cuts off, such as "UNEXPECTED EOF
  /// while parsing STRING". It is empty if nothing was cut off.
  String cutOff;
  /// The line and the column of the last character that the lexer has read. Both count from 1,
  /// columns in bytes. If the text is empty, the line is 1, and the column is 0 for a File and 1
  /// for a String. The lexer reads ahead, so this position can be after the statement that failed.
  /// The numbers wrap around after 2^31 - 1.
  int line = 0;
  int column = 0;
};

/// Reads `text` into `scene`, and does not reset the header of the scene. Returns true if the text
/// was read to its end and its links were resolved. A byte 0xFF is an end of the text, and so is a
/// string or list that is cut off at the beginning of a statement: see ReadReport. If an error
/// stopped the parse, logs the error and returns false. The statements before the error have been
/// applied to the scene, and remain applied.
///
/// Throws DiagnosticError, a std::runtime_error, if one of the first three tokens contains an
/// invalid character: the function reads these tokens before the first statement, and does not
/// catch their exceptions. std::bad_alloc propagates to the caller. So do exceptions of the scene,
/// the log sink and the diagnostic sink, except for std::runtime_error. A std::runtime_error that a
/// sink throws while it receives the error that stopped the parse propagates, too. If the scene is
/// null, no node is found or created.
///
/// The caller owns the scene. A further call with the same scene adds nodes to it. Several threads
/// may call the function at the same time with different scenes.
VSA_API bool parseString(interfaces::IScene* scene, String text);
VSA_API bool parseString(interfaces::IScene* scene, String text, ReadReport& report);

/// Reads `file` in the same way, from its read position. If `keepHeader` is false, the function
/// first resets the header of the scene: no comments, version VSX_FILE_VERSION_1 and no time.
/// Exceptions of the scene during the reset propagate to the caller, including std::runtime_error.
/// So do all exceptions of the file's source while the first three tokens are read. If the file is
/// not open or a read fails, the text ends there. To detect this, keep a copy of the file and call
/// its `failed()`.
VSA_API bool parseVsa(interfaces::IScene* scene, File file, bool keepHeader);
VSA_API bool parseVsa(interfaces::IScene* scene, File file, bool keepHeader, ReadReport& report);

}  // namespace zn::korvo_sdk::impl
