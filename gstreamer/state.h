#pragma once

#include <gst/base/gstbasetransform.h>
#include <gst/video/video.h>

#include <optional>
#include <string>

#include "frame_converter.h"
#include "negotiation.h"
#include "settings.h"

namespace LmGst {

/// What an element keeps. The settings and the gains are for all threads, under the lock of the element; the rest is of
/// the thread of the stream.
struct State {
  Settings settings;
  LmTool::Triple gains{1, 1, 1};  ///< those in use
  bool hasNewSettings = true;

  Settings used;  ///< a copy of the settings, for the frame that is converted
  std::optional<Frames> frames;
  GstVideoInfo picture;
  std::optional<GstVideoInfo> rawFrames;  ///< frames of video/x-raw
  FrameConverter converter;
  guint64 count = 0;  ///< of frames
};

struct Element {
  GstBaseTransform base;
  State* state;
};

inline State& StateOf(gpointer element) { return *static_cast<Element*>(element)->state; }

/// Holds the lock of an element.
class Lock {
 public:
  explicit Lock(gpointer element) : mElement(static_cast<GstObject*>(element)) { GST_OBJECT_LOCK(mElement); }
  Lock(const Lock&) = delete;
  Lock& operator=(const Lock&) = delete;
  ~Lock() { GST_OBJECT_UNLOCK(mElement); }

 private:
  GstObject* mElement;
};

/// A copy of the settings.
inline Settings SettingsOf(gpointer element) {
  const Lock lock(element);
  return StateOf(element).settings;
}

/// Posts an error, which ends the stream. Returns false.
inline bool Refuse(gpointer element, const std::string& reason) {
  GST_ELEMENT_ERROR(element, STREAM, FORMAT, ("%s", reason.c_str()), (nullptr));
  return false;
}

/// Set the functions of the class for caps and buffers, and for events and frames.
void InitNegotiation(GstBaseTransformClass& type);
void InitStream(GstBaseTransformClass& type);

}  // namespace LmGst
