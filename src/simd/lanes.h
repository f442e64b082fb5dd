#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <utility>

#include "simd/strip.h"

// Vectors of one register, and what kernels do with them. Included by kernels only, and compiled once for each
// instruction set; the intrinsics of an architecture stay in this folder.

// Bytes of a register, or 0 for the definition, which has no vectors.
#if defined(LM_SCALAR)
#define LM_LANES 0
#elif defined(__AVX512BW__)
#define LM_LANES 64
#elif defined(__AVX2__)
#define LM_LANES 32
#else
#define LM_LANES 16
#endif

// Whether loads and stores take masks of bytes.
#if defined(__AVX512BW__)
#define LM_HAS_MASKS 1
#else
#define LM_HAS_MASKS 0
#endif

// The bytes across which one instruction moves bytes, and words, freely.
#if defined(__AVX512VBMI__)
#define LM_BYTE_SHUFFLE 64
#else
#define LM_BYTE_SHUFFLE 16
#endif
#if defined(__AVX512BW__)
#define LM_WORD_SHUFFLE 64
#else
#define LM_WORD_SHUFFLE 16
#endif

// Whether one instruction stores the lanes of three or four registers in turn.
#if defined(__ARM_NEON)
#define LM_STORES_IN_TURN 1
#else
#define LM_STORES_IN_TURN 0
#endif

namespace LmImagingLib::LM_ISA {
namespace {

/// A member of a structure, loaded alone. Compilers load neighbours as a vector, which has to wait where the caller has
/// just stored them one by one.
template <class Member>
inline Member Alone(Member member) {
#if LM_LANES
  __asm__("" : "+r"(member));
#endif
  return member;
}

}  // namespace
}  // namespace LmImagingLib::LM_ISA

#if LM_LANES
namespace LmImagingLib::LM_ISA {
namespace {

/// Byte lanes of a register.
inline constexpr std::size_t kLanes = LM_LANES;

template <class Value>
struct LanesOf {
  using Type __attribute__((vector_size(kLanes))) = Value;
};
/// A register of values.
template <class Value>
using Lanes = typename LanesOf<Value>::Type;

using U8 = Lanes<std::uint8_t>;
using I16 = Lanes<std::int16_t>;
using U16 = Lanes<std::uint16_t>;
using U32 = Lanes<std::uint32_t>;
using I32 = Lanes<std::int32_t>;
using U64 = Lanes<std::uint64_t>;

/// Sums of products of words, in an order that `ClampPack` turns into that of the words.
struct I32Pair {
  I32 low, high;
};

/// Pixels of a block: samples of a register.
template <class Sample>
inline constexpr std::size_t kBlock = kLanes / sizeof(Sample);

/// Loads a register from any address.
inline U8 Load(const std::uint8_t* from) {
  U8 v;
  std::memcpy(&v, from, kLanes);
  return v;
}
inline U16 Load(const std::uint16_t* from) {
  U16 v;
  std::memcpy(&v, from, kLanes);
  return v;
}

inline void Store(U8 v, std::uint8_t* to) { std::memcpy(to, &v, kLanes); }
inline void Store(U16 v, std::uint16_t* to) { std::memcpy(to, &v, kLanes); }

/// Where to store past the caches: an address that is a multiple of kLanes.
struct Stream {
  std::uint8_t* at;

  Stream operator+(std::size_t bytes) const { return {at + bytes}; }
};

inline U8 Fill(std::uint8_t value) { return U8{} + value; }

}  // namespace
}  // namespace LmImagingLib::LM_ISA

#if defined(__x86_64__)
#include "simd/lanes_x86.h"
#elif defined(__wasm__)
#include "simd/lanes_wasm.h"
#else
#include "simd/lanes_neon.h"
#endif
#include "simd/parts.h"

namespace LmImagingLib::LM_ISA {
namespace {

/// The value in a register. Left alone, compilers load a value that is used twice from memory twice, and loads that
/// cross cache lines are what a neighbourhood is made of.
template <class Vector>
inline Vector Pinned(Vector v) {
#if defined(__x86_64__)
  __asm__("" : "+x"(v));
#endif
  return v;
}

/// Samples less 128, as signed bytes.
inline U8 Signed(U8 samples) { return samples ^ 0x80; }

/// The sums of the products of neighbours, of signed bytes by two factors of 0 to 255. They must fit words.
inline I16 MultiplyAddBytes(U8 bytes, std::uint8_t even, std::uint8_t odd) {
  const auto factors = static_cast<std::uint16_t>(even | odd << 8);
  return MultiplyAddBytes(bytes, U16{} + factors);
}

/// The truncated mean of each pair of samples: halves were rounded up where the sum is odd.
template <class Vector>
inline Vector MeanDown(Vector a, Vector b) {
  return MeanUp(a, b) - ((a ^ b) & 1);
}

// Register `kPart` of the elements a0 b0 a1 b1 ...
template <std::size_t kPart, class V, std::size_t... kLane>
inline V Zip(V a, V b, std::index_sequence<kLane...>) {
  constexpr std::size_t kCount = sizeof...(kLane);
  return __builtin_shufflevector(a, b, ((kPart * kCount + kLane) / 2 + kLane % 2 * kCount)...);
}

/// The bytes of a vector as 16-bit lanes, in their order.
inline U16 FirstHalf(U8 v) { return U16(Zip<0>(v, U8{}, std::make_index_sequence<kLanes>{})); }
inline U16 SecondHalf(U8 v) { return U16(Zip<1>(v, U8{}, std::make_index_sequence<kLanes>{})); }

}  // namespace
}  // namespace LmImagingLib::LM_ISA
#endif
