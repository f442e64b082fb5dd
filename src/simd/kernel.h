#pragma once

#include "simd/instruction_set.h"
#include "simd/strip.h"

/// Declares a kernel in each instruction set, and `k<Name>` as its twins.
#if defined(LM_VECTOR_X86)
#define LM_DECLARE_KERNEL(Type, Name) \
  namespace scalar {                  \
  Type Name;                          \
  }                                   \
  namespace sse41 {                   \
  Type Name;                          \
  }                                   \
  namespace avx2 {                    \
  Type Name;                          \
  }                                   \
  namespace avx512vbmi {              \
  Type Name;                          \
  }                                   \
  inline constexpr Twins<Type> k##Name{{scalar::Name, sse41::Name, avx2::Name, avx512vbmi::Name}};
#elif defined(LM_VECTOR_NEON)
#define LM_DECLARE_KERNEL(Type, Name) \
  namespace scalar {                  \
  Type Name;                          \
  }                                   \
  namespace neon {                    \
  Type Name;                          \
  }                                   \
  inline constexpr Twins<Type> k##Name{{scalar::Name, neon::Name}};
#else
#define LM_DECLARE_KERNEL(Type, Name) \
  namespace scalar {                  \
  Type Name;                          \
  }                                   \
  inline constexpr Twins<Type> k##Name{{scalar::Name}};
#endif
