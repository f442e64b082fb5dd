#pragma once

#include <cstddef>
#include <cstdint>

#include "simd/site.h"
#include "simd/yuv_matrix.h"

// The data that callers and kernels exchange. A sample is a byte, or a 16-bit word that holds as many bits as the
// source has, at its low end.
namespace LmImagingLib {

/// Pixels that a strip holds: a multiple of every group of pixels, and few enough for the first-level cache.
inline constexpr std::size_t kStripPixels = 2048;

/// Room for a piece of a line as three planar channels, between the decoder, the lookup and the writer.
template <class Sample>
struct Strip {
  alignas(64) Sample red[kStripPixels];
  alignas(64) Sample green[kStripPixels];
  alignas(64) Sample blue[kStripPixels];
};

/// Lines that a kernel converts one after the other, each so many bytes after the one before it. Where lines have gaps
/// between them, a call of a kernel for each one takes up to half as long as its pixels.
struct LineRun {
  std::uint32_t lines;
  std::size_t source, target;
};

/// The lines of a run; one where there is none.
inline std::uint32_t LinesOf(const LineRun* run) { return run == nullptr ? 1 : run->lines; }

/// Where a decoder puts the channels of its pixels: into a strip, or into planes of the destination. A gray source
/// fills `red` alone.
template <class Sample>
struct Room {
  Sample* red;
  Sample* green;
  Sample* blue;
  std::uint32_t ahead = 0;       ///< how many bytes ahead to fetch it into the cache; 0 of strips, which are there
  const LineRun* run = nullptr;  ///< of planes of a destination whose first line this is
};

/// Where the channels of some pixels are: in the room given, or in the source itself where it holds them as plain
/// bytes. Of a gray source all three are the same.
template <class Sample>
struct Channels {
  const Sample* red;
  const Sample* green;
  const Sample* blue;
};

/// The lines that a source layout reads. A sample is `word >> shift & mask`.
struct SourceLines {
  const std::uint8_t* line[4];  ///< as many lines, or planes, as the layout needs
  std::uint32_t shift;          ///< right shift that brings a sample to its place
  Site site = {};               ///< of the first pixel of a mosaic
  std::uint32_t ahead = 0;    ///< how many bytes ahead to fetch the lines into the cache; 0 leaves it to the processor
  std::uint32_t mask = 0xFF;  ///< the bits of a sample
  const YuvMatrix* matrix = nullptr;  ///< of decoders of YUV by a matrix
  std::uint32_t up = 0;               ///< how far gray words are shifted left at last
};

/// How far a sample is shifted on its way to a destination of words: `(sample << up) >> down`.
struct Fit {
  std::uint32_t up = 0;
  std::uint32_t down = 0;
};

/// The line that a writer fills.
struct TargetLine {
  std::uint8_t* line;
  std::size_t planeSize;    ///< bytes from one plane to the next; of use to planar writers
  bool streams = false;     ///< whether to store past the caches: the image is larger than they are
  std::uint32_t ahead = 0;  ///< how many bytes ahead to fetch the line into the cache; 0 leaves it to the processor
  Fit fit;                  ///< of use to writers of words
  bool opaque = false;      ///< whether the fourth channel, if there is one, is all ones
  /// The run whose first line this is; null where a call converts this line only, or a pair.
  const LineRun* run = nullptr;
};

/// A table as a product: entry i is (i << shift) * factor >> 16, clamped to 255. `shift` is at most 7.
struct Gain {
  std::uint16_t factor;
  std::uint16_t shift;
};

/// A table of words as a product: entry i is whole * i + ((i << up) * factor >> 32), clamped to 0xFFFF >> up, and then
/// fitted to the destination.
struct WideGain {
  std::uint32_t factor;
  std::uint16_t up;     ///< 16 less the bits of a sample
  std::uint16_t whole;  ///< 0 where `up` is not, as shifted samples leave room for gains above 1
};

template <class Sample>
struct GainOf {
  using Type = Gain;
};
template <>
struct GainOf<std::uint16_t> {
  using Type = WideGain;
};

/// The replacements of the values of a channel.
template <class Sample>
struct ChannelTable {
  const Sample* entries;               ///< one for each value of a sample
  typename GainOf<Sample>::Type gain;  ///< equal to the table, if all three channels are gains
};

/// The lookup of a conversion. Tables of words hold values of the destination's depth.
template <class Sample>
struct LookupTables {
  ChannelTable<Sample> red;
  ChannelTable<Sample> green;
  ChannelTable<Sample> blue;
  bool areGains;
};

/// Decodes `count` pixels from pixel `first` on (whole groups both) into channels, in the room unless the source
/// already holds them so. Reads the bytes of these pixels and no others. Of a run, returns the channels of its first
/// line.
template <class Sample>
using DecodeKernel = Channels<Sample>(const SourceLines& in, std::size_t first, std::size_t count,
                                      const Room<Sample>& room);

/// Looks `count` pixels up and stores them at pixel `first` of the target, and touches no other byte. Channels may be
/// there already.
/// @param tables  null stores the pixels as they are
template <class Sample>
using StoreKernel = void(const Channels<Sample>& in, const LookupTables<Sample>* tables, std::size_t count,
                         const TargetLine& out, std::size_t first);

/// Converts `count` pixels (whole groups), from pixel `from` of the source on, to pixel `first` of each target on,
/// without a lookup. Of a mosaic, two targets are made at once; if the site is in a blue row, pixels of colours have
/// red and blue exchanged.
using DirectKernel = void(const SourceLines& in, std::size_t from, std::size_t count, const TargetLine* targets,
                          std::size_t first);

/// Makes the fourth channel of `count` pixels of 4 or 8 bytes all ones.
using OpaqueKernel = void(std::uint8_t* pixels, std::size_t pixelBytes, std::size_t count);

/// Separates the samples of a two-tap readout, which come in pairs of left and right, into the order of the line.
/// `left` and `right` receive `pairs` samples each, the last one first where the tap reads backwards.
template <class Sample>
using SplitTapsKernel = void(const Sample* samples, std::size_t pairs, bool leftBackwards, bool rightBackwards,
                             Sample* left, Sample* right);

/// Puts the samples of a whole line into the order of the image, as they are.
using ReorderKernel = void(const std::uint8_t* source, std::uint8_t* destination, std::size_t pixels);

}  // namespace LmImagingLib
