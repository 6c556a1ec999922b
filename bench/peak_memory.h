// Peak memory of a stretch of work, above what the process held when it began: what the work itself
// took, without the generated cards that it works on.
#pragma once

#include <fstream>
#include <string>

namespace carnetel::bench {

class PeakMemory {
 public:
  PeakMemory() {
    // Linux: forgets the highest mark so far.
    std::ofstream("/proc/self/clear_refs") << "5";
    start_ = Read("VmRSS:");
  }
  [[nodiscard]] double Megabytes() const { return (Read("VmHWM:") - start_) / 1024; }

 private:
  // Kilobytes of a row of /proc/self/status.
  static double Read(const std::string& name) {
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
      double value = 0;
      if (word == name && status >> value) return value;
    }
    return 0;
  }

  double start_;
};

}  // namespace carnetel::bench
