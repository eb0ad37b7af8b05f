// The generators. Each calls a writer through a Recorder, which computes the expected values.
#include "bench/scenes/text_generator.h"

#include <zlib.h>

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <stdexcept>

#include "bench/scenes/random.h"

namespace bench {
namespace {

template <class Number>
Number numberFrom(std::string_view digits) {
  Number value{};
  std::from_chars(digits.data(), digits.data() + digits.size(), value);
  return value;
}

std::string numbered(const char* stem, size_t index) {
  char name[64];
  std::snprintf(name, sizeof name, "%s_%06zu", stem, index);
  return name;
}

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

// Calls the writer and updates the expected values.
class Recorder {
 public:
  explicit Recorder(Format format) : writer(makeWriter(format)) {
    if (format == Format::Vsa) comments(2);  // version and time
  }

  void comment(std::string_view text) {
    writer->comment(text);
    comments(1);
  }

  void beginNode(std::string_view type, std::string_view name) {
    writer->beginNode(type, name);
    ++expected.nodes;
    ++expected.statements;
  }

  void endNode() { writer->endNode(); }

  void boolean(std::string_view input, bool value) {
    writer->boolean(input, value);
    assigned(value ? 1 : 0);
  }

  void integer(std::string_view input, int64_t value) {
    writer->integer(input, value);
    assigned(static_cast<uint64_t>(value));
  }

  void real(std::string_view input, std::string_view digits) {
    writer->real(input, digits);
    assigned(std::bit_cast<uint64_t>(numberFrom<double>(digits)));
  }

  void string(std::string_view input, std::string_view text) {
    writer->string(input, text);
    assigned(0);
    ++expected.strings;
    expected.stringBytes += text.size();
  }

  void tuple(std::string_view input, std::string_view keyword, std::string_view digits) {
    writer->tuple(input, keyword, digits);
    assigned(0);
    eachNumber(digits, [&](std::string_view number, size_t) {
      expected.scalarSum += std::bit_cast<uint64_t>(numberFrom<double>(number));
    });
  }

  void floats(std::string_view input, std::string_view keyword, size_t width,
              const NumberList& list) {
    buffer(input, keyword, width, list);
    eachNumber(list.digits, [&](std::string_view number, size_t) {
      expected.bufferSum += std::bit_cast<uint32_t>(numberFrom<float>(number));
    });
  }

  void ints(std::string_view input, const NumberList& list) {
    buffer(input, "int32", 1, list);
    eachNumber(list.digits, [&](std::string_view number, size_t) {
      expected.bufferSum += static_cast<uint32_t>(numberFrom<int32_t>(number));
    });
  }

  void image(std::string_view input, const std::string& bytes) {
    const std::string stream = zlibStream(bytes);
    writer->compressed(input, "rgba8", bytes.size() / 4, stream);
    assigned(0);
    expected.numbers += bytes.size();
    expected.elementBytes += bytes.size();
    expected.largestLiteral = std::max(expected.largestLiteral, 2 * stream.size());
    for (const char byte : bytes) expected.bufferSum += static_cast<unsigned char>(byte);
  }

  void reference(std::string_view input, std::string_view node) {
    writer->reference(input, node);
    assigned(0);
    ++expected.references;
  }

  void connection(std::string_view input, std::string_view node, std::string_view output) {
    writer->connection(input, node, output);
    assigned(0);
    ++expected.connections;
  }

  Text finish() { return {writer->finish(), expected}; }

  // Characters of all numbers so far. The size of a scene is measured by it, so that it is the same
  // in every format.
  size_t listCharacters = 0;

 private:
  void comments(size_t count) {
    expected.comments += count;
    expected.statements += count;
  }

  void assigned(uint64_t sum) {
    ++expected.statements;
    ++expected.inputs;
    expected.scalarSum += sum;
  }

  void buffer(std::string_view input, std::string_view keyword, size_t width,
              const NumberList& list) {
    writer->buffer(input, keyword, width, list);
    assigned(0);
    expected.numbers += list.componentCount;
    expected.elementBytes += 4 * list.componentCount;
    expected.largestLiteral = std::max(expected.largestLiteral, list.digits.size());
    listCharacters += list.digits.size();
  }

  std::unique_ptr<SceneWriter> writer;
  Expected expected;
};

struct Vec3 {
  double x, y, z;
};

// A float as exporters print it, with 6 to 9 significant digits and without trailing zeros. The
// number of digits is random for each number, as in real scenes: constant lengths would favour a
// reader that predicts them.
void appendFloat(NumberList& list, double value, Random& random) {
  char digits[64];
  const auto end =
      std::to_chars(digits, digits + sizeof digits, static_cast<float>(value),
                    std::chars_format::general, static_cast<int>(random.between(6, 9)));
  if (list.componentCount++ > 0) list.digits += ' ';
  list.digits.append(digits, end.ptr);
}

void appendVec3(NumberList& list, const Vec3& value, Random& random) {
  for (const double component : {value.x, value.y, value.z}) appendFloat(list, component, random);
}

Vec3 normalized(Vec3 v) {
  const double length = std::sqrt(v.x * v.x + v.y * v.y + v.z * v.z);
  return {v.x / length, v.y / length, v.z / length};
}

// A curved surface of columns by rows of vertices with a random place and rotation.
struct Mesh {
  NumberList points, normals, uvs, indices;
};

Vec3 rotated(Vec3 v, double sine, double cosine) {
  return {cosine * v.x - sine * v.z, v.y, sine * v.x + cosine * v.z};
}

void appendVertices(Mesh& mesh, size_t columns, size_t rows, Random& random) {
  const Vec3 place{random.real(-50, 50), random.real(-5, 5), random.real(-50, 50)};
  const double size = random.real(0.5, 20), angle = random.real(0, 6.283185307179586);
  const double sine = std::sin(angle), cosine = std::cos(angle);
  for (size_t row = 0; row < rows; ++row) {
    for (size_t column = 0; column < columns; ++column) {
      const double u = static_cast<double>(column) / static_cast<double>(columns - 1);
      const double v = static_cast<double>(row) / static_cast<double>(rows - 1);
      const double jitter = random.real(-0.01, 0.01);
      const double height = 0.3 * std::sin(7 * u) * std::cos(5 * v) + jitter;
      const Vec3 point = rotated({size * (u - 0.5), size * height, size * (v - 0.5)}, sine, cosine);
      const Vec3 normal = rotated(normalized({-2.1 * std::cos(7 * u) * std::cos(5 * v) + jitter, 1,
                                              1.5 * std::sin(7 * u) * std::sin(5 * v) - jitter}),
                                  sine, cosine);
      appendVec3(mesh.points, {point.x + place.x, point.y + place.y, point.z + place.z}, random);
      appendVec3(mesh.normals, normal, random);
      appendFloat(mesh.uvs, std::clamp(u + jitter / 100, 0.0, 1.0), random);
      appendFloat(mesh.uvs, std::clamp(v - jitter / 100, 0.0, 1.0), random);
    }
  }
}

void appendInt(NumberList& list, int64_t value) {
  if (list.componentCount++ > 0) list.digits += ' ';
  list.digits += std::to_string(value);
}

void appendTriangles(Mesh& mesh, size_t columns, size_t rows) {
  for (size_t row = 0; row + 1 < rows; ++row) {
    for (size_t column = 0; column + 1 < columns; ++column) {
      const size_t corner = row * columns + column;
      for (const size_t vertex : {corner, corner + columns, corner + 1, corner + 1,
                                  corner + columns, corner + columns + 1}) {
        appendInt(mesh.indices, static_cast<int64_t>(vertex));
      }
    }
  }
}

void addMesh(Recorder& scene, size_t index, size_t vertexCount, Random& random) {
  const size_t columns = std::max<size_t>(2, static_cast<size_t>(std::sqrt(vertexCount)));
  const size_t rows = std::max<size_t>(2, vertexCount / columns);
  Mesh mesh;
  appendVertices(mesh, columns, rows, random);
  appendTriangles(mesh, columns, rows);
  scene.beginNode("mesh", numbered("mesh", index));
  scene.floats("points", "vec3f", 3, mesh.points);
  scene.floats("normals", "vec3f", 3, mesh.normals);
  scene.floats("uvs", "vec2f", 2, mesh.uvs);
  scene.ints("indices", mesh.indices);
  scene.endNode();
}

// The inputs of a node type.
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

// A path with backslashes, which every format escapes.
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

NumberList nextFloats(size_t count, Random& random) {
  NumberList list;
  for (size_t i = 0; i < count; ++i) {
    const double range = random.below(2) == 0 ? 1 : 100;
    appendFloat(list, random.real(-range, range), random);
  }
  return list;
}

NumberList nextInts(size_t count, Random& random) {
  NumberList list;
  for (size_t i = 0; i < count; ++i) {
    constexpr uint64_t RANGES[] = {100, 10000, 1000000, 100000000};
    const auto value =
        static_cast<int64_t>(random.next() % RANGES[random.below(std::size(RANGES))]);
    appendInt(list, random.below(8) == 0 ? -value : value);
  }
  return list;
}

Text listScene(size_t count, uint64_t seed, void (*add)(Recorder&, size_t, Random&)) {
  Recorder scene(Format::Vsa);
  Random random(seed);
  for (size_t first = 0; first < count; first += LIST_LENGTH) {
    scene.beginNode("curve", numbered("curve", first / LIST_LENGTH));
    add(scene, std::min(LIST_LENGTH, count - first), random);
    scene.endNode();
  }
  return scene.finish();
}

}  // namespace

Text geo(size_t bytes, Format format, uint64_t seed) {
  constexpr size_t CHARACTERS_PER_VERTEX = 95;  // of VSA text, approximately
  Recorder scene(format);
  Random random(seed);
  for (size_t mesh = 0; scene.listCharacters < bytes; ++mesh) {
    const size_t left = (bytes - scene.listCharacters) / CHARACTERS_PER_VERTEX + 1;
    addMesh(scene, mesh, std::min(random.between(200, 9000), left), random);
  }
  return scene.finish();
}

Text nodes(size_t statements, Format format, uint64_t seed) {
  Recorder scene(format);
  Random random(seed);
  for (size_t i = 0; i * 9 < statements; ++i) {
    const NodeRow& row = NODE_ROWS[random.below(std::size(NODE_ROWS))];
    scene.beginNode(row.type, numbered(row.type, i));
    for (const InputRow& input : row.inputs) addInput(scene, input, random);
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

Text compressed(size_t bytes, Format format, uint64_t seed) {
  constexpr size_t IMAGE_BYTES = size_t{4} * 512 * 512;
  Recorder scene(format);
  Random random(seed);
  size_t written = 0;
  for (size_t i = 0; written < bytes; ++i) {
    const size_t size = std::min(IMAGE_BYTES, (bytes - written + 3) / 4 * 4);
    scene.beginNode("texture", numbered("texture", i));
    scene.image("pixels", imageBytes(size, random.next()));
    scene.endNode();
    written += size;
  }
  return scene.finish();
}

NumberList floatNumbers(size_t count, uint64_t seed) {
  Random random(seed);
  return nextFloats(count, random);
}

NumberList intNumbers(size_t count, uint64_t seed) {
  Random random(seed);
  return nextInts(count, random);
}

Text floatLists(size_t count, uint64_t seed) {
  return listScene(count, seed, [](Recorder& scene, size_t length, Random& random) {
    scene.floats("keys", "float", 1, nextFloats(length, random));
  });
}

Text intLists(size_t count, uint64_t seed) {
  return listScene(count, seed, [](Recorder& scene, size_t length, Random& random) {
    scene.ints("frames", nextInts(length, random));
  });
}

std::string imageBytes(size_t bytes, uint64_t seed) {
  Random random(seed);
  std::string image(bytes, '\0');
  const size_t width = 512;
  const size_t period = random.between(20, 90);
  for (size_t i = 0; i < bytes; ++i) {
    const size_t pixel = i / 4, x = pixel % width, y = pixel / width;
    const bool isEdge = (x / period + y / period) % 2 == 0;
    const size_t noise = isEdge ? random.below(6) : 0;
    const size_t channel = i % 4;
    const size_t value = channel == 3 ? 255 : (x * (channel + 1) / 4 + y / 3 + noise) & 255;
    image[i] = static_cast<char>(value);
  }
  return image;
}

std::string zlibStream(const std::string& bytes) {
  uLongf size = compressBound(bytes.size());
  std::string stream(size, '\0');
  if (compress(reinterpret_cast<Bytef*>(stream.data()), &size,
               reinterpret_cast<const Bytef*>(bytes.data()), bytes.size()) != Z_OK) {
    throw std::runtime_error("cannot compress an image");
  }
  stream.resize(size);
  return stream;
}

}  // namespace bench
