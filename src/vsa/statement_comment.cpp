// Comments. The scene stores every comment. A comment that contains the file's version or time also
// sets it.
#include <cstddef>
#include <string_view>

#include "vsa/parser.h"

namespace zn::korvo_sdk::impl {

namespace {

// Whether `word` occurs directly before a ":". Searches for colons first: comments have few.
bool hasKey(std::string_view comment, std::string_view word) {
  for (std::size_t at = comment.find(':'); at != std::string_view::npos;
       at = comment.find(':', at + 1)) {
    if (comment.substr(0, at).ends_with(word)) return true;
  }
  return false;
}

// The text after the first ":" of the comment.
String headerValue(const String& comment) {
  return comment.fromFirst(':', false).trim(true, true);
}

void setVersion(interfaces::IScene& scene, const String& comment, const Emitter& messages) {
  unsigned long long version = 0;
  if (String::parse(headerValue(comment), version, String::Radix::Decimal)) {
    scene.setFileVersion(version);
  } else {
    messages.log(DiagnosticId::BadVersion, comment);
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
  advanceInto(comment);
  recordComment(comment.text);
  return true;
}

void VsaParser::recordComment(const String& comment) {
  // A comment with both words sets only the version.
  const std::string_view text = comment.view();
  if (hasKey(text, "version")) {
    setVersion(sceneOrNone(), comment, emitter());
  } else if (hasKey(text, "time")) {
    setTime(sceneOrNone(), comment);
  }
  if (session != nullptr) session->takeText(comment.len());
  sceneOrNone().pushFileComment(comment);
}

}  // namespace zn::korvo_sdk::impl
