#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "simd/stores.h"

// Stores bytes through a writer of words, block by block.
#if LM_LANES
namespace LmImagingLib::LM_ISA {
namespace {

// A register of words of each channel. Loaded by themselves they take one shuffle, and the second half of a register
// takes three.
template <class Writer, class To, class Fit>
inline void StoreWidened(const std::uint8_t* red, const std::uint8_t* green, const std::uint8_t* blue, To to,
                         const Fit& fit) {
  Writer::Block({fit(LoadWide(red)), fit(LoadWide(green)), fit(LoadWide(blue))}, to);
}

// Makes bytes the upper ones of words, of gray.
struct ToTop {
  U16 operator()(U16 words) const { return words << 8; }
};

// Bytes in an order that `LowWords` and `HighWords` bring back.
inline U8 InWordOrder(U8 v) {
#if LM_LANES == 64
  return U8(__builtin_shufflevector(U64(v), U64(v), 0, 4, 1, 5, 2, 6, 3, 7));
#elif LM_LANES == 32
  return U8(__builtin_shufflevector(U64(v), U64(v), 0, 2, 1, 3));
#else
  return v;
#endif
}

// Both halves of a register of bytes, as words.
template <class Writer, class To, class Fit>
void StoreWidened(const RgbLanes<std::uint8_t>& in, To to, const Fit& fit) {
  Writer::Block({fit(FirstHalf(in.r)), fit(FirstHalf(in.g)), fit(FirstHalf(in.b))}, to);
  Writer::Block({fit(SecondHalf(in.r)), fit(SecondHalf(in.g)), fit(SecondHalf(in.b))},
                to + kLanes / 2 * Writer::kBytes);
}

// @param run  of gray, or null
template <class Writer, class To, class Fit, class Change>
void StoreByteBlocks(const Channels<std::uint8_t>& in, std::size_t count, To line, std::uint32_t ahead, const Fit fit,
                     const Change change, const LineRun* run = nullptr) {
  const std::uint8_t *red = Alone(in.red), *green = Alone(in.green), *blue = Alone(in.blue);
  for (std::uint32_t left = LinesOf(run);;) {
    To to = line;
    std::size_t i = 0;
    const auto store = [&] {
      if constexpr (std::is_same_v<Fit, ToTop>) {
        const U8 gray = InWordOrder(Load(red + i));
        Store(LowWords(gray), to);
        Store(HighWords(gray), to + kLanes);
      } else if constexpr (std::is_same_v<Change, AsTheyAre>) {
        constexpr std::size_t kHalf = kLanes / 2;
        StoreWidened<Writer>(red + i, green + i, blue + i, to, fit);
        StoreWidened<Writer>(red + i + kHalf, green + i + kHalf, blue + i + kHalf, to + kHalf * Writer::kBytes, fit);
      } else {
        StoreWidened<Writer>(change(RgbLanes<std::uint8_t>{Load(red + i), Load(green + i), Load(blue + i)}), to, fit);
      }
      i += kLanes;
      to = to + kLanes * Writer::kBytes;
    };
    // Beside words that are made by a step or two, the steps of the loop take time. Four blocks are stored together
    // where they need not be fetched: with memory in between, fetching more at once takes longer.
    if constexpr (Writer::kBytes == 2 && std::is_same_v<Change, AsTheyAre>) {
      while (ahead == 0 && i + 4 * kLanes <= count) {  // NOLINT(bugprone-infinite-loop): `store` goes on
        for (std::size_t k = 0; k < 4; ++k) store();
      }
    }
    while (i + kLanes <= count) {  // NOLINT(bugprone-infinite-loop): likewise
      FetchTarget(to, kLanes * Writer::kBytes, ahead);
      store();
    }
    if (i < count) {
      const std::size_t rest = count - i;
      StoreWidened<Writer>(
          change(RgbLanes<std::uint8_t>{LoadPart(red + i, rest), LoadPart(green + i, rest), LoadPart(blue + i, rest)}),
          Part{Address(to), rest * Writer::kBytes}, fit);
    }
    if (Writer::kBytes != 2 || --left == 0) return;
    red += run->source, green += run->source, blue += run->source;
    line = line + run->target;
  }
}

}  // namespace
}  // namespace LmImagingLib::LM_ISA
#endif
