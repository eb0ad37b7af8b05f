#include "fuzz/support/literal_memory.h"

#include <unordered_set>

extern "C" {
void* __real_calloc(std::size_t count, std::size_t size);
void __real_free(void* block);
void* __wrap_calloc(std::size_t count, std::size_t size);
void __wrap_free(void* block);
}

namespace {

/// Returns the blocks from calloc that are not freed. The set is never destroyed, because free may
/// be called until the process ends.
std::unordered_set<void*>& blocks() {
  static auto& all = *new std::unordered_set<void*>;
  return all;
}

}  // namespace

void* __wrap_calloc(std::size_t count, std::size_t size) {
  if (size != 0 && count > vsa_fuzz::MAX_LITERAL_BYTES / size) return nullptr;
  void* const block = __real_calloc(count, size);
  if (block != nullptr) blocks().insert(block);
  return block;
}

void __wrap_free(void* block) {
  if (!blocks().empty()) blocks().erase(block);
  __real_free(block);
}

namespace vsa_fuzz {

void freeLeakedLiterals() {
  for (void* const block : blocks()) __real_free(block);
  blocks().clear();
}

}  // namespace vsa_fuzz
