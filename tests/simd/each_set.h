#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <vector>

#include "simd/instruction_set.h"

namespace LmImagingLib {

/// Makes kernels run with one instruction set, for the length of a scope.
class ForcedInstructionSet {
 public:
  explicit ForcedInstructionSet(std::size_t set) { ForceInstructionSet(set); }
  ~ForcedInstructionSet() { ForceInstructionSet(mActive); }
  ForcedInstructionSet(const ForcedInstructionSet&) = delete;
  ForcedInstructionSet& operator=(const ForcedInstructionSet&) = delete;

 private:
  const std::size_t mActive = ActiveInstructionSet();
};

/// The instruction sets that the processor has.
inline std::vector<std::size_t> InstructionSetsHere() {
  std::vector<std::size_t> sets;
  for (std::size_t set = 0; set < kInstructionSets; ++set) {
    if (HasInstructionSet(set)) sets.push_back(set);
  }
  return sets;
}

/// Calls `use` with each of them.
template <class Use>
void ForEachInstructionSet(const Use& use) {
  for (const std::size_t set : InstructionSetsHere()) {
    SCOPED_TRACE(InstructionSetName(set));
    const ForcedInstructionSet forced(set);
    use();
  }
}

}  // namespace LmImagingLib
