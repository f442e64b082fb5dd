#pragma once

#include "formats/catalogue.h"
#include "simd/strip.h"

namespace LmImagingLib {

/// What a converter knows of the type that it reads.
struct SourceType {
  explicit SourceType(const TypeRow& row)
      : format(row.format),
        depth(row.types->depth),
        normalized((row.id & kNormalizedFlag) != 0),
        readout(ReadoutOf(row.id)) {}

  /// The line at `line` as the kernels for a sample read it: its upper 8 bits, or all of its bits.
  template <class Sample>
  SourceLines Lines(const std::uint8_t* line, std::size_t planeSize, std::uint32_t ahead) const {
    SourceLines lines{{line, nullptr, nullptr}, ShiftOf<Sample>(), {}, ahead, MaskOf<Sample>()};
    MoveTo(line, planeSize, lines);
    return lines;
  }

  /// Makes `lines` those at `line`.
  void MoveTo(const std::uint8_t* line, std::size_t planeSize, SourceLines& lines) const {
    lines.line[0] = line;
    if (!format->Is(kPlanar)) return;
    lines.line[1] = line + planeSize;
    lines.line[2] = line + 2 * planeSize;
  }

  template <class Sample>
  std::uint32_t ShiftOf() const {
    // Normalized samples are at the top of their words.
    if (sizeof(Sample) == 2) return normalized ? 16 - depth : 0;
    return normalized ? 8 : depth - 8;
  }
  template <class Sample>
  std::uint32_t MaskOf() const {
    return sizeof(Sample) == 2 ? (1U << depth) - 1 : 0xFF;
  }

  const Format* format;
  std::uint32_t depth;  ///< significant bits of a sample
  bool normalized;
  Readout readout;
};

/// Whether the samples of a type can be had in words, with all their bits. Of YUV there are bytes alone.
inline bool HasWords(const SourceType& source) {
  return source.depth > 8 && source.format->decode.words.of[0] != nullptr;
}

/// Half bytes of a pixel, of layouts whose lines are counted by them.
inline std::uint32_t HalfBytesOfPixel(const Format& format) { return format.groupBits / 4 / format.groupPixels; }

/// Bytes of a line, as its beginning is counted: lines of half bytes a pixel that end within a byte share it, unless
/// the layout begins each with a byte.
std::uint32_t DenseLineBytes(const Format& format, std::uint32_t pixels);

/// The bytes that hold the samples of a line of pixels, one that it has a part of included.
std::uint64_t LineBytesOf(const Format& format, std::uint64_t pixels);

/// Whether lines of `pixels` pixels end with pixels to convert that are no whole group.
inline bool HasLastGroup(const Format& format, std::uint32_t pixels) {
  return format.groups != WholeGroups::kInside && format.Rest(pixels) != 0;
}

/// Whether groups of the source pass the end of lines of `pixels` pixels.
inline bool PassesLineEnd(const Format& format, std::uint32_t pixels) {
  return format.groups != WholeGroups::kExact && HasLastGroup(format, pixels);
}

/// Bytes of any group, at most.
inline constexpr std::size_t kMostGroupBytes = 16;

/// Copies the bytes of a line's last pixels, fewer than a group, to where a whole group has them. Others stay.
/// @param last  the first of their `bytes` bytes
void CopyLastGroup(const Format& format, std::uint32_t pixels, const std::uint8_t* last, std::size_t bytes,
                   std::uint8_t (&group)[kMostGroupBytes]);

}  // namespace LmImagingLib
