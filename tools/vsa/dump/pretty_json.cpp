#include "tools/vsa/dump/pretty_json.h"

namespace vsa_tools {

namespace {

constexpr std::size_t MAX_COLUMNS = 100;

}  // namespace

void PrettyJson::emit(char c) {
  out_.put(c);
  ++column_;
}

void PrettyJson::newLine() {
  out_.put('\n');
  column_ = 2 * open_.size();
  for (std::size_t i = 0; i < column_; ++i) out_.put(' ');
}

void PrettyJson::putInString(char c) {
  emit(c);
  if (isAfterBackslash_) {
    isAfterBackslash_ = false;
  } else if (c == '\\') {
    isAfterBackslash_ = true;
  } else if (c == '"') {
    isInString_ = false;
  }
}

void PrettyJson::put(char c) {
  if (isInString_) return putInString(c);
  if (c == '\n') {
    if (open_.empty() && !isAfterOpening_) emit(c);
    return;
  }
  if (isAfterOpening_) begin(c);
  switch (c) {
    case '{':
    case '[':
      emit(c);
      isAfterOpening_ = true;
      opening_ = c;
      return;
    case '}':
    case ']':
      return end(c);
    case ',':
      return comma();
    case ':':
      emit(c);
      return emit(' ');
    default:
      isInString_ = c == '"';
      emit(c);
  }
}

// Determines the layout of the container that was opened last. `next` is the first character after
// its opening bracket.
void PrettyJson::begin(char next) {
  isAfterOpening_ = false;
  Container container;
  container.isEmpty = next == '}' || next == ']';
  container.isFlat = opening_ == '[' && next != '{' && next != '[';
  open_.push_back(container);
  if (!container.isEmpty && !container.isFlat) newLine();
}

void PrettyJson::comma() {
  emit(',');
  Container& container = open_.back();
  if (container.isFlat && column_ < MAX_COLUMNS) return emit(' ');
  container.isBroken = true;
  newLine();
}

void PrettyJson::end(char c) {
  const Container container = open_.back();
  open_.pop_back();
  if (!container.isEmpty && (!container.isFlat || container.isBroken)) newLine();
  emit(c);
}

}  // namespace vsa_tools
