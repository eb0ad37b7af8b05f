// Emitter: creates the record of a problem, reports it and logs its line. The compiler checks the
// arguments of each message against its format. Internal.
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

/// The conversion that prints an argument of type T: 's', 'd', 'c', 'u' (%llu), or 0 if no
/// conversion prints it.
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

/// Whether the conversions in `format` are equal to `conversions`, in order.
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

/// A message id. Code that creates one compiles only if the message's format matches the argument
/// types.
template <class... Arguments>
struct MessageOf {
  consteval MessageOf(DiagnosticId message) : id(message) {  // implicit, so callers pass an id
    constexpr char CONVERSIONS[] = {conversionFor<Arguments>()..., '\0'};
    if (!formatMatches(rowOf(message).format, CONVERSIONS)) throw "the arguments do not fit";
  }
  DiagnosticId id;
};

/// Formats a message. Does not check the format: MessageOf has checked it.
String formatMessage(const char* format, ...);

/// The log line "KIND (LINE,COLUMN): MESSAGE.". If the message ends in a period, the line ends in
/// two periods.
String positionedLine(const String& kind, std::int32_t line, std::int32_t column,
                      const String& message);

/// The argument in the type that printf expects.
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

/// The argument as it appears in the message: a text ends at its first NUL.
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

/// Reports a record to the sink of this thread and logs its line. Returns even if the record is
/// Fatal.
void emit(const Diagnostic& diagnostic);

/// Whether `emit` reports the records of this thread to a sink.
bool isReported();

/// Reports and logs the error that stopped a parse. Reports a DiagnosticError as its record, any
/// other exception as a HostError.
void emitFatal(const std::runtime_error& error);

/// Emits messages with one position.
class Emitter {
 public:
  /// Creates an emitter whose messages have no position.
  Emitter() = default;
  Emitter(std::int32_t line, std::int32_t column) : line_(line), column_(column) {}

  /// Throws the message as a DiagnosticError.
  template <class... Arguments>
  [[noreturn]] void fatal(diagnostic_detail::MessageOf<std::type_identity_t<Arguments>...> message,
                          const Arguments&... arguments) const {
    throw DiagnosticError(recordWithArguments(message.id, arguments...));
  }

  /// Throws a message without arguments. Its id is known only at run time.
  [[noreturn]] void fatalWithoutArguments(DiagnosticId id) const {
    throw DiagnosticError(record(id));
  }

  /// Reports and logs a message that does not stop the parse. Formats the message only if the
  /// reading does not drop it, and copies the arguments only for a sink.
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
