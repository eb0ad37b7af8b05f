// The candidates that write with other libraries.
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>
#include <zlib.h>
#include <osg/Node>
#include <osgDB/ReadFile>
#include <osgDB/Registry>

#include <charconv>
#include <sstream>
#include <stdexcept>

#include "bench/peers/peers.h"

namespace bench {
namespace {

constexpr size_t MAX_NUMBER = 32;

template <class Number>
size_t printAll(const std::vector<Number>& numbers, std::string& out) {
  char* at = out.data();
  char* const end = at + out.size();
  for (const Number number : numbers) {
    at = std::to_chars(at, end, number).ptr;
    *at++ = ' ';
  }
  return static_cast<size_t>(at - out.data());
}

template <class Number>
Candidate toCharsOf(const char* name, const std::vector<Number>& numbers) {
  const auto out = std::make_shared<std::string>(numbers.size() * MAX_NUMBER, '\0');
  return {name, [&numbers, out] {
            const Stopwatch watch;
            printAll(numbers, *out);
            return watch.seconds();
          }};
}

template <class Number>
void writeArray(const std::vector<Number>& numbers, rapidjson::StringBuffer& out) {
  rapidjson::Writer<rapidjson::StringBuffer> writer(out);
  writer.StartArray();
  for (const Number number : numbers) writer.Double(static_cast<double>(number));
  writer.EndArray();
}

template <class Number>
Candidate rapidjsonOf(const char* name, const std::vector<Number>& numbers) {
  const auto out = std::make_shared<rapidjson::StringBuffer>();
  return {name, [&numbers, out] {
            out->Clear();
            const Stopwatch watch;
            writeArray(numbers, *out);
            return watch.seconds();
          }};
}

}  // namespace

Candidate toCharsWriter(const std::vector<float>& numbers) {
  return toCharsOf("std::to_chars loop", numbers);
}
Candidate toCharsWriter(const std::vector<double>& numbers) {
  return toCharsOf("std::to_chars loop", numbers);
}
Candidate rapidjsonWriter(const std::vector<float>& numbers) {
  return rapidjsonOf("RapidJSON Writer", numbers);
}
Candidate rapidjsonWriter(const std::vector<double>& numbers) {
  return rapidjsonOf("RapidJSON Writer", numbers);
}

Candidate osgWriter(const Text& osgt, const std::string& path) {
  writeFile(path, osgt.text);
  const osg::ref_ptr<osg::Node> root = osgDB::readRefNodeFile(path);
  osgDB::ReaderWriter* const writer =
      osgDB::Registry::instance()->getReaderWriterForExtension("osgt");
  if (!root || writer == nullptr) throw std::runtime_error("OpenSceneGraph: cannot read " + path);
  const osg::ref_ptr<osgDB::Options> options = new osgDB::Options();
  options->setPluginStringData("fileType", "Ascii");
  const auto write = [root, writer, options] {
    std::ostringstream out;
    const Stopwatch watch;
    if (!writer->writeNode(*root, out, options.get()).success()) {
      throw std::runtime_error("OpenSceneGraph: cannot write");
    }
    return std::pair{watch.seconds(), out.str().size()};
  };
  if (write().second < osgt.text.size() / 2) throw std::runtime_error("OpenSceneGraph: lost text");
  return {"OpenSceneGraph .osgt", [write] { return write().first; }};
}

Candidate zlibDeflate(const std::string& bytes) {
  return {"zlib, level 6", [&bytes] {
            const Stopwatch watch;
            const std::string stream = zlibStream(bytes);
            return watch.seconds();
          }};
}

}  // namespace bench
