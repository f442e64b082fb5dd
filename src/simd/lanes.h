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

using U8 = std::uint8_t __attribute__((vector_size(kLanes)));
using I16 = std::int16_t __attribute__((vector_size(kLanes)));
using U16 = std::uint16_t __attribute__((vector_size(kLanes)));
using U32 = std::uint32_t __attribute__((vector_size(kLanes)));
using I32 = std::int32_t __attribute__((vector_size(kLanes)));

/// Sums of products of words, in an order that `ClampPack` turns into that of the words.
struct I32Pair {
  I32 low, high;
};

template <class Sample>
struct LanesOf {
  using Type = U8;
};
template <>
struct LanesOf<std::uint16_t> {
  using Type = U16;
};
/// A register of samples.
template <class Sample>
using Lanes = typename LanesOf<Sample>::Type;

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
#else
#include "simd/lanes_neon.h"
#endif

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

/// Loads and stores the first `count` samples, at most a register's, and touches no other; the rest loads as 0.
inline U16 LoadPart(const std::uint16_t* from, std::size_t count) {
  return U16(LoadPart(reinterpret_cast<const std::uint8_t*>(from), 2 * count));
}
inline void StorePart(U16 v, std::uint16_t* to, std::size_t count) {
  StorePart(U8(v), reinterpret_cast<std::uint8_t*>(to), 2 * count);
}

/// Where to store the first `bytes` bytes, and no others.
struct Part {
  std::uint8_t* at;
  std::size_t bytes;

  Part operator+(std::size_t count) const { return {at + count, bytes - (count < bytes ? count : bytes)}; }
};

inline void Store(U8 v, Part to) {
  if (to.bytes >= kLanes) {
    Store(v, to.at);
  } else if (to.bytes != 0) {
    StorePart(v, to.at, to.bytes);
  }
}

template <class To>
inline void Store(U16 v, To to) {
  Store(U8(v), to);
}

template <class Index, std::size_t kStep, class Vector, std::size_t... kLane>
inline Vector PickStep(Vector before, Vector next, std::index_sequence<kLane...>) {
  // Lanes that are in the vectors before stay where an earlier step put them.
  constexpr std::size_t kCount = sizeof...(kLane);
  return __builtin_shufflevector(before, next,
                                 (Index::At(kLane) / kCount == kStep ? kCount + Index::At(kLane) % kCount
                                  : kStep == 1                       ? Index::At(kLane) % kCount
                                                                     : kLane)...);
}

template <class Index, std::size_t kStep, class Vector, std::size_t kVectors>
inline Vector PickFrom(Vector before, const Vector (&window)[kVectors]) {
  if constexpr (kStep == kVectors) {
    return before;
  } else {
    constexpr std::size_t kCount = sizeof(Vector) / sizeof(window[0][0]);
    return PickFrom<Index, kStep + 1>(PickStep<Index, kStep>(before, window[kStep], std::make_index_sequence<kCount>{}),
                                      window);
  }
}

/// Lane i of the result is sample `Index::At(i)` of the window.
template <class Index, class Vector, std::size_t kVectors>
inline Vector Pick(const Vector (&window)[kVectors]) {
  if constexpr (kVectors == 1) {
    constexpr std::size_t kCount = sizeof(Vector) / sizeof(window[0][0]);
    return PickStep<Index, 1>(window[0], window[0], std::make_index_sequence<kCount>{});
  } else {
    return PickFrom<Index, 1>(window[0], window);
  }
}

/// The two bytes of words, each as the upper half of a word; the lower half is 0.
struct WordBytes {
  U16 low, high;
};

#if LM_BYTE_SHUFFLE == 64
template <class Index, std::size_t... kLane>
inline WordBytes PickWords(const U8 (&window)[2], std::index_sequence<kLane...>) {
  // A shuffle that leaves lanes out costs as much as one that does not.
  constexpr __mmask64 kUpper = 0xAAAAAAAAAAAAAAAA;
  const U8 low{static_cast<std::uint8_t>(Index::At(kLane / 2 * 2))...};
  const U8 high{static_cast<std::uint8_t>(Index::At(kLane))...};
  return {U16(_mm512_maskz_permutex2var_epi8(kUpper, __m512i(window[0]), __m512i(low), __m512i(window[1]))),
          U16(_mm512_maskz_permutex2var_epi8(kUpper, __m512i(window[0]), __m512i(high), __m512i(window[1])))};
}
#endif

/// The words whose byte i is byte `Index::At(i)` of the window.
template <class Index>
inline WordBytes PickWords(const U8 (&window)[2]) {
#if LM_BYTE_SHUFFLE == 64
  return PickWords<Index>(window, std::make_index_sequence<kLanes>{});
#else
  const U16 words = U16(Pick<Index>(window));
  return {words << 8, words & 0xFF00};
#endif
}

/// Whether a product is faster than a table of bytes, which takes sixteen shuffles where they are narrow.
inline constexpr bool kGainsAreFaster = LM_BYTE_SHUFFLE < 64;

/// A table of bytes that is a gain.
class GainLanes {
 public:
  explicit GainLanes(const ChannelTable<std::uint8_t>& table)
      : mFactor(table.gain.factor), mDown(static_cast<std::uint16_t>(8 - table.gain.shift)) {}

  U8 operator[](U8 index) const {
    return ClampJoin(I16(MultiplyHigh(LowWords(index) >> mDown, mFactor)),
                     I16(MultiplyHigh(HighWords(index) >> mDown, mFactor)));
  }

 private:
  std::uint16_t mFactor, mDown;
};

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
