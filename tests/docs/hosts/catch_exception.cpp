// Checks that an invalid character in the first three tokens is thrown as an exception.
#include <cstdio>
#include <exception>

#include "complain.h"

int main() {
  std::FILE* const stray = std::fopen("stray.vsa", "wb");
  if (stray == nullptr) return 1;
  std::fputs("} lamp sun;", stray);
  std::fclose(stray);
  const zn::File file = zn::File::open("stray.vsa");
  zn::korvo_sdk::Scene scene;
  bool read = false;
#include "block.inc"
  return complaints == 1 && !read ? 0 : 1;
}
