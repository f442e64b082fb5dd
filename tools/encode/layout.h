#pragma once

#include <cstdint>
#include <vector>

#include "LmImagingLib/PixelTypeID.h"
#include "encode/nearest_yuv.h"
#include "scene.h"

namespace LmTool {

/// Bytes that a pixel of any layout may take.
constexpr std::size_t kMostPixelBytes = 8;

/// A line to encode, widened to a multiple of four pixels by repeating the last one, so that encoders see whole groups.
struct Line {
  std::size_t width = 0;               ///< its own pixels, for layouts whose last group may be shorter
  std::vector<Color16> pixels;         ///< in the order of the image, for layouts of RGB
  std::vector<YuvGroup> yuv;           ///< the same for layouts of YUV
  std::vector<std::uint16_t> samples;  ///< in the order of the readout, for layouts of one sample a pixel
};

/// How many bits of a sample a format keeps, and at which end of the word they are.
struct SampleFormat {
  unsigned bits;
  bool normalized;

  /// The upper bits of a 16-bit sample.
  std::uint16_t Top(std::uint16_t sample) const { return static_cast<std::uint16_t>(sample >> (16 - bits)); }
  /// The word that holds them.
  std::uint16_t Word(std::uint16_t sample) const {
    return static_cast<std::uint16_t>(normalized ? Top(sample) << (16 - bits) : Top(sample));
  }
};

/// Writes the bytes of a line; of planar layouts, the line of each plane one after the other.
using LineEncoder = void(const Line& line, const SampleFormat& format, std::uint8_t* out);

LineEncoder EncodeGray8, EncodeGray8Signed, EncodeGray16, EncodeGrayPacked, EncodeGrayPackedGEV;
LineEncoder EncodeGrayStream, EncodeCSI2Raw;
LineEncoder EncodeRGB565p, EncodeRGB16, EncodeRGB24, EncodeBGR24, EncodeRGB32, EncodeBGR32;
LineEncoder EncodeRGB48, EncodeBGR48, EncodeRGB64, EncodeBGR64, EncodeRGBPlanar8, EncodeRGBPlanar16;
LineEncoder EncodeRGB10V1Packed, EncodeRGB10p32, EncodeRGBStream, EncodeBGRStream;
LineEncoder EncodeBGR10PackedV1, EncodeBGR10PackedV2, EncodeRGB12PackedV1;
LineEncoder EncodeYUV8, EncodeYUV8_422_GEV, EncodeYUV10, EncodeYUV8_444, EncodeYUV8_444_GEV, EncodeYCrCb,
    EncodeYUV8_411;

/// How the pixels of a type lie in a line.
struct Layout {
  LmImagingLib::PixelTypeID type;  ///< without the flags that leave a line as it is
  unsigned bits;                   ///< significant bits a sample
  LineEncoder* encode;
  const char* words;             ///< the layout, told to a person
  std::size_t chromaPixels = 0;  ///< pixels that share their chroma, of layouts of YUV
};

/// The layout of a registered type.
const Layout& LayoutOf(const LmImagingLib::PixelTypeID& type);

/// The layout of a registered type and what its flags say about the order of lines and samples, told to a person.
std::string LayoutInWords(const LmImagingLib::PixelTypeID& type);

/// Stores a word with its low byte first.
inline void PutWord(std::uint8_t* out, std::uint32_t word) {
  out[0] = static_cast<std::uint8_t>(word);
  out[1] = static_cast<std::uint8_t>(word >> 8);
}

}  // namespace LmTool
