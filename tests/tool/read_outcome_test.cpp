// Tests of captureRead(): the outcome of an entry point that throws.
#include "tools/scene_text/read_outcome.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace vsa_tools {

namespace {

TEST(CaptureReadTest, AnEntryPointThatThrowsHasTheResultFalse) {
  const ReadOutcome error = captureRead([]() -> bool { throw std::runtime_error("no memory"); });
  EXPECT_FALSE(error.result);
  EXPECT_EQ(error.escaped, "no memory");
  EXPECT_FALSE(error.escapedDiagnostic.has_value());
  const ReadOutcome other = captureRead([]() -> bool { throw 1; });
  EXPECT_FALSE(other.result);
  EXPECT_EQ(other.escaped, "unknown exception");
}

}  // namespace

}  // namespace vsa_tools
