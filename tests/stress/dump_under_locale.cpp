// dump_under_locale LOCALE FILE...: sets the locale, reads the files, and prints the result, log
// and scene of each file. LOCALE is a name for setlocale. "C" is the default locale of a program.
// The output must not depend on the locale, the compiler or its options, which same_everywhere.sh
// checks.
#include <clocale>
#include <cstdio>
#include <exception>
#include <locale>

#include <vsa/model/scene.h>
#include <vsa/parse.h>
#include "tests/support/text.h"
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
  const zn::String text = vsa_tests::string(vsa_tests::contentOf(path));
  zn::korvo_sdk::Scene scene;
  const auto outcome =
      vsa_tools::captureRead([&] { return zn::korvo_sdk::impl::parseString(&scene, text); });
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
