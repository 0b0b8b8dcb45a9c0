#pragma once

#include <fstream>
#include <string>

#if defined(__GLIBC__)
#include <malloc.h>
#endif

namespace orva {

/// How much memory a benchmark takes at its peak, beyond what the process held
/// when the object was made. Zero on a system that does not tell.
class PeakMemory {
 public:
  PeakMemory() {
#if defined(__GLIBC__)
    malloc_trim(0);  // what preparations have freed does not count
#endif
    std::ofstream("/proc/self/clear_refs") << "5";
    before_ = megabytes("VmRSS:");
  }
  double megabytes() const { return megabytes("VmHWM:") - before_; }

 private:
  static double megabytes(const std::string& name) {
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
      double kilobytes = 0;
      if (word == name && status >> kilobytes) return kilobytes / 1024;
    }
    return 0;
  }

  double before_ = 0;
};

}  // namespace orva
