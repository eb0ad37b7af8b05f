// Tests of a host whose inputs exist as long as its scene and do not count references. It uses the
// default retain() and release() of the interface.
#include <gtest/gtest.h>

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include <vsa/parse.h>
#include <vsa/scene/scene_interface.h>
#include "tests/support/parser_fixture.h"
#include "vsa/apply/no_scene.h"

namespace zn::korvo_sdk {
namespace {

using vsa_tests::LoggedLines;
using vsa_tests::text;
using Lines = std::vector<std::string>;

class PlainOutput final : public interfaces::IOutput {};

/// An input of any type that records its links.
class PlainInput final : public interfaces::IInput {
 public:
  PlainInput(std::string name, AttrType type) : name_(std::move(name)), type_(type) {}

  Lines links;

  AttrType type() const override { return type_; }
  String typeName() const override { return attrTypeName(type_); }
  String path() const override { return vsa_tests::string(name_); }
  bool holdsBuffer(bool) const override { return false; }
  const interfaces::IEnumeration* enumValues() const override { return nullptr; }
  AttrType elementType() const override { return AttrType::Null; }
  DataType bufferType() const override { return DataType::Null; }
  void appendElement() override {}
  bool isArray(bool) const override { return false; }
  bool refusesValues() const override { return true; }
  IInput* createInput(const String&, AttrType) override { return nullptr; }
  IInput* createArray(const String&, AttrType) override { return nullptr; }
  bool hasInput(const String&, AttrType) override { return false; }
  std::uint64_t count() const override { return 0; }
  IInput* element(std::uint64_t) override { return nullptr; }
  IInput* input(const String&) override { return nullptr; }
  void set(const AttrData&) override {}
  void assign(const AttrData&) override {}
  void connect(interfaces::IOutput*) override { links.push_back("<- out"); }
  void disconnect() override { links.push_back("<- nothing"); }
  void setNode(interfaces::INode* node) override {
    links.push_back(node == nullptr ? "-> null" : "-> " + text(node->name()));
  }

 private:
  std::string name_;
  AttrType type_;
};

class PlainNode final : public interfaces::INode {
 public:
  std::map<std::string, PlainInput> inputs;

  String name() const override { return "n"; }
  String type() const override { return "lamp"; }
  bool hasInput(const String& name, AttrType) override { return inputs.count(text(name)) != 0; }
  interfaces::IInput* input(const String& name) override { return &inputs.at(text(name)); }
  interfaces::IInput* createInput(const String& name, AttrType type) override {
    return &inputs.try_emplace(text(name), text(name), type).first->second;
  }
  interfaces::IInput* createArray(const String&, AttrType) override { return nullptr; }
  interfaces::IOutput* output(const String&) override { return &output_; }

 private:
  PlainOutput output_;
};

class PlainScene final : public impl::NoScene {
 public:
  PlainNode node;

  interfaces::INode* findNode(const String& name) override { return name == "n" ? &node : nullptr; }
};

TEST(HostInput, NeedNotCount) {
  PlainScene scene;
  const LoggedLines log;
  EXPECT_TRUE(impl::parseString(&scene,
                                "n.a |= n.out; n.b = n; n.c |= null; n.d = null;\n"
                                "n.e |= n.out; n.e = n; n.e = null; n.f |= no.out; n.f = no;"));
  EXPECT_EQ(scene.node.inputs.at("a").links, Lines{"<- out"});
  EXPECT_EQ(scene.node.inputs.at("b").links, Lines{"-> n"});
  EXPECT_EQ(scene.node.inputs.at("c").links, Lines{"<- nothing"});
  EXPECT_EQ(scene.node.inputs.at("d").links, Lines{"-> null"});
  EXPECT_EQ(scene.node.inputs.at("e").links, (Lines{"<- out", "-> null"}));
  EXPECT_EQ(scene.node.inputs.at("f").links, Lines{});
  EXPECT_EQ(log.lines(), (Lines{"warning: Cannot connect nonexistent node no to f.",
                                "warning: Cannot assign nonexistent node no to f."}));
}

TEST(HostInput, NeedNotCountWhenTheParseFails) {
  PlainScene scene;
  const LoggedLines log;
  EXPECT_FALSE(impl::parseString(&scene, "n.a |= n.out; n.b = n; 42;"));
  EXPECT_EQ(scene.node.inputs.at("a").links, Lines{});
  EXPECT_EQ(scene.node.inputs.at("b").links, Lines{});
  EXPECT_EQ(log.lines(), Lines{"error: PARSE ERROR (1,22): unrecognized token '42'.."});
}

}  // namespace
}  // namespace zn::korvo_sdk
