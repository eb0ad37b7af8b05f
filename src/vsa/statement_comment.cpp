// Parses comments. The scene receives every comment. A comment that contains the file's version or
// time also sets the version or time of the scene.
#include <string_view>

#include "scene/header_comment.h"
#include "vsa/parser.h"

namespace zn::korvo_sdk::impl {

namespace {

void setVersion(interfaces::IScene& scene, const String& comment, const Emitter& messages) {
  const String value = String::copyOf(headerValue(comment.view()));
  unsigned long long version = 0;
  if (String::parse(value, version, String::Radix::Decimal)) {
    scene.setFileVersion(version);
  } else {
    messages.log(DiagnosticId::BadVersion, comment);
  }
}

void setTime(interfaces::IScene& scene, const String& comment) {
  const std::string_view time = headerValue(comment.view());
  if (!time.empty()) scene.setFileTime(String::copyOf(time));
}

}  // namespace

// comment: "#" and the rest of the line. Example: `# version: 3`
bool VsaParser::parseComment() {
  Token comment;
  if (!match(comment, Token::Type::Comment)) return false;
  recordComment(comment.text);
  return true;
}

void VsaParser::recordComment(const String& comment) {
  if (setsVersion(comment.view())) {
    setVersion(sceneOrNone(), comment, emitter());
  } else if (setsTime(comment.view())) {
    setTime(sceneOrNone(), comment);
  }
  if (session != nullptr) session->chargeText(comment.len());
  sceneOrNone().pushFileComment(comment);
}

}  // namespace zn::korvo_sdk::impl
