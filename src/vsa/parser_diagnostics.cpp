// The messages of the parser. A message has the position of the token consumed last. The functions
// tokenError are exceptions: BAD TOKEN has the position of the bad token, and the text of an
// Invalid token contains its own position.
#include <stdexcept>

#include "foundation/base/argument_list.h"
#include "vsa/apply/type_messages.h"
#include "vsa/parser.h"

namespace zn::korvo_sdk::impl {

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

// Throws a message that is not in the table of diagnostics. For its own messages, the parser uses
// an Emitter.
void VsaParser::internalError(const String& kind, const char* format, va_list args) {
  const String message = String::formatv(format, args);
  throw std::runtime_error(
      diagnostic_detail::positionedLine(kind, current.line, current.column, message).buf());
}

// Throws the text of the token, which is a complete message. The parser itself does not call this
// function. For an Invalid token, it throws the record of the lexer (see advance).
void VsaParser::tokenError(const Token& invalid) {
  throw std::runtime_error(invalid.text.buf());
}

void VsaParser::tokenError(const String& expected, const Token& found) {
  Emitter(found.line, found.column).fatal(DiagnosticId::BadToken, expected, found.text);
}

void VsaParser::typeError(const String& typeName, IInput* input, bool isArray) {
  emitTypeError(emitter(), typeName, *input, isArray);
}

void VsaParser::narrowTypeWarning(const String& typeName, IInput* input) {
  emitNarrowing(emitter(), typeName, *input);
}

// Logs an error. Parsing continues, and the value is not assigned.
void VsaParser::wrongTypeWarning(const String& found, IInput* input) {
  emitWrongType(emitter(), found, *input);
}

void VsaParser::badEnumValueWarning(const String& value, IInput* input) {
  emitBadEnumValue(emitter(), value, *input);
}

}  // namespace zn::korvo_sdk::impl
