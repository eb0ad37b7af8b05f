// Reads bytes as the JSON files of vsa check: a configuration, a baseline and types. A mistake in a
// file must cause an exception or a problem with a message.
#include <stdexcept>
#include <string>

#include <vsa/types.h>
#include "fuzz/support/check.h"
#include "fuzz/support/memory_file.h"
#include "fuzz/targets.h"
#include "tools/vsa/check/selection/baseline.h"
#include "tools/vsa/check/selection/config.h"

namespace vsa_fuzz {

namespace {

template <class Read>
void expectAnswer(const Read& read) {
  try {
    read();
  } catch (const std::runtime_error& error) {
    if (std::string(error.what()).empty()) fail("an error has no message");
  }
}

}  // namespace

void checkSettings(std::string_view input) {
  const MemoryFile file(input);
  expectAnswer([&] { vsa_tools::LevelTable().apply(vsa_tools::readConfig(file.name())); });
  expectAnswer([&] { vsa_tools::Baseline::read(file.name()).of("a.vsa"); });
  const vsa::TypesResult types = vsa::readTypes(input);
  if (types.isValid() != types.problem.empty()) fail("types are wrong without a problem");
}

}  // namespace vsa_fuzz
