#pragma once

#include <gst/video/video.h>

#include <optional>
#include <string>
#include <vector>

#include "named_type.h"
#include "yuv.h"

namespace LmGst {

/// The format of frames that arrive.
struct SourceFormat {
  LmImagingLib::PixelTypeID type;
  unsigned long flags;  ///< bits of `ConversionFlags`: the layout of a mosaic, the range and the matrix of YUV

  bool IsGray() const;
  bool IsMosaic() const;
  /// Whether samples have more than 8 bits.
  bool IsDeep() const;
};

/// The format that the property `format` names.
SourceFormat FormatOf(const LmTool::NamedType& named);

/// The format that caps mean by themselves; empty for others, such as application/octet-stream.
std::optional<SourceFormat> FormatOf(const GstStructure* caps);

/// The media type of frames of any format.
inline constexpr const char* kAnyFrames = "application/octet-stream";
inline constexpr const char* kMosaics = "video/x-bayer";
inline constexpr const char* kPictures = "video/x-raw";

/// The caps that the pads take.
GstCaps* SinkCaps();
GstCaps* SourceCaps();

/// How a picture is written.
enum class TargetKind {
  kDirect,      ///< the library writes it
  kAlphaFirst,  ///< the library writes words R G B A, which turn to A R G B
  kI420,
  kNV12,
  kYUY2,
};

/// A format of pictures.
struct TargetFormat {
  GstVideoFormat format;
  const char* name;
  TargetKind kind;
  LmImagingLib::PixelTypeID type;  ///< the type that the library writes; of YUV the planes of colours before it

  bool IsYuv() const { return kind >= TargetKind::kI420; }
};

/// All of them; for colours the better ones first.
const std::vector<TargetFormat>& TargetFormats();

/// The row of a format; null if there is none.
const TargetFormat* FindTarget(GstVideoFormat format);

/// The names of the formats in the order in which they suit a source.
std::vector<const char*> PreferredTargets(const SourceFormat& source);

/// The code of YUV caps; empty for a matrix that is neither that of BT.601 nor that of BT.709.
std::optional<YuvCode> YuvCodeOf(const GstVideoColorimetry& colorimetry);

}  // namespace LmGst
