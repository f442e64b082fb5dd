// Tables: caps of raw frames and of pictures, and the pixel types that they are.
#include "formats.h"

#include <algorithm>
#include <cctype>
#include <cstring>

#include "LmImagingLib/Image.h"
#include "LmImagingLib/PFNC.h"
#include "conversion.h"

namespace LmGst {

using namespace LmImagingLib;

namespace {

// A format of video/x-raw that is read, and the name that cameras have for it.
struct RawSource {
  const char* format;
  const char* camera;
};
constexpr RawSource kRawSources[] = {
    {"GRAY8", "Mono8"}, {"GRAY16_LE", "Mono16"}, {"RGB", "RGB8"},   {"BGR", "BGR8"},      {"RGBx", "RGBa8"},
    {"BGRx", "BGRa8"},  {"RGBA", "RGBa8"},       {"BGRA", "BGRa8"}, {"YUY2", "YUV422_8"}, {"UYVY", "YUV422_8_UYVY"},
};

// The ends of the formats of video/x-bayer, and the bits of a sample.
struct Depth {
  const char* ending;
  const char* bits;
};
constexpr const char* kLayouts[] = {"bggr", "gbrg", "grbg", "rggb"};
constexpr Depth kDepths[] = {{"", "8"}, {"10le", "10"}, {"12le", "12"}, {"14le", "14"}, {"16le", "16"}};

constexpr const char* kSizes = ", width=(int)[ 1, 65535 ], height=(int)[ 1, 65535 ]";

SourceFormat Camera(const std::string& name) {
  const PFNCFormat& format = *FindPFNC(name.c_str()).format;
  return {format.type, format.flags};
}

// "rggb12le" is BayerRG12.
std::optional<SourceFormat> MosaicOf(const std::string& format) {
  for (const char* const layout : kLayouts) {
    for (const Depth& depth : kDepths) {
      if (format != std::string(layout) + depth.ending) continue;
      std::string name = "Bayer";
      for (const char* letter = layout; letter != layout + 2; ++letter) {
        name += static_cast<char>(std::toupper(static_cast<unsigned char>(*letter)));
      }
      return Camera(name + depth.bits);
    }
  }
  return std::nullopt;
}

std::optional<SourceFormat> PictureOf(const std::string& format, const char* colorimetry) {
  const auto* const row = std::find_if(std::begin(kRawSources), std::end(kRawSources),
                                       [&](const RawSource& source) { return format == source.format; });
  if (row == std::end(kRawSources)) return std::nullopt;
  SourceFormat source = Camera(row->camera);
  GstVideoColorimetry said;
  if (colorimetry != nullptr && gst_video_colorimetry_from_string(&said, colorimetry) != FALSE &&
      (source.type & kColorSpaceMask) == kColorSpaceYUV) {
    const std::optional<YuvCode> code = YuvCodeOf(said);
    if (!code) return std::nullopt;
    source.flags =
        (code->isBT709 ? ConversionFlags::kBT709 : 0) | (code->isFullRange ? ConversionFlags::kFullRange : 0);
  }
  return source;
}

GstCaps* CapsOf(const std::string& text) { return gst_caps_from_string(text.c_str()); }

}  // namespace

bool SourceFormat::IsGray() const { return LmTool::IsGray(type); }

bool SourceFormat::IsMosaic() const { return LmTool::IsMosaic(type); }

bool SourceFormat::IsDeep() const { return SampleDepth(type).value_or(8) > 8; }

SourceFormat FormatOf(const LmTool::NamedType& named) { return {named.id, named.mosaic | named.yuv}; }

std::optional<SourceFormat> FormatOf(const GstStructure* caps) {
  const char* const format = gst_structure_get_string(caps, "format");
  if (format == nullptr) return std::nullopt;
  if (gst_structure_has_name(caps, kMosaics) != FALSE) return MosaicOf(format);
  if (gst_structure_has_name(caps, kPictures) != FALSE) {
    return PictureOf(format, gst_structure_get_string(caps, "colorimetry"));
  }
  return std::nullopt;
}

GstCaps* SinkCaps() {
  std::string text = std::string(kMosaics) + ", format=(string){ ";
  for (const Depth& depth : kDepths) {
    for (const char* const layout : kLayouts) text += std::string(layout) + depth.ending + ", ";
  }
  text.replace(text.size() - 2, 2, " }");
  text += std::string(kSizes) + "; " + kPictures + ", format=(string){ ";
  for (const RawSource& source : kRawSources) text += std::string(source.format) + ", ";
  text.replace(text.size() - 2, 2, " }");
  return CapsOf(text + kSizes + "; " + kAnyFrames);
}

GstCaps* SourceCaps() {
  std::string text = std::string(kPictures) + ", format=(string){ ";
  for (const TargetFormat& target : TargetFormats()) text += std::string(target.name) + ", ";
  text.replace(text.size() - 2, 2, " }");
  return CapsOf(text + kSizes);
}

const std::vector<TargetFormat>& TargetFormats() {
  static const std::vector<TargetFormat> formats {
    {GST_VIDEO_FORMAT_BGRx, "BGRx", TargetKind::kDirect, 0x20007},
        {GST_VIDEO_FORMAT_RGBx, "RGBx", TargetKind::kDirect, 0x20003},
        {GST_VIDEO_FORMAT_RGB, "RGB", TargetKind::kDirect, 0x420002},
        {GST_VIDEO_FORMAT_BGR, "BGR", TargetKind::kDirect, 0x420006},
        {GST_VIDEO_FORMAT_BGRA, "BGRA", TargetKind::kDirect, 0x20007},
        {GST_VIDEO_FORMAT_RGBA, "RGBA", TargetKind::kDirect, 0x20003},
        {GST_VIDEO_FORMAT_I420, "I420", TargetKind::kI420, 0x820002},
        {GST_VIDEO_FORMAT_NV12, "NV12", TargetKind::kNV12, 0x820002},
        {GST_VIDEO_FORMAT_YUY2, "YUY2", TargetKind::kYUY2, 0x820002},
        {GST_VIDEO_FORMAT_RGBA64_LE, "RGBA64_LE", TargetKind::kDirect, 0x20005},
        {GST_VIDEO_FORMAT_BGRA64_LE, "BGRA64_LE", TargetKind::kDirect, 0x20A41},
#if G_BYTE_ORDER == G_LITTLE_ENDIAN
        {GST_VIDEO_FORMAT_ARGB64, "ARGB64", TargetKind::kAlphaFirst, 0x20005},
#endif
        {GST_VIDEO_FORMAT_GRAY8, "GRAY8", TargetKind::kDirect, 0x10001},
        {GST_VIDEO_FORMAT_GRAY16_LE, "GRAY16_LE", TargetKind::kDirect, 0x10005},
  };
  return formats;
}

const TargetFormat* FindTarget(GstVideoFormat format) {
  const std::vector<TargetFormat>& formats = TargetFormats();
  const auto row =
      std::find_if(formats.begin(), formats.end(), [=](const TargetFormat& target) { return target.format == format; });
  return row == formats.end() ? nullptr : &*row;
}

std::vector<const char*> PreferredTargets(const SourceFormat& source) {
  std::vector<const char*> names;
  if (source.IsGray()) {
    names = {"GRAY8", "GRAY16_LE"};
    if (source.IsDeep()) std::swap(names[0], names[1]);
  }
  for (const TargetFormat& target : TargetFormats()) {
    const auto isIt = [&](const char* name) { return std::strcmp(name, target.name) == 0; };
    if (std::none_of(names.begin(), names.end(), isIt)) names.push_back(target.name);
  }
  return names;
}

std::optional<YuvCode> YuvCodeOf(const GstVideoColorimetry& colorimetry) {
  const bool isBT709 = colorimetry.matrix == GST_VIDEO_COLOR_MATRIX_BT709;
  if (!isBT709 && colorimetry.matrix != GST_VIDEO_COLOR_MATRIX_BT601) return std::nullopt;
  return YuvCode{isBT709, colorimetry.range == GST_VIDEO_COLOR_RANGE_0_255};
}

}  // namespace LmGst
