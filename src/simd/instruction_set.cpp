#include "simd/instruction_set.h"

namespace LmImagingLib {

namespace {

#define LM_NAME(Set, Type, Name) #Set,
constexpr const char* kNames[] = {LM_FOR_EACH_INSTRUCTION_SET(LM_NAME, , )};
#undef LM_NAME

std::size_t BestInstructionSet() {
  std::size_t best = kInstructionSets - 1;
  while (!HasInstructionSet(best)) --best;
  return best;
}

std::size_t sActive = BestInstructionSet();

}  // namespace

const char* InstructionSetName(std::size_t set) { return kNames[set]; }

bool HasInstructionSet(std::size_t set) {
#if defined(LM_VECTOR_X86)
  __builtin_cpu_init();
#define LM_HAS(feature) __builtin_cpu_supports(feature) != 0
#else
// NEON belongs to its architecture, and engines without vectors do not load a WebAssembly module that has them.
#define LM_HAS(feature) true
#endif
#define LM_SUPPORTED(Set, Type, Name) LM_FEATURES_##Set,
  const bool supported[] = {LM_FOR_EACH_INSTRUCTION_SET(LM_SUPPORTED, , )};
#undef LM_SUPPORTED
#undef LM_HAS
  return supported[set];
}

std::size_t ActiveInstructionSet() { return sActive; }

void ForceInstructionSet(std::size_t set) { sActive = set; }

}  // namespace LmImagingLib
