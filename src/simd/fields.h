#pragma once

#include "simd/interleave.h"

// Samples that are bits of 32-bit pixels, as registers of samples. Packs narrow them within 16 bytes of a register; the
// fours that come out are collected in their order afterwards.
#if LM_LANES
namespace LmImagingLib::LM_ISA {
namespace {

inline constexpr std::size_t kUnits = kLanes / 16;

// The reverse of `Deal`.
template <std::size_t... kLane>
inline U32 Collect(U32 v, std::index_sequence<kLane...>) {
  return __builtin_shufflevector(v, v, (kLane % kUnits * 4 + kLane / kUnits)...);
}

// Of words the fours are eight bytes.
template <std::size_t... kLane>
inline U32 CollectPairs(U32 v, std::index_sequence<kLane...>) {
  return __builtin_shufflevector(v, v, (kLane / 2 % kUnits * 4 + kLane / 2 / kUnits * 2 + kLane % 2)...);
}

/// Bytes that were packed from four registers, in the order of these.
inline U8 CollectFours(U8 packed) { return U8(Collect(U32(packed), std::make_index_sequence<kLanes / 4>{})); }
/// The numbers of four registers, at most 255, as bytes in their order.
inline U8 NarrowInOrder(const I32 (&v)[4]) {
  return CollectFours(ClampJoin(ClampPack(v[0], v[1]), ClampPack(v[2], v[3])));
}
/// Those of two registers, at most 32767, as words.
inline U16 NarrowInOrder(const I32 (&v)[2]) {
  return U16(CollectPairs(U32(ClampPack(v[0], v[1])), std::make_index_sequence<kLanes / 4>{}));
}

/// Bits `at` to `at` + 7 of each pixel of four registers.
inline U8 FieldOf(const U32 (&pixels)[4], unsigned at) {
  const auto field = [&](std::size_t k) { return I32(pixels[k] >> at & 0xFF); };
  return NarrowInOrder({field(0), field(1), field(2), field(3)});
}

// The first bytes of four pixels, then their second ones, and so on, in each 16 bytes of a register.
template <std::size_t... kLane>
inline U32 BytesTogether(U8 pixels, std::index_sequence<kLane...>) {
  return U32(ShuffleUnits(pixels, U8{(kLane % 4 * 4 + kLane / 4 % 4)...}));
}

/// The bytes of pixels of four bytes by their place in the pixel, of four registers of pixels.
class FourBytes {
 public:
  explicit FourBytes(const U8 (&pixels)[4]) {
    U32 together[4];
    for (std::size_t k = 0; k < 4; ++k) together[k] = BytesTogether(pixels[k], std::make_index_sequence<kLanes>{});
    for (std::size_t k = 0; k < 2; ++k) {
      mPairs[0][k] = U64(ZipHalves<0>(together[2 * k], together[2 * k + 1]));
      mPairs[1][k] = U64(ZipHalves<1>(together[2 * k], together[2 * k + 1]));
    }
  }

  template <std::size_t kAt>
  U8 At() const {
    const U64(&pair)[2] = mPairs[kAt / 2];
    return U8(Collect(U32(ZipHalves<kAt % 2>(pair[0], pair[1])), std::make_index_sequence<kLanes / 4>{}));
  }

 private:
  U64 mPairs[2][2];  // the first and second bytes, and the third and fourth ones
};

/// The bits of `mask`, at most 15, from bit `at` on of each pixel of two registers.
inline U16 FieldOf(const U32 (&pixels)[2], unsigned at, std::uint32_t mask) {
  const auto field = [&](std::size_t k) { return I32(pixels[k] >> at & mask); };
  return NarrowInOrder({field(0), field(1)});
}

}  // namespace
}  // namespace LmImagingLib::LM_ISA
#endif
