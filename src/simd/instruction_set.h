#pragma once

#include <cstddef>

#include "simd/instruction_sets.h"

namespace LmImagingLib {

/// The number of instruction sets that kernels are compiled for.
#define LM_COUNT(Set, Type, Name) +1  // NOLINT(bugprone-macro-parentheses): a term of the sum below
inline constexpr std::size_t kInstructionSets = 0 LM_FOR_EACH_INSTRUCTION_SET(LM_COUNT, , );
#undef LM_COUNT

/// The name of an instruction set, which is also the namespace of its kernels.
const char* InstructionSetName(std::size_t set);

/// Whether the processor has it.
bool HasInstructionSet(std::size_t set);

/// The set in use: the best that the processor has, chosen once, when the library loads.
std::size_t ActiveInstructionSet();

/// Makes a set that the processor has the one in use, while nothing converts. For tests and benchmarks.
void ForceInstructionSet(std::size_t set);

/// A kernel in each instruction set.
template <class Kernel>
struct Twins {
  Kernel* of[kInstructionSets];

  Kernel* Active() const { return of[ActiveInstructionSet()]; }
  /// The scalar one, which is also the fastest for a pixel or two.
  Kernel* Definition() const { return of[0]; }
};

}  // namespace LmImagingLib
