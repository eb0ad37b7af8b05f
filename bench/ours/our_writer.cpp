#include "bench/ours/our_writer.h"

#include <cstdlib>
#include <cstring>
#include <stdexcept>

#include <vsa/write.h>
#include "bench/ours/our_reader.h"
#include "foundation/compression/deflate.h"
#include "foundation/compression/inflate.h"
#include "foundation/numbers/number_list.h"

namespace bench {
namespace {

using zn::korvo_sdk::AttrType;
using zn::korvo_sdk::DataType;
using zn::korvo_sdk::Scene;

class CountingSink final : public vsa::Sink {
 public:
  bool write(std::string_view text) override {
    bytes += text.size();
    return true;
  }

  size_t bytes = 0;
};

void requireWritten(const vsa::WriteResult& result) {
  if (!result.isWritten()) throw std::runtime_error("the writer: " + result.message);
}

// Writes the scene, reads the text into a second scene, and writes the second scene. Throws
// std::runtime_error if the two texts differ.
void requireSameAgain(const Scene& scene) {
  const vsa::TextResult first = vsa::writeText(scene);
  requireWritten(first);
  Scene again;
  readText(again, first.text);
  if (vsa::writeText(again).text != first.text) throw std::runtime_error("the writer: other text");
}

template <class Number>
std::vector<Number> numbersOf(const NumberList& list) {
  std::vector<Number> numbers(list.componentCount);
  const char* const from = list.digits.data();
  zn::readNumberRun(from, from + list.digits.size(), numbers.data(), numbers.size());
  return numbers;
}

template <class Number>
std::shared_ptr<Scene> listScene(const std::vector<Number>& numbers, DataType type) {
  auto scene = std::make_shared<Scene>();
  for (size_t start = 0; start < numbers.size(); start += LIST_LENGTH) {
    const size_t count = std::min(LIST_LENGTH, numbers.size() - start);
    auto* const memory = static_cast<unsigned char*>(std::malloc(count * sizeof(Number)));
    if (memory == nullptr) throw std::bad_alloc();
    std::memcpy(memory, numbers.data() + start, count * sizeof(Number));
    zn::korvo_sdk::AttrData data;
    data.type = AttrType::Buffer;
    data.payload.buffer = {memory, count, count * sizeof(Number), type, 0};
    const std::string name = "list" + std::to_string(start);
    scene->createNode("list", name.c_str(), "")->createInput("x", AttrType::Buffer)->assign(data);
  }
  return scene;
}

const unsigned char* bytesOf(const std::string& text) {
  return reinterpret_cast<const unsigned char*>(text.data());
}

void requireInflates(const std::vector<unsigned char>& stream, const std::string& bytes) {
  std::string out(bytes.size(), '\0');
  size_t length = 0;
  zn::inflateStream(stream.data(), stream.size(), reinterpret_cast<unsigned char*>(out.data()),
                    out.size(), length);
  if (out != bytes) throw std::runtime_error("deflate: wrong bytes");
}

}  // namespace

std::shared_ptr<Scene> sceneOf(const Text& vsa) {
  auto scene = std::make_shared<Scene>();
  readText(*scene, vsa.text);
  return scene;
}

std::shared_ptr<Scene> floatScene(const std::vector<float>& numbers) {
  return listScene(numbers, DataType::Float);
}

std::shared_ptr<Scene> doubleScene(const std::vector<double>& numbers) {
  return listScene(numbers, DataType::Double);
}

Candidate sinkWriter(const char* name, std::shared_ptr<Scene> scene) {
  requireSameAgain(*scene);
  return {name, [scene] {
            CountingSink sink;
            const Stopwatch watch;
            requireWritten(vsa::writeTo(*scene, sink));
            return watch.seconds();
          }};
}

Candidate textWriter(const char* name, std::shared_ptr<Scene> scene) {
  requireSameAgain(*scene);
  return {name, [scene] {
            const Stopwatch watch;
            const vsa::TextResult written = vsa::writeText(*scene);
            const double seconds = watch.seconds();
            requireWritten(written);
            return seconds;
          }};
}

Candidate ourDeflate(const std::string& bytes) {
  requireInflates(zn::deflateStream(bytesOf(bytes), bytes.size()), bytes);
  return {"zn::deflateStream", [&bytes] {
            const Stopwatch watch;
            const auto stream = zn::deflateStream(bytesOf(bytes), bytes.size());
            return watch.seconds();
          }};
}

size_t ourDeflatedSize(const std::string& bytes) {
  return zn::deflateStream(bytesOf(bytes), bytes.size()).size();
}

std::vector<float> floatsOf(const NumberList& numbers) {
  return numbersOf<float>(numbers);
}

std::vector<double> doublesOf(const NumberList& numbers) {
  return numbersOf<double>(numbers);
}

}  // namespace bench
