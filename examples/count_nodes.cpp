// Counts the nodes of a text by their type, also those that the text removes. The scene stores only
// the names of the nodes, so that the reader can find them. Values are read, checked and dropped.
//
//   count_nodes FILE
#include <cstdio>
#include <map>
#include <memory>
#include <string>
#include <string_view>

#include <vsa/vsa.h>

class NodeCounter final : public vsa::HostScene {
 public:
  std::map<std::string, int, std::less<>> counts;

 private:
  std::unique_ptr<vsa::HostNode> makeNode(std::string_view type, std::string_view) override {
    ++counts[std::string(type)];
    return nullptr;  // do not store the node
  }
};

int main(int count, char** arguments) {
  NodeCounter counter;
  const vsa::ReadOutcome outcome = vsa::readFileInto(counter, count == 2 ? arguments[1] : nullptr);
  for (const vsa::Diagnostic& found : outcome.diagnostics)
    std::fprintf(stderr, "%s\n", found.logLine().c_str());
  for (const auto& [type, nodes] : counter.counts) std::printf("%6d %s\n", nodes, type.c_str());
  if (outcome.status == vsa::ReadStatus::Unreadable)
    std::fprintf(stderr, "%s\n", outcome.message.c_str());
  return outcome.isComplete() ? 0 : 1;
}
