// Caps of the pads, and buffers for pictures.
#include <gst/video/gstvideopool.h>

#include <algorithm>

#include "formats.h"
#include "state.h"

namespace LmGst {

using namespace LmImagingLib;

namespace {

GstBaseTransformClass* gParent = nullptr;  // set once, with the class

GstCaps* TransformCaps(GstBaseTransform* base, GstPadDirection direction, GstCaps* caps, GstCaps* filter) {
  GstCaps* others = OtherCaps(direction, caps, SettingsOf(base));
  if (filter != nullptr) {
    GstCaps* const both = gst_caps_intersect_full(filter, others, GST_CAPS_INTERSECT_FIRST);
    gst_caps_unref(others);
    others = both;
  }
  return others;
}

GstCaps* FixateCaps(GstBaseTransform* base, GstPadDirection direction, GstCaps* caps, GstCaps* others) {
  return direction == GST_PAD_SINK ? BestPicture(caps, others, SettingsOf(base)) : gst_caps_fixate(others);
}

// Why pictures of these caps cannot be made; empty if they can.
std::string FaultOf(const GstVideoInfo& picture, const TargetFormat* target, int width, int height) {
  if (target == nullptr) return "the format of the pictures is not supported";
  if (GST_VIDEO_INFO_WIDTH(&picture) != width || GST_VIDEO_INFO_HEIGHT(&picture) != height) {
    return "pictures of these frames have " + std::to_string(width) + " x " + std::to_string(height) + " pixels";
  }
  if (!target->IsYuv()) return "";
  if (!YuvCodeOf(picture.colorimetry)) return "colorimetry: allowed for YUV: the matrix of bt601 or of bt709";
  const GstVideoChromaSite site = picture.chroma_site;
  const bool isMiddle = site == GST_VIDEO_CHROMA_SITE_UNKNOWN || site == GST_VIDEO_CHROMA_SITE_JPEG;
  return isMiddle ? "" : "chroma-site: allowed: jpeg";
}

gboolean SetCaps(GstBaseTransform* base, GstCaps* frameCaps, GstCaps* pictureCaps) {
  State& state = StateOf(base);
  const Settings settings = SettingsOf(base);
  const GstStructure* const structure = gst_caps_get_structure(frameCaps, 0);
  std::string fault;
  state.frames = FramesOf(structure, settings, fault);
  if (!state.frames) return Refuse(base, fault);
  if (gst_video_info_from_caps(&state.picture, pictureCaps) == FALSE)
    return Refuse(base, "the pictures have no format");

  const SourceFormat& format = state.frames->format;
  const int part = format.IsMosaic() && settings.Method() == ConversionFlags::kHalfSize ? 2 : 1;
  const TargetFormat* const target = FindTarget(GST_VIDEO_INFO_FORMAT(&state.picture));
  fault = FaultOf(state.picture, target, state.frames->width / part, state.frames->height / part);
  if (!fault.empty()) return Refuse(base, fault);
  state.converter.SetFormats(format, *target, YuvCodeOf(state.picture.colorimetry).value_or(YuvCode{}));

  GstVideoInfo raw;
  state.rawFrames.reset();
  const bool isRaw = gst_structure_has_name(structure, kPictures) != FALSE;
  if (isRaw && gst_video_info_from_caps(&raw, frameCaps) != FALSE) state.rawFrames = raw;
  const Lock lock(base);
  state.hasNewSettings = true;
  return TRUE;
}

gboolean TransformSize(GstBaseTransform*, GstPadDirection direction, GstCaps*, gsize, GstCaps* others, gsize* size) {
  GstVideoInfo info;
  if (direction != GST_PAD_SINK || gst_video_info_from_caps(&info, others) == FALSE) return FALSE;
  *size = GST_VIDEO_INFO_SIZE(&info);
  return TRUE;
}

gboolean GetUnitSize(GstBaseTransform*, GstCaps* caps, gsize* size) {
  GstVideoInfo info;
  if (gst_video_info_from_caps(&info, caps) == FALSE) return FALSE;
  *size = GST_VIDEO_INFO_SIZE(&info);
  return TRUE;
}

// Buffers of the next element, where it offers some, with lines as it wants them.
gboolean DecideAllocation(GstBaseTransform* base, GstQuery* query) {
  GstCaps* caps = nullptr;
  gst_query_parse_allocation(query, &caps, nullptr);
  GstVideoInfo info;
  if (caps == nullptr || gst_video_info_from_caps(&info, caps) == FALSE) return FALSE;

  GstBufferPool* pool = nullptr;
  guint size = 0;
  guint least = 0;
  guint most = 0;
  const bool isOffered = gst_query_get_n_allocation_pools(query) > 0;
  if (isOffered) gst_query_parse_nth_allocation_pool(query, 0, &pool, &size, &least, &most);
  if (pool == nullptr) pool = gst_video_buffer_pool_new();
  size = std::max(size, static_cast<guint>(GST_VIDEO_INFO_SIZE(&info)));
  GstStructure* const config = gst_buffer_pool_get_config(pool);
  gst_buffer_pool_config_set_params(config, caps, size, least, most);
  if (gst_query_find_allocation_meta(query, GST_VIDEO_META_API_TYPE, nullptr) != FALSE) {
    gst_buffer_pool_config_add_option(config, GST_BUFFER_POOL_OPTION_VIDEO_META);
  }
  gst_buffer_pool_set_config(pool, config);
  if (isOffered) {
    gst_query_set_nth_allocation_pool(query, 0, pool, size, least, most);
  } else {
    gst_query_add_allocation_pool(query, pool, size, least, most);
  }
  gst_object_unref(pool);
  return gParent->decide_allocation(base, query);
}

// Lines of frames may have any padding that the metadata of their buffers says.
gboolean ProposeAllocation(GstBaseTransform* base, GstQuery* decided, GstQuery* query) {
  if (gParent->propose_allocation(base, decided, query) == FALSE) return FALSE;
  gst_query_add_allocation_meta(query, GST_VIDEO_META_API_TYPE, nullptr);
  return TRUE;
}

}  // namespace

void InitNegotiation(GstBaseTransformClass& type) {
  gParent = static_cast<GstBaseTransformClass*>(g_type_class_peek_parent(&type));
  type.transform_caps = TransformCaps;
  type.fixate_caps = FixateCaps;
  type.set_caps = SetCaps;
  type.transform_size = TransformSize;
  type.get_unit_size = GetUnitSize;
  type.decide_allocation = DecideAllocation;
  type.propose_allocation = ProposeAllocation;
}

}  // namespace LmGst
