#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "simd/joined.h"
#include "simd/stores.h"
#include "simd/widening.h"
#include "simd/word_changes.h"

// The loops around the text of a writer of words. Samples of bytes or of words arrive, and are fitted to its depth.
namespace LmImagingLib::LM_ISA {
namespace {

template <class Sample>
inline std::uint16_t Fitted(Sample value, const Fit& fit) {
  return static_cast<std::uint16_t>(static_cast<std::uint32_t>(value) << fit.up >> fit.down);
}

/// Stores through a writer whose `Pixel` makes the bytes of one pixel of words.
template <class Writer, class Sample>
void StoreWidePixels(const Channels<Sample>& in, const LookupTables<Sample>* tables, std::size_t count,
                     const TargetLine& out, std::size_t first) {
  std::uint8_t* to = out.line + first * Writer::kBytes;
  for (std::size_t i = 0; i < count; ++i, to += Writer::kBytes) {
    const Rgb<Sample> pixel = LookUp(tables, in, i);
    Rgb<std::uint16_t> words{pixel.r, pixel.g, pixel.b};
    // Tables of words hold values that fit already.
    if (sizeof(Sample) == 1 || tables == nullptr) {
      words = {Fitted(pixel.r, out.fit), Fitted(pixel.g, out.fit), Fitted(pixel.b, out.fit)};
    }
    Writer::Pixel(words, to);
  }
}

#if LM_LANES

template <class Writer, class To, class Change>
void StoreWordBlocks(const Channels<std::uint16_t>& channels, std::size_t count, To to, std::uint32_t ahead,
                     const Change change) {
  const Channels<std::uint16_t> in{Alone(channels.red), Alone(channels.green), Alone(channels.blue)};
  constexpr std::size_t kStep = kBlock<std::uint16_t>;
  // A loop of a load, a change and a store takes up to twice as long where its code lies badly.
  constexpr std::size_t kTogether = Writer::kBytes == 2 ? 4 : 1;
  std::size_t i = 0;
  const auto store = [&] {
    FetchTarget(to, kStep * Writer::kBytes, ahead);
    Writer::Block(change(LoadWords(in, i)), to);
    i += kStep;
    to = to + kStep * Writer::kBytes;
  };
  while (i + kTogether * kStep <= count) {  // NOLINT(bugprone-infinite-loop): `store` goes on
    for (std::size_t k = 0; k < kTogether; ++k) store();
  }
  while (kTogether > 1 && i + kStep <= count) store();  // NOLINT(bugprone-infinite-loop): likewise
  if (i < count) {
    const std::size_t rest = count - i;
    Writer::Block(change(LoadWordsPart(in, i, rest)), Part{Address(to), rest * Writer::kBytes});
  }
}

// Words by tables are looked up one by one, some at a time, and then stored as they are. Writers of words by themselves
// store those of one channel.
template <class Writer, class To>
void StoreLookedUp(const Channels<std::uint16_t>& in, const LookupTables<std::uint16_t>& tables, std::size_t count,
                   To to, std::uint32_t ahead) {
  constexpr std::size_t kSome = 256;
  alignas(kLanes) std::uint16_t found[3][kSome];
  const std::uint16_t* const channels[] = {in.red, in.green, in.blue};
  const std::uint16_t* const entries[] = {tables.red.entries, tables.green.entries, tables.blue.entries};
  for (std::size_t i = 0; i < count; i += kSome, to = to + kSome * Writer::kBytes) {
    const std::size_t some = count - i < kSome ? count - i : kSome;
    for (std::size_t k = 0; k < (Writer::kBytes == 2 ? 1 : 3); ++k) {
      const std::uint16_t *const samples = channels[k] + i, *const table = entries[k];
      StoreJoined(some, found[k], [samples, table](std::size_t j, std::size_t l) { return table[samples[j + l]]; });
    }
    StoreWordBlocks<Writer>({found[0], found[1], found[2]}, some, to, ahead, AsTheyAre{});
  }
}

template <class Writer, class To>
void StoreWideTo(const Channels<std::uint8_t>& in, const LookupTables<std::uint8_t>* tables, std::size_t count,
                 const Fit& fit, To to, std::uint32_t ahead, const LineRun* run = nullptr) {
  const ShiftLanes up(fit.up);
  if (tables == nullptr) {
    if constexpr (Writer::kBytes == 2) {
      // Gray of 16 bits has its bytes as the lower or the upper ones of words, and needs no product.
      if (fit.up == 0) return StoreByteBlocks<Writer>(in, count, to, ahead, AsTheyAre{}, AsTheyAre{}, run);
      if (fit.up == 8) return StoreByteBlocks<Writer>(in, count, to, ahead, ToTop{}, AsTheyAre{}, run);
    }
    StoreByteBlocks<Writer>(in, count, to, ahead, up, AsTheyAre{}, run);
  } else if (kGainsAreFaster && tables->areGains) {
    StoreByteBlocks<Writer>(in, count, to, ahead, up, LookedUp<GainLanes>(*tables), run);
  } else {
    StoreByteBlocks<Writer>(in, count, to, ahead, up, LookedUp<Table>(*tables), run);
  }
}

template <class Writer, class To>
void StoreWideTo(const Channels<std::uint16_t>& in, const LookupTables<std::uint16_t>* tables, std::size_t count,
                 const Fit& fit, To to, std::uint32_t ahead) {
  if (tables == nullptr) {
    const FitLanes change(fit);
    StoreWordBlocks<Writer>(in, count, to, ahead, WordChanges<FitLanes>{change, change, change});
  } else if (tables->areGains) {
    ByGains(*tables, fit, [&](const auto& change) { StoreWordBlocks<Writer>(in, count, to, ahead, change); });
  } else {
    StoreLookedUp<Writer>(in, *tables, count, to, ahead);
  }
}

/// Stores a line through a writer whose `Block` makes the bytes of a register of words.
template <class Writer, class Sample>
void StoreWideLine(const Channels<Sample>& in, const LookupTables<Sample>* tables, std::size_t count,
                   const TargetLine& out, std::size_t first) {
  std::uint8_t* const to = out.line + first * Writer::kBytes;
  if (kHasStreams && out.streams && reinterpret_cast<std::uintptr_t>(to) % kLanes == 0) {
    StoreWideTo<Writer>(in, tables, count, out.fit, Stream{to}, 0);
  } else {
    StoreWideTo<Writer>(in, tables, count, out.fit, to, out.ahead);
  }
}

#else

template <class Writer, class Sample>
void StoreWideLine(const Channels<Sample>& in, const LookupTables<Sample>* tables, std::size_t count,
                   const TargetLine& out, std::size_t first) {
  StoreWidePixels<Writer>(in, tables, count, out, first);
}

#endif

/// The same for the lines of a run, if there is one.
template <class Writer, class Sample>
void StoreWide(const Channels<Sample>& in, const LookupTables<Sample>* tables, std::size_t count, const TargetLine& out,
               std::size_t first) {
  if (out.run == nullptr) return StoreWideLine<Writer>(in, tables, count, out, first);
#if LM_LANES
  if constexpr (Writer::kBytes == 2 && sizeof(Sample) == 1) {
    return StoreWideTo<Writer>(in, tables, count, out.fit, out.line, out.ahead, out.run);
  }
#endif
  StoreLines(in, out, [=](const Channels<Sample>& channels, const TargetLine& line) {
    StoreWideLine<Writer>(channels, tables, count, line, 0);
  });
}

}  // namespace
}  // namespace LmImagingLib::LM_ISA

/// Exports a writer of words as the kernel `Name`: from bytes and from words.
#define LM_EXPORT_WIDE_WRITER(Name, ...) LM_EXPORT_WIDE_STORE(Name, StoreWide<__VA_ARGS__>)

/// The same for a function that stores samples of either width.
#define LM_EXPORT_WIDE_STORE(Name, ...)                    \
  LM_EXPORT_WIDE_STORE_OF(std::uint8_t, Name, __VA_ARGS__) \
  LM_EXPORT_WIDE_STORE_OF(std::uint16_t, Name, __VA_ARGS__)

#define LM_EXPORT_WIDE_STORE_OF(Sample, Name, ...)                                                                    \
  namespace LmImagingLib::LM_ISA {                                                                                    \
  StoreKernel<Sample> Name;                                                                                           \
  void Name(const Channels<Sample>& in, const LookupTables<Sample>* tables, std::size_t count, const TargetLine& out, \
            std::size_t first) {                                                                                      \
    __VA_ARGS__(in, tables, count, out, first);                                                                       \
  }                                                                                                                   \
  }
