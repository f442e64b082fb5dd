#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "simd/rgb.h"
#include "simd/strip.h"

// The loops around the text of a kernel: group by group, which is the definition, and, where the instruction set has
// vectors, block by block of a register's worth of pixels. Included by kernels only. Everything lies in unnamed
// namespaces, so that no code compiled for one instruction set can become the copy that the linker keeps for all.
namespace LmImagingLib::LM_ISA {
namespace {

inline std::uint32_t Load16(const std::uint8_t* from) {
  std::uint16_t word;
  std::memcpy(&word, from, sizeof word);
  return word;
}

/// A 16-bit sample brought to 8 bits; stray high bits are dropped.
inline std::uint8_t Sample16(const std::uint8_t* from, std::uint32_t shift) {
  return static_cast<std::uint8_t>(Load16(from) >> shift);
}

/// Bytes of `pixels` pixels, a multiple of the layout's group.
template <class Layout>
constexpr std::size_t BytesOf(std::size_t pixels) {
  return pixels / Layout::kPixels * Layout::kBytes;
}

/// The lines of `in` from pixel `pixel` on.
template <class Layout>
SourceLines At(const SourceLines& in, std::size_t pixel) {
  SourceLines at{{}, Alone(in.shift), Alone(in.cell), Alone(in.ahead)};
  for (std::size_t k = 0; k < Layout::kLines; ++k) at.line[k] = Alone(in.line[k]) + BytesOf<Layout>(pixel);
  if (pixel % 2 != 0) at.cell ^= kCellToTheRight;
  return at;
}

/// Decodes a layout whose `Group` makes the `kPixels` pixels of one group, samples or colours.
template <class Layout>
Channels DecodeGroups(const SourceLines& in, std::size_t first, std::size_t count, const Room& room) {
  std::uint8_t *const red = room.red, *const green = room.green, *const blue = room.blue;
  for (std::size_t i = 0; i < count; i += Layout::kPixels) {
    if constexpr (Layout::kGray) {
      Layout::Group(At<Layout>(in, first + i), red + i);
    } else {
      Rgb pixels[Layout::kPixels];
      Layout::Group(At<Layout>(in, first + i), pixels);
      for (std::size_t k = 0; k < Layout::kPixels; ++k) {
        red[i + k] = pixels[k].r;
        green[i + k] = pixels[k].g;
        blue[i + k] = pixels[k].b;
      }
    }
  }
  if constexpr (Layout::kGray) return {red, red, red};
  return {red, green, blue};
}

#if LM_LANES

/// Two registers of words, in an order that `JoinWords` turns into theirs in memory.
struct WordPair {
  U16 first, second;
};

/// Reads the bytes of a whole block.
struct WholeBlock {
  const SourceLines& in;
  std::size_t at;

  U8 operator()(std::size_t line, std::size_t offset) const { return Load(in.line[line] + at + offset); }
  /// The first half of a register; the rest is anything.
  U8 Half(std::size_t line, std::size_t offset) const { return LoadHalf(in.line[line] + at + offset); }
  WordPair Words(std::size_t line, std::size_t offset) const {
#if LM_LANES == 32
    return {U16(Units(line, offset, 32)), U16(Units(line, offset + 16, 32))};
#else
    return {U16((*this)(line, offset)), U16((*this)(line, offset + kLanes))};
#endif
  }
#if LM_LANES < 64
  /// 16 bytes from `offset`, and from every `step` bytes on.
  U8 Units(std::size_t line, std::size_t offset, std::size_t step) const {
    return LoadUnits(in.line[line] + at + offset, step);
  }
#endif
};

#if LM_LANES == 64
/// Reads the bytes of a block that ends with the line, and none behind it. (Reading a copy would have to wait for it.)
struct PartOfBlock {
  const SourceLines& in;
  std::size_t at;
  std::size_t bytes;

  U8 operator()(std::size_t line, std::size_t offset) const {
    if (offset >= bytes) return U8{};
    return LoadPart(in.line[line] + at + offset, bytes - offset < kLanes ? bytes - offset : kLanes);
  }
  U8 Half(std::size_t line, std::size_t offset) const { return (*this)(line, offset); }
  WordPair Words(std::size_t line, std::size_t offset) const {
    return {U16((*this)(line, offset)), U16((*this)(line, offset + kLanes))};
  }
};
#endif

template <class Layout, class Reader>
inline void DecodeBlock(const Reader& read, std::uint8_t* red, std::uint8_t* green, std::uint8_t* blue) {
  if constexpr (Layout::kGray) {
    Store(Layout::Block(read), red);
    (void)green, (void)blue;
  } else {
    const RgbLanes pixels = Layout::Block(read);
    Store(pixels.r, red);
    Store(pixels.g, green);
    Store(pixels.b, blue);
  }
}

/// Fetches what a later block reads of the lines from `line` on into the cache.
template <class Layout>
inline void FetchAhead(const SourceLines& in, std::size_t line, std::size_t at) {
  for (; line < Layout::kLines; ++line) {
    for (std::size_t byte = 0; byte < BytesOf<Layout>(kLanes); byte += 64) {
      __builtin_prefetch(in.line[line] + at + in.ahead + byte);
    }
  }
}

/// Calls `use` with what reads a last block of `rest` pixels, and no byte behind them. Takes its own lines: the
/// caller's would no longer stay in registers if `use` knew where they lie.
template <class Layout, class Use>
inline void ReadRest(SourceLines in, std::size_t at, std::size_t rest, const Use& use) {
  const std::size_t bytes = BytesOf<Layout>(rest) + Layout::kBeyond;
#if LM_LANES == 64
  use(PartOfBlock{in, at, bytes});
#else
  std::uint8_t copy[Layout::kLines][BytesOf<Layout>(kLanes) + Layout::kBeyond];
  for (std::size_t k = 0; k < Layout::kLines; ++k) {
    in.line[k] = static_cast<const std::uint8_t*>(std::memcpy(copy[k], in.line[k] + at, bytes));
  }
  use(WholeBlock{in, 0});
#endif
}

/// Decodes a layout whose `Block` makes kLanes pixels, from BytesOf(kLanes) + kBeyond bytes of each line.
template <class Layout>
Channels DecodeBlocks(const SourceLines& lines, std::size_t first, std::size_t count, const Room& room) {
  // By reference these would be loaded anew after each store.
  const SourceLines in = At<Layout>(lines, first);
  std::uint8_t *const red = Alone(room.red), *const green = Alone(room.green), *const blue = Alone(room.blue);
  std::size_t at = 0;
  std::size_t i = 0;
  for (; i + kLanes <= count; i += kLanes, at += BytesOf<Layout>(kLanes)) {
    if (in.ahead != 0) FetchAhead<Layout>(in, 0, at);
    DecodeBlock<Layout>(WholeBlock{in, at}, red + i, green + i, blue + i);
  }
  if (i < count) {
    const std::size_t rest = count - i;
    alignas(kLanes) std::uint8_t pixels[3][kLanes];
    ReadRest<Layout>(in, at, rest,
                     [&](const auto& read) { DecodeBlock<Layout>(read, pixels[0], pixels[1], pixels[2]); });
    StorePart(Load(pixels[0]), red + i, rest);
    if constexpr (!Layout::kGray) {
      StorePart(Load(pixels[1]), green + i, rest);
      StorePart(Load(pixels[2]), blue + i, rest);
    }
  }
  if constexpr (Layout::kGray) return {red, red, red};
  return {red, green, blue};
}

template <class Layout>
constexpr auto Decoder(int) -> decltype(&Layout::template Block<WholeBlock>, static_cast<DecodeKernel*>(nullptr)) {
  return DecodeBlocks<Layout>;
}

#endif

/// The best decoder that a layout has for this instruction set.
template <class Layout>
constexpr DecodeKernel* Decoder(...) {
  return DecodeGroups<Layout>;
}

}  // namespace
}  // namespace LmImagingLib::LM_ISA

/// Exports the decoder of a layout as the kernel `Name`.
#define LM_EXPORT_DECODER(Name, ...)                                                             \
  namespace LmImagingLib::LM_ISA {                                                               \
  DecodeKernel Name;                                                                             \
  Channels Name(const SourceLines& in, std::size_t first, std::size_t count, const Room& room) { \
    return Decoder<__VA_ARGS__>(0)(in, first, count, room);                                      \
  }                                                                                              \
  }
