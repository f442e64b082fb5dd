#include "simd/instruction_set.h"

#include <gtest/gtest.h>

#include <iostream>

#include "simd/each_set.h"

namespace LmImagingLib {
namespace {

TEST(InstructionSet, IsTheBestOfTheProcessor) {
  EXPECT_EQ(ActiveInstructionSet(), InstructionSetsHere().back());
  // For scripts that run the tests on another processor.
  std::cout << "instruction sets here:";
  for (const std::size_t set : InstructionSetsHere()) std::cout << ' ' << InstructionSetName(set);
  std::cout << "; in use: " << InstructionSetName(ActiveInstructionSet()) << '\n';
}

}  // namespace
}  // namespace LmImagingLib
