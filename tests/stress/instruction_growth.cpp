// Reads the stress texts in two sizes, of which the second is four times the first.
// instruction_growth.py runs the program under callgrind, which counts the instructions of each
// reading. Unlike times, these counts are nearly the same in each run. Therefore texts of a few
// kilobytes are sufficient to detect a time that grows with the square of the size.
//
// For each reading, callgrind writes a record to its output file. The name of the record is the
// size, a blank, and the name of the stress text.
#include <valgrind/callgrind.h>

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <set>
#include <string>
#include <vector>

#include <vsa/model/scene.h>
#include <vsa/parse.h>
#include "tests/stress/texts/stress_texts.h"
#include "tests/support/silent_sink.h"

namespace vsa_tests {

namespace {

constexpr std::size_t GROWTH = 4;

/// A reading: texts that are read one after another into one scene.
struct Reading {
  std::string name;
  std::vector<zn::String> texts;
};

// Returns the whole text, or each of its lines as a separate text.
std::vector<zn::String> textsOf(const StressText& stressText, std::size_t bytes) {
  const std::string whole = stressText.make(bytes).text;
  if (!stressText.isOneTextPerLine) return {zn::String::copyOf(whole)};
  std::vector<zn::String> lines;
  for (std::size_t begin = 0; begin < whole.size();) {
    const std::size_t end = whole.find('\n', begin);
    lines.push_back(zn::String::copyOf(whole.substr(begin, end - begin)));
    begin = end + 1;
  }
  return lines;
}

std::vector<StressText> oneOrManyTexts() {
  std::vector<StressText> all = stressTexts();
  for (const StressText& stressText : manyTexts()) all.push_back(stressText);
  return all;
}

/// Returns the readings of the stress texts with these names, or of all if there are no names.
std::vector<Reading> readings(std::size_t bytes, const std::set<std::string>& names) {
  std::vector<Reading> all;
  for (const StressText& stressText : oneOrManyTexts()) {
    if (!names.empty() && names.count(stressText.name) == 0) continue;
    for (const std::size_t size : {bytes, GROWTH * bytes}) {
      all.push_back({std::to_string(size) + ' ' + stressText.name, textsOf(stressText, size)});
    }
  }
  return all;
}

void read(const Reading& reading) {
  zn::korvo_sdk::Scene scene;
  for (const zn::String& text : reading.texts) {
    try {
      zn::korvo_sdk::impl::parseString(&scene, text);
    } catch (const std::exception&) {
      // The reading throws if the first three tokens of the text contain an invalid character. Such
      // a reading counts, too.
    }
  }
}

int printNames() {
  for (const StressText& stressText : oneOrManyTexts()) std::puts(stressText.name);
  return 0;
}

void count(const Reading& reading) {
  CALLGRIND_ZERO_STATS;
  CALLGRIND_TOGGLE_COLLECT;
  read(reading);
  CALLGRIND_TOGGLE_COLLECT;
  CALLGRIND_DUMP_STATS_AT(reading.name.c_str());
}

}  // namespace

}  // namespace vsa_tests

/// instruction_growth BYTES [NAME...]: reads the stress texts with these names, or all without
/// names. Without BYTES, prints all names.
int main(int argumentCount, char** arguments) {
  if (argumentCount < 2) return vsa_tests::printNames();
  vsa_tests::SilentSink silent;
  zn::setLogSink(&silent);
  const auto all = vsa_tests::readings(std::strtoul(arguments[1], nullptr, 10),
                                       {arguments + 2, arguments + argumentCount});
  // The tables that are initialised on first use must not be counted.
  vsa_tests::read({"", {zn::String("t n; n.a = vec2(1 2);")}});
  CALLGRIND_START_INSTRUMENTATION;
  for (const vsa_tests::Reading& reading : all) vsa_tests::count(reading);
  CALLGRIND_STOP_INSTRUMENTATION;
  return 0;
}
