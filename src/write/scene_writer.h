// SceneCheck, NodeWriter and LinkWriter: check and write the statements of a scene. Internal.
#pragma once

#include <string_view>

#include <vsa/write.h>
#include "write/problem_list.h"
#include "write/text/text_buffer.h"
#include "write/walk/scene_walk.h"

namespace vsa::impl {

/// Collects the problems of a scene. It writes nothing.
class SceneCheck final : public SceneVisitor {
 public:
  explicit SceneCheck(ProblemList& problems) : problems_(problems) {}

  void beginNode(const zn::korvo_sdk::Node&) override {}
  void value(const zn::korvo_sdk::Node&, std::string_view, zn::korvo_sdk::Input&, Form) override {}
  void connection(const zn::korvo_sdk::Node&, std::string_view,
                  const zn::korvo_sdk::Output&) override {}
  void endNode(const zn::korvo_sdk::Node&) override {}
  void problem(const zn::korvo_sdk::Node& node, std::string_view path, const char* reason,
               bool isReplaced) override {
    problems_.add(node.nameView(), path, reason, isReplaced);
  }

 private:
  ProblemList& problems_;
};

/// Writes the nodes with their values. With LinkPlace::WithNode, also writes their links. With
/// LinkPlace::Last, writes no links: "= null" replaces each reference, and "|= null" is written for
/// each input of Form::Link. LinkWriter writes the links later.
class NodeWriter final : public SceneVisitor {
 public:
  NodeWriter(TextBuffer& out, const WriteOptions& options, ProblemList& problems)
      : out_(out), options_(options), problems_(problems) {}

  void beginNode(const zn::korvo_sdk::Node& node) override;
  void value(const zn::korvo_sdk::Node& node, std::string_view path, zn::korvo_sdk::Input& input,
             Form form) override;
  void connection(const zn::korvo_sdk::Node& node, std::string_view path,
                  const zn::korvo_sdk::Output& output) override;
  void endNode(const zn::korvo_sdk::Node& node) override;
  void problem(const zn::korvo_sdk::Node& node, std::string_view path, const char* reason,
               bool isReplaced) override;

 private:
  void putTarget(const zn::korvo_sdk::Node& node, std::string_view path);

  TextBuffer& out_;
  const WriteOptions& options_;
  ProblemList& problems_;
  bool isBlock_ = false;  // whether the paths of the node are written without its name
};

/// Writes only the references that are not null, and the connections. Each statement begins with
/// the name of the node that has the link.
class LinkWriter final : public SceneVisitor {
 public:
  explicit LinkWriter(TextBuffer& out) : out_(out) {}

  void beginNode(const zn::korvo_sdk::Node&) override {}
  void value(const zn::korvo_sdk::Node& node, std::string_view path, zn::korvo_sdk::Input& input,
             Form form) override;
  void connection(const zn::korvo_sdk::Node& node, std::string_view path,
                  const zn::korvo_sdk::Output& output) override;
  void endNode(const zn::korvo_sdk::Node&) override {}
  void problem(const zn::korvo_sdk::Node&, std::string_view, const char*, bool) override {}

 private:
  TextBuffer& out_;
};

}  // namespace vsa::impl
