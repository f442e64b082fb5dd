#include "simd/instruction_set.h"

#include <gtest/gtest.h>

#include <iostream>
#include <string>

namespace LmImagingLib {
namespace {

TEST(InstructionSet, IsTheBestOfTheProcessor) {
  const std::size_t active = ActiveInstructionSet();
  std::string offered;
  std::size_t best = 0;
  for (std::size_t set = 0; set < kInstructionSets; ++set) {
    if (!HasInstructionSet(set)) continue;
    offered += std::string(offered.empty() ? "" : " ") + InstructionSetName(set);
    best = set;
  }
  EXPECT_STREQ(InstructionSetName(active), InstructionSetName(best)) << "of " << offered;
  // For scripts that run the tests on another processor.
  std::cout << "instruction sets here: " << offered << "; in use: " << InstructionSetName(active) << '\n';
}

}  // namespace
}  // namespace LmImagingLib
