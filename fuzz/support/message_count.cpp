// A message is recognised by its format: the literal parts in their order, a number where a number
// is printed, anything for a text. Of several formats that fit, the one with the most literal
// characters is it. What a message quotes is looked at in the same way, so that the frames and what
// stands in them both count.
#include "fuzz/support/message_count.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "vsa/diagnostics/messages.h"

namespace vsa_fuzz {

namespace {

using std::string_view;

struct Row {
  const char* name;
  string_view format;
  unsigned long long count = 0;
};

using namespace zn::korvo_sdk::impl;

Row rows[] = {
// Every constant of messages.h; the build lists them.
#define VSA_MESSAGE(NAME) {#NAME, NAME},
#include "message_rows.inc"
#undef VSA_MESSAGE
    // What the services below the reader, and the library's own scene, say through it.
    {"(compressed: empty)", "compressed data is empty"},
    {"(compressed: bad character)",
     "compressed data holds a character that is not a hexadecimal digit"},
    {"(compressed: ends early)", "compressed data ends early"},
    {"(compressed: corrupt)", "compressed data is corrupt"},
    {"(compressed: checksum)", "compressed data fails its checksum"},
    {"(compressed: too large)", "compressed data is larger than the buffer"},
    {"(scene: empty elements)",
     "array %s cannot grow past the scene's limit of %llu empty elements"},
    {"(scene: depth)", "input %s is nested deeper than %llu levels"},
    {"(scene: node)", "Cannot assign node %s to %s of type %s."},
};

/// The format's next literal part and the conversion behind it ('\0' at the format's end).
struct Part {
  string_view literal;
  char conversion;
};

Part takePart(string_view& format) {
  const std::size_t percent = std::min(format.find('%'), format.size());
  const string_view literal = format.substr(0, percent);
  if (percent == format.size()) {
    format = {};
    return {literal, '\0'};
  }
  const std::size_t conversion = format.find_first_of("scdu", percent);
  const char kind = format[conversion];
  format.remove_prefix(conversion + 1);
  return {literal, kind};
}

bool isNumber(string_view text) {
  return !text.empty() && text.find_first_not_of("-0123456789") == string_view::npos;
}

/// The texts printed into `format`, when `text` came of it.
bool quoted(string_view format, string_view text, std::vector<string_view>& texts) {
  Part part = takePart(format);
  if (!text.starts_with(part.literal)) return false;
  text.remove_prefix(part.literal.size());
  while (part.conversion != '\0') {
    const char kind = part.conversion;
    part = takePart(format);
    const bool isLast = part.conversion == '\0';
    if (isLast && !text.ends_with(part.literal)) return false;
    const std::size_t end = isLast ? text.size() - part.literal.size() : text.find(part.literal);
    if (end == string_view::npos) return false;
    const string_view argument = text.substr(0, end);
    if ((kind == 'd' || kind == 'u') && !isNumber(argument)) return false;
    if (kind == 's') texts.push_back(argument);
    text.remove_prefix(end + part.literal.size());
  }
  return text.empty();
}

std::size_t literalLength(string_view format) {
  std::size_t length = 0;
  while (!format.empty()) length += takePart(format).literal.size();
  return length;
}

/// Writes the counts when the process exits.
class Report {
 public:
  ~Report() {
    const char* const path = std::getenv("VSA_FUZZ_MESSAGES");
    std::FILE* const file = path == nullptr ? nullptr : std::fopen(path, "a");
    if (file == nullptr) return;
    for (const Row& row : rows) std::fprintf(file, "%llu %s\n", row.count, row.name);
    std::fclose(file);
  }
};

}  // namespace

void countMessage(string_view text) {
  static const Report report;
  Row* best = nullptr;
  std::vector<string_view> inBest;
  for (Row& row : rows) {
    std::vector<string_view> texts;
    if (!quoted(row.format, text, texts)) continue;
    if (best != nullptr && literalLength(row.format) < literalLength(best->format)) continue;
    best = &row;
    inBest.swap(texts);
  }
  if (best == nullptr) return;
  ++best->count;
  for (const string_view quotedText : inBest) countMessage(quotedText);
}

}  // namespace vsa_fuzz
