#pragma once

#include <cstddef>
#include <cstdint>

namespace LmImagingLib {

/// Pixels that a strip holds: a multiple of every group of pixels, and few enough for the first-level cache.
inline constexpr std::size_t kStripPixels = 2048;

/// Room for a piece of a line as three planar channels: what a source layout, the lookup and a writer hand each other.
struct Strip {
  alignas(64) std::uint8_t red[kStripPixels];
  alignas(64) std::uint8_t green[kStripPixels];
  alignas(64) std::uint8_t blue[kStripPixels];
};

/// Where a decoder puts the channels of its pixels: into a strip, or into planes of the destination. A gray source
/// fills `red` alone.
struct Room {
  std::uint8_t* red;
  std::uint8_t* green;
  std::uint8_t* blue;
};

/// Where the channels of some pixels lie: in the room given, or in the source itself where it holds them as plain
/// bytes. Of a gray source all three are the same.
struct Channels {
  const std::uint8_t* red;
  const std::uint8_t* green;
  const std::uint8_t* blue;
};

/// Cell codes name the 2 x 2 samples that begin at a position of a Bayer mosaic: 0 G R / B G, 1 G B / R G, 2 R G / G B,
/// 3 B G / G R. Going right exchanges codes by 2 (G R / B G becomes R G / G B), going down by 3 (it becomes B G / G R).
inline constexpr std::uint32_t kCellToTheRight = 2, kCellBelow = 3;

/// What a source layout reads.
struct SourceLines {
  const std::uint8_t* line[4];  ///< as many lines, or planes, as the layout needs
  std::uint32_t shift;          ///< right shift that brings a sample to 8 bits
  std::uint32_t cell;           ///< cell code of the first pixel of a mosaic
  std::uint32_t ahead = 0;  ///< how many bytes ahead to fetch the lines into the cache; 0 leaves it to the processor
};

/// What a writer fills.
struct TargetLine {
  std::uint8_t* line;
  std::size_t planeSize;  ///< bytes from one plane to the next; of use to planar writers
  bool streams = false;   ///< whether to store past the caches: the image is larger than they are
};

/// A table as a product: entry i is (i << shift) * factor >> 16, clamped to 255. `shift` is at most 7.
struct Gain {
  std::uint16_t factor;
  std::uint16_t shift;
};

/// What replaces the values of a channel.
struct ChannelTable {
  const std::uint8_t* entries;  ///< 256 of them
  Gain gain;                    ///< equal to the table, if all three channels are gains
};

struct LookupTables {
  ChannelTable red;
  ChannelTable green;
  ChannelTable blue;
  bool areGains;
};

/// Brings `count` pixels from pixel `first` on (whole groups both) to 8 bits a channel, into the strip unless the
/// source already holds them so. Reads the bytes of these pixels and no others.
using DecodeKernel = Channels(const SourceLines& in, std::size_t first, std::size_t count, const Room& room);

/// Looks `count` pixels up and stores them at pixel `first` of the target, and touches no other byte. Channels may lie
/// there already.
/// @param tables  null stores the pixels as they are
using StoreKernel = void(const Channels& in, const LookupTables* tables, std::size_t count, const TargetLine& out,
                         std::size_t first);

/// Converts `count` pixels (whole groups), from pixel `from` of the source on, to pixel `first` of each target on,
/// without a lookup. Of a mosaic, two targets are made at once, and the cell code is 0 or 2.
using DirectKernel = void(const SourceLines& in, std::size_t from, std::size_t count, const TargetLine* targets,
                          std::size_t first);

/// Parts the samples of a two-tap readout, which come in pairs of left and right, into the order of the line.
/// `left` and `right` receive `pairs` samples each, the last one first where the tap reads backwards.
using SplitTapsKernel = void(const std::uint8_t* samples, std::size_t pairs, bool leftBackwards, bool rightBackwards,
                             std::uint8_t* left, std::uint8_t* right);

/// Reorders a whole line.
using ReorderKernel = void(const std::uint8_t* source, std::uint8_t* destination, std::size_t pixels);

}  // namespace LmImagingLib
