// The entry points parseString and parseVsa. Each call creates its own parser on the stack.
#include <vsa/parse.h>

#include <utility>

#include <vsa/scene/file_version.h>
#include "diagnostics/reading_sinks.h"
#include "vsa/lex/lexer_source.h"
#include "vsa/parser.h"
#include "vsa/read_report.h"

namespace zn::korvo_sdk::impl {

namespace {

void resetHeader(interfaces::IScene& scene) {
  // Messages that the scene writes in this function go to the same sinks as the messages of the
  // following parse.
  const ScopedHostSinks sinks;
  scene.clearComments();
  scene.setFileVersion(VSX_FILE_VERSION_1);
  scene.setFileTime(String());
}

bool parse(interfaces::IScene* scene, Lexer& lexer, ReadReport& report) {
  VsaParser parser;
  const bool result = parser.parse(scene, &lexer);
  report = reportOf(lexer);
  return result;
}

}  // namespace

bool parseString(interfaces::IScene* scene, String text) {
  return VsaParser().parse(scene, std::move(text));
}

bool parseString(interfaces::IScene* scene, String text, ReadReport& report) {
  StringLexer lexer(text);
  return parse(scene, lexer, report);
}

bool parseVsa(interfaces::IScene* scene, File file, bool keepHeader) {
  if (scene != nullptr && !keepHeader) resetHeader(*scene);
  return VsaParser().parse(scene, std::move(file));
}

bool parseVsa(interfaces::IScene* scene, File file, bool keepHeader, ReadReport& report) {
  if (scene != nullptr && !keepHeader) resetHeader(*scene);
  FileLexer lexer(file);
  return parse(scene, lexer, report);
}

}  // namespace zn::korvo_sdk::impl
