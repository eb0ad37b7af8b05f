#include "tools/vsa/common/files/jobs.h"

#include <algorithm>
#include <thread>

namespace vsa_tools {

void addJobs(CommandOptions& options, unsigned& jobs) {
  options.add("-j,--jobs", jobs, "Files to work on at the same time; 0: one for each core")
      .valueName("N")
      .range(0, 1024);
}

unsigned workersFor(unsigned jobs) {
  return jobs != 0 ? jobs : std::max(std::thread::hardware_concurrency(), 1U);
}

}  // namespace vsa_tools
