// Tests of formats that are undefined in C, or that compilers refuse as constants. They must still
// give a text.
#include <gtest/gtest.h>

#include <cstdarg>
#include <string>

#include <vsa/foundation/string.h>
#include "tests/support/text.h"

namespace zn {
namespace {

/// Calls String::formatv(). The compiler does not check the format here, so it may be invalid.
std::string formatted(const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
  const String made = String::formatv(format, arguments);
#pragma GCC diagnostic pop
  va_end(arguments);
  return vsa_tests::text(made);
}

TEST(StringFormatEdges, AnUnknownConversionIsCopied) {
  EXPECT_EQ(formatted("a %y b"), "a %y b");
  EXPECT_EQ(formatted("%-5.3lky"), "%-5.3lky");
  EXPECT_EQ(formatted("%n%n"), "%n%n");
  EXPECT_EQ(formatted("%y %d", 7), "%y 7");
}

TEST(StringFormatEdges, AFormatThatEndsInsideAConversion) {
  EXPECT_EQ(formatted("100%"), "100%");
  EXPECT_EQ(formatted("%5"), "%5");
  EXPECT_EQ(formatted("%-0"), "%-0");
  EXPECT_EQ(formatted("x%."), "x%.");
  EXPECT_EQ(formatted("%ll"), "%ll");
}

TEST(StringFormatEdges, NullAndEmptyTexts) {
  EXPECT_EQ(formatted("<%s>", static_cast<const char*>(nullptr)), "<(null)>");
  EXPECT_EQ(formatted("<%8s>", static_cast<const char*>(nullptr)), "<  (null)>");
  EXPECT_EQ(formatted("<%.0s>", "abc"), "<>");
  EXPECT_EQ(formatted(""), "");
}

TEST(StringFormatEdges, APrecisionFromAnArgument) {
  EXPECT_EQ(formatted("%.*d|", 3, 7), "007|");
  EXPECT_EQ(formatted("%.*d|", -3, 7), "7|");
  EXPECT_EQ(formatted("%.*f|", 0, 2.0), "2|");
}

}  // namespace
}  // namespace zn
