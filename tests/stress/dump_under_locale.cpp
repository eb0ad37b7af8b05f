// Reads files under a locale that the host has set, and prints what came of each: result, log and
// scene. What it prints must not depend on the locale, the compiler or its options; see
// same_everywhere.sh.
//
//   dump_under_locale LOCALE FILE...     LOCALE as for setlocale; "C" is no locale
#include <clocale>
#include <cstdio>
#include <exception>
#include <fstream>
#include <iterator>
#include <locale>
#include <string>

#include <vsa/model/scene.h>
#include <vsa/parse.h>
#include "tools/scene_text/scene_dump.h"

namespace {

bool setLocale(const char* name) {
  if (std::setlocale(LC_ALL, name) == nullptr) return false;
  try {
    std::locale::global(std::locale(name));
  } catch (const std::exception&) {
    return false;
  }
  return true;
}

void dump(const char* path, vsa_tools::TextOutput& out) {
  std::ifstream in(path, std::ios::binary);
  const std::string text{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
  zn::korvo_sdk::Scene scene;
  const auto outcome = vsa_tools::captureRead(
      [&] { return zn::korvo_sdk::impl::parseString(&scene, zn::String::copyOf(text)); });
  out.put(path);
  out.put('\n');
  vsa_tools::dumpCase(outcome, scene, out);
  vsa_tools::dumpJson(outcome, scene, out);
}

}  // namespace

int main(int count, char** arguments) {
  if (count < 3) {
    std::fprintf(stderr, "usage: dump_under_locale LOCALE FILE...\n");
    return 2;
  }
  if (!setLocale(arguments[1])) {
    std::fprintf(stderr, "dump_under_locale: no locale %s\n", arguments[1]);
    return 77;
  }
  vsa_tools::TextOutput out(stdout);
  for (int i = 2; i < count; ++i) dump(arguments[i], out);
  return out.flush() ? 0 : 1;
}
