// ProblemList: the problems of one call of a writing function. Internal.
#pragma once

#include <string_view>

#include <vsa/write.h>

namespace vsa::impl {

class ProblemList {
 public:
  /// Adds at most `kept` problems to `result`, which must exist as long as this object.
  ProblemList(WriteResult& result, std::size_t kept) : result_(result), kept_(kept) {}

  void add(std::string_view node, std::string_view input, std::string_view reason,
           bool isReplaced) {
    ++result_.problemCount;
    if (result_.problems.size() >= kept_) return;
    result_.problems.push_back(
        {std::string(node), std::string(input), std::string(reason), isReplaced});
  }

 private:
  WriteResult& result_;
  std::size_t kept_;
};

}  // namespace vsa::impl
