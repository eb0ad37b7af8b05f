#include "tools/vsa/check/text/decimal_commas.h"

#include <algorithm>

#include "tools/vsa/check/text/digits.h"

namespace vsa_tools {

namespace {

char byteAt(std::string_view text, std::size_t offset) {
  return offset < text.size() ? text[offset] : '\0';
}

bool isBetweenDigits(std::string_view text, std::size_t comma) {
  return comma > 0 && isDigit(text[comma - 1]) && isDigit(byteAt(text, comma + 1));
}

// Returns whether the digits before `end` are a whole integer, and not a part of another number.
bool isIntegerBefore(std::string_view text, std::size_t end) {
  std::size_t begin = end;
  while (begin > 0 && isDigit(text[begin - 1])) --begin;
  if (begin > 0 && text[begin - 1] == '-') --begin;
  const char before = begin > 0 ? text[begin - 1] : '\0';
  if (before == ',') return !isBetweenDigits(text, begin - 1);
  return std::string_view(".eE+-_").find(before) == std::string_view::npos;
}

bool isFractionAt(std::string_view text, std::size_t begin) {
  const std::size_t end = std::min(text.find_first_not_of("0123456789", begin), text.size());
  return byteAt(text, end) != '.' && !(byteAt(text, end) == ',' && isBetweenDigits(text, end));
}

}  // namespace

bool isDecimalComma(std::string_view text, std::size_t at) {
  return at < text.size() && text[at] == ',' && isBetweenDigits(text, at) &&
         isIntegerBefore(text, at) && isFractionAt(text, at + 1);
}

bool hasDecimalCommas(std::string_view list, std::size_t numbers) {
  if (list.find('.') != std::string_view::npos) return false;
  std::size_t commas = 0;
  for (std::size_t i = list.find(','); i != list.npos; i = list.find(',', i + 1)) {
    if (!isBetweenDigits(list, i)) continue;
    if (!isDecimalComma(list, i)) return false;
    ++commas;
  }
  return commas > 0 && numbers == 2 * commas;
}

std::string withDecimalPoints(std::string_view list) {
  std::string corrected(list);
  for (std::size_t i = list.find(','); i != list.npos; i = list.find(',', i + 1)) {
    if (isDecimalComma(list, i)) corrected[i] = '.';
  }
  return corrected;
}

}  // namespace vsa_tools
