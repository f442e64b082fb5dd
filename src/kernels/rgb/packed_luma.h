#pragma once

#include <type_traits>

#include "kernels/writers/luma.h"
#include "simd/direct.h"
#include "simd/samples.h"

// Gray of pixels of three samples, red or blue first.
namespace LmImagingLib::LM_ISA {
namespace {

#if LM_LANES == 32
/// Sums of samples where they are. Pairs of neighbours make them, so green is in two pairs: 77 red + 51 green, and
/// 99 green + 29 blue. The factors of either sum to 128, so products of bytes without signs fit signed words. Of two
/// pixels, the pairs begin at samples 0 and 1, and at 3 and 4:
///
///     loaded from sample 0   R0 G0 | B0 R1 | G1 B1
///     from sample 1          G0 B0 | R1 G1 | B1 ..
///     from sample 2          B0 R1 | G1 B1 | .. ..
///
/// The first place has the first pixel in the first two rows, the second place the second pixel in the last two rows,
/// and the third place nothing.
template <class Group_, class Sample>
class ThreesInPlace {
 public:
  using Places = typename PairsOf<Sample>::Type;
  static constexpr std::size_t kPlaces = kBlock<Sample> / 2;

  /// Luma in 256ths: of bytes in words, of words in the lower 24 of 32 bits.
  /// @tparam Turn  says which of three places each one is
  template <class Turn, std::size_t... kPlace>
  static U8 Sums(Places first, Places middle, Places last, std::index_sequence<kPlace...>) {
    const Places outer = __builtin_shufflevector(first, last, (Turn::Of(kPlace) == 1 ? kPlaces + kPlace : kPlace)...);
    const Places ofMiddle{(Turn::Of(kPlace) == 0 ? kSecondPair : kFirstPair)...};
    const Places ofOuter{(Turn::Of(kPlace) == 0 ? kFirstPair : kSecondPair)...};
    return U8(Products(middle, ofMiddle) + Products(outer, ofOuter) + kHalf);
  }

  /// The place of pixel `pixel`.
  static constexpr std::size_t PlaceOf(std::size_t pixel) { return pixel / 2 * 3 + pixel % 2; }
  /// Where byte `byte` of the luma of a place is.
  static constexpr std::uint8_t LumaAt(std::size_t place, std::size_t byte) {
    return static_cast<std::uint8_t>(place * 2 * sizeof(Sample) + 1 + byte);
  }

 private:
  using Place = std::conditional_t<sizeof(Sample) == 1, std::uint16_t, std::uint32_t>;

  static constexpr LumaWeights kWeights{};
  static constexpr bool kRedIsFirst = Group_::kAt[0][0] == 0;
  static_assert(Group_::kSamples == 3 && Group_::kAt[1][0] == 1);
  static constexpr unsigned kFirst = kRedIsFirst ? kWeights.red : kWeights.blue;
  static constexpr unsigned kThird = kRedIsFirst ? kWeights.blue : kWeights.red;
  static_assert(128 - kFirst + 128 - kThird == kGreenWeight);
  static constexpr Place Pair(unsigned low, unsigned high) {
    return static_cast<Place>(low | high << 8 * sizeof(Sample));
  }
  static constexpr Place kFirstPair = Pair(kFirst, 128 - kFirst), kSecondPair = Pair(128 - kThird, kThird);
  // Products of words are signed, so 32768 is subtracted from each.
  static constexpr Place kHalf =
      static_cast<Place>(sizeof(Sample) == 1 ? std::uint32_t{kLumaHalf} : kLumaHalf + (32768U << 8));

  static Places Products(Places samples, Places weights) {
    if constexpr (sizeof(Sample) == 1) {
      return Places(MultiplyAddBytes(U8(weights), samples));
    } else {
      return Places(MultiplyAdd(I16(samples ^ 0x80008000), I16(weights)));
    }
  }
};
#endif

template <class Group_, class Sample_>
struct LumaOfThrees : SingleLine<ColorSamples<Group_, sizeof(Sample_)>, Sample_> {
#if LM_LANES == 32
  using Sample = Sample_;

  template <class Reader, class Store>
  static void Blocks(const Reader& read, const Store& store) {
    const U8 sums[3] = {Sums<0>(read), Sums<1>(read), Sums<2>(read)};
    constexpr std::make_index_sequence<kLanes> kBytes{};
    store(0, GrayLanes<Sample>{Lanes<Sample>(Chosen<0>(Units<0, 3>(sums[0], sums[1]), kBytes) |
                                             Chosen<1>(Units<1, 2>(sums[0], sums[2]), kBytes) |
                                             Chosen<2>(Units<0, 3>(sums[1], sums[2]), kBytes))});
  }

 private:
  using InPlace = ThreesInPlace<Group_, Sample>;
  static constexpr std::size_t kPlaces = InPlace::kPlaces, kInUnit = kPlaces / 2;

  // The place that a register begins with. The last one begins earlier, not to pass the end of the block.
  static constexpr std::size_t BeginOf(std::size_t part) { return part * kPlaces - (part == 2 ? 1 : 0); }
  template <std::size_t kPart>
  struct Turn {
    static constexpr std::size_t Of(std::size_t place) { return (BeginOf(kPart) + place) % 3; }
  };

  template <std::size_t kPart, class Reader>
  static U8 Sums(const Reader& read) {
    const auto load = [&read](std::size_t sample) {
      return typename InPlace::Places(read(0, (BeginOf(kPart) * 2 + sample) * sizeof(Sample)));
    };
    return InPlace::template Sums<Turn<kPart>>(load(0), load(1), load(2), std::make_index_sequence<kPlaces>{});
  }

  // The byte of 16 bytes of sums that becomes byte `byte` of the result, or none.
  template <std::size_t kTurn>
  static constexpr std::uint8_t IndexOf(std::size_t byte) {
    const std::size_t place = InPlace::PlaceOf(byte / sizeof(Sample)), part = place / kPlaces;
    const std::size_t at = place - BeginOf(part);
    const bool isHere = byte / 16 * 3 + kTurn == 2 * part + at / kInUnit;
    return isHere ? InPlace::LumaAt(at % kInUnit, byte % sizeof(Sample)) : kNoByte;
  }
  template <std::size_t kTurn, std::size_t... kByte>
  static U8 Chosen(U8 sums, std::index_sequence<kByte...>) {
    return ShuffleUnits(sums, U8{IndexOf<kTurn>(kByte)...});
  }
#endif
};

/// Of words that become bytes.
/// @tparam kTop  whether these are the upper ones
template <class Group_, bool kTop>
struct LumaOfWideThrees : SingleLine<ColorSamples<Group_, 2>> {
#if LM_LANES == 32
  template <class Reader, class Store>
  static void Blocks(const Reader& read, const Store& store) {
    const auto factor = static_cast<std::uint16_t>(0x100U >> read.in.shift);
    const auto bytes = [&](std::size_t unit) {
      const U16 first = U16(read.Units(0, 32 * unit, 96)), second = U16(read.Units(0, 32 * unit + 16, 96));
      return kTop ? JoinWords(first >> 8, second >> 8) : JoinWords(first * factor >> 8, second * factor >> 8);
    };
    // The 16 bytes that follow a unit are the next one's; the last unit needs none.
    const U8 unit[3] = {bytes(0), bytes(1), bytes(2)};
    store(0,
          GrayLanes<std::uint8_t>{Luma<0>(unit[0], unit[1]) | Luma<1>(unit[1], unit[2]) | Luma<2>(unit[2], unit[2])});
  }

 private:
  using InPlace = ThreesInPlace<Group_, std::uint8_t>;

  template <std::size_t kUnit>
  struct Turn {
    static constexpr std::size_t Of(std::size_t place) { return (8 * kUnit + place % 8) % 3; }
  };

  template <std::size_t kUnit>
  static U8 Luma(U8 bytes, U8 next) {
    constexpr std::make_index_sequence<kLanes> kAll{};
    const U8 sums = InPlace::template Sums<Turn<kUnit>>(U16(bytes), U16(From<1>(bytes, next, kAll)),
                                                        U16(From<2>(bytes, next, kAll)),
                                                        std::make_index_sequence<InPlace::kPlaces>{});
    return Chosen<kUnit>(sums, kAll);
  }
  // 16 bytes from byte `kByte` of each unit on.
  template <std::size_t kByte, std::size_t... kLane>
  static U8 From(U8 bytes, U8 next, std::index_sequence<kLane...>) {
    return __builtin_shufflevector(bytes, next,
                                   (kLane % 16 + kByte < 16 ? kLane + kByte : kLanes + kLane + kByte - 16)...);
  }
  template <std::size_t kUnit, std::size_t... kLane>
  static U8 Chosen(U8 sums, std::index_sequence<kLane...>) {
    return ShuffleUnits(
        sums, U8{(InPlace::PlaceOf(kLane % 16) / 8 == kUnit ? InPlace::LumaAt(InPlace::PlaceOf(kLane % 16) % 8, 0)
                                                            : kNoByte)...});
  }
#elif LM_LANES
  template <class Reader, class Store>
  static void Blocks(const Reader& read, const Store& store) {
    if constexpr (kTop) {
      U8 window[3];
      for (std::size_t k = 0; k < 3; ++k) window[k] = JoinBytes<1>(read.Words(0, 2 * k * kLanes));
      store(0, RgbLanes<std::uint8_t>{Deinterleave<Group_::kAt[0][0], std::uint8_t>(window),
                                      Deinterleave<Group_::kAt[1][0], std::uint8_t>(window),
                                      Deinterleave<Group_::kAt[2][0], std::uint8_t>(window)});
    } else {
      SingleLine<ColorSamples<Group_, 2>>::Blocks(read, store);
    }
  }
#endif
};

template <class Group_>
void WideThreesToLuma(const SourceLines& in, std::size_t from, std::size_t count, const TargetLine* targets,
                      std::size_t first) {
  if (in.shift == 8) {
    Direct<LumaOfWideThrees<Group_, true>, LumaToBytes>::Convert(in, from, count, targets, first);
  } else {
    Direct<LumaOfWideThrees<Group_, false>, LumaToBytes>::Convert(in, from, count, targets, first);
  }
}

}  // namespace
}  // namespace LmImagingLib::LM_ISA
