// The stream: settings that change, events, and frames that become pictures.
#include <exception>

#include "state.h"

namespace LmGst {

using namespace LmImagingLib;

namespace {

GstBaseTransformClass* gParent = nullptr;  // set once, with the class

// Files have segments of bytes, and pictures have times.
gboolean SinkEvent(GstBaseTransform* base, GstEvent* event) {
  if (GST_EVENT_TYPE(event) == GST_EVENT_SEGMENT) {
    const GstSegment* segment = nullptr;
    gst_event_parse_segment(event, &segment);
    if (segment->format != GST_FORMAT_TIME) {
      GstSegment times;
      gst_segment_init(&times, GST_FORMAT_TIME);
      GstEvent* const timed = gst_event_new_segment(&times);
      gst_event_set_seqnum(timed, gst_event_get_seqnum(event));
      gst_event_unref(event);
      event = timed;
    }
  }
  return gParent->sink_event(base, event);
}

gboolean Start(GstBaseTransform* base) {
  StateOf(base).count = 0;
  const Settings settings = SettingsOf(base);
  return settings.Fault().empty() ? TRUE : static_cast<gboolean>(Refuse(base, settings.Fault()));
}

void TakeSettings(GstBaseTransform* base, State& state) {
  {
    const Lock lock(base);
    if (!state.hasNewSettings) return;
    state.hasNewSettings = false;
    state.used = state.settings;
  }
  if (!state.used.Fault().empty() || !state.frames) return;
  state.converter.SetSettings(state.used);
  const bool isSame = state.rawFrames && state.used.stride == 0 && state.used.format.text.empty() &&
                      GST_VIDEO_INFO_FORMAT(&*state.rawFrames) == GST_VIDEO_INFO_FORMAT(&state.picture);
  gst_base_transform_set_passthrough(base, isSame && state.converter.ChangesNothing() ? TRUE : FALSE);
  if (state.converter.HasUnusedColors()) {
    GST_ELEMENT_WARNING(base, STREAM, FORMAT,
                        ("gains, white balance, black level and tone do nothing, because the frames are gray"),
                        (nullptr));
  }
}

void BeforeTransform(GstBaseTransform* base, GstBuffer* buffer) {
  const GstClockTime time = gst_segment_to_stream_time(&base->segment, GST_FORMAT_TIME, GST_BUFFER_TIMESTAMP(buffer));
  if (GST_CLOCK_TIME_IS_VALID(time)) gst_object_sync_values(reinterpret_cast<GstObject*>(base), time);
  TakeSettings(base, StateOf(base));
}

// The frame of a buffer. Of its lines say, in this order: the property, metadata of the buffer, and its size.
ConstImageView ViewOf(const State& state, GstBuffer* buffer, const GstMapInfo& map) {
  const PixelTypeID type = state.frames->format.type;
  const auto width = static_cast<unsigned long>(state.frames->width);
  const auto height = static_cast<unsigned long>(state.frames->height);
  ConstImageView view{type, map.data, map.size, width, height};
  const GstVideoMeta* const meta = gst_buffer_get_video_meta(buffer);
  if (state.used.stride != 0) {
    view.lineSize = state.used.stride;
  } else if (meta != nullptr && meta->n_planes == 1 && meta->stride[0] > 0 && meta->offset[0] < map.size) {
    view.data = map.data + meta->offset[0];
    view.size = map.size - meta->offset[0];
    view.lineSize = static_cast<std::size_t>(meta->stride[0]);
  } else if (state.frames->isPadded) {
    const std::size_t line = (RequiredSize(type, width, 1).value_or(0) + 3) / 4 * 4;
    if (RequiredSize(type, width, height, line).value_or(map.size + 1) <= map.size) view.lineSize = line;
  }
  return view;
}

// Frames without times, such as those of files, follow one another at the frame rate.
void SetTimes(State& state, GstBuffer* picture) {
  const auto rate = static_cast<guint64>(GST_VIDEO_INFO_FPS_N(&state.picture));
  const guint64 number = state.count++;
  if (GST_BUFFER_PTS_IS_VALID(picture) || rate == 0) return;
  const guint64 span = static_cast<guint64>(GST_VIDEO_INFO_FPS_D(&state.picture)) * GST_SECOND;
  GST_BUFFER_PTS(picture) = gst_util_uint64_scale(number, span, rate);
  GST_BUFFER_DTS(picture) = GST_CLOCK_TIME_NONE;
  GST_BUFFER_DURATION(picture) = gst_util_uint64_scale(number + 1, span, rate) - GST_BUFFER_PTS(picture);
}

// Converts between buffers that are mapped; false after an error.
bool Convert(GstBaseTransform* base, const ConstImageView& view, GstBuffer* picture) {
  State& state = StateOf(base);
  GstVideoFrame mapped;
  const auto access = static_cast<GstMapFlags>(static_cast<int>(GST_MAP_WRITE) | GST_VIDEO_FRAME_MAP_FLAG_NO_REF);
  if (gst_video_frame_map(&mapped, &state.picture, picture, access) == FALSE) {
    return Refuse(base, "the buffer for a picture cannot be written");
  }
  std::string fault;
  try {
    const ConversionResult result = state.converter.Convert(view, mapped);
    fault = result.message;
  } catch (const std::exception& error) {
    fault = error.what();
  }
  gst_video_frame_unmap(&mapped);
  if (!fault.empty()) return Refuse(base, fault);
  const Lock lock(base);
  state.gains = state.converter.Gains();
  return true;
}

GstFlowReturn Transform(GstBaseTransform* base, GstBuffer* frame, GstBuffer* picture) {
  State& state = StateOf(base);
  if (!state.used.Fault().empty()) {
    Refuse(base, state.used.Fault());
    return GST_FLOW_ERROR;
  }
  GstMapInfo map;
  if (!state.frames || gst_buffer_map(frame, &map, GST_MAP_READ) == FALSE) {
    Refuse(base, "the buffer of a frame cannot be read");
    return GST_FLOW_ERROR;
  }
  const ConstImageView view = ViewOf(state, frame, map);
  const std::size_t needed = RequiredSize(view.type, view.width, view.height, view.lineSize).value_or(0);
  const std::string fault = "a buffer has " + std::to_string(view.size) + " bytes; a frame of " +
                            std::to_string(view.width) + " x " + std::to_string(view.height) + " pixels takes " +
                            std::to_string(needed);
  GstFlowReturn flow = GST_FLOW_ERROR;
  if (view.size >= needed) {
    SetTimes(state, picture);
    if (Convert(base, view, picture)) flow = GST_FLOW_OK;
  } else if (state.count > 0) {  // a frame that was cut short, by the end of a file or on its way
    GST_ELEMENT_WARNING(base, STREAM, DECODE, ("%s; it is left out", fault.c_str()), (nullptr));
    flow = GST_BASE_TRANSFORM_FLOW_DROPPED;
  } else {
    Refuse(base, fault);
  }
  gst_buffer_unmap(frame, &map);
  return flow;
}

}  // namespace

void InitStream(GstBaseTransformClass& type) {
  gParent = static_cast<GstBaseTransformClass*>(g_type_class_peek_parent(&type));
  type.sink_event = SinkEvent;
  type.start = Start;
  type.before_transform = BeforeTransform;
  type.transform = Transform;
}

}  // namespace LmGst
