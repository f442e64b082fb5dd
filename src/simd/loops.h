#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "simd/fetch.h"
#include "simd/readers.h"
#include "simd/rgb.h"
#include "simd/strip.h"

// The loops around the text of a kernel: group by group, which is the definition, and, where the instruction set has
// vectors, block by block of a register of samples. Included by kernels only. Everything is in unnamed namespaces, so
// that no code compiled for one instruction set can become the copy that the linker keeps for all.
namespace LmImagingLib::LM_ISA {
namespace {

inline std::uint32_t Load16(const std::uint8_t* from) {
  std::uint16_t word;
  std::memcpy(&word, from, sizeof word);
  return word;
}

/// A sample of a word; stray high bits are dropped.
template <class Sample>
Sample FromWord(std::uint32_t word, const SourceLines& in) {
  return static_cast<Sample>(word >> in.shift & in.mask);
}

/// Bytes of `pixels` pixels, a multiple of the layout's group.
template <class Layout>
constexpr std::size_t BytesOf(std::size_t pixels) {
  return pixels / Layout::kPixels * Layout::kBytes;
}

/// Columns of a mosaic that a pixel takes: one, or those of a cell if the layout says so.
template <class Layout>
constexpr auto ColumnsOf(int) -> decltype(+Layout::kColumns) {
  return Layout::kColumns;
}
template <class Layout>
constexpr std::size_t ColumnsOf(...) {
  return 1;
}

/// The lines of `in` from pixel `pixel` on.
template <class Layout>
SourceLines At(const SourceLines& in, std::size_t pixel) {
  SourceLines at{{}, Alone(in.shift), Alone(in.site), Alone(in.ahead), Alone(in.mask), Alone(in.matrix), Alone(in.up)};
  for (std::size_t k = 0; k < Layout::kLines; ++k) at.line[k] = Alone(in.line[k]) + BytesOf<Layout>(pixel);
  if (pixel * ColumnsOf<Layout>(0) % 2 != 0) at.site = RightOf(at.site);
  return at;
}

/// Goes on to the next line of a run.
template <class Layout, class Sample>
[[gnu::always_inline]] inline void GoOn(const LineRun& run, SourceLines& in, Sample*& red, Sample*& green,
                                        Sample*& blue) {
  for (std::size_t k = 0; k < Layout::kLines; ++k) in.line[k] += run.source;
  const std::size_t step = run.target / sizeof(Sample);
  red += step, green += step, blue += step;
}

/// The channels that a layout was decoded into.
template <class Layout, class Sample>
Channels<Sample> DecodedInto(const Room<Sample>& room) {
  if constexpr (Layout::kGray) return {room.red, room.red, room.red};
  return {room.red, room.green, room.blue};
}

/// Decodes a layout whose `Group` makes the `kPixels` pixels of one group, samples or colours.
template <class Layout, class Sample>
Channels<Sample> DecodeGroups(const SourceLines& lines, std::size_t first, std::size_t count,
                              const Room<Sample>& room) {
  SourceLines in = At<Layout>(lines, first);
  Sample *red = room.red, *green = room.green, *blue = room.blue;
  for (std::uint32_t left = LinesOf(room.run);;) {
    for (std::size_t i = 0; i < count; i += Layout::kPixels) {
      if constexpr (Layout::kGray) {
        Layout::Group(At<Layout>(in, i), red + i);
        if constexpr (sizeof(Sample) == 2) {
          for (std::size_t k = 0; k < Layout::kPixels; ++k) red[i + k] = static_cast<Sample>(red[i + k] << in.up);
        }
      } else {
        Rgb<Sample> pixels[Layout::kPixels];
        Layout::Group(At<Layout>(in, i), pixels);
        for (std::size_t k = 0; k < Layout::kPixels; ++k) {
          red[i + k] = pixels[k].r;
          green[i + k] = pixels[k].g;
          blue[i + k] = pixels[k].b;
        }
      }
    }
    if (--left == 0) return DecodedInto<Layout>(room);
    GoOn<Layout>(*room.run, in, red, green, blue);
  }
}

#if LM_LANES

template <class Layout, class Sample, class Reader>
[[gnu::always_inline]] inline void DecodeBlock(const Reader& read, Sample* red, Sample* green, Sample* blue) {
  if constexpr (Layout::kGray) {
    const Lanes<Sample> samples = Layout::Block(read, Of<Sample>{});
    if constexpr (sizeof(Sample) == 2) {
      Store(samples << static_cast<std::uint16_t>(read.in.up), red);
    } else {
      Store(samples, red);
    }
    (void)green, (void)blue;
  } else {
    const RgbLanes<Sample> pixels = Layout::Block(read, Of<Sample>{});
    Store(pixels.r, red);
    Store(pixels.g, green);
    Store(pixels.b, blue);
  }
}

/// Fetches the bytes that a later block of `pixels` pixels reads of the lines from `line` on into the cache.
template <class Layout>
[[gnu::always_inline]] inline void FetchAhead(const SourceLines& in, std::size_t line, std::size_t at,
                                              std::size_t pixels) {
  for (; line < Layout::kLines; ++line) FetchSource(in.line[line] + at, BytesOf<Layout>(pixels), in.ahead);
}

/// Calls `use` with a reader of a last block of `rest` pixels, which reads no byte after them. Has its own lines: the
/// caller's would no longer stay in registers if `use` had their address.
template <class Layout, class Sample, class Use>
[[gnu::always_inline]] inline void ReadRest(const SourceLines& caller, std::size_t at, std::size_t rest,
                                            const Use& use) {
  SourceLines in = At<Layout>(caller, 0);
  const std::size_t bytes = BytesOf<Layout>(rest) + Layout::kBeyond;
#if LM_HAS_MASKS
  use(PartOfBlock{in, at, bytes});
#else
  constexpr std::size_t kRegisters = (BytesOf<Layout>(kBlock<Sample>) + Layout::kBeyond - 1) / kLanes + 1;
  std::uint8_t copy[Layout::kLines][kRegisters * kLanes];
  for (std::size_t k = 0; k < Layout::kLines; ++k) {
    // Zeros keep the bytes after the line from becoming indices of tables.
    for (std::size_t byte = 0; byte < sizeof copy[k]; byte += kLanes) Store(U8{}, copy[k] + byte);
    in.line[k] = static_cast<const std::uint8_t*>(std::memcpy(copy[k], in.line[k] + at, bytes));
  }
  use(WholeBlock{in, 0});
#endif
}

// The `rest` pixels of a last, incomplete block.
template <class Layout, class Sample>
[[gnu::always_inline]] inline void DecodeRest(const SourceLines& in, std::size_t at, std::size_t rest, Sample* red,
                                              Sample* green, Sample* blue) {
  alignas(kLanes) Sample pixels[3][kBlock<Sample>];
  ReadRest<Layout, Sample>(
      in, at, rest, [&](const auto& read) { DecodeBlock<Layout, Sample>(read, pixels[0], pixels[1], pixels[2]); });
  StorePart(Load(pixels[0]), red, rest);
  if constexpr (!Layout::kGray) {
    StorePart(Load(pixels[1]), green, rest);
    StorePart(Load(pixels[2]), blue, rest);
  }
}

/// Decodes a layout whose `Block` makes a register of each channel, from BytesOf(kBlock) + kBeyond bytes of each line.
template <class Layout, class Sample>
Channels<Sample> DecodeBlocks(const SourceLines& lines, std::size_t first, std::size_t count,
                              const Room<Sample>& room) {
  // By reference these would be loaded anew after each store.
  SourceLines in = At<Layout>(lines, first);
  Sample *red = Alone(room.red), *green = Alone(room.green), *blue = Alone(room.blue);
  constexpr std::size_t kStep = kBlock<Sample>;
  // Three planes take a tenth longer if they are fetched, too.
  [[maybe_unused]] const std::uint32_t ahead = Alone(room.ahead);
  // Beside quick layouts the steps of the loop take time. A step decodes as many blocks of gray as fill a cache line of
  // the room, and two blocks of colours where one is shorter than that. Of gray that is not fetched it decodes twice as
  // many: with memory in between, fetching more at once takes longer.
  constexpr std::size_t kTogether = Layout::kGray ? 64 / kLanes : kLanes < 64 ? 2 : 1;
  for (std::uint32_t left = LinesOf(room.run);;) {
    std::size_t at = 0;
    std::size_t i = 0;
    const auto decode = [&] {
      DecodeBlock<Layout, Sample>(WholeBlock{in, at}, red + i, green + i, blue + i);
      i += kStep;
      at += BytesOf<Layout>(kStep);
    };
    if (Layout::kGray && kLanes >= 32 && (in.ahead | ahead) == 0) {
      while (i + 2 * kTogether * kStep <= count) {  // NOLINT(bugprone-infinite-loop): `decode` goes on
        for (std::size_t k = 0; k < 2 * kTogether; ++k) decode();
      }
    }
    while (i + kTogether * kStep <= count) {  // NOLINT(bugprone-infinite-loop): likewise
      FetchAhead<Layout>(in, 0, at, kTogether * kStep);
      if constexpr (Layout::kGray) {
        FetchTarget(reinterpret_cast<std::uint8_t*>(red + i), kTogether * kStep * sizeof(Sample), ahead);
      }
      for (std::size_t k = 0; k < kTogether; ++k) decode();
    }
    while (i + kStep <= count) decode();  // NOLINT(bugprone-infinite-loop): likewise
    if (!Layout::kGray && i < count && count >= kStep) {
      // Some colours once more are faster than a part of a block. Gray may be decoded in place, where its source is
      // gone.
      i = count - kStep;
      DecodeBlock<Layout, Sample>(WholeBlock{At<Layout>(in, i), 0}, red + i, green + i, blue + i);
    } else if (i < count) {
      DecodeRest<Layout>(in, at, count - i, red + i, green + i, blue + i);
    }
    if (--left == 0) return DecodedInto<Layout>(room);
    GoOn<Layout>(*room.run, in, red, green, blue);
  }
}

/// Decodes by blocks, if the layout has a `Block` for these samples.
template <class Layout, class Sample>
constexpr auto Decoder(int)
    -> decltype(Layout::Block(std::declval<WholeBlock>(), Of<Sample>{}), static_cast<DecodeKernel<Sample>*>(nullptr)) {
  return DecodeBlocks<Layout, Sample>;
}

#endif

/// The best decoder that a layout has for this instruction set.
template <class Layout, class Sample>
constexpr DecodeKernel<Sample>* Decoder(...) {
  return DecodeGroups<Layout, Sample>;
}

}  // namespace
}  // namespace LmImagingLib::LM_ISA

/// Defines the kernel `Name` that decodes a layout into samples of one type.
#define LM_DEFINE_DECODER(Sample, Name, ...)                                                                     \
  namespace LmImagingLib::LM_ISA {                                                                               \
  DecodeKernel<Sample> Name;                                                                                     \
  Channels<Sample> Name(const SourceLines& in, std::size_t first, std::size_t count, const Room<Sample>& room) { \
    return Decoder<__VA_ARGS__, Sample>(0)(in, first, count, room);                                              \
  }                                                                                                              \
  }
