#pragma once

#include <cstdint>

/// Pixel types, the converters between them and the registry of both.
namespace LmImagingLib {

/// Names a pixel format.
///
/// The low 32 bits carry the fields below; the upper 32 bits are zero in every built-in id and only take part in
/// comparisons. An id with all flags clear is the base id of its format; variants add flags or a dual-output mode
/// (0x10001 is 8-bit grayscale, 0x210001 the same interlaced).
using PixelTypeID = std::int64_t;

/// Bits 0-15: the number of the format within its colour space.
inline constexpr PixelTypeID kFormatNumberMask = 0x0000FFFF;

/// Bits 16-18: the colour space. Values other than the three named ones are unknown colour spaces.
inline constexpr PixelTypeID kColorSpaceMask = 0x00070000;
inline constexpr PixelTypeID kColorSpaceGrayscale = 0x00010000;  ///< One sample a pixel, of brightness.
/// Bayer mosaics have this colour space, too. `PixelType::IsBayerPattern` says whether a type is a mosaic; its id does
/// not.
inline constexpr PixelTypeID kColorSpaceRGB = 0x00020000;
inline constexpr PixelTypeID kColorSpaceYUV = 0x00040000;  ///< Brightness and two colour differences, studio range.

/// Bit 20: samples are scaled to the full range of their container.
inline constexpr PixelTypeID kNormalizedFlag = 0x00100000;
/// Bit 21: the buffer holds the two fields of the image one after the other.
inline constexpr PixelTypeID kInterlacedFlag = 0x00200000;
/// Bit 22: samples are packed; see `PixelType::GetBufferSizeFor`.
inline constexpr PixelTypeID kPackedFlag = 0x00400000;
/// Bit 23: the colour planes are stored one after the other.
inline constexpr PixelTypeID kPlanarFlag = 0x00800000;

/// Bits 24-28: how a sensor with two outputs delivers its samples. One bit at a time; combinations are no mode.
inline constexpr PixelTypeID kDualOutputMask = 0x1F000000;
/// Pixels of the left and of the right half of the line in turn.
inline constexpr PixelTypeID kDualLeftRight = 0x01000000;
/// The same, the right half from its end to its beginning.
inline constexpr PixelTypeID kDualLeftRightInverted = 0x02000000;
/// The same, the left half from its end to its beginning.
inline constexpr PixelTypeID kDualLeftInvertedRight = 0x04000000;
/// The same, both halves from their ends to their beginnings.
inline constexpr PixelTypeID kDualLeftInvertedRightInverted = 0x08000000;
/// Pixels of the upper and of the lower one of two lines in turn.
inline constexpr PixelTypeID kDualLines = 0x10000000;

}  // namespace LmImagingLib
