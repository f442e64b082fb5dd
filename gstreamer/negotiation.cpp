// Which caps the two pads agree on.
#include "negotiation.h"

#include <algorithm>
#include <cstring>

#include "conversion.h"
#include "pixel_type_names.h"

namespace LmGst {

using namespace LmImagingLib;

namespace {

constexpr int kMostLinesOfSD = 576;
constexpr const char* kSizeFields[] = {"width", "height"};
constexpr const char* kKeptFields[] = {"framerate", "pixel-aspect-ratio"};

// The format of frames with these caps; empty where neither caps nor settings say it.
std::optional<SourceFormat> FormatBy(const GstStructure* caps, const Settings& settings) {
  return settings.format.value ? FormatOf(*settings.format.value) : FormatOf(caps);
}

bool IsHalved(const GstStructure* caps, const Settings& settings) {
  if (settings.Method() != ConversionFlags::kHalfSize) return false;
  if (settings.format.value) return LmTool::IsMosaic(settings.format.value->id);
  return gst_structure_has_name(caps, kMosaics) != FALSE;
}

// Sizes of frames from those of pictures, or the reverse; numbers and ranges of them.
void SetScaled(GstStructure* to, const char* field, const GValue* size, GstPadDirection direction) {
  int least = 0;
  int most = 0;
  if (G_VALUE_HOLDS_INT(size)) {
    least = most = g_value_get_int(size);
  } else if (GST_VALUE_HOLDS_INT_RANGE(size)) {
    least = gst_value_get_int_range_min(size);
    most = gst_value_get_int_range_max(size);
  } else {
    return;
  }
  if (direction == GST_PAD_SINK) {
    least = std::max(least / 2, 1);
    most = std::max(most / 2, 1);
  } else {
    least = 2 * std::min(least, (G_MAXINT - 1) / 2);
    most = 2 * std::min(most, (G_MAXINT - 1) / 2) + 1;
  }
  if (least == most) {
    gst_structure_set(to, field, G_TYPE_INT, least, nullptr);
  } else {
    gst_structure_set(to, field, GST_TYPE_INT_RANGE, least, most, nullptr);
  }
}

void CopyField(GstStructure* to, const GstStructure* from, const char* field) {
  if (const GValue* const value = gst_structure_get_value(from, field)) gst_structure_set_value(to, field, value);
}

// The caps of pictures of frames.
void AppendPictures(GstCaps* caps, const GstStructure* frames, const Settings& settings) {
  GstCaps* const all = SourceCaps();
  GstStructure* const pictures = gst_structure_copy(gst_caps_get_structure(all, 0));
  gst_caps_unref(all);
  const bool isHalved = IsHalved(frames, settings);
  for (const char* const field : kSizeFields) {
    GValue given = G_VALUE_INIT;
    const int property = field == kSizeFields[0] ? settings.width : settings.height;
    g_value_init(&given, G_TYPE_INT);
    g_value_set_int(&given, property);
    const GValue* size = gst_structure_get_value(frames, field);
    if (size == nullptr && property != 0) size = &given;
    if (size != nullptr && isHalved) {
      SetScaled(pictures, field, size, GST_PAD_SINK);
    } else if (size != nullptr) {
      gst_structure_set_value(pictures, field, size);
    }
    g_value_unset(&given);
  }
  for (const char* const field : kKeptFields) CopyField(pictures, frames, field);
  if (gst_structure_has_field(frames, "framerate") == FALSE && settings.framesNumerator != 0) {
    gst_structure_set(pictures, "framerate", GST_TYPE_FRACTION, settings.framesNumerator, settings.framesDenominator,
                      nullptr);
  }
  gst_caps_append_structure(caps, pictures);
}

// The caps of frames that become a picture. Those of any format need not say a size.
void AppendFrames(GstCaps* caps, const GstStructure* picture, const Settings& settings) {
  GstCaps* const all = SinkCaps();
  for (unsigned i = 0; i < gst_caps_get_size(all); ++i) {
    GstStructure* const frames = gst_structure_copy(gst_caps_get_structure(all, i));
    if (gst_structure_has_name(frames, kAnyFrames) == FALSE) {
      const bool isHalved = IsHalved(frames, settings);
      for (const char* const field : kSizeFields) {
        const GValue* const size = gst_structure_get_value(picture, field);
        if (size != nullptr && isHalved) {
          SetScaled(frames, field, size, GST_PAD_SRC);
        } else if (size != nullptr) {
          gst_structure_set_value(frames, field, size);
        }
      }
      for (const char* const field : kKeptFields) CopyField(frames, picture, field);
    }
    gst_caps_append_structure(caps, frames);
  }
  gst_caps_unref(all);
}

// Whether a structure allows a format; if so, it is set.
bool TakeFormat(GstStructure* caps, const char* format) {
  return gst_structure_fixate_field_string(caps, "format", format) != FALSE &&
         std::strcmp(gst_structure_get_string(caps, "format"), format) == 0;
}

// Takes a word where a field is absent or allows it.
void PreferWord(GstStructure* caps, const char* field, const char* word) {
  if (gst_structure_has_field(caps, field) == FALSE) {
    gst_structure_set(caps, field, G_TYPE_STRING, word, nullptr);
  } else {
    gst_structure_fixate_field_string(caps, field, word);
  }
}

GstStructure* ChoosePicture(const GstCaps* choices, const std::vector<const char*>& formats) {
  for (const char* const format : formats) {
    for (unsigned i = 0; i < gst_caps_get_size(choices); ++i) {
      GstStructure* const picture = gst_structure_copy(gst_caps_get_structure(choices, i));
      if (TakeFormat(picture, format)) return picture;
      gst_structure_free(picture);
    }
  }
  return gst_structure_copy(gst_caps_get_structure(choices, 0));
}

}  // namespace

std::optional<Frames> FramesOf(const GstStructure* caps, const Settings& settings, std::string& fault) {
  if (!settings.Fault().empty()) {
    fault = settings.Fault();
    return std::nullopt;
  }
  const std::optional<SourceFormat> format = FormatBy(caps, settings);
  if (!format) {
    gchar* const text = gst_structure_to_string(caps);
    fault = gst_structure_has_name(caps, kAnyFrames) != FALSE
                ? "format: is missing; caps " + std::string(kAnyFrames) +
                      " need it; allowed: a name of PFNC, such as BayerRG12p"
                : "the caps '" + std::string(text) + "' have a format or a colorimetry that is not supported";
    g_free(text);
    return std::nullopt;
  }
  Frames frames{*format, settings.width, settings.height, gst_structure_has_name(caps, kAnyFrames) == FALSE};
  gst_structure_get_int(caps, "width", &frames.width);
  gst_structure_get_int(caps, "height", &frames.height);
  if (frames.width <= 0 || frames.height <= 0) {
    fault = std::string(frames.width <= 0 ? "width" : "height") +
            ": is missing; allowed: a number of pixels in the caps or as this property";
    return std::nullopt;
  }
  const auto width = static_cast<unsigned long>(frames.width);
  if (settings.stride != 0 && !RequiredSize(format->type, width, 1, settings.stride)) {
    fault = "stride: '" + std::to_string(settings.stride) + "' is too small; a line of " + std::to_string(width) +
            " pixels of " + LmTool::Label(format->type) + " takes " +
            std::to_string(RequiredSize(format->type, width, 1).value_or(0)) + " bytes";
    return std::nullopt;
  }
  return frames;
}

GstCaps* OtherCaps(GstPadDirection direction, const GstCaps* caps, const Settings& settings) {
  GstCaps* const others = gst_caps_new_empty();
  for (unsigned i = 0; i < gst_caps_get_size(caps); ++i) {
    const GstStructure* const structure = gst_caps_get_structure(caps, i);
    if (direction == GST_PAD_SINK) {
      AppendPictures(others, structure, settings);
    } else {
      AppendFrames(others, structure, settings);
    }
  }
  return gst_caps_simplify(others);
}

GstCaps* BestPicture(const GstCaps* frames, GstCaps* choices, const Settings& settings) {
  const std::optional<SourceFormat> source = FormatBy(gst_caps_get_structure(frames, 0), settings);
  if (gst_caps_is_empty(choices) != FALSE || !source) return gst_caps_fixate(choices);
  GstStructure* const picture = ChoosePicture(choices, PreferredTargets(*source));
  gst_caps_unref(choices);
  int height = 0;
  gst_structure_get_int(picture, "height", &height);
  const char* const name = gst_structure_get_string(picture, "format");
  const TargetFormat* const target = name == nullptr ? nullptr : FindTarget(gst_video_format_from_string(name));
  if (target != nullptr && target->IsYuv()) {
    PreferWord(picture, "colorimetry",
               height > kMostLinesOfSD ? GST_VIDEO_COLORIMETRY_BT709 : GST_VIDEO_COLORIMETRY_BT601);
    PreferWord(picture, "chroma-site", "jpeg");  // Cb and Cr are those of the middle of their pixels
  }
  gst_structure_fixate(picture);
  GstCaps* const best = gst_caps_new_empty();
  gst_caps_append_structure(best, picture);
  return best;
}

}  // namespace LmGst
