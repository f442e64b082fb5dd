#pragma once

#include "simd/instruction_set.h"
#include "simd/strip.h"

/// Declares a function in each instruction set.
#define LM_DECLARE_IN_SETS(Type, Name) LM_FOR_EACH_INSTRUCTION_SET(LM_DECLARE_IN, Type, Name)
#define LM_DECLARE_IN(Set, Type, Name) \
  namespace Set {                      \
  Type Name;                           \
  }

/// The twins of a declared function, which may be overloaded.
#define LM_TWINS(Type, Name)                                  \
  Twins<Type> {                                               \
    { LM_FOR_EACH_INSTRUCTION_SET(LM_MEMBER_OF, Type, Name) } \
  }
#define LM_MEMBER_OF(Set, Type, Name) Set::Name,

/// Declares a kernel, and `k<Name>` as its twins.
#define LM_DECLARE_KERNEL(Type, Name) \
  LM_DECLARE_IN_SETS(Type, Name)      \
  inline constexpr Twins<Type> k##Name = LM_TWINS(Type, Name);

namespace LmImagingLib {

// Decoders are declared by a result that has to be complete when their address is taken: clang otherwise gives them
// another signature, at which WebAssembly stops.
static_assert(sizeof(Channels<std::uint8_t>) == sizeof(Channels<std::uint16_t>));

/// Twins of one kernel for samples of bytes and for words.
template <template <class> class Kernel>
struct SampleTwins {
  Twins<Kernel<std::uint8_t>> bytes;
  Twins<Kernel<std::uint16_t>> words;  ///< null where samples have 8 bits

  template <class Sample>
  constexpr const Twins<Kernel<Sample>>& Of() const {
    if constexpr (sizeof(Sample) == 1) {
      return bytes;
    } else {
      return words;
    }
  }
};

}  // namespace LmImagingLib

// NOLINTBEGIN(bugprone-macro-parentheses): the arguments are templates and names
/// Declares a kernel for both samples, and `k<Name>` as its twins.
#define LM_DECLARE_WIDE_KERNEL(Kernel, Name)      \
  LM_DECLARE_IN_SETS(Kernel<std::uint8_t>, Name)  \
  LM_DECLARE_IN_SETS(Kernel<std::uint16_t>, Name) \
  inline constexpr SampleTwins<Kernel> k##Name = LM_WIDE_TWINS(Kernel, Name);
#define LM_WIDE_TWINS(Kernel, Name) \
  SampleTwins<Kernel> { LM_TWINS(Kernel<std::uint8_t>, Name), LM_TWINS(Kernel<std::uint16_t>, Name) }
// NOLINTEND(bugprone-macro-parentheses)
