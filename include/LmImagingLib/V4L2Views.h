#pragma once

#include <linux/videodev2.h>

#include <cstddef>
#include <cstdint>

#include "LmImagingLib/Image.h"
#include "LmImagingLib/PixelConverter.h"
#include "LmImagingLib/PixelTypeFactory.h"
#include "LmImagingLib/V4L2.h"

// Buffers of Video4Linux as images. For Linux; LmImagingLib.h leaves it out.
namespace LmImagingLib {

/// A buffer of Video4Linux as an image to read.
struct V4L2View {
  ConstImageView view;      ///< refused by all calls if there is a reason
  unsigned long flags = 0;  ///< bits of `ConversionFlags` that the format says: Bayer layout, range and matrix, fields
  const char* reason = nullptr;  ///< why the buffer is no image, as a sentence; null otherwise

  /// Whether the buffer is an image.
  explicit operator bool() const { return reason == nullptr; }
};

namespace Detail {

/// The members that both structs of Video4Linux have.
struct V4L2Properties {
  std::uint32_t fourcc;        ///< the four characters
  std::uint32_t field;         ///< `v4l2_field`
  std::uint32_t colorspace;    ///< `v4l2_colorspace`
  std::uint32_t encoding;      ///< `v4l2_ycbcr_encoding`; 0 for that of the colour space
  std::uint32_t quantization;  ///< `v4l2_quantization`; 0 for that of the colour space
};

/// Adds the range and the matrix of YUV.
inline void AddColors(const V4L2Properties& format, V4L2View& image) {
  const std::uint32_t encoding = format.encoding != V4L2_YCBCR_ENC_DEFAULT
                                     ? format.encoding
                                     : static_cast<std::uint32_t>(V4L2_MAP_YCBCR_ENC_DEFAULT(format.colorspace));
  const std::uint32_t quantization =
      format.quantization != V4L2_QUANTIZATION_DEFAULT
          ? format.quantization
          : static_cast<std::uint32_t>(V4L2_MAP_QUANTIZATION_DEFAULT(false, format.colorspace, encoding));
  if (encoding == V4L2_YCBCR_ENC_709 || encoding == V4L2_YCBCR_ENC_XV709) {
    image.flags |= ConversionFlags::kBT709;
  } else if (encoding != V4L2_YCBCR_ENC_601 && encoding != V4L2_YCBCR_ENC_XV601) {
    image.reason = "the format is not supported: its YUV has neither the matrix of BT.601 nor that of BT.709";
  }
  if (quantization == V4L2_QUANTIZATION_FULL_RANGE) image.flags |= ConversionFlags::kFullRange;
}

/// Makes the type an interlaced one where the fields come one after the other.
inline void AddFields(const V4L2Properties& format, V4L2View& image) {
  if (format.field != V4L2_FIELD_SEQ_TB && format.field != V4L2_FIELD_SEQ_BT) return;
  image.view.type |= kInterlacedFlag;
  if (format.field == V4L2_FIELD_SEQ_BT) image.flags |= ConversionFlags::kFieldOrder;
  if (!PixelTypeFactory::HasPixelType(image.view.type)) {
    image.reason = "the format is not supported: no pixel type of its layout has its fields one after the other";
  }
}

/// The view of memory whose type is not known yet.
inline V4L2View MakeV4L2View(const V4L2Properties& format, const ConstImageView& memory) {
  V4L2View image;
  const V4L2Result found = FindV4L2(format.fourcc);
  image.reason = found.reason;
  if (!found) return image;
  image.view = memory;
  image.view.type = found.format->type;
  image.flags = found.format->flags;
  if ((found.format->type & kColorSpaceMask) == kColorSpaceYUV) AddColors(format, image);
  AddFields(format, image);
  if (image.reason != nullptr) image.view = {};
  return image;
}

}  // namespace Detail

/// A view of a buffer that was captured in a format. It is valid as long as the memory of the buffer is.
///
/// Fields that come one after the other make an interlaced type; lines of both fields in turn, and single fields, are
/// images as they are. The range and the matrix of YUV follow from the colour space, as the standard defines it.
/// @param format  as `VIDIOC_G_FMT` and `VIDIOC_S_FMT` report it
/// @param data  the first byte of the buffer
/// @param bytes  that the buffer has, such as `v4l2_buffer::bytesused`
inline V4L2View ViewOf(const v4l2_pix_format& format, const void* data, std::size_t bytes) {
  // Without the magic number a program knows the older members only.
  const bool hasAll = format.priv == V4L2_PIX_FMT_PRIV_MAGIC;
  return Detail::MakeV4L2View({format.pixelformat, format.field, format.colorspace, hasAll ? format.ycbcr_enc : 0,
                               hasAll ? format.quantization : 0},
                              {0, data, bytes, format.width, format.height, format.bytesperline});
}

/// The same for the multi-planar interface, of formats with one plane.
inline V4L2View ViewOf(const v4l2_pix_format_mplane& format, const void* data, std::size_t bytes) {
  if (format.num_planes != 1) {
    V4L2View none;
    none.reason = "the format is not supported: its planes are buffers of their own";
    return none;
  }
  return Detail::MakeV4L2View(
      {format.pixelformat, format.field, format.colorspace, format.ycbcr_enc, format.quantization},
      {0, data, bytes, format.width, format.height, format.plane_fmt[0].bytesperline});
}

}  // namespace LmImagingLib
