// planted_leak HOW TEXT: reads TEXT into the library's scene. If HOW is "kept", destroys the scene.
// If HOW is "lost", frees only the memory of the scene object without calling its destructor, so
// that everything that the scene owns leaks.
#include <cstdlib>
#include <cstring>
#include <new>
#include <thread>

#include <vsa/model/scene.h>
#include <vsa/parse.h>
#include "tests/support/silent_sink.h"

namespace {

using zn::korvo_sdk::Scene;

void read(Scene& scene, const char* text) {
  vsa_tests::SilentSink silent;
  zn::setLogSink(&silent);
  zn::korvo_sdk::impl::parseString(&scene, zn::String::copyOf(text));
  zn::setLogSink(nullptr);
}

void readAndKeep(const char* text) {
  Scene scene;
  read(scene, text);
}

void readAndLose(const char* text) {
  void* const memory = std::malloc(sizeof(Scene));
  read(*new (memory) Scene, text);
  std::memset(memory, 0, sizeof(Scene));
  std::free(memory);
}

}  // namespace

int main(int argumentCount, char** arguments) {
  if (argumentCount != 3) return 2;
  const bool isKept = std::strcmp(arguments[1], "kept") == 0;
  // The text is read in another thread. A pointer that remained in a register or on the stack of
  // this thread would hide a leak.
  std::thread(isKept ? readAndKeep : readAndLose, arguments[2]).join();
  return 0;
}
