// The two entry points. Each call has a parser of its own, on the stack.
#include <vsa/parse.h>

#include <utility>

#include <vsa/scene/file_version.h>
#include "vsa/parser.h"

namespace zn::korvo_sdk::impl {

namespace {

void resetHeader(interfaces::IScene& scene) {
  scene.clearComments();
  scene.setFileVersion(VSX_FILE_VERSION_1);
  scene.setFileTime(String());
}

}  // namespace

bool parseString(interfaces::IScene* scene, String text) {
  ReadReport report;
  return parseString(scene, std::move(text), report);
}

bool parseString(interfaces::IScene* scene, String text, ReadReport& report) {
  VsaParser parser;
  parser.report = &report;
  return parser.parse(scene, std::move(text));
}

bool parseVsa(interfaces::IScene* scene, File file, bool keepHeader) {
  ReadReport report;
  return parseVsa(scene, std::move(file), keepHeader, report);
}

bool parseVsa(interfaces::IScene* scene, File file, bool keepHeader, ReadReport& report) {
  if (scene != nullptr && !keepHeader) resetHeader(*scene);
  VsaParser parser;
  parser.report = &report;
  return parser.parse(scene, std::move(file));
}

}  // namespace zn::korvo_sdk::impl
