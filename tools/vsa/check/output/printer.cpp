#include "tools/vsa/check/output/printer.h"

#include <cstdio>

#include "tools/vsa/common/output/output.h"

namespace vsa_tools {

void Printer::print(const std::vector<RenderedFinding>& findings) {
  for (const RenderedFinding& finding : findings) {
    if (printed_ == maxFindings_) {
      isFull_ = true;
      break;
    }
    ++printed_;
    ++counts_[static_cast<int>(finding.level)];
    write(format_.add(finding.text));
  }
}

bool Printer::end(const Totals& totals, const std::string& summary) {
  write(format_.end(totals));
  if (!summary.empty()) {
    if (format_.isForPeople()) {
      write(summary + '\n');
    } else {
      progress_.hide();
      printLine(summary);
    }
  }
  return std::fflush(stdout) == 0 && !isFailed_;
}

// cppcheck assumes wrongly that the string of the view is destroyed.
void Printer::write(std::string_view text) {
  if (text.empty()) return;
  progress_.hide();
  // cppcheck-suppress invalidLifetime
  if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size()) {
    isFailed_ = true;
    isFull_ = true;
  }
}

}  // namespace vsa_tools
