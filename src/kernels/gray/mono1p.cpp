// Grayscale of 1, 2 or 4 bits, the first pixel in the lowest bits of a byte. Bits are repeated, so that white is white.
#include "kernels/decoder.h"
#include "simd/interleave.h"
#include "simd/packed.h"

namespace LmImagingLib::LM_ISA {
namespace {

template <unsigned kBits>
struct FewBits {
  static constexpr std::size_t kPixels = 8 / kBits, kBytes = 1, kLines = 1, kBeyond = 0;
  static constexpr bool kGray = true;
  static constexpr std::uint16_t kMask = (1U << kBits) - 1;
  // 255, 85 or 17 of bytes, and 65535, 21845 or 4369 of words.
  template <class Sample>
  static constexpr std::uint16_t kRepeat = ((1U << 8 * sizeof(Sample)) - 1) / kMask;

  template <class Sample>
  static void Group(const SourceLines& in, Sample* out) {
    const unsigned byte = in.line[0][0];
    for (std::size_t k = 0; k < kPixels; ++k) {
      out[k] = static_cast<Sample>((byte >> k * kBits & kMask) * kRepeat<Sample>);
    }
  }

#if LM_LANES
  // The byte of the pixel of a lane. Registers of two units have all bytes in each.
  template <class Sample>
  struct ByteIndex {
    static constexpr std::size_t At(std::size_t lane) {
      return (kLanes == 32 ? lane / 16 * 16 : 0) + lane / sizeof(Sample) / kPixels;
    }
  };
  // Words hold their byte twice. A product moves the pixel of a word to its top, and the second one of two pixels to
  // the bottom of the upper byte, from where the first one is moved down.
  template <class Sample>
  struct Up {
    static constexpr unsigned At(std::size_t word) {
      constexpr std::size_t kInWord = 2 / sizeof(Sample), kTop = kInWord == 1 ? 16 : 8;
      return 1U << (kTop - kBits - (word * kInWord + kInWord - 1) % kPixels * kBits + (kInWord - 1) * kBits);
    }
  };

  struct Bit {
    static constexpr unsigned At(std::size_t word) { return 1U << word; }
  };

  template <class Sample, class Reader>
  static U8 Bytes(const Reader& read) {
    const U8 bytes = read.First(0, 0, kBlock<Sample> / kPixels);
#if LM_LANES == 32
    const U8 window[] = {Units<0, 0>(bytes, bytes)};
#else
    const U8 window[] = {bytes};
#endif
    return Pick<ByteIndex<Sample>>(window);
  }

  // A lane in which a comparison holds is all ones, which is white.
  template <class Reader>
  static U16 Block(const Reader& read, Of<std::uint16_t>) {
    const U16 words = U16(Bytes<std::uint16_t>(read));
    if constexpr (kBits == 1) return U16((words & EightValues<Bit>()) != 0);
    return (words * EightValues<Up<std::uint16_t>>() >> (16 - kBits)) * kRepeat<std::uint16_t>;
  }
  template <class Reader>
  static U8 Block(const Reader& read, Of<std::uint8_t>) {
    const U8 bytes = Bytes<std::uint8_t>(read);
    if constexpr (kBits == 1) return U8((bytes & U8(U64{} + 0x8040201008040201)) != 0);
    const U16 moved = U16(bytes) * EightValues<Up<std::uint8_t>>();
    return U8(((moved & static_cast<std::uint16_t>(kMask << 8)) | (moved >> (8 - kBits) & kMask)) *
              kRepeat<std::uint8_t>);
  }
#endif
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA

LM_EXPORT_WIDE_DECODER(Mono1p, FewBits<1>)
LM_EXPORT_WIDE_DECODER(Mono2p, FewBits<2>)
LM_EXPORT_WIDE_DECODER(Mono4p, FewBits<4>)
