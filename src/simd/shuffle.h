#pragma once

#include "simd/loops.h"
#include "simd/shuffled_register.h"

// Pixels whose bytes only change places: no strip, but shuffles of as many pixels as a register has bytes. These fill
// whole registers on either side, so that stores cross no cache line, and may go past the caches.
namespace LmImagingLib::LM_ISA {
namespace {

// The lines that go to a target and those after it; one where it has no run.
inline LineRun RunOf(const TargetLine& target) { return target.run == nullptr ? LineRun{1, 0, 0} : *target.run; }

/// Shuffles a pixel of `Map::kFrom` bytes into one of `Map::kTo` bytes, in the order of `Map::kOrder`.
template <class Map>
void ShufflePixel(const std::uint8_t* from, std::uint8_t* to) {
  std::uint8_t pixel[Map::kTo];
  for (std::size_t i = 0; i < Map::kTo; ++i) pixel[i] = Map::kOrder[i] == kZero ? 0 : from[Map::kOrder[i]];
  std::memcpy(to, pixel, sizeof pixel);
}

#if LM_LANES

/// Reads a block.
struct BlockReader {
  const std::uint8_t* from;

  U8 operator()(std::size_t offset) const { return Load(from + offset); }
#if LM_LANES == 32
  U8 operator()(std::size_t first, std::size_t second) const {
    return second - first == 16 ? Load(from + first) : LoadUnits(from + first, second - first);
  }
#elif LM_LANES == 64 && LM_BYTE_SHUFFLE < 64
  U8 operator()(std::size_t first, std::size_t second, std::size_t third, std::size_t fourth) const {
    const bool together = second - first == 16 && third - second == 16 && fourth - third == 16;
    return together ? Load(from + first) : LoadUnits(from + first, from + second, from + third, from + fourth);
  }
#endif
};

// Makes all registers of a block before it stores one: the target may be the source.
template <class Map, class Reader, class To, std::size_t... kRegister>
[[gnu::always_inline]] inline void ShuffleBlock(const Reader& read, To to, std::index_sequence<kRegister...>) {
  const U8 registers[] = {Pinned(ShuffledRegister<Map, kRegister>::Load(read))...};
  for (std::size_t k = 0; k < Map::kTo; ++k) Store(registers[k], to + k * kLanes);
}

// Shuffles whole blocks, and returns how many pixels they have.
template <class Map, class To>
std::size_t ShuffleBlocks(const std::uint8_t* from, To to, std::size_t count, std::uint32_t sourceAhead,
                          std::uint32_t targetAhead) {
  std::size_t done = 0;
  for (; done + kLanes <= count; done += kLanes) {
    FetchSource(from, kLanes * Map::kFrom, sourceAhead);
    FetchTarget(to, kLanes * Map::kTo, targetAhead);
    ShuffleBlock<Map>(BlockReader{from}, to, std::make_index_sequence<Map::kTo>{});
    from += kLanes * Map::kFrom;
    to = to + kLanes * Map::kTo;
  }
  return done;
}

#if LM_BYTE_SHUFFLE == 64

/// Reads a block of `bytes` bytes, and none after them.
struct PartReader {
  const std::uint8_t* from;
  std::size_t bytes;

  U8 operator()(std::size_t offset) const {
    if (offset >= bytes) return U8{};
    return LoadPart(from + offset, bytes - offset < kLanes ? bytes - offset : kLanes);
  }
};

// The pixels of the last, incomplete block.
template <class Map>
// NOLINTNEXTLINE(readability-non-const-parameter): it is stored to as a `Part`
void ShuffleRest(const std::uint8_t* from, std::uint8_t* to, std::size_t count) {
  ShuffleBlock<Map>(PartReader{from, count * Map::kFrom}, Part{to, count * Map::kTo},
                    std::make_index_sequence<Map::kTo>{});
}

#else

using Unit = std::uint8_t __attribute__((vector_size(16)));

template <class Map, std::size_t... kLane>
inline Unit ShufflePixelsOf(Unit v, std::index_sequence<kLane...>) {
  // Lanes after the last whole pixel keep their byte.
  constexpr std::size_t kPixels = 16 / (Map::kFrom > Map::kTo ? Map::kFrom : Map::kTo);
  return __builtin_shufflevector(
      v, Unit{},
      (kLane >= kPixels * Map::kTo ? kLane
       : Map::kOrder[kLane % Map::kTo] == kZero ? 16
                                                : kLane / Map::kTo * Map::kFrom + Map::kOrder[kLane % Map::kTo])...);
}

// The pixels of the last, incomplete block. Each step shuffles the whole pixels of 16 bytes. What it stores after them
// is the next pixels' or is stored again, so it needs 16 bytes of line on either side.
template <class Map>
void ShuffleRest(const std::uint8_t* from, std::uint8_t* to, std::size_t count) {
  constexpr std::size_t kPixels = 16 / (Map::kFrom > Map::kTo ? Map::kFrom : Map::kTo);
  constexpr std::size_t kReach = 15 / (Map::kFrom < Map::kTo ? Map::kFrom : Map::kTo) + 1;
  for (; count >= kReach; count -= kPixels) {
    Unit v;
    std::memcpy(&v, from, sizeof v);
    v = ShufflePixelsOf<Map>(v, std::make_index_sequence<16>{});
    std::memcpy(to, &v, sizeof v);
    from += kPixels * Map::kFrom;
    to += kPixels * Map::kTo;
  }
  for (; count != 0; --count, from += Map::kFrom, to += Map::kTo) ShufflePixel<Map>(from, to);
}

#endif

// Shuffles `count` pixels of a line, whole blocks to `blocks`. Always inline, so that the patterns of its shuffles stay
// in registers from line to line: with AVX2, loading them again takes a twelfth of the time of 320 pixels.
template <class Map, class To>
[[gnu::always_inline]] inline void ShufflePixels(const std::uint8_t* from, To blocks, std::uint8_t* to,
                                                 std::size_t count, std::uint32_t sourceAhead,
                                                 std::uint32_t targetAhead) {
  const std::size_t done = ShuffleBlocks<Map>(from, blocks, count, sourceAhead, targetAhead);
  if (done < count) ShuffleRest<Map>(from + done * Map::kFrom, to + done * Map::kTo, count - done);
}

/// Shuffles `count` pixels of each line of a run, the first of which goes to `to`.
template <class Map>
void ShuffleLines(const std::uint8_t* from, const TargetLine& target, std::uint8_t* to, std::size_t count,
                  std::uint32_t ahead) {
  if (kHasStreams && target.streams && reinterpret_cast<std::uintptr_t>(to) % kLanes == 0) {
    return ShufflePixels<Map>(from, Stream{to}, to, count, ahead, 0);
  }
  const LineRun run = RunOf(target);
  for (std::uint32_t line = 0; line < run.lines; ++line, from += run.source, to += run.target) {
    ShufflePixels<Map>(from, to, to, count, ahead, target.ahead);
  }
}

#else

template <class Map>
void ShuffleLines(const std::uint8_t* from, const TargetLine& target, std::uint8_t* to, std::size_t count,
                  std::uint32_t /*ahead*/) {
  const LineRun run = RunOf(target);
  for (std::uint32_t line = 0; line < run.lines; ++line, from += run.source, to += run.target) {
    for (std::size_t i = 0; i < count; ++i) ShufflePixel<Map>(from + i * Map::kFrom, to + i * Map::kTo);
  }
}

#endif

}  // namespace
}  // namespace LmImagingLib::LM_ISA
