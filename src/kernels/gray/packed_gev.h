#pragma once

#include "simd/interleave.h"
#include "simd/packed.h"

namespace LmImagingLib::LM_ISA {
namespace {

/// Samples of 10 or 12 bits packed for GigE Vision: p0 top 8 bits, the low bits of p0 (from bit 0) and p1 (from bit 4),
/// p1 top 8 bits.
struct PackedGEV {
  static std::uint16_t First(const std::uint8_t* p, const SourceLines& in) { return Join(p[0], p[1], in); }
  static std::uint16_t Second(const std::uint8_t* p, const SourceLines& in) { return Join(p[2], p[1] >> 4, in); }

  // The bits of a sample below its top 8 ones.
  static std::uint32_t LowMask(const SourceLines& in) { return in.mask >> 8; }
  static std::uint16_t Join(std::uint32_t top, std::uint32_t low, const SourceLines& in) {
    return static_cast<std::uint16_t>(top * (LowMask(in) + 1) + (low & LowMask(in)));
  }

#if LM_LANES
  // The middle byte of three below the first or the last one.
  struct Bytes {
    static constexpr std::size_t At(std::size_t sample, std::size_t byte) {
      return sample / 2 * 3 + (byte == 0 ? 1 : sample % 2 * 2);
    }
  };
  // Of 12 bits, a product brings the low bits to the top of the lower byte.
  struct ToTop {
    static constexpr unsigned At(std::size_t sample) { return sample % 2 == 0 ? 16 : 1; }
  };

  template <class Groups, class Reader>
  static U16 Words(const Reader& read) {
    const U16 words = PackedWords<Groups, Bytes>(read, 0);
    const bool hasTenBits = LowMask(read.in) == 3;
    const std::uint16_t more = hasTenBits ? 2 : 0, kept = hasTenBits ? 0xC0 : 0xF0;
    return MultiplyHigh((words & 0xFF00) | (words * (EightValues<ToTop>() << more) & kept),
                        static_cast<std::uint16_t>(read.in.mask + 1));
  }
#endif
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA
