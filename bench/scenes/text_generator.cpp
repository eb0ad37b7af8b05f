// Generates numbers: meshes, lists and images.
#include "bench/scenes/text_generator.h"

#include <zlib.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <stdexcept>

#include "bench/scenes/random.h"
#include "bench/scenes/recorder.h"

namespace bench {
namespace {

struct Vec3 {
  double x, y, z;
};

// Appends a float in the form that exporters print: with 6 to 9 significant digits and without
// zeros at the end. The number of digits is random for each number, as in real scenes. A constant
// number of digits would be an advantage for a reader that predicts it.
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

// A curved surface: a grid of vertices in columns and rows. Its place and rotation are random.
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
  // The approximate number of characters of VSA text for one vertex.
  constexpr size_t CHARACTERS_PER_VERTEX = 95;
  Recorder scene(format);
  Random random(seed);
  for (size_t mesh = 0; scene.listCharacters < bytes; ++mesh) {
    const size_t left = (bytes - scene.listCharacters) / CHARACTERS_PER_VERTEX + 1;
    addMesh(scene, mesh, std::min(random.between(200, 9000), left), random);
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
