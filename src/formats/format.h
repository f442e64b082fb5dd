#pragma once

#include <cstddef>
#include <cstdint>

#include "LmImagingLib/PixelTypeID.h"
#include "simd/kernel.h"

// The facts of a pixel format. Rows of them are constants in formats.inc: nothing here has to be constructed.
namespace LmImagingLib {

class PixelType;
struct Writer;

/// The pixels of a line that a source layout converts.
enum class WholeGroups {
  kInside,  ///< the groups that fit into the line
  kCover,   ///< the groups that cover the line: the last one may reach past it
  kYuv411,  ///< the groups that begin in the line, but a single pixel after the last whole group begins none
  kExact,   ///< all pixels: lines begin with a byte, and a last group has the bytes of its pixels only
};

/// Other properties of a source layout.
enum LayoutTraits : unsigned {
  kPlainLayout = 0,
  kGray = 1,      ///< all channels are equal, and never filtered
  kPlanar = 2,    ///< three planes; a group is in each of them
  kBytes = 4,     ///< channels are bytes as they are, and not decoded but handed on
  kTopFirst = 8,  ///< the top 8 bits of a group's pixels come before their low bits, of a shorter last group too
  kWords = 16,    ///< channels are words as they are, if samples have 16 bits
};

/// The types that a type is converted to, beside itself.
enum class Reach {
  kColors,  ///< every colour type
  kGrays,   ///< every gray and every colour type
  kMosaic,  ///< every colour type and the mosaic of 8 bits
};

/// A pixel type and the name that it is registered with; null composes one.
struct TypeName {
  constexpr TypeName(PixelTypeID theId = 0, const char* theName = nullptr)  // NOLINT(google-explicit-constructor)
      : id(theId), name(theName) {}

  PixelTypeID id;
  const char* name;
};

/// Makes the description of a pixel type of a class of `PixelType.h`; the caller deletes it.
template <class Type>
PixelType* Make(const PixelTypeID& id);

/// Pixel types of one layout that differ in nothing but the order of samples and lines.
struct FormatTypes {
  PixelType* (*make)(const PixelTypeID& id);
  std::uint32_t depth;  ///< significant bits of a sample; 16 of those of fewer than 8 bits, which are repeated
  Reach reach;
  TypeName types[22];  ///< up to the first id of 0
};

/// A source layout: how its samples are stored and decoded, and the pixel types that have it.
struct Format {
  const char* name;  ///< of its kernel
  SampleTwins<DecodeKernel> decode;
  Twins<DecodeKernel<std::uint8_t>> decodeByMatrix;  ///< of YUV; null of other layouts
  SampleTwins<DecodeKernel> decodeLuma;              ///< to gray, of YUV by a matrix; null where there is none
  std::uint32_t groupPixels;                         ///< pixels that are stored together
  std::uint32_t groupBits;                           ///< the bits that they take; of planar layouts, in one plane
  WholeGroups groups;
  unsigned traits;       ///< bits of `LayoutTraits`
  FormatTypes types[9];  ///< up to the first without `make`

  constexpr bool Is(LayoutTraits trait) const { return (traits & trait) != 0; }
  /// The pixels of a line after its last whole group. Groups have a power of two of them.
  constexpr std::uint32_t Rest(std::uint32_t pixels) const { return pixels & (groupPixels - 1); }
};

/// A kernel that converts a layout to a writer without a strip, where nothing is looked up.
struct Shortcut {
  const char* layout;
  const Writer* writer;
  Twins<DirectKernel> convert;
  Twins<DirectKernel> convertWords;  ///< of mosaics whose rows are words; null of other shortcuts
};

/// Whether two texts are equal, also in constants.
constexpr bool IsSame(const char* a, const char* b) {
  for (; *a != 0 && *a == *b; ++a, ++b) {
  }
  return *a == *b;
}

}  // namespace LmImagingLib
