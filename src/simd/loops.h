#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "simd/lanes.h"
#include "simd/strip.h"

// The loops around the text of a kernel: group by group, which is the definition, and, where the instruction set has
// vectors, block by block of a register's worth of pixels. Included by kernels only. Everything lies in unnamed
// namespaces, so that no code compiled for one instruction set can become the copy that the linker keeps for all.
namespace LmImagingLib::LM_ISA {
namespace {

struct Rgb {
  std::uint8_t r, g, b;
};

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

/// What exchanges the cell codes of a Bayer mosaic from one column to the next.
inline constexpr std::uint32_t kNextCell = 2;

/// The lines of `in` from pixel `pixel` on.
template <class Layout>
SourceLines At(const SourceLines& in, std::size_t pixel) {
  SourceLines at = in;
  for (std::size_t k = 0; k < Layout::kLines; ++k) at.line[k] += BytesOf<Layout>(pixel);
  if (pixel % 2 != 0) at.cell ^= kNextCell;
  return at;
}

/// Decodes a layout whose `Group` makes the `kPixels` pixels of one group, samples or colours.
template <class Layout>
Channels DecodeGroups(const SourceLines& in, std::size_t first, std::size_t count, const Room& room) {
  for (std::size_t i = 0; i < count; i += Layout::kPixels) {
    if constexpr (Layout::kGray) {
      Layout::Group(At<Layout>(in, first + i), room.red + i);
    } else {
      Rgb pixels[Layout::kPixels];
      Layout::Group(At<Layout>(in, first + i), pixels);
      for (std::size_t k = 0; k < Layout::kPixels; ++k) {
        room.red[i + k] = pixels[k].r;
        room.green[i + k] = pixels[k].g;
        room.blue[i + k] = pixels[k].b;
      }
    }
  }
  if constexpr (Layout::kGray) return {room.red, room.red, room.red};
  return {room.red, room.green, room.blue};
}

/// What stores through a writer, from a pixel of the line on.
using StoreLoop = void(const Channels& in, const LookupTables* tables, std::size_t count, std::uint8_t* to,
                       bool streams);

/// Stores through a writer whose `Pixel` makes the `kBytes` bytes of one pixel.
template <class Writer>
void StorePixels(const Channels& in, const LookupTables* tables, std::size_t count, std::uint8_t* to,
                 bool /*streams*/) {
  for (std::size_t i = 0; i < count; ++i, to += Writer::kBytes) {
    Rgb pixel{in.red[i], in.green[i], in.blue[i]};
    if (tables != nullptr) {
      pixel = {tables->red.entries[pixel.r], tables->green.entries[pixel.g], tables->blue.entries[pixel.b]};
    }
    Writer::Pixel(pixel, to);
  }
}

#if LM_LANES

struct RgbLanes {
  U8 r, g, b;
};

/// Reads the bytes of a whole block.
struct WholeBlock {
  const SourceLines& in;
  std::size_t at;

  U8 operator()(std::size_t line, std::size_t offset) const { return Load(in.line[line] + at + offset); }
  /// The first half of a register; the rest is anything.
  U8 Half(std::size_t line, std::size_t offset) const { return LoadHalf(in.line[line] + at + offset); }
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

/// Fetches what a later block reads into the cache.
template <class Layout>
inline void FetchAhead(const SourceLines& in, std::size_t at) {
  for (std::size_t line = 0; line < Layout::kLines; ++line) {
    for (std::size_t byte = 0; byte < BytesOf<Layout>(kLanes); byte += 64) {
      __builtin_prefetch(in.line[line] + at + in.ahead + byte);
    }
  }
}

/// Decodes a layout whose `Block` makes kLanes pixels, from BytesOf(kLanes) + kBeyond bytes of each line.
template <class Layout>
Channels DecodeBlocks(const SourceLines& lines, std::size_t first, std::size_t count, const Room& caller) {
  // By reference these would be loaded anew after each store.
  SourceLines in = At<Layout>(lines, first);
  const Room room = caller;
  std::size_t at = 0;
  std::size_t i = 0;
  for (; i + kLanes <= count; i += kLanes, at += BytesOf<Layout>(kLanes)) {
    if (in.ahead != 0) FetchAhead<Layout>(in, at);
    DecodeBlock<Layout>(WholeBlock{in, at}, room.red + i, room.green + i, room.blue + i);
  }
  if (i < count) {
    const std::size_t rest = count - i;
    const std::size_t bytes = BytesOf<Layout>(rest) + Layout::kBeyond;
    alignas(kLanes) std::uint8_t pixels[3][kLanes];
#if LM_LANES == 64
    DecodeBlock<Layout>(PartOfBlock{in, at, bytes}, pixels[0], pixels[1], pixels[2]);
#else
    // The last block reads a copy, so that it touches no byte behind the line.
    std::uint8_t copy[Layout::kLines][BytesOf<Layout>(kLanes) + Layout::kBeyond];
    for (std::size_t k = 0; k < Layout::kLines; ++k) {
      in.line[k] = static_cast<const std::uint8_t*>(std::memcpy(copy[k], in.line[k] + at, bytes));
    }
    DecodeBlock<Layout>(WholeBlock{in, 0}, pixels[0], pixels[1], pixels[2]);
#endif
    StorePart(Load(pixels[0]), room.red + i, rest);
    if constexpr (!Layout::kGray) {
      StorePart(Load(pixels[1]), room.green + i, rest);
      StorePart(Load(pixels[2]), room.blue + i, rest);
    }
  }
  if constexpr (Layout::kGray) return {room.red, room.red, room.red};
  return {room.red, room.green, room.blue};
}

template <class Layout>
constexpr auto Decoder(int) -> decltype(&Layout::template Block<WholeBlock>, static_cast<DecodeKernel*>(nullptr)) {
  return DecodeBlocks<Layout>;
}

/// What happens to pixels before they are stored: nothing, or a lookup in three tables or gains.
struct AsTheyAre {
  RgbLanes operator()(const RgbLanes& in) const { return in; }
};

template <class Entries>
struct LookedUp {
  explicit LookedUp(const LookupTables& tables) : red(tables.red), green(tables.green), blue(tables.blue) {}

  RgbLanes operator()(const RgbLanes& in) const { return {red[in.r], green[in.g], blue[in.b]}; }

  Entries red, green, blue;
};

inline std::uint8_t* Address(std::uint8_t* to) { return to; }
inline std::uint8_t* Address(Stream to) { return to.at; }

template <class Writer, class To, class Change>
void StoreBlocks(const Channels& caller, std::size_t count, To to, const Change change) {
  const Channels in = caller;  // by reference it would be loaded anew after each store
  std::size_t i = 0;
  for (; i + kLanes <= count; i += kLanes, to = to + kLanes * Writer::kBytes) {
    Writer::Block(change({Pinned(Load(in.red + i)), Pinned(Load(in.green + i)), Pinned(Load(in.blue + i))}), to);
  }
  if (i < count) {
    // Channels may lie in the source, and either line may end here.
    const std::size_t rest = count - i;
    Writer::Block(change({LoadPart(in.red + i, rest), LoadPart(in.green + i, rest), LoadPart(in.blue + i, rest)}),
                  Part{Address(to), rest * Writer::kBytes});
  }
}

/// Stores gray: all channels are the red one.
template <class Writer, class To>
void StoreGrayBlocks(const std::uint8_t* gray, std::size_t count, To to) {
  std::size_t i = 0;
  for (; i + kLanes <= count; i += kLanes, to = to + kLanes * Writer::kBytes) {
    const U8 v = Load(gray + i);
    Writer::Block({v, v, v}, to);
  }
  if (i < count) StoreBlocks<Writer>({gray + i, gray + i, gray + i}, count - i, Address(to), AsTheyAre{});
}

template <class Writer, class To>
void StoreChanged(const Channels& in, const LookupTables* tables, std::size_t count, To to) {
  if (tables == nullptr && in.red == in.green && in.red == in.blue) {
    StoreGrayBlocks<Writer>(in.red, count, to);
  } else if (tables == nullptr) {
    StoreBlocks<Writer>(in, count, to, AsTheyAre{});
  } else if (kGainsAreQuicker && tables->areGains) {
    StoreBlocks<Writer>(in, count, to, LookedUp<GainLanes>(*tables));
  } else {
    StoreBlocks<Writer>(in, count, to, LookedUp<Table>(*tables));
  }
}

/// Stores through a writer whose `Block` makes kLanes * kBytes bytes.
template <class Writer>
void StoreWith(const Channels& in, const LookupTables* tables, std::size_t count, std::uint8_t* to, bool streams) {
  if (kHasStreams && streams && reinterpret_cast<std::uintptr_t>(to) % kLanes == 0) {
    StoreChanged<Writer>(in, tables, count, Stream{to});
  } else {
    StoreChanged<Writer>(in, tables, count, to);
  }
}

template <class Writer>
constexpr auto Storer(int) -> decltype(&Writer::template Block<std::uint8_t*>, static_cast<StoreLoop*>(nullptr)) {
  return StoreWith<Writer>;
}

#endif

/// The best decoder that a layout has for this instruction set.
template <class Layout>
constexpr DecodeKernel* Decoder(...) {
  return DecodeGroups<Layout>;
}

/// The best way to store that a writer has for this instruction set.
template <class Writer>
constexpr StoreLoop* Storer(...) {
  return StorePixels<Writer>;
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

/// Exports a writer as the kernel `Name`.
#define LM_EXPORT_WRITER(Name, ...)                                                                   \
  namespace LmImagingLib::LM_ISA {                                                                    \
  StoreKernel Name;                                                                                   \
  void Name(const Channels& in, const LookupTables* tables, std::size_t count, const TargetLine& out, \
            std::size_t first) {                                                                      \
    Storer<__VA_ARGS__>(0)(in, tables, count, out.line + first * __VA_ARGS__::kBytes, out.streams);   \
  }                                                                                                   \
  }
