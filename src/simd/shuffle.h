#pragma once

#include "simd/loops.h"

// Pixels whose bytes only change places: no strip, one shuffle for as many pixels as a register holds.
namespace LmImagingLib::LM_ISA {
namespace {

/// Byte i of the result is byte `kOrder[i]` of the source pixel; kZero is 0.
inline constexpr std::size_t kZero = 99;

/// How many bytes ahead to fetch both lines into the cache; 0 leaves it to the processor.
struct Ahead {
  std::uint32_t source, target;
};

/// Shuffles pixels of `Map::kFrom` bytes into pixels of `Map::kTo` bytes, in the order of `Map::kOrder`.
template <class Map>
void ShufflePixel(const std::uint8_t* from, std::uint8_t* to) {
  std::uint8_t pixel[Map::kTo];
  for (std::size_t i = 0; i < Map::kTo; ++i) pixel[i] = Map::kOrder[i] == kZero ? 0 : from[Map::kOrder[i]];
  std::memcpy(to, pixel, sizeof pixel);
}

#if LM_LANES

// The width of registers that shuffles do not cross.
inline constexpr std::size_t kShuffleBytes = LM_BYTE_SHUFFLE;
using Bytes = std::uint8_t __attribute__((vector_size(kShuffleBytes)));

template <class Map, std::size_t... kLane>
inline Bytes ShuffleBytes(Bytes v, std::index_sequence<kLane...>) {
  // Lanes after the last whole pixel keep their byte.
  constexpr std::size_t kPixels = kShuffleBytes / (Map::kFrom > Map::kTo ? Map::kFrom : Map::kTo);
  return __builtin_shufflevector(
      v, Bytes{},
      (kLane >= kPixels * Map::kTo              ? kLane
       : Map::kOrder[kLane % Map::kTo] == kZero ? kShuffleBytes
                                                : kLane / Map::kTo * Map::kFrom + Map::kOrder[kLane % Map::kTo])...);
}

template <class Map>
void ShufflePixels(const std::uint8_t* from, std::uint8_t* to, std::size_t count, Ahead ahead) {
  constexpr std::size_t kPixels = kShuffleBytes / (Map::kFrom > Map::kTo ? Map::kFrom : Map::kTo);
  constexpr std::make_index_sequence<kShuffleBytes> kAll{};
  // A register reaches past its whole pixels. What it loads there is not used, and what it stores there is the next
  // pixels' or is stored again, so a step needs a whole register of line on either side.
  constexpr std::size_t kReach = (kShuffleBytes - 1) / (Map::kFrom < Map::kTo ? Map::kFrom : Map::kTo) + 1;
  std::size_t steps = count < kReach ? 0 : (count - kReach) / kPixels + 1;
  count -= steps * kPixels;
  const auto shuffle = [&] {
    Bytes v;
    std::memcpy(&v, from, kShuffleBytes);
    v = ShuffleBytes<Map>(v, kAll);
    std::memcpy(to, &v, kShuffleBytes);
    from += kPixels * Map::kFrom;
    to += kPixels * Map::kTo;
  };
  constexpr std::size_t kSome = 4;
  for (; steps >= kSome; steps -= kSome) {
    FetchSource(from, kSome * kPixels * Map::kFrom, ahead.source);
    FetchTarget(to, kSome * kPixels * Map::kTo, ahead.target);
    for (std::size_t k = 0; k < kSome; ++k) shuffle();
  }
  for (; steps != 0; --steps) shuffle();
#if LM_BYTE_SHUFFLE == 64
  while (count != 0) {
    const std::size_t pixels = count < kPixels ? count : kPixels;
    StorePart(ShuffleBytes<Map>(LoadPart(from, pixels * Map::kFrom), kAll), to, pixels * Map::kTo);
    count -= pixels;
    from += pixels * Map::kFrom;
    to += pixels * Map::kTo;
  }
#else
  for (; count != 0; --count, from += Map::kFrom, to += Map::kTo) ShufflePixel<Map>(from, to);
#endif
}

#else

template <class Map>
void ShufflePixels(const std::uint8_t* from, std::uint8_t* to, std::size_t count, Ahead /*ahead*/) {
  for (; count != 0; --count, from += Map::kFrom, to += Map::kTo) ShufflePixel<Map>(from, to);
}

#endif

}  // namespace
}  // namespace LmImagingLib::LM_ISA
