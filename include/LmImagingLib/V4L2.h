#pragma once

#include <cstddef>
#include <cstdint>

#include "LmBaseLib/Export.h"
#include "LmImagingLib/PixelTypeID.h"

namespace LmImagingLib {

/// A pixel format as Video4Linux names it (linux/videodev2.h), with its pixel type.
struct V4L2Format {
  std::uint32_t code;   ///< the fourcc: four characters, the first one in the low bits
  const char* name;     ///< the same characters without the blanks that fill them up, such as "pRAA" and "Y10"
  PixelTypeID type;     ///< the registered pixel type of the same layout and colours
  unsigned long flags;  ///< bits of `ConversionFlags`: the layout of a Bayer mosaic, otherwise none
};

/// The result of a query for a format.
struct V4L2Result {
  const V4L2Format* format;  ///< lives as long as the library; null if there is none
  const char* reason;        ///< why there is none, as a sentence; null if there is one

  /// Whether a format was found.
  explicit operator bool() const { return format != nullptr; }
};

/// The format of a fourcc. Any thread may call it at any time.
///
/// The reason says that a fourcc is unknown, that it carries compressed pictures, that no pixel type has its layout, or
/// that it needs `RegisterExtendedFormats()`.
LM_EXPORT V4L2Result FindV4L2(std::uint32_t code);
/// The index-th format in the order of the table; null past the last. Those of extended types are left out until
/// `RegisterExtendedFormats()` was called.
LM_EXPORT const V4L2Format* EnumV4L2(std::size_t index);

}  // namespace LmImagingLib
