#pragma once

#include "formats/format.h"

namespace LmImagingLib {

/// A destination layout.
///
/// A writer of more than 8 bits takes words of any depth, which it fits to its own. Conversions that reduce colours to
/// 8 bits hand it the bytes, which it shifts by `eightBitShift`.
struct Writer {
  SampleTwins<StoreKernel> store;
  std::uint32_t pixelBytes;  ///< of planar layouts: in one plane
  std::uint32_t depth;       ///< bits of a sample
  std::uint32_t eightBitShift;
  std::uint32_t planes;             ///< 1 where pixels interleave
  bool isBytes;                     ///< whether planes are bytes as they are, into which sources may decode directly
  PixelTypeID types[4];             ///< up to the first id of 0
  const Writer* swapped = nullptr;  ///< the writer that exchanges red and blue, of those that mosaics have shortcuts to
};

LM_DECLARE_KERNEL(StoreKernel<std::uint8_t>, StoreRGB16)
LM_DECLARE_KERNEL(StoreKernel<std::uint8_t>, StoreRGB24)
LM_DECLARE_KERNEL(StoreKernel<std::uint8_t>, StoreBGR24)
LM_DECLARE_KERNEL(StoreKernel<std::uint8_t>, StoreRGB32)
LM_DECLARE_KERNEL(StoreKernel<std::uint8_t>, StoreBGR32)
LM_DECLARE_KERNEL(StoreKernel<std::uint8_t>, StorePlanar24)
LM_DECLARE_KERNEL(StoreKernel<std::uint8_t>, StoreGrayscale8)
LM_DECLARE_WIDE_KERNEL(StoreKernel, StoreGrayWords)

// Each layout is defined in the file of its name in kernels/writers/.
namespace Writers {

extern const Writer kBGR24, kBGR32;

inline constexpr Writer kRGB16{{kStoreRGB16, {}}, 2, 8, 0, 1, false, {0x20001}};
// RGB24 and BGR24 pixels take 3 bytes under packed and unpacked ids alike.
inline constexpr Writer kRGB24{{kStoreRGB24, {}}, 3, 8, 0, 1, false, {0x20002, 0x420002, 0x2000A, 0x42000A}, &kBGR24};
inline constexpr Writer kBGR24{{kStoreBGR24, {}}, 3, 8, 0, 1, false, {0x20006, 0x420006}, &kRGB24};
inline constexpr Writer kRGB32{{kStoreRGB32, {}}, 4, 8, 0, 1, false, {0x20003, 0x2000B, 0x42000B}, &kBGR32};
inline constexpr Writer kBGR32{{kStoreBGR32, {}}, 4, 8, 0, 1, false, {0x20007}, &kRGB32};
inline constexpr Writer kPlanar24{{kStorePlanar24, {}}, 1, 8, 0, 3, true, {0x820002, 0x82000A}};

inline constexpr Writer kGrayscale8{{kStoreGrayscale8, {}}, 1, 8, 0, 1, true, {0x10001}};
inline constexpr Writer kGrayscale10{kStoreGrayWords, 2, 10, 2, 1, false, {0x10002}};
inline constexpr Writer kGrayscale12{kStoreGrayWords, 2, 12, 4, 1, false, {0x10003}};
inline constexpr Writer kGrayscale14{kStoreGrayWords, 2, 14, 6, 1, false, {0x10004}};
// The byte is not widened: applications scale it themselves.
inline constexpr Writer kGrayscale16{kStoreGrayWords, 2, 16, 0, 1, false, {0x10005}};

}  // namespace Writers

/// Every writer of colours, and every writer of gray.
inline constexpr const Writer* kColorWriters[] = {&Writers::kRGB16, &Writers::kRGB24, &Writers::kBGR24,
                                                  &Writers::kRGB32, &Writers::kBGR32, &Writers::kPlanar24};
inline constexpr const Writer* kGrayWriters[] = {&Writers::kGrayscale8, &Writers::kGrayscale10, &Writers::kGrayscale12,
                                                 &Writers::kGrayscale14, &Writers::kGrayscale16};

}  // namespace LmImagingLib
