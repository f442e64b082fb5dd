#pragma once

#include "simd/fields.h"
#include "simd/interleave.h"
#include "simd/loops.h"
#include "simd/pick.h"

// Layouts whose channels are whole samples, in an order that repeats from group to group. A layout is then nothing but
// positions: `kAt[channel][pixel]` is the place of a channel's sample in the group of `kSamples` samples.
namespace LmImagingLib::LM_ISA {
namespace {

/// Whether the positions are samples of the group. A wrong one would read past it.
template <class Group>
constexpr bool PositionsFit() {
  for (const auto& channel : Group::kAt) {
    for (const std::size_t position : channel) {
      if (position >= Group::kSamples) return false;
    }
  }
  return true;
}

/// Samples of one byte, or of 10 to 16 bits in 16-bit little-endian words.
template <std::size_t kSampleBytes, class Sample>
Sample SampleAt(const SourceLines& in, std::size_t line, std::size_t position) {
  if constexpr (kSampleBytes == 1) {
    return in.line[line][position];
  } else {
    return FromWord<Sample>(Load16(in.line[line] + 2 * position), in);
  }
}

/// Colours that are stored as they are.
struct PlainRgb {
  template <class Sample>
  static Rgb<Sample> Color(const SourceLines& /*in*/, Sample r, Sample g, Sample b) {
    return {r, g, b};
  }
#if LM_LANES
  static RgbLanes<std::uint8_t> Color(const SourceLines& /*in*/, U8 r, U8 g, U8 b) { return {r, g, b}; }
  static RgbLanes<std::uint16_t> Color(const SourceLines& /*in*/, U16 r, U16 g, U16 b) { return {r, g, b}; }
#endif
};

#if LM_LANES == 32
/// Words of at most 255 of two registers that follow each other in memory, as bytes.
inline U8 JoinInOrder(U16 first, U16 second) {
  using Eights = std::uint64_t __attribute__((vector_size(kLanes)));
  const auto joined = Eights(JoinWords(first, second));
  return U8(__builtin_shufflevector(joined, joined, 0, 2, 1, 3));
}
#endif

#if LM_LANES
/// (word >> shift) & 0xFF of words of more than 8 bits, in words: shifts by a number in a register take two steps.
class BytesOfWords {
 public:
#if defined(__x86_64__)
  // Zen 4 and 5 shift in the two ports that packs and shuffles need, too, and multiply in the other two.
  explicit BytesOfWords(std::uint32_t shift)
      : mMask(static_cast<std::uint16_t>(0xFFU << shift)), mFactor(static_cast<std::uint16_t>(0x10000U >> shift)) {}

  U16 operator()(U16 words) const { return MultiplyHigh(words & mMask, mFactor); }

 private:
  std::uint16_t mMask;
#else
  explicit BytesOfWords(std::uint32_t shift) : mFactor(static_cast<std::uint16_t>(0x100U >> shift)) {}

  U16 operator()(U16 words) const { return words * mFactor >> 8; }

 private:
#endif
  std::uint16_t mFactor;
};

/// Loads `count` samples of a line, from byte `offset` on, as bytes. Of words these are whole registers.
template <std::size_t kSampleBytes, class Reader, std::size_t kVectors>
inline void LoadSamples(const Reader& read, std::size_t line, std::size_t offset, std::size_t count,
                        U8 (&window)[kVectors]) {
  for (std::size_t k = 0; k < kVectors; ++k, offset += kLanes * kSampleBytes) {
    if constexpr (kSampleBytes == 1) {
      window[k] = Pinned((k + 1) * kLanes > count ? read.Half(line, offset) : read(line, offset));
    } else {
      const BytesOfWords bytes(read.in.shift);
#if LM_LANES == 32
      if constexpr (kVectors == 1) {
        // A plain line is limited by loads, and two whole registers are fewer than four halves.
        const auto first = U16(read(line, offset)), second = U16(read(line, offset + kLanes));
        window[k] = JoinInOrder(bytes(first), bytes(second));
        continue;
      }
#endif
      const WordPair words = read.Words(line, offset);
      window[k] = JoinWords(bytes(words.first), bytes(words.second));
    }
  }
}

/// Loads `count` words of a line, from byte `offset` on.
template <std::size_t kSampleBytes, class Reader, std::size_t kVectors>
inline void LoadSamples(const Reader& read, std::size_t line, std::size_t offset, std::size_t count,
                        U16 (&window)[kVectors]) {
  static_assert(kSampleBytes == 2);
  const auto shift = static_cast<std::uint16_t>(read.in.shift);
  const auto mask = static_cast<std::uint16_t>(read.in.mask);
  for (std::size_t k = 0; k < kVectors; ++k, offset += kLanes) {
    const U8 bytes = (k + 1) * kLanes / 2 > count ? read.Half(line, offset) : read(line, offset);
    window[k] = U16(bytes) >> shift & mask;
  }
}

/// Where lane i finds the sample of a channel.
template <class Group, std::size_t kChannel>
struct SampleIndex {
  static constexpr std::size_t At(std::size_t lane) {
    return lane / Group::kPixels * Group::kSamples + Group::kAt[kChannel][lane % Group::kPixels];
  }
};
#endif

/// Three channels in samples of `kSampleBytes` bytes, turned into colours by `Model`.
template <class Group_, std::size_t kSampleBytes, class Model = PlainRgb>
struct ColorSamples {
  static_assert(PositionsFit<Group_>());
  static constexpr std::size_t kPixels = Group_::kPixels, kBytes = Group_::kSamples * kSampleBytes, kLines = 1;
  static constexpr std::size_t kBeyond = 0;
  static constexpr bool kGray = false;

  template <class Sample>
  static void Group(const SourceLines& in, Rgb<Sample>* out) {
    for (std::size_t k = 0; k < kPixels; ++k) {
      out[k] = Model::Color(in, SampleAt<kSampleBytes, Sample>(in, 0, Group_::kAt[0][k]),
                            SampleAt<kSampleBytes, Sample>(in, 0, Group_::kAt[1][k]),
                            SampleAt<kSampleBytes, Sample>(in, 0, Group_::kAt[2][k]));
    }
  }

#if LM_LANES
  template <class Reader, class Sample>
  static RgbLanes<Sample> Block(const Reader& read, Of<Sample>) {
    constexpr std::size_t kCount = kBlock<Sample> / kPixels * Group_::kSamples;
    Lanes<Sample> window[(kCount + kBlock<Sample> - 1) / kBlock<Sample>];
    LoadSamples<kSampleBytes>(read, 0, 0, kCount, window);
    if constexpr (kPixels == 1 && Group_::kSamples == 3) {
      return Model::Color(read.in, Deinterleave<Group_::kAt[0][0], Sample>(window),
                          Deinterleave<Group_::kAt[1][0], Sample>(window),
                          Deinterleave<Group_::kAt[2][0], Sample>(window));
    } else if constexpr (kPixels == 1 && Group_::kSamples == 4 && sizeof(Sample) == 1 && LM_BYTE_SHUFFLE < 64) {
      const FourBytes pixels(window);
      return Model::Color(read.in, pixels.template At<Group_::kAt[0][0]>(), pixels.template At<Group_::kAt[1][0]>(),
                          pixels.template At<Group_::kAt[2][0]>());
    } else {
      return Model::Color(read.in, Pick<SampleIndex<Group_, 0>>(window), Pick<SampleIndex<Group_, 1>>(window),
                          Pick<SampleIndex<Group_, 2>>(window));
    }
  }
#endif
};

/// One channel in samples of `kSampleBytes` bytes.
template <class Group_, std::size_t kSampleBytes>
struct GraySamples {
  static_assert(PositionsFit<Group_>());
  static constexpr std::size_t kPixels = Group_::kPixels, kBytes = Group_::kSamples * kSampleBytes, kLines = 1;
  static constexpr std::size_t kBeyond = 0;
  static constexpr bool kGray = true;

  template <class Sample>
  static void Group(const SourceLines& in, Sample* out) {
    for (std::size_t k = 0; k < kPixels; ++k) out[k] = SampleAt<kSampleBytes, Sample>(in, 0, Group_::kAt[0][k]);
  }

#if LM_LANES
  template <class Reader, class Sample>
  static Lanes<Sample> Block(const Reader& read, Of<Sample>) {
    if constexpr (kPixels == 1 && sizeof(Sample) == 2) {
      // Most layouts need no shift, and a shift by a number in a register takes longer than this branch.
      if (read.in.shift == 0) return U16(read(0, 0)) & static_cast<std::uint16_t>(read.in.mask);
    }
    constexpr std::size_t kCount = kBlock<Sample> / kPixels * Group_::kSamples;
    Lanes<Sample> window[(kCount + kBlock<Sample> - 1) / kBlock<Sample>];
    LoadSamples<kSampleBytes>(read, 0, 0, kCount, window);
    return Pick<SampleIndex<Group_, 0>>(window);
  }
#endif
};

/// A channel without anything else between its samples.
struct SingleSample {
  static constexpr std::size_t kPixels = 1, kSamples = 1;
  static constexpr std::size_t kAt[][kPixels] = {{0}};
};

#if LM_LANES
// Where lane i finds a byte of word i.
template <std::size_t kByte>
struct ByteIndex {
  static constexpr std::size_t At(std::size_t lane) { return 2 * lane + kByte; }
};

/// The lower bytes of words, or the upper ones, whose `kByte` is 1.
template <std::size_t kByte>
inline U8 JoinBytes(const WordPair& words) {
#if LM_BYTE_SHUFFLE == 64
  const U8 bytes[] = {U8(words.first), U8(words.second)};
  return Pick<ByteIndex<kByte>>(bytes);
#else
  if constexpr (kByte == 0) return JoinWords(words.first & 0xFF, words.second & 0xFF);
  return JoinWords(words.first >> 8, words.second >> 8);
#endif
}
#endif

/// The same as a layout: bytes of which every other one is a sample.
template <std::size_t kByte>
struct EveryOtherByte : GraySamples<SingleSample, 2> {
#if LM_LANES
  template <class Reader>
  static U8 Block(const Reader& read, Of<std::uint8_t>) {
#if LM_LANES == 32
    // Words in memory are masked or multiplied by one instruction, and shifted by two.
    const auto byte = [&read](std::size_t offset) {
      const auto words = U16(read(0, offset));
      return kByte == 0 ? words & 0xFF : MultiplyHigh(words, 0x100);
    };
    return JoinInOrder(byte(0), byte(kLanes));
#else
    return JoinBytes<kByte>(read.Words(0, 0));
#endif
  }
#endif
};

/// Brings 16-bit samples to 8 bits.
inline Channels<std::uint8_t> WordsToBytes(const SourceLines& in, std::size_t first, std::size_t count,
                                           const Room<std::uint8_t>& room) {
  if (in.shift == 8) return Decoder<EveryOtherByte<1>, std::uint8_t>(0)(in, first, count, room);
  return Decoder<GraySamples<SingleSample, 2>, std::uint8_t>(0)(in, first, count, room);
}

}  // namespace
}  // namespace LmImagingLib::LM_ISA
