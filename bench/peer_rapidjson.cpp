// RapidJSON's DOM: the whole document as one tree of values, strings copied.
#include <rapidjson/document.h>

#include <stdexcept>

#include "peers.h"

namespace bench {

Contender rapidjsonReader(const Text& json) {
  rapidjson::Document document;
  document.Parse(json.text.data(), json.text.size());
  if (document.HasParseError()) throw std::runtime_error("RapidJSON: parse error");
  size_t inputs = 0;
  for (const auto& node : document["nodes"].GetArray()) inputs += node["inputs"].MemberCount();
  mustFind("RapidJSON", "nodes", document["nodes"].Size(), json.expected.nodes);
  mustFind("RapidJSON", "inputs", inputs, json.expected.inputs);
  mustFind("RapidJSON", "comments", document["comments"].Size(), json.expected.comments);
  return {"RapidJSON DOM", [&json] {
            rapidjson::Document fresh;
            const Stopwatch watch;
            fresh.Parse(json.text.data(), json.text.size());
            return watch.seconds();
          }};
}

}  // namespace bench
