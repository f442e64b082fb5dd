#pragma once

#include <cstddef>
#include <cstdint>

#include "LmBaseLib/Export.h"
#include "LmImagingLib/PixelTypeID.h"

namespace LmImagingLib {

/// A pixel format as cameras name it by the GenICam Pixel Format Naming Convention, with its pixel type.
struct PFNCFormat {
  std::uint32_t code;  ///< the 32-bit code; bits 16-23 are the bits that a pixel occupies
  const char* name;    ///< the name, such as "BayerRG12Packed"
  PixelTypeID type;    ///< the registered pixel type of the same layout and colours
  /// Bits of `ConversionFlags`: the layout of a Bayer mosaic, `kFullRange` and `kBT709` of YCbCr, otherwise none.
  unsigned long flags;
};

/// The result of a query for a format.
struct PFNCResult {
  const PFNCFormat* format;  ///< lives as long as the library; null if there is none
  const char* reason;        ///< why there is none, as a sentence; null if there is one

  /// Whether a format was found.
  explicit operator bool() const { return format != nullptr; }
};

/// The format of a code.
///
/// The reason says that a code is unknown to the convention, that it carries no picture, that no pixel type has its
/// layout, or that it needs `RegisterExtendedFormats()`.
LM_EXPORT PFNCResult FindPFNC(std::uint32_t code);
/// The format of a name, today's or an older one, in any case; the exact spelling wins. Null is unknown.
///
/// "BGR10V1Packed" and "BGR10V2Packed" have blue in the low bits; their codes have names of today that put red there.
LM_EXPORT PFNCResult FindPFNC(const char* name);
/// The format to announce a pixel type with; null where the convention has none, and for the types that only older
/// names lead to.
/// @param flags  bits of `ConversionFlags`: the layout of a mosaic, of which none means GR, and the range and matrix of
/// YUV
LM_EXPORT const PFNCFormat* FindPFNC(PixelTypeID type, unsigned long flags);
/// The index-th format in the order of the table, which has each format once under its name of today; null past the
/// last. Those of extended types are left out until `RegisterExtendedFormats()` was called.
LM_EXPORT const PFNCFormat* EnumPFNC(std::size_t index);

}  // namespace LmImagingLib
