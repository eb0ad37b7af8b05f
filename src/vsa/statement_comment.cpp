// Comments. The scene keeps them all; those that hold the file's version or time also set it.
#include <string_view>

#include "foundation/log.h"
#include "vsa/messages.h"
#include "vsa/parser.h"

namespace zn::korvo_sdk::impl {

namespace {

// What follows the first ":" of the comment, wherever its words stand.
String headerValue(const String& comment) {
  return comment.fromFirst(':', false).trim(true, true);
}

void setVersion(interfaces::IScene& scene, const String& comment) {
  unsigned long long version = 0;
  if (String::parse(headerValue(comment), version, String::Radix::Decimal)) {
    scene.setFileVersion(version);
  } else {
    logWarning(BAD_VERSION, comment.buf());
  }
}

void setTime(interfaces::IScene& scene, const String& comment) {
  const String time = headerValue(comment);
  if (!time.isEmpty()) scene.setFileTime(time);
}

}  // namespace

// comment: "#" and the rest of the line. `# version: 3`
bool VsaParser::parseComment() {
  if (!nextIs(Token::Type::Comment)) return false;
  Token comment;
  take(comment);
  // A comment that holds both words sets the version only.
  const std::string_view text = comment.text.view();
  if (text.find("version:") != std::string_view::npos) {
    setVersion(target(), comment.text);
  } else if (text.find("time:") != std::string_view::npos) {
    setTime(target(), comment.text);
  }
  target().pushFileComment(comment.text);
  return true;
}

}  // namespace zn::korvo_sdk::impl
