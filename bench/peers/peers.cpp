// Compares the reader with other readers: all read the same scenes in turn, each in its own format.
// Also compares the writer, the conversion of numbers and the compression with other libraries, and
// measures the peak memory of reads. Prints a table of the values with their aims and limits.
#include "bench/peers/peers.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>
#include <exception>
#include <memory>
#include <utility>

#include "bench/measure/memory.h"
#include "bench/measure/report.h"
#include "bench/ours/null_scene.h"
#include "bench/ours/our_reader.h"
#include "bench/ours/our_writer.h"

namespace bench {
namespace {

constexpr size_t GEO_BYTES = 50'000'000;
constexpr size_t TEXT_BYTES = 20'000'000;
constexpr size_t LIST_COUNT = 5'000'000;
constexpr size_t IMAGE_BYTES = 16'777'216;
constexpr double MEGA = 1e6;

struct Options {
  size_t rounds = 7;
  std::string json;
  std::string scratch = "/tmp";
  std::vector<std::string> only;  // The names of the comparisons to run. Empty for all.
};

// The work of a comparison. The report divides `amount`, in the unit `unit`, by the time of each
// candidate.
struct Work {
  std::string name;
  double amount;
  const char* unit;
};

// The median time of each candidate of a comparison in seconds.
using Seconds = std::vector<double>;

class PeerComparison {
 public:
  explicit PeerComparison(Options given) : options(std::move(given)) {
    report.machine = machineName();
  }

  void run() {
    if (isWanted("geo")) compareGeo();
    if (isWanted("lists")) compareLists();
    if (isWanted("nodes")) compareNodes();
    if (isWanted("links")) compareLinks();
    if (isWanted("text")) compareText();
    if (isWanted("short")) compareShortText();
    if (isWanted("inflate")) compareInflate();
    if (isWanted("write")) {
      compareWrittenLists(floatsOf(floatNumbers(LIST_COUNT)), floatScene, "float");
      compareWrittenLists(doublesOf(floatNumbers(LIST_COUNT)), doubleScene, "double");
      compareWrittenNodes();
      compareDeflate();
    }
    if (fileOverString > 0) {
      addRow("file entry over string entry, time", Better::Low, {{fileOverString, 1.1, 1.25}});
    }
    if (isWanted("memory")) measureMemory();
  }

  void finish() {
    printTable(report);
    if (!options.json.empty()) writeJson(report, options.json);
  }

 private:
  using Make = Text (*)(size_t, Format, uint64_t);

  bool isWanted(const std::string& name) const {
    const auto& only = options.only;
    return only.empty() || std::find(only.begin(), only.end(), name) != only.end();
  }

  std::string scratch(const char* name) const { return options.scratch + "/" + name; }

  Text vsaOnFile(Make make, size_t size) const {
    Text vsa = make(size, Format::Vsa, 1);
    writeFile(scratch("scene.vsa"), vsa.text);
    return vsa;
  }

  Seconds measure(const Work& work, const std::vector<Candidate>& candidates) {
    std::fprintf(stderr, "%s\n", work.name.c_str());
    Seconds seconds = compare(candidates, options.rounds);
    for (size_t i = 0; i < seconds.size(); ++i) {
      report.details.push_back(
          {work.name, candidates[i].name, 1e3 * seconds[i], work.amount / seconds[i], work.unit});
    }
    return seconds;
  }

  void addRow(std::string what, Better better, std::vector<Figure> figures, std::string unit = "") {
    report.rows.push_back({std::move(what), better, std::move(unit), std::move(figures)});
  }

  // Divides the time of a read from a File by the time of a read from a String. Stores the ratio in
  // fileOverString if it is greater than the ratios of the previous scenes. Candidate 0 must read
  // from a String, and candidate 1 from a File.
  void noteFileTime(const Seconds& seconds) {
    fileOverString = std::max(fileOverString, seconds[1] / seconds[0]);
  }

  void compareGeo() {
    const Text vsa = vsaOnFile(geo, GEO_BYTES);
    const Text json = geo(GEO_BYTES, Format::CompactJson), osgt = geo(GEO_BYTES, Format::Osgt);
    const Text iv = geo(GEO_BYTES, Format::Iv), obj = geo(GEO_BYTES, Format::Obj);
    const Seconds seconds =
        measure({"geo 50 MB", static_cast<double>(vsa.expected.numbers) / MEGA, "M numbers"},
                {stringReader(vsa), fileReader(vsa, scratch("scene.vsa")), simdjsonReader(json),
                 rapidjsonReader(json), osgReader(osgt, scratch("scene.osgt")), coinReader(iv),
                 objReader(obj, scratch("scene.obj")), copyLoop(vsa.text)});
    noteFileTime(seconds);
    addRow("geo 50 MB, time over simdjson On-Demand + scene", Better::Low,
           {{seconds[0] / seconds[2], 0.50, 0.62}});
  }

  void compareLists() {
    const NumberList floats = floatNumbers(LIST_COUNT), ints = intNumbers(LIST_COUNT);
    const Text floatText = floatLists(LIST_COUNT), intText = intLists(LIST_COUNT);
    const double amount = static_cast<double>(LIST_COUNT) / MEGA;
    const Seconds real = measure({"float lists", amount, "M numbers"},
                                 {stringReader(floatText), floatRun(floats), fastFloatLoop(floats),
                                  standardFloatLoop(floats)});
    addRow("float lists, numbers/s over a fast_float loop", Better::High,
           {{real[2] / real[0], 2.0, 1.6}});
    const Seconds whole = measure({"int32 lists", amount, "M numbers"},
                                  {stringReader(intText), intRun(ints), standardIntLoop(ints)});
    addRow("int32 lists, numbers/s over std::from_chars<int>", Better::High,
           {{whole[2] / whole[0], 1.2, 1.0}});
  }

  static double thousands(const Text& text) {
    return static_cast<double>(text.expected.statements) / 1e3;
  }

  // Compares the readers for small nodes. `withCoin` is false for a million nodes, because Coin
  // then takes half a minute.
  Seconds compareNodesOfSize(const char* name, size_t statements, bool withCoin) {
    const Text vsa = vsaOnFile(nodes, statements);
    const Text json = nodes(statements, Format::Json), osgt = nodes(statements, Format::Osgt);
    const Text compact = nodes(statements, Format::CompactJson);
    const Text iv = nodes(statements, Format::Iv);
    std::vector<Candidate> candidates = {stringReader(vsa),
                                         fileReader(vsa, scratch("scene.vsa")),
                                         rapidjsonReader(json),
                                         osgReader(osgt, scratch("scene.osgt")),
                                         rapidjsonReader(compact, "RapidJSON DOM, compact JSON"),
                                         simdjsonReader(compact),
                                         nullSceneReader(vsa)};
    if (withCoin) candidates.push_back(coinReader(iv));
    const Seconds seconds = measure({name, thousands(vsa), "k statements"}, candidates);
    noteFileTime(seconds);
    return seconds;
  }

  void compareNodes() {
    const Seconds small = compareNodesOfSize("nodes 100k", 100'000, true);
    const Seconds large = compareNodesOfSize("nodes 1M", 1'000'000, false);
    addRow("nodes 100k and 1M, time over RapidJSON DOM", Better::Low,
           {{small[0] / small[2], 0.8, 1.0}, {large[0] / large[2], 0.8, 1.0}});
    addRow("nodes 100k and 1M, time over RapidJSON DOM, compact JSON", Better::Low,
           {{small[0] / small[4], 1.25, 1.6}, {large[0] / large[4], 1.25, 1.6}});
    addRow("nodes 100k and 1M, time over simdjson On-Demand + scene", Better::Low,
           {{small[0] / small[5], 0.8, 1.0}, {large[0] / large[5], 0.8, 1.0}});
    addRow("nodes, time at 1M over time at 100k", Better::Low, {{large[0] / small[0], 10, 11}});
    addRow("nodes 1M into a scene without operations, statements/s", Better::High,
           {{large[0] / large[6], 1.5, 1.0}});
    addRow("nodes 100k, times as fast as OpenSceneGraph", Better::High,
           {{small[3] / small[0], 6, 4}});
  }

  void compareLinks() {
    const Text tiny = links(10'000), vsa = vsaOnFile(links, 100'000), large = links(1'000'000);
    const Text json = links(100'000, Format::Json), osgt = links(100'000, Format::Osgt);
    const Text iv = links(100'000, Format::Iv);
    const Seconds peers =
        measure({"links 100k", thousands(vsa), "k statements"},
                {stringReader(vsa), fileReader(vsa, scratch("scene.vsa")),
                 osgReader(osgt, scratch("scene.osgt")), rapidjsonReader(json), coinReader(iv)});
    noteFileTime(peers);
    addRow("links 100k, times as fast as OpenSceneGraph", Better::High,
           {{peers[2] / peers[0], 9, 7}});
    addRow("links 100k, time over RapidJSON DOM", Better::Low, {{peers[0] / peers[3], 1.0, 1.3}});
    const Seconds sizes = compareSizes({tiny, vsa, large});
    addRow("links, time at 1M over time at 100k; at 100k over 10k", Better::Low,
           {{sizes[2] / sizes[1], 11, 13}, {sizes[1] / sizes[0], 14, 22}});
  }

  // Compares the reader with itself on scenes of growing sizes.
  Seconds compareSizes(const std::vector<Text>& sizes) {
    std::vector<Candidate> candidates;
    for (const Text& vsa : sizes) candidates.push_back(stringReader(vsa));
    const Seconds seconds = compare(candidates, options.rounds);
    for (size_t i = 0; i < sizes.size(); ++i) {
      const std::string scene =
          "links " + std::to_string(sizes[i].expected.statements / 1000) + "k";
      report.details.push_back({scene, candidates[i].name, 1e3 * seconds[i],
                                thousands(sizes[i]) / seconds[i], "k statements"});
    }
    return seconds;
  }

  void compareText() {
    const Text vsa = vsaOnFile(text, TEXT_BYTES);
    const Text json = text(TEXT_BYTES, Format::Json), osgt = text(TEXT_BYTES, Format::Osgt);
    const Text iv = text(TEXT_BYTES, Format::Iv), compact = text(TEXT_BYTES, Format::CompactJson);
    const Seconds seconds =
        measure({"text 20 MB", static_cast<double>(vsa.text.size()) / MEGA, "MB"},
                {stringReader(vsa), fileReader(vsa, scratch("scene.vsa")), rapidjsonReader(json),
                 simdjsonReader(compact), osgReader(osgt, scratch("scene.osgt")), coinReader(iv)});
    noteFileTime(seconds);
    addRow("text, time over RapidJSON DOM", Better::Low, {{seconds[0] / seconds[2], 0.65, 0.8}});
  }

  void compareShortText() {
    const Text vsa = shortText(TEXT_BYTES);
    const Text json = shortText(TEXT_BYTES, Format::Json);
    const Text compact = shortText(TEXT_BYTES, Format::CompactJson);
    const Seconds seconds =
        measure({"short text 20 MB", static_cast<double>(vsa.text.size()) / MEGA, "MB"},
                {stringReader(vsa), rapidjsonReader(json), simdjsonReader(compact)});
    addRow("short text, time over RapidJSON DOM", Better::Low,
           {{seconds[0] / seconds[1], 0.8, 1.0}});
    addRow("short text, time over simdjson On-Demand + scene", Better::Low,
           {{seconds[0] / seconds[2], 0.7, 0.9}});
  }

  template <class Number, class MakeScene>
  void compareWrittenLists(const std::vector<Number>& numbers, const MakeScene& makeScene,
                           const std::string& type) {
    const Seconds seconds =
        measure({"written " + type + " lists", static_cast<double>(LIST_COUNT) / MEGA, "M numbers"},
                {sinkWriter("the writer", makeScene(numbers)), toCharsWriter(numbers),
                 rapidjsonWriter(numbers)});
    addRow("written " + type + " lists, numbers/s over a std::to_chars loop", Better::High,
           {{seconds[1] / seconds[0], 2.0, 1.5}});
    addRow("written " + type + " lists, numbers/s over RapidJSON's Writer", Better::High,
           {{seconds[2] / seconds[0], 3.0, 2.0}});
  }

  void compareWrittenNodes() {
    const Text vsa = nodes(100'000), osgt = nodes(100'000, Format::Osgt);
    const Seconds seconds =
        measure({"written nodes 100k", thousands(vsa), "k statements"},
                {textWriter("the writer", sceneOf(vsa)), osgWriter(osgt, scratch("scene.osgt"))});
    addRow("written nodes 100k, times as fast as OpenSceneGraph", Better::High,
           {{seconds[1] / seconds[0], 5.0, 2.0}});
  }

  void compareDeflate() {
    const std::string bytes = imageBytes(IMAGE_BYTES, 1);
    const Seconds seconds =
        measure({"deflate 16 MB", static_cast<double>(bytes.size()) / MEGA, "MB"},
                {ourDeflate(bytes), zlibDeflate(bytes)});
    addRow("deflate, bytes/s over zlib's level 6", Better::High,
           {{seconds[1] / seconds[0], 1.5, 1.0}});
    const auto zlibSize = static_cast<double>(zlibStream(bytes).size());
    addRow("deflate, size over zlib's level 6", Better::Low,
           {{static_cast<double>(ourDeflatedSize(bytes)) / zlibSize, 1.0, 1.05}});
  }

  void compareInflate() {
    const std::string bytes = imageBytes(IMAGE_BYTES, 1), stream = zlibStream(bytes);
    const Seconds seconds = measure(
        {"inflate 16 MB", static_cast<double>(bytes.size()) / MEGA, "MB"},
        {ourInflate(stream, bytes), zlibInflate(stream, bytes), libdeflateInflate(stream, bytes)});
    addRow("inflate, times as fast as zlib", Better::High, {{seconds[1] / seconds[0], 1.3, 0.9}});
  }

  double peakOverInput(Make make, size_t size) const {
    const Text vsa = vsaOnFile(make, size);
    return static_cast<double>(peakOfRead(scratch("scene.vsa"), Route::String)) /
           static_cast<double>(vsa.text.size());
  }

  void measureMemory() {
    const Text vsa = vsaOnFile(geo, GEO_BYTES);
    const double peak = static_cast<double>(peakOfRead(scratch("scene.vsa"), Route::File));
    const double beyond = (peak - static_cast<double>(vsa.expected.elementBytes)) / MEGA;
    const double literal = static_cast<double>(vsa.expected.largestLiteral) / MEGA;
    addRow("peak memory, geo from a file: beyond its elements", Better::Low,
           {{beyond, 8 + literal, 16 + 2 * literal}}, " MB");
    addRow("peak memory over input: nodes 1M; links 1M", Better::Low,
           {{peakOverInput(nodes, 1'000'000), 3, 5}, {peakOverInput(links, 1'000'000), 5, 9}});
  }

  Options options;
  Report report;
  double fileOverString = 0;  // The maximum ratio over all scenes.
};

}  // namespace
}  // namespace bench

int main(int argc, char** argv) try {
  if (bench::handlePeakRequest(argc, argv)) return 0;
  bench::Options options;
  CLI::App app("Compares the reader with other readers.", "vsa_bench_peers");
  app.add_option("--rounds", options.rounds, "Rounds of each comparison")->capture_default_str();
  app.add_option("--json", options.json, "Also write the results to FILE")->type_name("FILE");
  app.add_option("--scratch", options.scratch, "Folder for temporary files")
      ->type_name("FOLDER")
      ->capture_default_str();
  app.add_option("--only", options.only, "Run these comparisons only, separated by commas")
      ->delimiter(',')
      ->check(CLI::IsMember(
          {"geo", "lists", "nodes", "links", "text", "short", "inflate", "write", "memory"}));
  CLI11_PARSE(app, argc, argv);
  bench::PeerComparison comparison(options);
  comparison.run();
  comparison.finish();
  return 0;
} catch (const std::exception& error) {
  std::fprintf(stderr, "vsa_bench_peers: %s\n", error.what());
  return 1;
}
