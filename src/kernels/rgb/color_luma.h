#pragma once

#include "kernels/writers/interleaved.h"
#include "kernels/writers/luma.h"
#include "simd/fields.h"
#include "simd/loops.h"
#include "simd/samples.h"

// Gray of colours whose pixels come in lanes of 32 bits at once: faster than by channels, which have to be collected
// from the pixels first.
namespace LmImagingLib::LM_ISA {
namespace {

/// The luma of the pixels that `Layout` has in `Pixels<kPart, kParts>(read, Of<Sample>)`.
/// @tparam kFirst  the colour that the format has where the layout has red
template <class Layout, First kFirst = First::kRed>
struct LumaOf : Layout {
  static constexpr bool kGray = true;
  static constexpr LumaWeights kOwn{};
  static constexpr LumaWeights kWeights = kFirst == First::kRed ? kOwn : LumaWeights{kOwn.blue, kOwn.red};

  template <class Sample>
  static void Group(const SourceLines& in, Sample* out) {
    Rgb<Sample> pixels[Layout::kPixels];
    Layout::Group(in, pixels);
    for (std::size_t k = 0; k < Layout::kPixels; ++k) out[k] = Luma(pixels[k], kWeights);
  }

#if LM_LANES
  template <class Reader>
  static U8 Block(const Reader& read, Of<std::uint8_t> samples) {
    return NarrowInOrder(
        {Part<0, 4>(read, samples), Part<1, 4>(read, samples), Part<2, 4>(read, samples), Part<3, 4>(read, samples)});
  }
  template <class Reader>
  static U16 Block(const Reader& read, Of<std::uint16_t> samples) {
    return NarrowInOrder({Part<0, 2>(read, samples), Part<1, 2>(read, samples)});
  }

 private:
  template <std::size_t kPart, std::size_t kParts, class Reader, class Sample>
  static I32 Part(const Reader& read, Of<Sample> samples) {
    return LumaOfNarrow(Layout::template Pixels<kPart, kParts>(read, samples), kWeights);
  }
#endif
};

/// The luma of pixels of four bytes.
/// @tparam Group_  the places of red, green and blue, green second
template <class Group_>
struct LumaOfFourBytes : ColorSamples<Group_, 1> {
  using Colors = ColorSamples<Group_, 1>;
  static constexpr bool kGray = true;

  static void Group(const SourceLines& in, std::uint8_t* out) {
    Rgb<std::uint8_t> pixel;
    Colors::Group(in, &pixel);
    *out = Luma(pixel);
  }

#if LM_LANES
  template <class Reader>
  static U8 Block(const Reader& read, Of<std::uint8_t>) {
    const I16 first = PairSums(Part(read, 0), Part(read, 1)), second = PairSums(Part(read, 2), Part(read, 3));
    // These products divide by 256 and round at once.
    const U8 joined = ClampJoinSigned(MultiplyRounded(first, 128), MultiplyRounded(second, 128));
    return CollectFours(Signed(joined));
  }

 private:
  // Products are of signed bytes, so 128 is subtracted from each: the sum is 32768 too small, as the weights sum to
  // 256. Divided by 256 it is a signed byte again.
  template <class Reader>
  static I16 Part(const Reader& read, std::size_t part) {
    static_assert(Group_::kSamples == 4 && Group_::kAt[1][0] == 1);
    constexpr LumaWeights kWeights{};
    constexpr bool kRedIsFirst = Group_::kAt[0][0] == 0;
    constexpr std::uint32_t kFirst = kRedIsFirst ? kWeights.red : kWeights.blue;
    constexpr std::uint32_t kThird = kRedIsFirst ? kWeights.blue : kWeights.red;
    const U32 factors = U32{} + (kFirst | std::uint32_t{kGreenWeight} << 8 | kThird << 16);
    return MultiplyAddBytes(Signed(read(0, part * kLanes)), U16(factors));
  }
#endif
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA

/// Exports the decoder into the luma of a layout as the kernel `NameLuma`, whose row in formats.inc asks for it.
#define LM_EXPORT_LUMA_DECODER(Name, ...) LM_DEFINE_DECODER(std::uint8_t, Name##Luma, __VA_ARGS__)

/// The same for a layout of samples of more than 8 bits: into bytes and into words.
#define LM_EXPORT_WIDE_LUMA_DECODER(Name, ...) \
  LM_EXPORT_LUMA_DECODER(Name, __VA_ARGS__)    \
  LM_DEFINE_DECODER(std::uint16_t, Name##Luma, __VA_ARGS__)
