// Generates small statements: nodes, links and strings.
#include <algorithm>
#include <array>
#include <charconv>

#include "bench/scenes/random.h"
#include "bench/scenes/recorder.h"
#include "bench/scenes/text_generator.h"

namespace bench {
namespace {

void appendFixed(std::string& to, double value, int decimals) {
  char digits[64];
  const auto end =
      std::to_chars(digits, digits + sizeof digits, value, std::chars_format::fixed, decimals);
  to.append(digits, end.ptr);
}

std::string fixed(double value, int decimals) {
  std::string digits;
  appendFixed(digits, value, decimals);
  return digits;
}

// The types of the inputs of the generated nodes.
enum class Kind { Bool, Int, Real, Name, Path, Vec2, Vec3, Pos3, Quat, Rgba };

struct InputRow {
  const char* name;
  Kind kind;
};

struct NodeRow {
  const char* type;
  std::array<InputRow, 8> inputs;
};

constexpr NodeRow NODE_ROWS[] = {
    {"surface",
     {{{"visible", Kind::Bool},
       {"samples", Kind::Int},
       {"roughness", Kind::Real},
       {"label", Kind::Name},
       {"offset", Kind::Vec3},
       {"tint", Kind::Rgba},
       {"metalness", Kind::Real},
       {"twoSided", Kind::Bool}}}},
    {"light",
     {{{"enabled", Kind::Bool},
       {"shadowSamples", Kind::Int},
       {"intensity", Kind::Real},
       {"color", Kind::Rgba},
       {"position", Kind::Pos3},
       {"direction", Kind::Vec3},
       {"group", Kind::Name},
       {"coneAngle", Kind::Real}}}},
    {"texture",
     {{{"fileName", Kind::Path},
       {"width", Kind::Int},
       {"height", Kind::Int},
       {"scale", Kind::Vec2},
       {"gamma", Kind::Real},
       {"mirror", Kind::Bool},
       {"border", Kind::Rgba},
       {"channel", Kind::Name}}}},
    {"transform",
     {{{"translate", Kind::Pos3},
       {"rotate", Kind::Quat},
       {"scale", Kind::Vec3},
       {"visible", Kind::Bool},
       {"layer", Kind::Int},
       {"label", Kind::Name},
       {"pivot", Kind::Vec3},
       {"opacity", Kind::Real}}}},
};

constexpr const char* WORDS[] = {
    "light",  "surface", "of",      "the",      "metal",
    "and",    "wood",    "grain",   "left",     "front",
    "panel",  "studio",  "camera",  "with",     "softbox",
    "warm",   "blue",    "for",     "render",   "pass",
    "final",  "draft",   "texture", "material", "gl\xC3\xA4nzend",
    "base",   "coat",    "rough",   "edge",     "chrome",
    "handle", "version", "from",    "scan",     "caf\xC3\xA9",
};

const char* word(Random& random) {
  return WORDS[random.below(std::size(WORDS))];
}

std::string sentence(size_t characters, Random& random) {
  std::string text = word(random);
  while (text.size() < characters) text.append(" ").append(word(random));
  return text;
}

std::string tupleDigits(size_t count, double low, double high, Random& random) {
  std::string digits;
  for (size_t i = 0; i < count; ++i) {
    if (i > 0) digits += ' ';
    appendFixed(digits, random.real(low, high), static_cast<int>(random.between(1, 7)));
  }
  return digits;
}

std::string imagePath(Random& random) {
  return std::string("textures/") + word(random) + "/" + numbered(word(random), random.below(999)) +
         ".png";
}

void addInput(Recorder& scene, const InputRow& input, Random& random) {
  switch (input.kind) {
    case Kind::Bool:
      return scene.boolean(input.name, random.below(2) == 0);
    case Kind::Int:
      return scene.integer(input.name, static_cast<int64_t>(random.below(5000)) - 200);
    case Kind::Real:
      return scene.real(input.name,
                        fixed(random.real(-10, 10), static_cast<int>(random.between(1, 9))));
    case Kind::Name:
      return scene.string(input.name, sentence(random.between(4, 24), random));
    case Kind::Path:
      return scene.string(input.name, imagePath(random));
    case Kind::Vec2:
      return scene.tuple(input.name, "vec2", tupleDigits(2, 0, 8, random));
    case Kind::Vec3:
      return scene.tuple(input.name, "vec3", tupleDigits(3, -1, 1, random));
    case Kind::Pos3:
      return scene.tuple(input.name, "pos3", tupleDigits(3, -100, 100, random));
    case Kind::Quat:
      return scene.tuple(input.name, "quat", tupleDigits(4, -1, 1, random));
    case Kind::Rgba:
      return scene.tuple(input.name, "rgba", tupleDigits(4, 0, 1, random));
  }
}

void addInputs(Recorder& scene, const NodeRow& row, Random& random) {
  for (const InputRow& input : row.inputs) addInput(scene, input, random);
}

// Returns the row of a node of `mixed`. The row depends only on the index of the node. A link to a
// later node can therefore be written before the node.
const NodeRow& rowOf(size_t index) {
  return NODE_ROWS[index % std::size(NODE_ROWS)];
}

std::string nameAt(size_t index) {
  return numbered(rowOf(index).type, index);
}

// Returns a path with backslashes. Every format with strings requires escape sequences for them.
std::string filePath(Random& random) {
  std::string path = std::string("D:/projects/") + word(random) + "/" + imagePath(random);
  std::replace(path.begin(), path.end(), '/', '\\');
  return path;
}

std::string script(Random& random) {
  std::string text;
  for (size_t line = random.between(3, 12); line > 0; --line) {
    text +=
        "set(\"" + std::string(word(random)) + "\", " + std::to_string(random.below(100)) + ")\n";
  }
  return text;
}

}  // namespace

Text nodes(size_t statements, Format format, uint64_t seed) {
  Recorder scene(format);
  Random random(seed);
  for (size_t i = 0; i * 9 < statements; ++i) {
    const NodeRow& row = NODE_ROWS[random.below(std::size(NODE_ROWS))];
    scene.beginNode(row.type, numbered(row.type, i));
    addInputs(scene, row, random);
    scene.endNode();
  }
  return scene.finish();
}

Text mixed(size_t statements, Format format, uint64_t seed) {
  Recorder scene(format);
  Random random(seed);
  const size_t count = statements / 13 + 1;
  for (size_t i = 0; i < count; ++i) {
    scene.comment(sentence(random.between(20, 80), random));
    scene.beginNode(rowOf(i).type, nameAt(i));
    addInputs(scene, rowOf(i), random);
    scene.tuple("matrix", "mat4", tupleDigits(16, -2, 2, random));
    scene.reference("material", nameAt(random.below(count)));
    scene.connection("input", nameAt(random.below(count)), "outColor");
    scene.endNode();
  }
  return scene.finish();
}

Text links(size_t statements, Format format, uint64_t seed) {
  Recorder scene(format);
  Random random(seed);
  const size_t count = std::max<size_t>(1, statements / 3);
  for (size_t i = 0; i < count; ++i) {
    scene.beginNode("shader", numbered("shader", i));
    scene.reference("material", numbered("shader", random.between(i + 1, count)));
    scene.connection("color", numbered("shader", random.between(i + 1, count)), "outColor");
    scene.endNode();
  }
  scene.beginNode("shader", numbered("shader", count));
  scene.endNode();
  return scene.finish();
}

Text indexed(size_t statements, Format format, uint64_t seed) {
  Recorder scene(format);
  Random random(seed);
  for (size_t i = 0; i * 9 < statements; ++i) {
    scene.beginNode("mesh", numbered("mesh", i));
    for (size_t element = 0; element < 8; ++element) {
      const std::string input = "weights[" + std::to_string(element) + "]";
      scene.integer(input, static_cast<int64_t>(random.below(5000)));
    }
    scene.endNode();
  }
  return scene.finish();
}

Text text(size_t bytes, Format format, uint64_t seed) {
  Recorder scene(format);
  Random random(seed);
  size_t written = 0;
  for (size_t i = 0; written < bytes; ++i) {
    const std::string strings[] = {sentence(random.between(8, 40), random),
                                   sentence(random.between(100, 2000), random), filePath(random),
                                   script(random)};
    for (size_t line = random.between(1, 4); line > 0; --line) {
      const std::string remark = sentence(random.between(20, 100), random);
      scene.comment(remark);
      written += remark.size() + 3;
    }
    scene.beginNode("note", numbered("note", i));
    scene.string("title", strings[0]);
    scene.string("body", strings[1]);
    scene.string("source", strings[2]);
    scene.string("script", strings[3]);
    scene.endNode();
    for (const std::string& part : strings) written += part.size() + 20;
  }
  return scene.finish();
}

Text shortText(size_t bytes, Format format, uint64_t seed) {
  Recorder scene(format);
  Random random(seed);
  size_t written = 0;
  for (size_t i = 0; written < bytes; ++i) {
    const std::string strings[] = {sentence(random.between(20, 200), random),
                                   sentence(random.between(20, 200), random),
                                   random.below(4) == 0 ? filePath(random) : imagePath(random)};
    const std::string remark = sentence(random.between(20, 100), random);
    scene.comment(remark);
    scene.beginNode("note", numbered("note", i));
    scene.string("title", strings[0]);
    scene.string("body", strings[1]);
    scene.string("source", strings[2]);
    scene.endNode();
    written += remark.size() + 3;
    for (const std::string& part : strings) written += part.size() + 20;
  }
  return scene.finish();
}

}  // namespace bench
