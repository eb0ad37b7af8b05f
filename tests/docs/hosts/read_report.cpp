// Checks the code block of the documentation (block.inc): a complete text causes no complaint, and
// a truncated text or a missing file causes one.
#include <cstdio>

#include "complain.h"

namespace {

// Returns how often the code block complains if scene.vsa has these bytes. A null pointer means
// that there is no such file.
int complaintsOf(const char* bytes) {
  std::remove("scene.vsa");
  if (bytes != nullptr) {
    std::FILE* const file = std::fopen("scene.vsa", "wb");
    if (file == nullptr) return -1;
    std::fputs(bytes, file);
    std::fclose(file);
  }
  complaints = 0;
  zn::korvo_sdk::Scene scene;
#include "block.inc"
  return read ? complaints : -1;
}

}  // namespace

int main() {
  const bool isRight = complaintsOf("lamp sun;") == 0 && complaintsOf(nullptr) == 1 &&
                       complaintsOf("lamp sun; \xff") == 1 && complaintsOf("lamp sun; \"cut") == 1;
  return isRight ? 0 : 1;
}
