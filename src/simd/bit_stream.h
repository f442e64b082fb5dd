#pragma once

#include "simd/interleave.h"
#include "simd/packed.h"
#include "simd/rgb.h"

// Samples of 10 to 14 bits in a stream of bits, the lowest first: sample i is bits i * kBits to i * kBits + kBits - 1
// of the little-endian number that the bytes are.
namespace LmImagingLib::LM_ISA {
namespace {

template <unsigned kBits>
struct BitStream {
  static_assert(kBits >= 10 && kBits <= 14 && kBits % 2 == 0);
  static constexpr std::size_t kPeriod = kBits % 4 == 0 ? 2 : 4;  ///< samples that begin and end with a byte

  static constexpr std::size_t ByteOf(std::size_t sample) { return sample * kBits / 8; }
  static constexpr unsigned OffsetOf(std::size_t sample) { return sample * kBits % 8; }

  template <class Sample>
  static Sample At(const SourceLines& in, std::size_t sample) {
    const std::uint8_t* const p = in.line[0] + ByteOf(sample);
    std::uint32_t bits = Load16(p);
    // A third byte is there only where the sample reaches into it.
    if (OffsetOf(sample) + kBits > 16) bits |= std::uint32_t{p[2]} << 16;
    return FromWord<Sample>(bits >> OffsetOf(sample), in);
  }

#if LM_LANES
  static constexpr std::size_t kBytesOfEight = kBits;
  static constexpr unsigned kAbove = 16 - kBits;

  // Samples that end within the two bytes that they begin in: a product moves them to the top of their word.
  struct TwoBytes {
    static constexpr std::size_t At(std::size_t sample, std::size_t byte) { return ByteOf(sample) + byte; }
  };
  struct ToTop {
    static constexpr unsigned At(std::size_t sample) { return 1U << (kAbove - OffsetOf(sample)); }
  };

  // Others are in three bytes, of which the lower two are moved down and the upper two up. Bits that are in both come
  // to the same place. A sample that begins with a byte ends in the second one, and is in place there.
  struct UpperBytes {
    static constexpr std::size_t At(std::size_t sample, std::size_t byte) {
      return ByteOf(sample) + byte + (OffsetOf(sample) == 0 ? 0 : 1);
    }
  };
  struct Down {
    static constexpr unsigned At(std::size_t sample) {
      return OffsetOf(sample) == 0 ? 0 : 1U << (16 - OffsetOf(sample));
    }
  };
  struct Up {
    static constexpr unsigned At(std::size_t sample) {
      return OffsetOf(sample) == 0 ? 1 : 1U << (8 - OffsetOf(sample));
    }
  };

  /// The samples of some groups; in words of three bytes, stray bits are above them.
  template <class Groups, class Reader>
  static U16 Words(const Reader& read) {
    const U16 words = PackedWords<Groups, TwoBytes>(read, 0);
    if constexpr (kBits <= 12) {
      return words * EightValues<ToTop>() >> kAbove;
    } else {
      return MultiplyHigh(words, EightValues<Down>()) | PackedWords<Groups, UpperBytes>(read, 0) * EightValues<Up>();
    }
  }

  template <class Groups, class Reader>
  static U16 TopBytes(const Reader& read) {
    if constexpr (kBits <= 12) {
      const U16 tops = PackedWords<Groups, TwoBytes>(read, 0) * EightValues<ToTop>();
      if constexpr (kBits == 10) return tops >> 8;
      // Twelve bits may hold a sample of ten.
      return tops >> static_cast<std::uint16_t>(kAbove + read.in.shift) & 0xFF;
    } else {
      return Words<Groups>(read) >> (kBits - 8) & 0xFF;
    }
  }
#endif
};

/// A stream of one sample a pixel.
template <unsigned kBits>
struct GrayStream : BitStream<kBits> {
  using Stream = BitStream<kBits>;
  static constexpr std::size_t kPixels = Stream::kPeriod, kBytes = kPixels * kBits / 8, kLines = 1, kBeyond = 0;
  static constexpr bool kGray = true;

  template <class Sample>
  static void Group(const SourceLines& in, Sample* out) {
    for (std::size_t k = 0; k < kPixels; ++k) out[k] = Stream::template At<Sample>(in, k);
  }

#if LM_LANES
  template <class Reader, class Sample>
  static Lanes<Sample> Block(const Reader& read, Of<Sample> samples) {
    return PackedBlock<Stream>(read, samples);
  }
#endif
};

/// A stream of three samples a pixel: red, green, blue.
template <unsigned kBits>
struct ColorStream : BitStream<kBits> {
  using Stream = BitStream<kBits>;
  static constexpr std::size_t kPixels = Stream::kPeriod, kBytes = 3 * kPixels * kBits / 8, kLines = 1, kBeyond = 0;
  static constexpr bool kGray = false;

  template <class Sample>
  static void Group(const SourceLines& in, Rgb<Sample>* out) {
    for (std::size_t k = 0; k < kPixels; ++k) {
      out[k] = {Stream::template At<Sample>(in, 3 * k), Stream::template At<Sample>(in, 3 * k + 1),
                Stream::template At<Sample>(in, 3 * k + 2)};
    }
  }

#if LM_LANES
  template <class Reader, class Sample>
  static RgbLanes<Sample> Block(const Reader& read, Of<Sample> samples) {
    const Lanes<Sample> window[3] = {PackedBlock<Stream, 0, 3>(read, samples), PackedBlock<Stream, 1, 3>(read, samples),
                                     PackedBlock<Stream, 2, 3>(read, samples)};
    return {Deinterleave<0, Sample>(window), Deinterleave<1, Sample>(window), Deinterleave<2, Sample>(window)};
  }

  // Four pixels of 10 bits are in 15 bytes. Lane l of these is a sample of pixel l / 2 of each four: red or blue, which
  // are two samples apart, or green twice.
  template <std::size_t kFirst, std::size_t kApart>
  struct SampleOfPixel {
    static constexpr std::size_t At(std::size_t lane) { return 3 * (lane / 2) + kFirst + kApart * (lane % 2); }
  };
  template <class Samples>
  struct BytesOf {
    static constexpr std::size_t At(std::size_t lane, std::size_t byte) {
      return Stream::TwoBytes::At(Samples::At(lane), byte);
    }
  };
  template <class Samples>
  struct ToTopOf {
    static constexpr unsigned At(std::size_t lane) { return Stream::ToTop::At(Samples::At(lane)); }
  };
  template <class Groups, class Samples, class Reader, class Sample>
  static U32 Pairs(const Reader& read, Of<Sample>) {
    const U16 tops = PackedWords<Groups, BytesOf<Samples>>(read, 0) * EightValues<ToTopOf<Samples>>();
    return U32(tops >> (sizeof(Sample) == 1 ? 8 : 16 - kBits));
  }

  /// Register `kPart` of a block's `kParts` registers of pixels.
  template <std::size_t kPart, std::size_t kParts, class Reader, class Sample>
  static WordPixels Pixels(const Reader& read, Of<Sample> samples) {
    static_assert(kBits == 10);
    using Fours = Groups<15, kParts * kWordGroups, kPart * kWordGroups, 1>;
    return {Pairs<Fours, SampleOfPixel<0, 2>>(read, samples), Pairs<Fours, SampleOfPixel<1, 0>>(read, samples)};
  }
#endif
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA
