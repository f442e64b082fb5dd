#pragma once

#include <cstddef>
#include <cstdint>

#include "LmBaseLib/Export.h"
#include "LmImagingLib/PixelTypeID.h"

namespace LmImagingLib {

/// A pixel format as cameras name it by the GenICam Pixel Format Naming Convention, with its pixel type.
struct PFNCFormat {
  std::uint32_t code;   ///< the 32-bit code; bits 16-23 are the bits that a pixel occupies
  const char* name;     ///< the name, such as "BayerRG12Packed"
  PixelTypeID type;     ///< the registered pixel type of the same layout and colours
  unsigned long flags;  ///< bits of `ConversionFlags`: the layout of a Bayer mosaic, otherwise none
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
/// A code that the convention does not know, and one whose packing or colour range no registered type has, is unknown.
/// 0x0220001C and 0x0220001D are not supported: their names of today put red where the types of the same layout have
/// blue.
LM_EXPORT PFNCResult FindPFNC(std::uint32_t code);
/// The format of a name, today's or an older one, spelt exactly. Null is unknown.
///
/// Two codes had names that say where blue and red lie: "BGR10V1Packed" and "BGR10V2Packed" are found although their
/// codes are not.
LM_EXPORT PFNCResult FindPFNC(const char* name);
/// The format to announce a pixel type with; null where the convention has none, and for the types that only older
/// names lead to.
/// @param flags  of a mosaic, the bits of `ConversionFlags` that tell its layout; none of them means GR
LM_EXPORT const PFNCFormat* FindPFNC(PixelTypeID type, unsigned long flags);
/// The index-th format in the order of the table, which has each format once under its name of today; null past the
/// last.
LM_EXPORT const PFNCFormat* EnumPFNC(std::size_t index);

}  // namespace LmImagingLib
