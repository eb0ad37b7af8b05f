// A minimal host: reads a text into the scene of the library and prints the scene. The library logs
// messages to standard error by default.
//
//   read_text FILE
#include <cstdio>
#include <exception>

#include <vsa/model/scene.h>
#include <vsa/parse.h>

namespace {

using namespace zn::korvo_sdk;

// Returns whether the whole text was read. After an error the scene contains the text before it.
bool read(Scene& scene, const char* path) {
  try {
    const zn::File file = zn::File::open(path);
    const bool isRead = impl::parseVsa(&scene, file, false);
    if (file.failed()) std::fprintf(stderr, "error: %s: %s\n", path, file.error().buf());
    return isRead && !file.failed();
  } catch (const std::exception& error) {
    // An invalid character in the first three tokens of the text, or no memory.
    std::fprintf(stderr, "error: %s\n", error.what());
    return false;
  }
}

void print(Input& input) {
  std::printf("  %s: %s", input.name().buf(), input.typeName().buf());
  switch (input.type()) {
    case AttrType::Bool:
      std::printf(" %s", input.boolean() ? "true" : "false");
      break;
    case AttrType::Int:
      std::printf(" %lld", static_cast<long long>(input.integer()));
      break;
    case AttrType::Real:
      std::printf(" %g", input.real());
      break;
    case AttrType::Node:
      std::printf(" %s", input.node() == nullptr ? "null" : input.node()->name().buf());
      break;
    case AttrType::Buffer:
      std::printf(" %s[%llu]", dataTypeName(input.buffer().type),
                  static_cast<unsigned long long>(input.buffer().count));
      break;
    default:
      break;
  }
  const Output* const source = input.connection();
  if (source != nullptr) {
    std::printf(" <- %s.%s", source->node()->name().buf(), source->name().buf());
  }
  std::printf("\n");
}

void print(const Node& node) {
  std::printf("%s %s\n", node.type().buf(), node.name().buf());
  for (std::uint64_t i = 0; i < node.inputCount(); ++i) print(*node.inputAt(i));
}

}  // namespace

int main(int count, char** arguments) {
  if (count != 2) {
    std::fprintf(stderr, "usage: read_text FILE\n");
    return 2;
  }
  Scene scene;
  const bool isRead = read(scene, arguments[1]);
  for (std::uint64_t slot = 0; slot < scene.nodeSlots(); ++slot) {
    const Node* const node = scene.nodeAt(slot);
    if (node != nullptr) print(*node);
  }
  return isRead ? 0 : 1;
}
