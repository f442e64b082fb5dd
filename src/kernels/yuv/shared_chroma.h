#pragma once

#include "kernels/yuv/yuv_eights.h"
#include "kernels/yuv/yuv_to_rgb.h"
#include "simd/direct.h"
#include "simd/samples.h"

namespace LmImagingLib::LM_ISA {
namespace {

/// YUV whose pixels share their chroma by twos or fours, in samples of `kSampleBytes` bytes.
template <class Group_, std::size_t kSampleBytes, class Model>
struct SharedChroma : ColorSamples<Group_, kSampleBytes, Model> {
#if LM_LANES
  static constexpr int kNoHalf = 2;

  // Lanes of `YuvPairs`: the channel in even lanes and V in odd ones, of the pixels of a register or, if `kHalf` is 0
  // or 1, of a half of each 16.
  template <int kHalf, std::size_t kChannel>
  struct PairIndex {
    static constexpr std::size_t At(std::size_t lane) {
      const std::size_t pixel = kHalf == kNoHalf ? lane / 2 : lane / 16 * 16 + 8 * kHalf + lane % 16 / 2;
      return pixel / Group_::kPixels * Group_::kSamples +
             Group_::kAt[lane % 2 != 0 ? 2 : kChannel][pixel % Group_::kPixels];
    }
  };

#if LM_LANES == 64
  // Whether pixels are found within the 16 bytes that shuffles reach, if registers of these are loaded.
  static constexpr bool kInUnits = LM_BYTE_SHUFFLE == 16 && kSampleBytes == 1 && 16 % Group_::kSamples == 0;

  // Every other 16 bytes, in eights.
  template <std::size_t kFirst>
  struct EveryOtherUnit {
    static constexpr std::size_t At(std::size_t lane) { return (lane / 2 * 2 + kFirst) * 2 + lane % 2; }
  };
#endif

  template <int kHalf, std::size_t kVectors>
  static YuvPairs Pairs(const U8 (&window)[kVectors]) {
    U8 samples[kVectors];
    for (std::size_t k = 0; k < kVectors; ++k) samples[k] = BeforePairing<Model>(window[k]);
    const U8 luma = Pick<PairIndex<kHalf, 0>>(samples);
    return AfterPairing<Model>(Model::kLumaWithV ? luma : U8(U16(luma) & 0xFF), Pick<PairIndex<kHalf, 1>>(samples));
  }

  template <class Reader>
  static RgbLanes<std::uint8_t> Block(const Reader& read, Of<std::uint8_t>) {
#if LM_LANES < 64
    if constexpr (kSampleBytes == 1) {
      return YuvEights<Group_, Model>::Colors(read);
    } else {
#else
    if constexpr (kInUnits) {
      const WordPair words = read.Words(0, 0);
      const U64 units[] = {U64(words.first), U64(words.second)};
      const U8 low[1] = {U8(Pick<EveryOtherUnit<0>>(units))};
      const U8 high[1] = {U8(Pick<EveryOtherUnit<1>>(units))};
      return ColorsOf<Model>(read.in, Pairs<kNoHalf>(low), Pairs<kNoHalf>(high));
    } else {
#endif
      constexpr std::size_t kCount = kLanes / Group_::kPixels * Group_::kSamples;
      U8 window[2];
      LoadSamples<kSampleBytes>(read, 0, 0, kCount, window);
      return ColorsOf<Model>(read.in, Pairs<0>(window), Pairs<1>(window));
    }
  }
#endif
};

/// YUV whose pixels have chroma of their own, in bytes.
template <class Group_, std::size_t kSampleBytes, class Model>
struct OwnChroma : ColorSamples<Group_, kSampleBytes, Model> {
#if LM_LANES && LM_LANES < 64
  template <class Reader>
  static RgbLanes<std::uint8_t> Block(const Reader& read, Of<std::uint8_t>) {
    return YuvEights<Group_, Model>::Colors(read);
  }
#endif
};

/// 4:2:2 in bytes, as `Direct` wants it for pixels of four bytes.
template <class Group_, class Model>
struct DealtChroma : SingleLine<SharedChroma<Group_, 1, Model>> {
#if LM_LANES && !LM_STORES_IN_TURN
  template <class Reader, class Store>
  static void Blocks(const Reader& read, const Store& store) {
    using Chroma = SharedChroma<Group_, 1, Model>;
    const auto both = [&read](auto limitsRed, RgbWords(&words)[2]) {
#if LM_LANES == 32
      // The halves that zips leave apart are stored in turn: less work than a blend with a second load here.
      const U8 first[1] = {read(0, 0)}, second[1] = {read(0, kLanes)};
#else
      const U8 first[1] = {ReadDealt(read, 0, 0)}, second[1] = {ReadDealt(read, 0, kLanes)};
#endif
      const YuvPairs pairs[] = {Chroma::template Pairs<Chroma::kNoHalf>(first),
                                Chroma::template Pairs<Chroma::kNoHalf>(second)};
      Model::template Words<limitsRed>(pairs, words);
    };
    store(0, DealtPixels<decltype(both)>{both});
  }
#endif
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA
