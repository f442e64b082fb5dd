#pragma once

#include "kernels/yuv/yuv_pairs.h"
#include "simd/loops.h"

#if LM_LANES && LM_LANES < 64 && LM_BYTE_SHUFFLE == 16
namespace LmImagingLib::LM_ISA {
namespace {

/// Pairs of YUV in bytes, where shuffles reach 16 bytes: these are loaded from where eight pixels are, or four where
/// eight have more bytes.
template <class Group_, class Model>
class YuvEights {
 public:
  /// The colours of a block.
  template <class Reader>
  static RgbLanes<std::uint8_t> Colors(const Reader& read) {
    return ColorsOf<Model>(read.in, Pairs<0>(read), Pairs<1>(read));
  }

 private:
  // The first or second eight pixels of each 16.
  template <std::size_t kHalf, class Reader>
  static YuvPairs Pairs(const Reader& read) {
    if constexpr (kTogether == 8) {
      const U8 unit = Unit<kHalf>(read);
      return AfterPairing<Model>(Shuffled<kHalf, 0>(unit), Shuffled<kHalf, 16>(unit));
    } else {
      // Luma in the first eight bytes, chroma in the second.
      const auto first = U64(Shuffled<2 * kHalf, 0>(Unit<2 * kHalf>(read)));
      const auto second = U64(Shuffled<2 * kHalf + 1, 0>(Unit<2 * kHalf + 1>(read)));
      return AfterPairing<Model>(U8(ZipHalves<0>(first, second)), U8(ZipHalves<1>(first, second)));
    }
  }

  static constexpr std::size_t kBytesOf16 = 16 / Group_::kPixels * Group_::kSamples;
  static constexpr std::size_t kTogether = kBytesOf16 <= 32 ? 8 : 4;

  // The last ones begin earlier, as they must not pass the end of the block.
  static constexpr std::size_t BeginOf(std::size_t unit) {
    const std::size_t begin = unit * kTogether * kBytesOf16 / 16;
    return begin + 16 <= kBytesOf16 ? begin : kBytesOf16 - 16;
  }
  template <std::size_t kUnit, class Reader>
  static U8 Unit(const Reader& read) {
    return BeforePairing<Model>(read.Units(0, BeginOf(kUnit), kBytesOf16));
  }

  // The place in its 16 bytes of byte `byte` of the words of luma, which those of chroma follow.
  static constexpr std::uint8_t IndexOf(std::size_t unit, std::size_t byte) {
    constexpr std::size_t kLumaBytes = 2 * kTogether;
    const bool odd = byte % 2 != 0;
    if (byte < kLumaBytes && odd && !Model::kLumaWithV) return kNoByte;
    const std::size_t channel = odd ? 2 : byte < kLumaBytes ? 0 : 1;
    const std::size_t pixel = unit * kTogether + byte % kLumaBytes / 2;
    return static_cast<std::uint8_t>(pixel / Group_::kPixels * Group_::kSamples +
                                     Group_::kAt[channel][pixel % Group_::kPixels] - BeginOf(unit));
  }

  template <std::size_t kUnit, std::size_t kFirst, std::size_t... kLane>
  static U8 Shuffled(U8 unit, std::index_sequence<kLane...>) {
    return ShuffleUnits(unit, U8{IndexOf(kUnit, kFirst + kLane % 16)...});
  }
  template <std::size_t kUnit, std::size_t kFirst>
  static U8 Shuffled(U8 unit) {
    return Shuffled<kUnit, kFirst>(unit, std::make_index_sequence<kLanes>{});
  }
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA
#endif
