// What GStreamer loads.
#include <gst/gst.h>

#include "element.h"

namespace {

gboolean Register(GstPlugin* plugin) {
  return gst_element_register(plugin, "lmimagingconvert", GST_RANK_NONE, LmGst::ElementType());
}

}  // namespace

#define PACKAGE "LmImagingLib"
GST_PLUGIN_DEFINE(GST_VERSION_MAJOR, GST_VERSION_MINOR, lmimaging, "Pixel formats of machine-vision cameras", Register,
                  LM_VERSION, GST_LICENSE_UNKNOWN, "LmImagingLib", "LmImagingLib")
