// Tests of String::format: it gives the same text as printf, for texts of any length. The exception
// is a text in which %c prints a NUL: it ends there.
#include <gtest/gtest.h>

#include <climits>
#include <cstdarg>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>

#include <vsa/foundation/string.h>
#include "tests/support/text.h"

namespace zn {
namespace {

using vsa_tests::text;

TEST(StringFormat, Messages) {
  EXPECT_EQ(text(String::format("%s (%d,%d): %s.", "PARSE ERROR", 4, 9, "what")),
            "PARSE ERROR (4,9): what.");
  EXPECT_EQ(text(String::format("INVALID TOKEN (%d,%d): '%c'", 1, 0, '}')),
            "INVALID TOKEN (1,0): '}'");
  EXPECT_EQ(text(String::format("%s[%llu]", "float", ULLONG_MAX)), "float[18446744073709551615]");
  EXPECT_EQ(text(String::format("%d", INT_MIN)), "-2147483648");
  EXPECT_EQ(text(String::format("100%%")), "100%");
  EXPECT_EQ(text(String::format("plain")), "plain");
  EXPECT_EQ(text(String::format("%s", "")), "");
}

// Returns the text that the C library writes.
template <class... Values>
std::string printed(const char* format, Values... values) {
  char buffer[512];
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
#pragma GCC diagnostic ignored "-Wformat-security"
  const int length = std::snprintf(buffer, sizeof buffer, format, values...);
#pragma GCC diagnostic pop
  return std::string(buffer, static_cast<std::size_t>(length));
}

#define EXPECT_AS_PRINTF(...) \
  EXPECT_EQ(text(String::format(__VA_ARGS__)), printed(__VA_ARGS__)) << #__VA_ARGS__

TEST(StringFormat, EveryConversion) {
  EXPECT_AS_PRINTF("%5d|%-5d|%05d|%+d|% d|%.3d", 42, 42, 42, 42, 42, 42);
  EXPECT_AS_PRINTF("%i %u %x %X %#x %o", -1, 7U, 255U, 255U, 255U, 8U);
  EXPECT_AS_PRINTF("%hhd %hd %hhu", static_cast<signed char>(7), static_cast<short>(-7),
                   static_cast<unsigned char>(200));
  EXPECT_AS_PRINTF("%ld %lu %lld %llx", LONG_MIN, ULONG_MAX, LLONG_MIN, ULLONG_MAX);
  EXPECT_AS_PRINTF("%zu %jd %td", SIZE_MAX, INTMAX_MIN, std::ptrdiff_t{-3});
  EXPECT_AS_PRINTF("%f %.2f %10.3f %e %g %G %a", 1.5, 2.345, -1.0, 1e10, 0.0001, 1e-10, 1.0);
  EXPECT_AS_PRINTF("%F %E %A", 1.5, 1e10, 1e-10);
  EXPECT_AS_PRINTF("%Lf %LA", 2.5L, 2.5L);
  EXPECT_AS_PRINTF("%8s|%-8s|%.2s|%.*s", "ab", "ab", "abc", 1, "xyz");
  EXPECT_AS_PRINTF("%*d|%*d", 6, 42, -6, 42);
  EXPECT_AS_PRINTF("%c%3c|%-3c|", 'a', 'b', 'c');
  EXPECT_AS_PRINTF("%p", static_cast<void*>(nullptr));
}

// A negative precision has the same effect as none.
TEST(StringFormat, NegativePrecision) {
  EXPECT_AS_PRINTF("%.*d|%.*s|%.*f", -1, 42, -1, "xyz", -1, 1.5);
}

TEST(StringFormat, LongTexts) {
  const std::string longText(100000, 'x');
  EXPECT_EQ(text(String::format("<%s>", longText.c_str())), "<" + longText + ">");
  EXPECT_EQ(text(String::format("%5000d", 1)).size(), 5000U);
}

TEST(StringFormat, TextIsNotAFormat) {
  EXPECT_EQ(text(String::format("%s", "%s%n%d")), "%s%n%d");
}

TEST(StringFormat, BytesPassUnchanged) {
  EXPECT_EQ(text(String::format("%s", "\xc3\xa9\xff\x01")), "\xc3\xa9\xff\x01");
  EXPECT_EQ(text(String::format("'%c'", static_cast<char>(0xC3))), "'\xc3'");
}

TEST(StringFormat, EndsAtTheFirstNulThatACharacterPrints) {
  EXPECT_EQ(text(String::format("a%cb", '\0')), "a");
  EXPECT_EQ(text(String::format("%c", '\0')), "");
  EXPECT_EQ(text(String::format("a%3cb%cc", '\0', '\0')), "a  ");
  EXPECT_EQ(text(String::format("a%cb%cc", 'x', '\0')), "axb");
  const std::string many(5000, 'm');
  EXPECT_EQ(text(String::format("%s%c%s", many.c_str(), '\0', many.c_str())), many);
  EXPECT_EQ(text(String::format("a%c%s", '\0', many.c_str())), "a");
}

String stringOf(const char* format, ...) VSA_PRINTF(1, 2);
String stringOf(const char* format, ...) {
  va_list args;
  va_start(args, format);
  const String once = String::formatv(format, args);
  va_end(args);
  return once;
}

TEST(StringFormat, FromAnArgumentList) {
  EXPECT_EQ(text(stringOf("%s %d", "a", 1)), "a 1");
}

}  // namespace
}  // namespace zn
