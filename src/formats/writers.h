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
  bool isPlain;                     ///< whether planes are samples as they are, into which sources may decode
  PixelTypeID types[4];             ///< up to the first id of 0
  const Writer* swapped = nullptr;  ///< the writer that exchanges red and blue, of those that mosaics have shortcuts to
  const Writer* gray = nullptr;     ///< of luma: the writer of the same samples that takes gray
};

LM_DECLARE_KERNEL(StoreKernel<std::uint8_t>, StoreRGB16)
LM_DECLARE_KERNEL(StoreKernel<std::uint8_t>, StoreRGB24)
LM_DECLARE_KERNEL(StoreKernel<std::uint8_t>, StoreBGR24)
LM_DECLARE_KERNEL(StoreKernel<std::uint8_t>, StoreRGB32)
LM_DECLARE_KERNEL(StoreKernel<std::uint8_t>, StoreBGR32)
LM_DECLARE_KERNEL(StoreKernel<std::uint8_t>, StorePlanar24)
LM_DECLARE_KERNEL(StoreKernel<std::uint8_t>, StoreGrayscale8)
LM_DECLARE_KERNEL(StoreKernel<std::uint8_t>, StoreLuma8)
LM_DECLARE_WIDE_KERNEL(StoreKernel, StoreGrayWords)
LM_DECLARE_WIDE_KERNEL(StoreKernel, StoreLumaWords)
LM_DECLARE_WIDE_KERNEL(StoreKernel, StoreRGB48)
LM_DECLARE_WIDE_KERNEL(StoreKernel, StoreBGR48)
LM_DECLARE_WIDE_KERNEL(StoreKernel, StoreRGB64)
LM_DECLARE_WIDE_KERNEL(StoreKernel, StoreBGR64)
LM_DECLARE_WIDE_KERNEL(StoreKernel, StorePlanar48)

// Each layout is defined in the file of its name in kernels/writers/.
namespace Writers {

extern const Writer kBGR24, kBGR32, kBGR48, kBGR48_10Bits, kBGR48_12Bits, kBGR64;

inline constexpr Writer kRGB16{{kStoreRGB16, {}}, 2, 8, 0, 1, false, {0x20001}};
// RGB24 and BGR24 pixels take 3 bytes under packed and unpacked ids alike.
inline constexpr Writer kRGB24{{kStoreRGB24, {}}, 3, 8, 0, 1, false, {0x20002, 0x420002, 0x2000A, 0x42000A}, &kBGR24};
inline constexpr Writer kBGR24{{kStoreBGR24, {}}, 3, 8, 0, 1, false, {0x20006, 0x420006}, &kRGB24};
inline constexpr Writer kRGB32{{kStoreRGB32, {}}, 4, 8, 0, 1, false, {0x20003, 0x2000B, 0x42000B}, &kBGR32};
inline constexpr Writer kBGR32{{kStoreBGR32, {}}, 4, 8, 0, 1, false, {0x20007}, &kRGB32};
inline constexpr Writer kPlanar24{{kStorePlanar24, {}}, 1, 8, 0, 3, true, {0x820002, 0x82000A}};

inline constexpr Writer kGrayscale8{{kStoreGrayscale8, {}}, 1, 8, 0, 1, true, {0x10001}};
inline constexpr Writer kGrayscale10{kStoreGrayWords, 2, 10, 2, 1, true, {0x10002}};
inline constexpr Writer kGrayscale12{kStoreGrayWords, 2, 12, 4, 1, true, {0x10003}};
inline constexpr Writer kGrayscale14{kStoreGrayWords, 2, 14, 6, 1, true, {0x10004}};
// The byte is not widened: applications scale it themselves.
inline constexpr Writer kGrayscale16{kStoreGrayWords, 2, 16, 0, 1, true, {0x10005}};

// Colours of more than 8 bits a sample.
inline constexpr Writer kRGB48{kStoreRGB48, 6, 16, 8, 1, false, {0x20004}, &kBGR48};
inline constexpr Writer kRGB48_10Bits{kStoreRGB48, 6, 10, 2, 1, false, {0x20008}, &kBGR48_10Bits};
inline constexpr Writer kRGB48_12Bits{kStoreRGB48, 6, 12, 4, 1, false, {0x2000C}, &kBGR48_12Bits};
inline constexpr Writer kBGR48{kStoreBGR48, 6, 16, 8, 1, false, {0x20A40}, &kRGB48};
inline constexpr Writer kBGR48_10Bits{kStoreBGR48, 6, 10, 2, 1, false, {0x20042}, &kRGB48_10Bits};
inline constexpr Writer kBGR48_12Bits{kStoreBGR48, 6, 12, 4, 1, false, {0x20043}, &kRGB48_12Bits};
inline constexpr Writer kRGB64{kStoreRGB64, 8, 16, 8, 1, false, {0x20005}, &kBGR64};
inline constexpr Writer kBGR64{kStoreBGR64, 8, 16, 8, 1, false, {0x20A41}, &kRGB64};
inline constexpr Writer kPlanar48{kStorePlanar48, 2, 16, 8, 3, false, {0x820004}};

// Gray of colours.
inline constexpr Writer kLuma8{{kStoreLuma8, {}}, 1, 8, 0, 1, false, {0x10001}, nullptr, &kGrayscale8};
inline constexpr Writer kLuma10{kStoreLumaWords, 2, 10, 2, 1, false, {0x10002}, nullptr, &kGrayscale10};
inline constexpr Writer kLuma12{kStoreLumaWords, 2, 12, 4, 1, false, {0x10003}, nullptr, &kGrayscale12};
inline constexpr Writer kLuma14{kStoreLumaWords, 2, 14, 6, 1, false, {0x10004}, nullptr, &kGrayscale14};
inline constexpr Writer kLuma16{kStoreLumaWords, 2, 16, 0, 1, false, {0x10005}, nullptr, &kGrayscale16};

// Mosaics as they are, whose samples are stored as gray is.
inline constexpr Writer kMosaic8{{kStoreGrayscale8, {}}, 1, 8, 0, 1, true, {0x20010}};
inline constexpr Writer kMosaic10{kStoreGrayWords, 2, 10, 2, 1, false, {0x20011}};
inline constexpr Writer kMosaic12{kStoreGrayWords, 2, 12, 4, 1, false, {0x20012}};
inline constexpr Writer kMosaic14{kStoreGrayWords, 2, 14, 6, 1, false, {0x20016}};
inline constexpr Writer kMosaic16{kStoreGrayWords, 2, 16, 8, 1, false, {0x20020}};

}  // namespace Writers

/// The writers by the pixels that they store. Those of deep colours and of luma, and of mosaics but for 8 bits, are the
/// extended formats'.
inline constexpr const Writer* kColorWriters[] = {&Writers::kRGB16, &Writers::kRGB24, &Writers::kBGR24,
                                                  &Writers::kRGB32, &Writers::kBGR32, &Writers::kPlanar24};
inline constexpr const Writer* kDeepColorWriters[] = {
    &Writers::kRGB48, &Writers::kRGB48_10Bits, &Writers::kRGB48_12Bits,
    &Writers::kBGR48, &Writers::kBGR48_10Bits, &Writers::kBGR48_12Bits,
    &Writers::kRGB64, &Writers::kBGR64,        &Writers::kPlanar48};
inline constexpr const Writer* kGrayWriters[] = {&Writers::kGrayscale8, &Writers::kGrayscale10, &Writers::kGrayscale12,
                                                 &Writers::kGrayscale14, &Writers::kGrayscale16};
inline constexpr const Writer* kLumaWriters[] = {&Writers::kLuma8, &Writers::kLuma10, &Writers::kLuma12,
                                                 &Writers::kLuma14, &Writers::kLuma16};
inline constexpr const Writer* kMosaicWriters[] = {&Writers::kMosaic8, &Writers::kMosaic10, &Writers::kMosaic12,
                                                   &Writers::kMosaic14, &Writers::kMosaic16};

/// Whether a writer makes gray of colours.
constexpr bool IsLuma(const Writer& writer) { return writer.gray != nullptr; }

}  // namespace LmImagingLib
