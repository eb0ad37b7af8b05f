// Loads the meshes of a text into arrays of an engine. A mesh is a node with buffers `points` and
// `indices`. No other value of the text stays in memory.
//
//   mesh_loader FILE
#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <map>
#include <string>
#include <vector>

#include <vsa/vsa.h>

// A mesh of the engine.
struct Mesh {
  std::vector<std::array<float, 3>> points;
  std::vector<std::uint32_t> indices;
};

// A scene that copies the two buffers of each mesh. After each call of onValue, HostScene frees the
// memory of the value.
class MeshLoader final : public vsa::HostScene {
 public:
  std::map<std::string, Mesh> meshes;

 private:
  void onValue(const vsa::HostInput& input, const zn::korvo_sdk::AttrData& value) override {
    if (value.type != vsa::ValueType::Buffer) return;
    const vsa::BufferView buffer(value.payload.buffer);
    const std::string node(input.node().nodeName());
    if (input.pathInNode() == "points") {
      const auto points = buffer.as<float, 3>();
      if (!points.message().empty())
        std::printf("%s: %s\n", node.c_str(), points.message().c_str());
      meshes[node].points.assign(points.begin(), points.end());
    } else if (input.pathInNode() == "indices") {
      const auto indices = buffer.as<std::uint32_t>();
      meshes[node].indices.assign(indices.begin(), indices.end());
    }
  }
};

int main(int count, char** arguments) {
  MeshLoader loader;
  const vsa::ReadOutcome outcome = vsa::readFileInto(loader, count == 2 ? arguments[1] : nullptr);
  for (const vsa::Diagnostic& found : outcome.diagnostics)
    std::fprintf(stderr, "%s\n", found.logLine().c_str());
  for (const auto& [name, mesh] : loader.meshes) {
    std::array<float, 3> high{};
    for (const auto& point : mesh.points) {
      for (std::size_t i = 0; i < 3; ++i) high[i] = std::max(high[i], point[i]);
    }
    std::printf("%s: %zu points up to %g %g %g, %zu triangles\n", name.c_str(), mesh.points.size(),
                high[0], high[1], high[2], mesh.indices.size() / 3);
  }
  if (outcome.status == vsa::ReadStatus::Unreadable)
    std::fprintf(stderr, "%s\n", outcome.message.c_str());
  return outcome.isComplete() ? 0 : 1;
}
