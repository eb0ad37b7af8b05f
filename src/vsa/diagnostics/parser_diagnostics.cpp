// What the reader has to say: errors, which throw, and warnings, which log. Both carry the position
// of the token consumed last; a bad token carries its own.
#include <stdexcept>

#include <vsa/foundation/log.h>
#include "foundation/base/argument_list.h"
#include "vsa/diagnostics/messages.h"
#include "vsa/parser.h"

namespace zn::korvo_sdk::impl {

namespace {

[[noreturn]] void raise(const String& text) {
  throw std::runtime_error(text.buf());
}

}  // namespace

void VsaParser::parseError(const char* format, ...) {
  va_list args;
  va_start(args, format);
  const zn::detail::ArgumentListEnd end(args);
  internalError("PARSE ERROR", format, args);
  // cppcheck-suppress va_end_missing ; ArgumentListEnd calls it
}

void VsaParser::bufferError(const char* format, ...) {
  va_list args;
  va_start(args, format);
  const zn::detail::ArgumentListEnd end(args);
  internalError("BUFFER ERROR", format, args);
  // cppcheck-suppress va_end_missing ; ArgumentListEnd calls it
}

// The frame ends in a period of its own, so some texts end in two.
void VsaParser::internalError(const String& kind, const char* format, va_list args) {
  const String message = String::formatv(format, args);
  raise(String::format(POSITIONED, kind.buf(), current.line, current.column, message.buf()));
}

// An invalid token's text is a complete message.
void VsaParser::tokenError(const Token& invalid) {
  raise(invalid.text);
}

void VsaParser::tokenError(const String& expected, const Token& found) {
  raise(String::format(BAD_TOKEN, found.line, found.column, expected.buf(), found.text.buf()));
}

void VsaParser::typeError(const String& typeName, IInput* input, bool isArray) {
  const String message = String::format(CANNOT_ASSIGN_TYPE, typeName.buf(), isArray ? "[]" : "",
                                        input->typeName().buf(), input->path().buf());
  raise(String::format(TYPE_ERROR, current.line, current.column, message.buf()));
}

void VsaParser::narrowTypeWarning(const String& typeName, IInput* input) {
  const String message =
      String::format(NARROWING, typeName.buf(), input->typeName().buf(), input->path().buf());
  logWarning(TYPE_WARNING, current.line, current.column, message.buf());
}

// Logged under the heading of an error, yet the reading goes on: the statement changes nothing.
void VsaParser::wrongTypeWarning(const String& found, IInput* input) {
  const String message =
      String::format(WRONG_TYPE, input->typeName().buf(), input->path().buf(), found.buf());
  logError(TYPE_ERROR, current.line, current.column, message.buf());
}

void VsaParser::badEnumValueWarning(const String& value, IInput* input) {
  const String message = String::format(BAD_ENUM_VALUE, value.buf(), input->path().buf());
  logWarning(ENUM_WARNING, current.line, current.column, message.buf());
}

}  // namespace zn::korvo_sdk::impl
