// Prints the calls that the reader makes to a scene for one statement, and their results. The
// classes here forward the calls to the library's scene. Only those functions print that the
// statement needs: typeName() and path(), for example, do not. The functions that change the
// header, define a node or remove it do nothing.
#include <cstdio>
#include <map>
#include <memory>
#include <string>

#include <vsa/vsa.h>

namespace {

using namespace zn::korvo_sdk;
using zn::String;

bool isPrinting = false;

template <class... Arguments>
void print(const char* format, const Arguments&... arguments) {
  if (isPrinting) std::printf(format, arguments...);
}

const char* word(bool value) {
  return value ? "true" : "false";
}

class PrintingInput final : public interfaces::IInput {
 public:
  PrintingInput(Input* input, std::string label) : input_(input), label_(std::move(label)) {}

  AttrType type() const override { return told("type()", input_->type()); }
  String typeName() const override { return input_->typeName(); }
  String path() const override { return input_->path(); }
  bool holdsBuffer(bool flag) const override {
    return told("holdsBuffer(false)", input_->holdsBuffer(flag));
  }
  const interfaces::IEnumeration* enumValues() const override { return input_->enumValues(); }
  AttrType elementType() const override { return told("elementType()", input_->elementType()); }
  DataType bufferType() const override { return input_->bufferType(); }
  void appendElement() override {
    print("%s.appendElement()\n", label_.c_str());
    input_->appendElement();
  }
  bool isArray(bool flag) const override { return told("isArray(false)", input_->isArray(flag)); }
  bool refusesValues() const override { return told("refusesValues()", input_->refusesValues()); }
  IInput* createInput(const String& name, AttrType type) override {
    print("%s.createInput(\"%s\", %s) = %s\n", label_.c_str(), name.buf(), attrTypeName(type),
          name.buf());
    return inner(input_->createInput(name, type), name.buf());
  }
  IInput* createArray(const String& name, AttrType type) override {
    return inner(input_->createArray(name, type), name.buf());
  }
  bool hasInput(const String& name, AttrType type) override {
    const bool has = input_->hasInput(name, type);
    print("%s.hasInput(\"%s\", %s) = %s\n", label_.c_str(), name.buf(), attrTypeName(type),
          word(has));
    return has;
  }
  std::uint64_t count() const override {
    const std::uint64_t count = input_->count();
    print("%s.count() = %u\n", label_.c_str(), static_cast<unsigned>(count));
    return count;
  }
  IInput* element(std::uint64_t index) override {
    const std::string number = std::to_string(index);
    print("%s.element(%s) = %s[%s]\n", label_.c_str(), number.c_str(), label_.c_str(),
          number.c_str());
    return inner(input_->element(index), label_ + "[" + number + "]");
  }
  IInput* input(const String& name) override { return inner(input_->input(name), name.buf()); }
  void set(const AttrData& structure) override { input_->set(structure); }
  void assign(const AttrData& value) override {
    const double* const real = value.payload.components;
    print("%s.assign({%s, %g %g %g})\n", label_.c_str(), attrTypeName(value.type), real[0], real[1],
          real[2]);
    input_->assign(value);
  }
  void connect(interfaces::IOutput* output) override { input_->connect(output); }
  void disconnect() override { input_->disconnect(); }
  void setNode(interfaces::INode* node) override { input_->setNode(node); }

 private:
  bool told(const char* question, bool answer) const {
    print("%s.%s = %s\n", label_.c_str(), question, word(answer));
    return answer;
  }
  AttrType told(const char* question, AttrType answer) const {
    print("%s.%s = %s\n", label_.c_str(), question, attrTypeName(answer));
    return answer;
  }
  IInput* inner(Input* input, const std::string& label) {
    auto& known = inner_[input];
    if (known == nullptr) known = std::make_unique<PrintingInput>(input, label);
    return known.get();
  }

  Input* input_;
  std::string label_;
  std::map<Input*, std::unique_ptr<PrintingInput>> inner_;
};

class PrintingNode final : public interfaces::INode {
 public:
  explicit PrintingNode(Node* node) : node_(node), label_(node->name().buf()) {}

  String name() const override { return node_->name(); }
  String type() const override {
    print("%s.type() = \"%s\"\n", label_.c_str(), node_->type().buf());
    return node_->type();
  }
  bool hasInput(const String& name, AttrType type) override {
    const bool has = node_->hasInput(name, type);
    print("%s.hasInput(\"%s\", %s) = %s\n", label_.c_str(), name.buf(), attrTypeName(type),
          word(has));
    return has;
  }
  interfaces::IInput* input(const String& name) override { return made(node_->input(name)); }
  interfaces::IInput* createInput(const String& name, AttrType type) override {
    return made(node_->createInput(name, type));
  }
  interfaces::IInput* createArray(const String& name, AttrType elementType) override {
    print("%s.createArray(\"%s\", %s) = %s\n", label_.c_str(), name.buf(),
          attrTypeName(elementType), name.buf());
    return made(node_->createArray(name, elementType));
  }
  interfaces::IOutput* output(const String& name) override { return node_->output(name); }

 private:
  interfaces::IInput* made(Input* input) {
    inputs_.push_back(std::make_unique<PrintingInput>(input, input->name().buf()));
    return inputs_.back().get();
  }

  Node* node_;
  std::string label_;
  std::vector<std::unique_ptr<PrintingInput>> inputs_;
};

class PrintingScene final : public interfaces::IScene {
 public:
  interfaces::INode* findNode(const String& name) override {
    print("scene.findNode(\"%s\") = %s\n", name.buf(), rig_ == nullptr ? "null" : name.buf());
    return rig_.get();
  }
  interfaces::INode* createNode(const String& type, const String& name,
                                const String& reserved) override {
    rig_ = std::make_unique<PrintingNode>(scene_.createNode(type, name, reserved));
    return rig_.get();
  }
  interfaces::INode* defineNode(const String&) override { return nullptr; }
  void removeNode(const String&) override {}
  void setFileVersion(unsigned long long) override {}
  void setFileTime(const String&) override {}
  void pushFileComment(const String&) override {}
  void clearComments() override {}

 private:
  Scene scene_;
  std::unique_ptr<PrintingNode> rig_;
};

}  // namespace

int main() {
  PrintingScene scene;
  impl::parseString(&scene, "joint rig;");
  isPrinting = true;
  impl::parseString(&scene, "rig.bones[2].at = pos3(0 1 0);");
}
