#include "machine.h"

#include <fstream>
#include <map>

namespace LmImagingLib::Bench {

std::string ProcessorName() {
  std::map<std::string, std::string> facts;
  std::ifstream info("/proc/cpuinfo");
  for (std::string line; std::getline(info, line) && !line.empty();) {
    const std::size_t colon = line.find(": ");
    if (colon != std::string::npos) facts[line.substr(0, line.find_first_of("\t:"))] = line.substr(colon + 2);
  }
  if (facts["model name"].empty()) return "unknown processor";
  // Virtual machines hide the model's name. These two numbers still identify the generation.
  return facts["model name"] + " (family " + facts["cpu family"] + ", model " + facts["model"] + ")";
}

}  // namespace LmImagingLib::Bench
