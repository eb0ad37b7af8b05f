// The candidate of RapidJSON. It reads JSON into a DOM with copied strings.
#include <rapidjson/document.h>

#include <stdexcept>

#include "bench/peers/peers.h"

namespace bench {
namespace {

size_t sizeOf(const rapidjson::Value& inputs) {
  return inputs.IsArray() ? inputs.Size() : inputs.MemberCount();
}

}  // namespace

Candidate rapidjsonReader(const Text& json, const char* name) {
  rapidjson::Document document;
  document.Parse(json.text.data(), json.text.size());
  if (document.HasParseError()) throw std::runtime_error("RapidJSON: parse error");
  size_t inputs = 0;
  for (const auto& node : document["nodes"].GetArray()) inputs += sizeOf(node["inputs"]);
  requireCount("RapidJSON", "nodes", document["nodes"].Size(), json.expected.nodes);
  requireCount("RapidJSON", "inputs", inputs, json.expected.inputs);
  const char* const comments = document.HasMember("comments") ? "comments" : "fileComments";
  requireCount("RapidJSON", "comments", document[comments].Size(), json.expected.comments);
  return {name, [&json] {
            rapidjson::Document fresh;
            const Stopwatch watch;
            fresh.Parse(json.text.data(), json.text.size());
            return watch.seconds();
          }};
}

}  // namespace bench
