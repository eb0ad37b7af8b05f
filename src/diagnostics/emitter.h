// Emitter: creates the diagnostic for a problem, and either throws it or reports it to a sink and
// logs its line. The compiler checks the arguments of a message against its format. Internal.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include <vsa/diagnostics/diagnostic.h>
#include <vsa/foundation/string.h>
#include "diagnostics/reading_sinks.h"

namespace zn::korvo_sdk {

namespace diagnostic_detail {

/// Returns the last character of the printf conversion for an argument of type T: 's', 'd', 'c' or
/// 'u' (for %llu). Returns 0 if there is none.
template <class T>
constexpr char conversionFor() {
  using Value = std::decay_t<T>;
  if constexpr (std::is_same_v<Value, String> || std::is_same_v<Value, const char*> ||
                std::is_same_v<Value, char*>) {
    return 's';
  } else if constexpr (std::is_same_v<Value, std::int32_t>) {
    return 'd';
  } else if constexpr (std::is_same_v<Value, char>) {
    return 'c';
  } else if constexpr (std::is_same_v<Value, std::uint64_t> ||
                       std::is_same_v<Value, unsigned long long>) {
    return 'u';
  }
  return '\0';
}

/// Whether the conversions of `format` are those in `conversions`, in this order. `conversions`
/// contains the last character of each conversion. A conversion may have the modifiers l and ll,
/// but no flags, width or precision. `format` must not contain "%%".
constexpr bool formatMatches(const char* format, const char* conversions) {
  for (; *format != '\0'; ++format) {
    if (*format != '%') continue;
    ++format;
    while (*format == 'l') ++format;
    if (*format != *conversions) return false;
    ++conversions;
  }
  return *conversions == '\0';
}

/// The id of a message with arguments of these types. The code that creates the object compiles
/// only if the types match the format of the message.
template <class... Arguments>
struct MessageOf {
  consteval MessageOf(DiagnosticId message) : id(message) {  // implicit, so callers pass an id
    constexpr char CONVERSIONS[] = {conversionFor<Arguments>()..., '\0'};
    if (!formatMatches(rowOf(message).format, CONVERSIONS)) throw "the arguments do not fit";
  }
  DiagnosticId id;
};

/// Returns the text of a message. The function does not check the format. Emitter::log and
/// Emitter::fatal pass formats that MessageOf has checked. All other callers must pass arguments
/// that match the format.
String formatMessage(const char* format, ...);

/// Returns the log line "KIND (LINE,COLUMN): MESSAGE.". The function always appends a period, also
/// to a message that ends with one.
String positionedLine(const String& kind, std::int32_t line, std::int32_t column,
                      const String& message);

/// Converts an argument to the type that printf expects.
inline const char* printable(const String& text) {
  return text.buf();
}
template <class T>
requires(!std::is_same_v<T, std::uint64_t>) T printable(T argument) {
  return argument;
}
inline unsigned long long printable(std::uint64_t number) {
  return number;
}

/// Returns an argument as the message contains it. A text ends at its first NUL.
inline String printed(const String& text) {
  return text.view().find('\0') == std::string_view::npos ? text : String(text.buf());
}
inline String printed(const char* text) {
  return String(text);
}
inline String printed(char character) {
  return String(character);
}
template <class T>
requires std::is_integral_v<T> String printed(T number) {
  return String::copyOf(std::to_string(number));
}

}  // namespace diagnostic_detail

/// Reports a diagnostic to the sink of this thread, if there is one. Logs its line, except while a
/// RecordSink is the sink (see reading_sinks.h). Does not end the parse, even if the diagnostic is
/// Fatal.
void emit(const Diagnostic& diagnostic);

/// Whether this thread has a sink to which `emit` reports diagnostics.
bool isReported();

/// Like `emit`, for the error that stopped a parse. A DiagnosticError contains the diagnostic to
/// report. For any other exception, the diagnostic is a HostError.
void emitFatal(const std::runtime_error& error);

/// Emits messages that have the same position.
class Emitter {
 public:
  /// Creates an emitter whose messages have no position.
  Emitter() = default;
  Emitter(std::int32_t line, std::int32_t column) : line_(line), column_(column) {}

  /// Throws a message as a DiagnosticError.
  template <class... Arguments>
  [[noreturn]] void fatal(diagnostic_detail::MessageOf<std::type_identity_t<Arguments>...> message,
                          const Arguments&... arguments) const {
    throw DiagnosticError(recordWithArguments(message.id, arguments...));
  }

  /// Throws a message without arguments. MessageOf cannot be used here, because the id is known
  /// only at run time.
  [[noreturn]] void fatalWithoutArguments(DiagnosticId id) const {
    throw DiagnosticError(record(id));
  }

  /// Reports and logs a message that does not stop the parse. If the reading drops the message, the
  /// function does not format it. It copies the arguments only if there is a sink.
  template <class... Arguments>
  void log(diagnostic_detail::MessageOf<std::type_identity_t<Arguments>...> message,
           const Arguments&... arguments) const {
    if (!isWanted(message.id)) return;
    emit(isReported() ? recordWithArguments(message.id, arguments...)
                      : record(message.id, arguments...));
  }

 private:
  template <class... Arguments>
  Diagnostic record(DiagnosticId id, const Arguments&... arguments) const {
    return {id,
            diagnostic_detail::formatMessage(rowOf(id).format,
                                             diagnostic_detail::printable(arguments)...),
            line_, column_};
  }

  template <class... Arguments>
  Diagnostic recordWithArguments(DiagnosticId id, const Arguments&... arguments) const {
    Diagnostic result = record(id, arguments...);
    result.arguments = {diagnostic_detail::printed(arguments)...};
    return result;
  }

  std::int32_t line_ = 0;
  std::int32_t column_ = 0;
};

}  // namespace zn::korvo_sdk
