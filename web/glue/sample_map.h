#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "LmImagingLib/PixelTypeID.h"

namespace LmPage {

/// Neighbouring bits of a sample in one byte: (byte >> down & mask) << up.
struct Piece {
  std::uint32_t byte;  ///< counted from the beginning of the group
  std::uint8_t down, mask, up;
};

/// Where one sample of a group is.
struct MappedSample {
  std::uint32_t pixel = 0;   ///< in the group; of shared chroma, the first pixel that it belongs to
  std::uint16_t invert = 0;  ///< bits that are stored inverted: the sign of signed samples
  std::array<Piece, 4> pieces{};
  std::size_t count = 0;  ///< of pieces

  /// The sample in the counts of the camera.
  std::int32_t In(const std::uint8_t* group) const {
    std::int32_t value = invert;
    for (std::size_t i = 0; i < count; ++i) {
      const Piece& piece = pieces[i];
      value ^= (group[piece.byte] >> piece.down & piece.mask) << piece.up;
    }
    return value;
  }
};

/// The samples of one name: p for the only sample of a pixel, or one of R, G, B, Y, U, V.
struct Channel {
  char name;
  std::uint32_t plane;                  ///< 0 for layouts that interleave their samples
  unsigned bits = 0;                    ///< of a sample
  unsigned zeros = 0;                   ///< lowest bits that are 0 in each sample of a file
  std::size_t step = 1;                 ///< pixels that share a sample: 2 or 4 of chroma
  std::vector<MappedSample> samples{};  ///< of a group, in the order of pixels
};

/// Where the samples of a type are in a group, which is the fewest pixels that fill whole bytes.
struct SampleMap {
  std::size_t pixels;  ///< of a group
  std::size_t bytes;   ///< of a group, in each plane
  std::size_t planes;
  std::vector<Channel> channels;
  std::vector<std::uint8_t> unused;  ///< a mask for each byte of a group, planes one after the other
};

/// The map of a registered type, made from the drawing of its bits.
SampleMap MapOf(const LmImagingLib::PixelTypeID& type);

}  // namespace LmPage
