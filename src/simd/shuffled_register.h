#pragma once

#include "simd/pick.h"

// One register of pixels whose bytes changed places, from a block that has a pixel for each byte of a register. A map
// tells the places: pixels of `kFrom` bytes become pixels of `kTo` bytes.
namespace LmImagingLib::LM_ISA {
namespace {

/// Byte i of the result is byte `kOrder[i]` of the source pixel; kZero is 0.
inline constexpr std::size_t kZero = 99;

#if LM_LANES

/// The bytes of a block that registers of the result are made of.
template <class Map>
struct BlockBytes {
  static constexpr std::size_t kSource = kLanes * Map::kFrom;

  static constexpr bool IsZero(std::size_t byte) { return Map::kOrder[byte % Map::kTo] == kZero; }
  /// Where byte `byte` of the result is in the source.
  static constexpr std::size_t At(std::size_t byte) {
    return byte / Map::kTo * Map::kFrom + Map::kOrder[byte % Map::kTo];
  }
  /// The first and the last source byte of `count` bytes of the result.
  static constexpr std::size_t First(std::size_t byte, std::size_t count) {
    std::size_t first = kSource;
    for (std::size_t i = byte; i < byte + count; ++i) first = !IsZero(i) && At(i) < first ? At(i) : first;
    return first;
  }
  static constexpr std::size_t Last(std::size_t byte, std::size_t count) {
    std::size_t last = 0;
    for (std::size_t i = byte; i < byte + count; ++i) last = !IsZero(i) && At(i) > last ? At(i) : last;
    return last;
  }
};

#if LM_BYTE_SHUFFLE == 64

/// Register `kRegister` of a block's result, from the registers of its source that have its bytes.
template <class Map, std::size_t kRegister>
class ShuffledRegister {
 public:
  template <class Reader>
  static U8 Load(const Reader& read) {
    return Load(read, std::make_index_sequence<kSources>{}, std::make_index_sequence<kLanes>{});
  }

 private:
  using Bytes = BlockBytes<Map>;
  static constexpr std::size_t kBegin = kRegister * kLanes;
  static constexpr std::size_t kFirst = Bytes::First(kBegin, kLanes) / kLanes;
  static constexpr std::size_t kSources = Bytes::Last(kBegin, kLanes) / kLanes - kFirst + 1;

  struct Index {
    static constexpr std::size_t At(std::size_t lane) {
      return Bytes::IsZero(kBegin + lane) ? 0 : Bytes::At(kBegin + lane) - kFirst * kLanes;
    }
  };

  template <class Reader, std::size_t... kSource, std::size_t... kLane>
  static U8 Load(const Reader& read, std::index_sequence<kSource...>, std::index_sequence<kLane...>) {
    const U8 window[] = {read((kFirst + kSource) * kLanes)...};
    constexpr bool kHasZeros = (Bytes::IsZero(kLane) || ...);
    if constexpr (kHasZeros) {
      return Pick<Index>(window) & U8{(Bytes::IsZero(kBegin + kLane) ? std::uint8_t{0} : std::uint8_t{0xFF})...};
    } else {
      return Pick<Index>(window);
    }
  }
};

#else

/// Register `kRegister` of a block's result. Shuffles do not leave the 16 bytes of a unit, so units are loaded from
/// where their bytes begin, and once more up to where these end, if a unit is too short for them.
template <class Map, std::size_t kRegister>
class ShuffledRegister {
 public:
  template <class Reader>
  static U8 Load(const Reader& read) {
    const U8 begins = Shuffled<false>(read, std::make_index_sequence<kLanes>{});
    if constexpr (kNeedsEnds) {
      return begins | Shuffled<true>(read, std::make_index_sequence<kLanes>{});
    } else {
      return begins;
    }
  }

 private:
  using Bytes = BlockBytes<Map>;
  static constexpr std::size_t kBegin = kRegister * kLanes, kUnits = kLanes / 16;

  using Offset = std::ptrdiff_t;

  static constexpr Offset Lesser(Offset a, Offset b) { return a < b ? a : b; }
  static constexpr Offset Greater(Offset a, Offset b) { return a > b ? a : b; }

  // A unit has its first byte if it is loaded from this offset or an earlier one, and its last byte if from the other
  // or a later one.
  static constexpr Offset LatestBegin(std::size_t unit) {
    return static_cast<Offset>(Bytes::First(kBegin + 16 * unit, 16));
  }
  static constexpr Offset EarliestEnd(std::size_t unit) {
    return static_cast<Offset>(Bytes::Last(kBegin + 16 * unit, 16)) - 15;
  }
  static constexpr bool IsInBlock(Offset offset) {
    return offset >= 0 && offset + Offset{kLanes} <= Offset{Bytes::kSource};
  }

  // Units that follow each other are one load, where both that is possible and no byte is left out.
  static constexpr Offset BeginOf(std::size_t unit) {
    Offset together = LatestBegin(0);
    for (std::size_t k = 1; k < kUnits; ++k) together = Lesser(together, LatestBegin(k) - Offset(16 * k));
    bool fits = IsInBlock(together);
    for (std::size_t k = 0; k < kUnits; ++k) fits = fits && together + Offset(16 * k) + 16 >= EarliestEnd(k);
    return fits ? together + Offset(16 * unit) : Lesser(LatestBegin(unit), Offset{Bytes::kSource} - 16);
  }
  static constexpr Offset EndOf(std::size_t unit) {
    Offset together = EarliestEnd(0);
    for (std::size_t k = 1; k < kUnits; ++k) together = Greater(together, EarliestEnd(k) - Offset(16 * k));
    bool fits = IsInBlock(together);
    for (std::size_t k = 0; k < kUnits; ++k) fits = fits && together + Offset(16 * k) <= BeginOf(k) + 16;
    return fits ? together + Offset(16 * unit) : Greater(EarliestEnd(unit), 0);
  }
  template <bool kEnds>
  static constexpr std::size_t OffsetOf(std::size_t unit) {
    return static_cast<std::size_t>(kEnds ? EndOf(unit) : BeginOf(unit));
  }
  static constexpr bool AnyNeedsEnds() {
    for (std::size_t unit = 0; unit < kUnits; ++unit) {
      if (EarliestEnd(unit) > BeginOf(unit)) return true;
    }
    return false;
  }
  static constexpr bool kNeedsEnds = AnyNeedsEnds();

  // Bytes that are loaded twice come from the begins.
  template <bool kEnds>
  static constexpr std::uint8_t IndexOf(std::size_t lane) {
    const std::size_t unit = lane / 16;
    if (Bytes::IsZero(kBegin + lane)) return kNoByte;
    const std::size_t at = Bytes::At(kBegin + lane);
    const bool atEnd = at >= OffsetOf<false>(unit) + 16;
    return atEnd == kEnds ? static_cast<std::uint8_t>(at - OffsetOf<kEnds>(unit)) : kNoByte;
  }

  template <bool kEnds, class Reader, std::size_t... kLane>
  static U8 Shuffled(const Reader& read, std::index_sequence<kLane...>) {
    return ShuffleUnits(Units<kEnds>(read, std::make_index_sequence<kUnits>{}), U8{IndexOf<kEnds>(kLane)...});
  }
  template <bool kEnds, class Reader, std::size_t... kUnit>
  static U8 Units(const Reader& read, std::index_sequence<kUnit...>) {
    return read(OffsetOf<kEnds>(kUnit)...);
  }
};

#endif

#endif

}  // namespace
}  // namespace LmImagingLib::LM_ISA
