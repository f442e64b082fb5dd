#pragma once

#include <gst/gst.h>

#include <memory>
#include <string>

#include "../tools/tool.h"
#include "element.h"

// What the bus of a pipeline said until its end.
struct PipelineResult {
  std::string error, warning;  // empty without one
};

// Runs pipelines with the element, and the tool, in a directory of their own.
class PipelineTest : public ToolTest {
 protected:
  PipelineTest() {
    gst_init(nullptr, nullptr);
    gst_element_register(nullptr, "lmimagingconvert", GST_RANK_NONE, LmGst::ElementType());
  }

  // Files are named as NAME/file.
  PipelineResult Launch(std::string description) const {
    for (std::size_t at; (at = description.find("NAME/")) != std::string::npos;) {
      description.replace(at, 5, Path("").string());
    }
    PipelineResult result;
    GError* fault = nullptr;
    GstElement* const pipeline = gst_parse_launch(description.c_str(), &fault);
    if (fault != nullptr) {
      result.error = fault->message;
      g_error_free(fault);
    }
    if (pipeline == nullptr) return result;
    gst_element_set_state(pipeline, GST_STATE_PLAYING);
    GstBus* const bus = gst_element_get_bus(pipeline);
    for (bool isOver = false; !isOver;) {
      constexpr auto kEnds = GST_MESSAGE_ERROR | GST_MESSAGE_EOS;
      GstMessage* const message =
          gst_bus_timed_pop_filtered(bus, 60 * GST_SECOND, static_cast<GstMessageType>(kEnds | GST_MESSAGE_WARNING));
      isOver = message == nullptr || (GST_MESSAGE_TYPE(message) & kEnds) != 0;
      if (message == nullptr) {
        result.error = "no end within a minute";
      } else if (GST_MESSAGE_TYPE(message) == GST_MESSAGE_ERROR) {
        gst_message_parse_error(message, &fault, nullptr);
        result.error = fault->message;
        g_error_free(fault);
      } else if (GST_MESSAGE_TYPE(message) == GST_MESSAGE_WARNING) {
        gst_message_parse_warning(message, &fault, nullptr);
        result.warning = fault->message;
        g_error_free(fault);
      }
      if (message != nullptr) gst_message_unref(message);
    }
    gst_element_set_state(pipeline, GST_STATE_NULL);
    gst_object_unref(bus);
    gst_object_unref(pipeline);
    return result;
  }

  // Converts the file in.raw, of one frame, to out.raw.
  // @param frames  the caps of the frame
  // @param element  the properties of the element
  // @param pictures  the rest of the caps video/x-raw
  Bytes Convert(const std::string& frames, const std::string& element, const std::string& pictures) const {
    const PipelineResult result =
        Launch("filesrc location=NAME/in.raw blocksize=10000000 ! " + frames + " ! lmimagingconvert " + element +
               " ! video/x-raw," + pictures + " ! filesink location=NAME/out.raw");
    EXPECT_EQ(result.error, "") << frames << " " << element << " " << pictures;
    return Read("out.raw");
  }
};
