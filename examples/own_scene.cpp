// Implements a scene of its own. The program reads several texts into one scene, and prints the
// links between the nodes as a graph in the DOT language.
//
//   own_scene FILE... > links.dot
#include <cstdio>
#include <cstdlib>
#include <deque>
#include <exception>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include <vsa/parse.h>

using namespace zn::korvo_sdk;
using namespace zn::korvo_sdk::interfaces;
using zn::String;

// The limits of the scene. Without them, a text of a few bytes could create billions of elements,
// and a long path could exhaust the stack.
constexpr std::size_t MAX_INPUTS = 1000000, MAX_DEPTH = 100;

// An input, an element or a member. It stores its types and links, and no values.
struct Input final : IInput {
  Input(std::deque<Input>& pool, const Input* outer, const String& step, AttrType type, int kind)
      : all(pool), parent(outer), label(step), valueType(type), elementKind(kind) {}
  AttrType type() const override { return valueType; }
  String typeName() const override { return attrTypeName(valueType); }
  String path() const override { return parent == nullptr ? label : parent->path() + label; }
  bool holdsBuffer(bool) const override { return valueType == AttrType::Buffer; }
  const IEnumeration* enumValues() const override { return nullptr; }
  AttrType elementType() const override { return static_cast<AttrType>(elementKind); }
  DataType bufferType() const override { return static_cast<DataType>(elementKind); }
  void appendElement() override {
    elements.push_back(make(String::format("[%zu]", elements.size()), elementType(), 0));
  }
  bool isArray(bool) const override { return valueType == AttrType::Array; }
  bool refusesValues() const override { return false; }
  IInput* createInput(const String& name, AttrType type) override { return member(name, type, 0); }
  IInput* createArray(const String& name, AttrType element) override {
    return member(name, AttrType::Array, static_cast<int>(element));
  }
  bool hasInput(const String& name, AttrType) override { return members.count(name.buf()) != 0; }
  std::uint64_t count() const override { return elements.size(); }
  IInput* element(std::uint64_t index) override { return elements[index]; }
  IInput* input(const String& name) override { return members.at(name.buf()); }
  void set(const AttrData& structure) override { elementKind = structure.elementType; }
  void assign(const AttrData& value) override {  // frees the memory, and stores no value
    if (value.type == AttrType::String) std::free(value.payload.string);
    if (value.type == AttrType::Buffer) std::free(value.payload.buffer.memory);
    elementKind = value.elementType;
  }
  void connect(IOutput* output) override { source = output; }
  void disconnect() override { source = nullptr; }
  void setNode(INode* node) override {
    if (valueType == AttrType::Null)
      target = node;  // if the input has a value, the reference is ignored
  }
  Input* make(const String& step, AttrType type, int kind) {
    if (all.size() == MAX_INPUTS || level == MAX_DEPTH) throw std::runtime_error("too many inputs");
    return &all.emplace_back(all, this, step, type, kind);
  }
  Input* member(const String& name, AttrType type, int kind) {
    if (valueType == AttrType::Null) valueType = AttrType::Object;
    if (valueType != AttrType::Object || name[0] == '[') return nullptr;
    return members[name.buf()] = make(String(".") + name, type, kind);
  }
  std::deque<Input>& all;
  const Input*
      parent;  // the array or object that contains the input, or null for an input of a node
  std::size_t level = parent == nullptr ? 0 : parent->level + 1;
  String label;
  AttrType valueType;
  int elementKind;  // the AttrType of an array's elements or the DataType of a buffer's elements
  std::vector<Input*> elements;
  std::map<std::string, Input*> members;
  IOutput* source = nullptr;
  INode* target = nullptr;
};
struct Output final : IOutput {
  Output(const INode& from, const String& called) : node(from), label(called) {}
  const INode& node;
  String label;
};
struct Node final : INode {
  Node(std::deque<Input>& pool, const String& called, const String& name)
      : ofType(called), inputs(pool, nullptr, name, AttrType::Object, 0) {}
  String name() const override { return inputs.label; }
  String type() const override { return ofType; }
  bool hasInput(const String& n, AttrType t) override { return inputs.hasInput(n, t); }
  IInput* input(const String& n) override { return inputs.input(n); }
  IInput* createInput(const String& n, AttrType t) override { return inputs.createInput(n, t); }
  IInput* createArray(const String& n, AttrType t) override { return inputs.createArray(n, t); }
  IOutput* output(const String& n) override {
    return &outputs.try_emplace(n.buf(), *this, n).first->second;
  }
  String ofType;
  Input inputs;  // an object whose members are the inputs of the node
  std::map<std::string, Output> outputs;
};
struct Graph final : IScene {
  INode* findNode(const String& name) override {
    const auto at = names.find(name.buf());
    return at == names.end() ? nullptr : at->second;
  }
  INode* createNode(const String& type, const String& name, const String&) override {
    return names[name.buf()] = &nodes.emplace_back(inputs, type, name);
  }
  INode* defineNode(const String& name) override { return createNode(name, name, String()); }
  void removeNode(const String& name) override {
    names.erase(name.buf());
  }  // the object stays, because links may refer to it
  void setFileVersion(unsigned long long) override {}
  void setFileTime(const String&) override {}
  void pushFileComment(const String&) override {}
  void clearComments() override {}
  std::deque<Input> inputs;
  std::deque<Node> nodes;
  std::map<std::string, Node*> names;  // the nodes that were not removed
};

// The functions below print the scene.

void printEdges(Graph& graph, const Input& input, const String& node) {
  const auto* const source = static_cast<const Output*>(input.source);
  if (source != nullptr && graph.findNode(source->node.name()) == &source->node) {
    std::printf("  \"%s\" -> \"%s\" [label=\"%s > %s\"];\n", source->node.name().buf(), node.buf(),
                source->label.buf(), input.path().buf());
  }
  if (input.target != nullptr && graph.findNode(input.target->name()) == input.target) {
    std::printf("  \"%s\" -> \"%s\" [label=\"%s\", style=dashed];\n", node.buf(),
                input.target->name().buf(), input.path().buf());
  }
  for (const auto& [name, member] : input.members) printEdges(graph, *member, node);
  for (const Input* const element : input.elements) printEdges(graph, *element, node);
}

int main(int count, char** arguments) {
  Graph graph;
  bool isRead = count > 1;
  try {
    for (int i = 1; i < count; ++i) {
      const zn::File file = zn::File::open(arguments[i]);
      isRead = impl::parseVsa(&graph, file, false) && isRead && !file.failed();
      if (file.failed()) std::fprintf(stderr, "%s: %s\n", arguments[i], file.error().buf());
    }
  } catch (const std::exception& error) {
    std::fprintf(stderr, "error: %s\n", error.what());
    isRead = false;
  }
  std::printf("digraph scene {\n");
  for (const auto& [name, node] : graph.names) {
    std::printf("  \"%s\" [label=\"%s %s\"];\n", name.c_str(), node->type().buf(), name.c_str());
    printEdges(graph, node->inputs, node->name());
  }
  std::printf("}\n");
  return isRead ? 0 : 1;
}
