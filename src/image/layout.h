#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "LmImagingLib/PixelConverter.h"

namespace LmImagingLib {

struct Format;

/// Lines are counted, and their bytes computed in half bytes, in 32 bits by what converts them.
inline constexpr std::uint64_t kMostLines = 0xFFFFFFFF;
inline constexpr std::uint64_t kMostLineBytes = kMostLines / 2;

/// How the bytes of a type's images are divided into lines and planes, as its converters divide them.
struct ImageLayout {
  /// Whether a line of `width` pixels can be computed with.
  bool HoldsLine(std::uint64_t width) const;
  /// The bytes from the beginning of a line to the next one's where no padding separates them. A line that ends within
  /// a byte shares it with the next line.
  std::uint64_t DenseLine(std::uint64_t width) const;
  /// The bytes that hold the samples of a line, a last one that it has a part of included.
  std::uint64_t LineBytes(std::uint64_t width) const;
  /// The bytes from the first to the last pixel of an image; nothing if they cannot be addressed.
  std::optional<std::size_t> Required(std::uint64_t width, std::uint64_t height, std::uint64_t lineSize) const;

  const PixelConverter* converter = nullptr;  ///< the converter whose lines these are; null for pixels of `pairBytes`
  bool isSource = true;                       ///< whether they are the lines that it reads
  const Format* format = nullptr;             ///< how pixels are grouped, where the converter is the library's own
  std::uint64_t pairBytes = 0;                ///< bytes that two pixels of a plane take, about
  std::uint64_t planes = 1;
};

/// The layouts of the images that a converter reads and writes, under the ids that it is registered for.
ImageLayout SourceLayoutOf(const PixelConverter& converter, const PixelTypeID& type);
ImageLayout DestinationLayoutOf(const PixelConverter& converter, const PixelTypeID& type);

/// The layout of a type as its converters see it; nothing for a type that is not registered.
std::optional<ImageLayout> FindLayout(const PixelTypeID& type);

}  // namespace LmImagingLib
