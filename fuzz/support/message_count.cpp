#include "fuzz/support/message_count.h"

#include <cstdio>
#include <cstdlib>

namespace vsa_fuzz {

namespace {

using zn::korvo_sdk::DIAGNOSTIC_COUNT;
using zn::korvo_sdk::DIAGNOSTIC_ROWS;
using zn::korvo_sdk::DiagnosticId;

unsigned long long counts[DIAGNOSTIC_COUNT] = {};

/// Writes the counts at the exit of the process.
class Report {
 public:
  ~Report() {
    const char* const path = std::getenv("VSA_FUZZ_MESSAGES");
    std::FILE* const file = path == nullptr ? nullptr : std::fopen(path, "a");
    if (file == nullptr) return;
    for (const auto& row : DIAGNOSTIC_ROWS) {
      // These two messages are never raised: the scene of the fuzzers throws no errors of its own,
      // and an array of 2^32 elements takes 200 GiB.
      if (row.id == DiagnosticId::HostError) continue;
      if (row.id == DiagnosticId::TooManyArrayElements) continue;
      std::fprintf(file, "%llu %s\n", counts[static_cast<int>(row.id)], row.name);
    }
    std::fclose(file);
  }
};

}  // namespace

void countMessage(DiagnosticId id) {
  static const Report report;
  ++counts[static_cast<int>(id)];
}

}  // namespace vsa_fuzz
