// Measures the stages of a read: lexing, number conversion, buffer literals, the hash map, link
// resolution and inflate. Also measures vsa::OutlineReader. Each benchmark checks its result.
#include <benchmark/benchmark.h>

#include <stdexcept>
#include <vector>

#include <vsa/foundation/decompress.h>
#include <vsa/outline.h>
#include "bench/ours/our_reader.h"
#include "foundation/compression/inflate.h"
#include "foundation/containers/hash_map.h"
#include "foundation/numbers/number_list.h"
#include "foundation/numbers/number_text.h"
#include "tools/scene_text/printable_text.h"
#include "vsa/lex/lexer_source.h"
#include "vsa/parser.h"

namespace bench {
namespace {

using zn::String;
using zn::korvo_sdk::Input;
using zn::korvo_sdk::Scene;
using zn::korvo_sdk::impl::Lexer;
using zn::korvo_sdk::impl::StringLexer;
using zn::korvo_sdk::impl::Token;
using zn::korvo_sdk::impl::VsaParser;

String stringOf(const std::string& text) {
  return String(text.data(), text.size());
}

void setRate(benchmark::State& state, const char* name, size_t amount) {
  state.counters[name] = {static_cast<double>(amount),
                          benchmark::Counter::kIsIterationInvariantRate};
}

// Lexing.

bool endsStatement(Token::Type type) {
  return type == Token::Type::Semicolon || type == Token::Type::Colon ||
         type == Token::Type::Comment;
}

size_t statementsIn(Lexer& lexer) {
  size_t statements = 0;
  for (;;) {
    const Token token = lexer.nextToken();
    if (token.type == Token::Type::Eof || token.type == Token::Type::Invalid) return statements;
    if (endsStatement(token.type)) ++statements;
  }
}

void lexText(benchmark::State& state, const Text& vsa) {
  const String text = stringOf(vsa.text);
  StringLexer checked(text);
  requireCount("the lexer", "statements", statementsIn(checked), vsa.expected.statements);
  for ([[maybe_unused]] auto iteration : state) {
    StringLexer lexer(text);
    benchmark::DoNotOptimize(statementsIn(lexer));
  }
  state.SetBytesProcessed(static_cast<int64_t>(vsa.text.size()) * state.iterations());
  setRate(state, "statements/s", vsa.expected.statements);
}

void lexGeo(benchmark::State& state) {
  lexText(state, geo(5'000'000));
}
void lexNodes(benchmark::State& state) {
  lexText(state, nodes(100'000));
}
void lexLinks(benchmark::State& state) {
  lexText(state, links(100'000));
}
void lexStrings(benchmark::State& state) {
  lexText(state, text(5'000'000));
}
BENCHMARK(lexGeo)->Name("lexer/geo")->Unit(benchmark::kMillisecond);
BENCHMARK(lexNodes)->Name("lexer/nodes")->Unit(benchmark::kMillisecond);
BENCHMARK(lexLinks)->Name("lexer/links")->Unit(benchmark::kMillisecond);
BENCHMARK(lexStrings)->Name("lexer/text")->Unit(benchmark::kMillisecond);

// The outlines of statements, as for vsa check.

size_t outlinesIn(const std::string& text) {
  vsa::OutlineReader reader(text);
  vsa::StatementOutline statement;
  size_t statements = 0;
  while (reader.next(statement)) ++statements;
  return statements;
}

void readOutlines(benchmark::State& state) {
  const Text vsa = nodes(100'000);
  requireCount("the outline reader", "statements", outlinesIn(vsa.text), vsa.expected.statements);
  for ([[maybe_unused]] auto iteration : state) benchmark::DoNotOptimize(outlinesIn(vsa.text));
  setRate(state, "statements/s", vsa.expected.statements);
}
BENCHMARK(readOutlines)->Name("outline/nodes")->Unit(benchmark::kMillisecond);

// Number conversion: single numbers, as in scalars and tuples, and whole lists.

constexpr size_t NUMBER_COUNT = 500'000;

template <class Number>
const NumberList& numberList() {
  static const NumberList list =
      std::is_integral_v<Number> ? intNumbers(NUMBER_COUNT) : floatNumbers(NUMBER_COUNT);
  return list;
}

template <class Number>
bool converted(std::string_view number, Number& out) {
  const char* const end = number.data() + number.size();
  if constexpr (std::is_integral_v<Number>) {
    return zn::integerFromText(number.data(), end, out);
  } else {
    return zn::realFromText(number.data(), end, out);
  }
}

template <class Number>
size_t convertSingly(const NumberList& list, Number* out) {
  size_t count = 0;
  eachNumber(list.digits, [&](std::string_view number, size_t index) {
    count += converted(number, out[index]) ? 1 : 0;
  });
  return count;
}

template <class Number>
size_t convertRun(const NumberList& list, Number* out) {
  const char* const from = list.digits.data();
  return zn::readNumberRun(from, from + list.digits.size(), out, list.componentCount).count;
}

template <class Number>
void convertNumbers(benchmark::State& state, size_t (*convert)(const NumberList&, Number*)) {
  const NumberList& list = numberList<Number>();
  std::vector<Number> out(list.componentCount);
  requireCount("the conversion", "numbers", convert(list, out.data()), list.componentCount);
  for ([[maybe_unused]] auto iteration : state) {
    convert(list, out.data());
    benchmark::DoNotOptimize(out.data());
    benchmark::ClobberMemory();
  }
  state.SetBytesProcessed(static_cast<int64_t>(list.digits.size()) * state.iterations());
  setRate(state, "numbers/s", list.componentCount);
}

BENCHMARK_CAPTURE(convertNumbers, f, convertSingly<float>)->Name("number/float");
BENCHMARK_CAPTURE(convertNumbers, d, convertSingly<double>)->Name("number/double");
BENCHMARK_CAPTURE(convertNumbers, i, convertSingly<int>)->Name("number/int32");
BENCHMARK_CAPTURE(convertNumbers, fs, convertRun<float>)->Name("number_list/float");
BENCHMARK_CAPTURE(convertNumbers, ds, convertRun<double>)->Name("number_list/double");
BENCHMARK_CAPTURE(convertNumbers, is, convertRun<int>)->Name("number_list/int32");

// Buffer literals: the texts contain almost only lists.

void readLiteral(benchmark::State& state, const Text& vsa) {
  const Candidate reader = stringReader(vsa);
  for ([[maybe_unused]] auto iteration : state) state.SetIterationTime(reader.read());
  state.SetBytesProcessed(static_cast<int64_t>(vsa.text.size()) * state.iterations());
  setRate(state, "numbers/s", vsa.expected.numbers);
}

void floatLiteral(benchmark::State& state) {
  readLiteral(state, floatLists(NUMBER_COUNT));
}
void intLiteral(benchmark::State& state) {
  readLiteral(state, intLists(NUMBER_COUNT));
}
BENCHMARK(floatLiteral)->Name("buffer_literal/float")->UseManualTime();
BENCHMARK(intLiteral)->Name("buffer_literal/int32")->UseManualTime();

// The hash map: inserts all names and then looks up all names.

void useHashMap(benchmark::State& state) {
  const auto count = static_cast<size_t>(state.range(0));
  std::vector<String> names;
  for (size_t i = 0; i < count; ++i) names.push_back(stringOf("shader_" + std::to_string(i)));
  size_t found = 0;
  for ([[maybe_unused]] auto iteration : state) {
    zn::ds::HashMap<String, size_t> map;
    for (size_t i = 0; i < count; ++i) map.set(names[i], i);
    found = 0;
    for (size_t i = 0; i < count; ++i) found += map.get(names[i]) == i ? 1 : 0;
  }
  requireCount("the hash map", "names", found, count);
  setRate(state, "keys/s", count);
}
BENCHMARK(useHashMap)->Name("hash_map")->RangeMultiplier(10)->Range(100, 100'000);

// Link resolution: the pending links are made as the reader makes them for a text in which each
// node has a reference and a connection.

struct LinkedScene {
  Scene scene;
  VsaParser parser;
};

Token nameToken(const std::string& name) {
  return {Token::Type::Id, stringOf(name), 1, 1};
}

void storePendingLinks(LinkedScene& linked, size_t index, size_t count) {
  zn::korvo_sdk::Node& node = *linked.scene.nodeAt(index);
  const std::string other = "shader_" + std::to_string((index * 7919 + 1) % count);
  zn::korvo_sdk::impl::AssignInfo reference;
  reference.isReference = true;
  reference.referenceToken = reference.valueToken = nameToken(other);
  linked.parser.references.setLink(
      node.createInput(String("material"), zn::korvo_sdk::AttrType::Null), reference);
  zn::korvo_sdk::impl::AssignInfo connection;
  connection.isConnection = true;
  connection.sourcePath.push_back(nameToken(other));
  connection.sourcePath.push_back({Token::Type::Dot, String("."), 1, 2});
  connection.sourcePath.push_back(nameToken("outColor"));
  linked.parser.connections.setLink(
      node.createInput(String("color"), zn::korvo_sdk::AttrType::Null), connection);
}

std::unique_ptr<LinkedScene> linkedScene(size_t count) {
  auto linked = std::make_unique<LinkedScene>();
  for (size_t i = 0; i < count; ++i) {
    linked->scene.createNode(String("shader"), stringOf("shader_" + std::to_string(i)), String());
  }
  for (size_t i = 0; i < count; ++i) storePendingLinks(*linked, i, count);
  linked->parser.scene = &linked->scene;
  return linked;
}

size_t linksOf(const Scene& scene) {
  size_t links = 0;
  for (uint64_t slot = 0; slot < scene.nodeSlots(); ++slot) {
    for (uint64_t i = 0; i < scene.nodeAt(slot)->inputCount(); ++i) {
      const Input& input = *scene.nodeAt(slot)->inputAt(i);
      links += (input.node() != nullptr) + (input.connection() != nullptr);
    }
  }
  return links;
}

void resolveLinks(benchmark::State& state) {
  const auto count = static_cast<size_t>(state.range(0));
  size_t links = 0;
  for ([[maybe_unused]] auto iteration : state) {
    const auto linked = linkedScene(count);
    const Stopwatch watch;
    linked->parser.resolveConnections();
    linked->parser.resolveReferences();
    state.SetIterationTime(watch.seconds());
    links = linksOf(linked->scene);
  }
  requireCount("resolution", "links", links, 2 * count);
  setRate(state, "links/s", 2 * count);
}
BENCHMARK(resolveLinks)
    ->Name("resolution")
    ->RangeMultiplier(10)
    ->Range(1'000, 100'000)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

// Inflate: binary streams, and a compressed text as in a buffer literal. Most matches of an image
// are short. Those of a scene's text are longer, and those of zeros have the maximum length.

constexpr size_t IMAGE_BYTES = 4 << 20;

const unsigned char* bytesOf(const std::string& text) {
  return reinterpret_cast<const unsigned char*>(text.data());
}

void inflateStream(benchmark::State& state, const std::string& bytes) {
  const std::string stream = zlibStream(bytes);
  std::string out(bytes.size(), '\0');
  auto* const memory = reinterpret_cast<unsigned char*>(out.data());
  size_t length = 0;
  for ([[maybe_unused]] auto iteration : state) {
    zn::inflateStream(bytesOf(stream), stream.size(), memory, out.size(), length);
    benchmark::ClobberMemory();
  }
  if (out != bytes) throw std::runtime_error("inflate: wrong bytes");
  state.SetBytesProcessed(static_cast<int64_t>(bytes.size()) * state.iterations());
}

void inflateImage(benchmark::State& state) {
  inflateStream(state, imageBytes(IMAGE_BYTES, 1));
}
void inflateScene(benchmark::State& state) {
  inflateStream(state, text(IMAGE_BYTES).text);
}
void inflateZeros(benchmark::State& state) {
  inflateStream(state, std::string(IMAGE_BYTES, '\0'));
}
BENCHMARK(inflateImage)->Name("inflate/stream")->Unit(benchmark::kMillisecond);
BENCHMARK(inflateScene)->Name("inflate/scene")->Unit(benchmark::kMillisecond);
BENCHMARK(inflateZeros)->Name("inflate/zeros")->Unit(benchmark::kMillisecond);

void decompressText(benchmark::State& state) {
  const std::string bytes = imageBytes(IMAGE_BYTES, 1), stream = zlibStream(bytes);
  std::string hex = ".", out(bytes.size(), '\0');
  vsa_tools::appendHex(hex, stream);
  auto* const memory = reinterpret_cast<unsigned char*>(out.data());
  String error;
  size_t length = 0;
  for ([[maybe_unused]] auto iteration : state) {
    zn::decompressInto(bytesOf(hex), hex.size(), error, memory, out.size(), length);
    benchmark::ClobberMemory();
  }
  if (out != bytes) throw std::runtime_error("decompress: wrong bytes");
  state.SetBytesProcessed(static_cast<int64_t>(bytes.size()) * state.iterations());
}
BENCHMARK(decompressText)->Name("inflate/text")->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace bench
