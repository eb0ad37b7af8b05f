// Reads a text, and prints its nodes with their inputs, and the problems that were found. Of some
// values, such as strings and arrays, only the type is printed.
//
//   read_text FILE
#include <cstdio>
#include <string>
#include <string_view>

#include <vsa/vsa.h>

namespace {

int lengthOf(std::string_view text) {
  return static_cast<int>(text.size());
}

void print(vsa::InputView input) {
  const std::string_view name = input.name();
  const std::string_view type = vsa::typeName(input.type());
  std::printf("  %.*s: %.*s", lengthOf(name), name.data(), lengthOf(type), type.data());
  if (input.boolean()) std::printf(" %s", *input.boolean() ? "true" : "false");
  if (input.type() == vsa::ValueType::Int)
    std::printf(" %lld", static_cast<long long>(*input.integer()));
  if (input.type() == vsa::ValueType::Real) std::printf(" %g", *input.real());
  if (input.type() == vsa::ValueType::Node) {
    const std::string_view node = input.node() ? input.node().name() : "null";
    std::printf(" %.*s", lengthOf(node), node.data());
  }
  if (const vsa::BufferView buffer = input.buffer(); buffer.problem() == vsa::BufferProblem::None) {
    const std::string_view element = vsa::typeName(buffer.elementType());
    std::printf(" %.*s[%llu]", lengthOf(element), element.data(),
                static_cast<unsigned long long>(buffer.count()));
  }
  if (const vsa::ConnectionView source = input.connection()) {
    const std::string text = std::string(source.node().name()) + "." + std::string(source.output());
    std::printf(" <- %s", text.c_str());
  }
  std::printf("\n");
}

}  // namespace

int main(int count, char** arguments) {
  if (count != 2) {
    std::fprintf(stderr, "usage: read_text FILE\n");
    return 2;
  }
  const vsa::ReadResult result = vsa::readFile(arguments[1]);
  for (const vsa::Diagnostic& found : result.diagnostics) {
    std::fprintf(stderr, "%s: %s\n", vsa::name(found.severity), found.logLine().c_str());
  }
  if (result.status == vsa::ReadStatus::Unreadable) {
    std::fprintf(stderr, "error: %s: %s\n", arguments[1], result.message.c_str());
  }
  for (const vsa::NodeView node : result.scene.nodes()) {
    std::printf("%s %s\n", std::string(node.type()).c_str(), std::string(node.name()).c_str());
    for (const vsa::InputView input : node.inputs()) print(input);
  }
  return result.isComplete() ? 0 : 1;
}
