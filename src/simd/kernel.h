#pragma once

#include "simd/instruction_set.h"
#include "simd/strip.h"

/// Declares a kernel in each instruction set, and `k<Name>` as its twins.
#define LM_DECLARE_KERNEL(Type, Name)                   \
  LM_FOR_EACH_INSTRUCTION_SET(LM_KERNEL_IN, Type, Name) \
  inline constexpr Twins<Type> k##Name{{LM_FOR_EACH_INSTRUCTION_SET(LM_KERNEL_OF, Type, Name)}};
#define LM_KERNEL_IN(Set, Type, Name) \
  namespace Set {                     \
  Type Name;                          \
  }
#define LM_KERNEL_OF(Set, Type, Name) Set::Name,
