#pragma once

#include <gst/gst.h>

#include <optional>
#include <string>

#include "formats.h"
#include "settings.h"

namespace LmGst {

/// The frames that caps and settings describe together.
struct Frames {
  SourceFormat format;
  int width, height;
  bool isPadded;  ///< whether lines begin at multiples of four bytes, unless the buffer says otherwise
};

/// Reads the caps of the sink pad.
/// @param fault  becomes a sentence if they describe no frames
std::optional<Frames> FramesOf(const GstStructure* caps, const Settings& settings, std::string& fault);

/// The caps that a pad may have if the other one has `caps`.
GstCaps* OtherCaps(GstPadDirection direction, const GstCaps* caps, const Settings& settings);

/// Chooses the caps of the source pad among `choices`: a format that suits the frames, and the code of YUV.
/// @param choices  is released
GstCaps* BestPicture(const GstCaps* frames, GstCaps* choices, const Settings& settings);

}  // namespace LmGst
