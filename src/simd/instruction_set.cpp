#include "simd/instruction_set.h"

namespace LmImagingLib {

namespace {

#define LM_NAME(Name) #Name,
constexpr const char* kNames[] = {LM_FOR_EACH_INSTRUCTION_SET(LM_NAME)};
#undef LM_NAME

std::size_t BestInstructionSet() {
  std::size_t best = kInstructionSets - 1;
  while (!HasInstructionSet(best)) --best;
  return best;
}

std::size_t& Active() {
  static std::size_t sActive = BestInstructionSet();
  return sActive;
}

}  // namespace

const char* InstructionSetName(std::size_t set) { return kNames[set]; }

bool HasInstructionSet(std::size_t set) {
#if defined(LM_VECTOR_X86)
  __builtin_cpu_init();
  switch (set) {
    case 1:
      return __builtin_cpu_supports("sse4.1") != 0;
    case 2:
      return __builtin_cpu_supports("avx2") != 0;
    case 3:
      return __builtin_cpu_supports("avx512bw") != 0 && __builtin_cpu_supports("avx512vl") != 0 &&
             __builtin_cpu_supports("avx512dq") != 0 && __builtin_cpu_supports("avx512vbmi") != 0 &&
             __builtin_cpu_supports("bmi2") != 0;
    default:
      return true;
  }
#else
  (void)set;
  return true;
#endif
}

std::size_t ActiveInstructionSet() { return Active(); }

void ForceInstructionSet(std::size_t set) { Active() = set; }

}  // namespace LmImagingLib
