// The candidate of simdjson On-Demand. It fills a scene that a host could use: nodes with type and
// name, inputs with name and typed value, and buffers as vectors of their component type.
#include <simdjson.h>

#include <memory>
#include <variant>
#include <vector>

#include "bench/peers/peers.h"

namespace bench {
namespace {

namespace od = simdjson::ondemand;

struct Tuple {
  std::string type;
  std::vector<double> components;
};

struct Link {
  std::string node;
  std::string output;
};

struct Buffer {
  std::string type;
  std::variant<std::vector<float>, std::vector<int32_t>, std::string> elements;
};

struct Input {
  std::string name;
  std::variant<bool, int64_t, double, std::string, Tuple, Link, Buffer> value;
};

struct Node {
  std::string type;
  std::string name;
  std::vector<Input> inputs;
};

struct JsonScene {
  std::vector<Node> nodes;
  std::vector<std::string> comments;
};

std::string stringOf(simdjson::simdjson_result<od::value> value) {
  return std::string(std::string_view(value.get_string()));
}

template <class Number, class Stored>
void fill(std::vector<Stored>& to, od::array numbers, size_t count) {
  to.reserve(count);
  for (auto number : numbers) {
    if constexpr (std::is_same_v<Number, double>) {
      to.push_back(static_cast<Stored>(double(number.get_double())));
    } else {
      to.push_back(static_cast<Stored>(int64_t(number.get_int64())));
    }
  }
}

size_t widthOf(std::string_view type) {
  return type == "vec3f" ? 3 : type == "vec2f" ? 2 : 1;
}

void readBuffer(Buffer& buffer, std::string type, od::object& object) {
  buffer.type = std::move(type);
  const size_t count = widthOf(buffer.type) * size_t(uint64_t(object["count"].get_uint64()));
  auto data = object["data"];
  if (buffer.type == "rgba8") {
    buffer.elements = std::string(std::string_view(data.get_string()));
  } else if (buffer.type == "int32") {
    fill<int64_t>(buffer.elements.emplace<std::vector<int32_t>>(), data.get_array(), count);
  } else {
    fill<double>(buffer.elements.emplace<std::vector<float>>(), data.get_array(), count);
  }
}

void readObject(Input& input, od::object object) {
  for (auto field : object) {
    const std::string_view key = field.unescaped_key();
    if (key == "type") {
      readBuffer(input.value.emplace<Buffer>(), stringOf(field.value()), object);
      return;
    }
    Link* link = std::get_if<Link>(&input.value);
    if (!link) link = &input.value.emplace<Link>();
    (key == "node" ? link->node : link->output) = stringOf(field.value());
  }
}

void readTuple(Input& input, od::array array) {
  Tuple& tuple = input.value.emplace<Tuple>();
  tuple.components.reserve(4);
  for (auto element : array) {
    if (tuple.type.empty()) {
      tuple.type = std::string(std::string_view(element.get_string()));
    } else {
      tuple.components.push_back(element.get_double());
    }
  }
}

void readNumber(Input& input, od::value& value) {
  if (value.get_number_type() == od::number_type::floating_point_number) {
    input.value = double(value.get_double());
  } else {
    input.value = int64_t(value.get_int64());
  }
}

void readInput(Input& input, od::value value) {
  switch (value.type()) {
    case od::json_type::boolean:
      input.value = bool(value.get_bool());
      break;
    case od::json_type::number:
      readNumber(input, value);
      break;
    case od::json_type::string:
      input.value = std::string(std::string_view(value.get_string()));
      break;
    case od::json_type::array:
      readTuple(input, value.get_array());
      break;
    case od::json_type::object:
      readObject(input, value.get_object());
      break;
    default:
      break;
  }
}

void readNode(Node& node, od::object object) {
  node.type = stringOf(object["type"]);
  node.name = stringOf(object["name"]);
  od::object inputs = object["inputs"].get_object();
  for (auto field : inputs) {
    Input& input = node.inputs.emplace_back();
    input.name = std::string(std::string_view(field.unescaped_key()));
    readInput(input, field.value());
  }
}

void readScene(JsonScene& scene, od::parser& parser, const simdjson::padded_string& text) {
  od::document document = parser.iterate(text);
  for (auto element : document["nodes"].get_array()) {
    readNode(scene.nodes.emplace_back(), element.get_object());
  }
  for (auto comment : document["comments"].get_array()) {
    scene.comments.emplace_back(std::string_view(comment.get_string()));
  }
}

size_t numbersOf(const JsonScene& scene) {
  size_t count = 0;
  for (const Node& node : scene.nodes) {
    for (const Input& input : node.inputs) {
      const Buffer* buffer = std::get_if<Buffer>(&input.value);
      if (buffer)
        std::visit([&](const auto& elements) { count += elements.size(); }, buffer->elements);
    }
  }
  return count;
}

size_t inputsOf(const JsonScene& scene) {
  size_t count = 0;
  for (const Node& node : scene.nodes) count += node.inputs.size();
  return count;
}

}  // namespace

Candidate simdjsonReader(const Text& json) {
  const auto text = std::make_shared<simdjson::padded_string>(json.text);
  const auto parser = std::make_shared<od::parser>();
  JsonScene scene;
  readScene(scene, *parser, *text);
  requireCount("simdjson", "nodes", scene.nodes.size(), json.expected.nodes);
  requireCount("simdjson", "inputs", inputsOf(scene), json.expected.inputs);
  requireCount("simdjson", "numbers", numbersOf(scene), json.expected.numbers);
  requireCount("simdjson", "comments", scene.comments.size(), json.expected.comments);
  return {"simdjson On-Demand + scene", [text, parser] {
            JsonScene fresh;
            const Stopwatch watch;
            readScene(fresh, *parser, *text);
            return watch.seconds();
          }};
}

}  // namespace bench
