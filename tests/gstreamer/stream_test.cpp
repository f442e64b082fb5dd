// What the element says and does in a stream: refusals, formats that it chooses, times, padding, and light that
// changes.
#include <gst/check/gstharness.h>
#include <gst/video/video.h>

#include "pipeline.h"

namespace {

class Stream : public PipelineTest {};

// An element between two pads of a test.
class Harness {
 public:
  Harness(const std::string& element, const std::string& caps)
      : mHarness(gst_harness_new_parse(("lmimagingconvert " + element).c_str())),
        mElement(gst_harness_find_element(mHarness, "lmimagingconvert")) {
    gst_harness_set_src_caps_str(mHarness, caps.c_str());
  }
  Harness(const Harness&) = delete;
  Harness& operator=(const Harness&) = delete;
  ~Harness() {
    gst_object_unref(mElement);
    gst_harness_teardown(mHarness);
  }

  GstElement* Element() const { return mElement; }

  // The picture of a frame: its bytes, and its time.
  Bytes Push(const Bytes& frame, std::size_t stride = 0, GstClockTime* time = nullptr) const {
    GstBuffer* const buffer = gst_buffer_new_memdup(frame.data(), frame.size());
    if (stride != 0) {
      gsize offsets[4] = {4};
      gint strides[4] = {static_cast<gint>(stride)};
      gst_buffer_add_video_meta_full(buffer, GST_VIDEO_FRAME_FLAG_NONE, GST_VIDEO_FORMAT_GRAY8, 6, 4, 1, offsets,
                                     strides);
    }
    GstBuffer* const picture = gst_harness_push_and_pull(mHarness, buffer);
    Bytes bytes(gst_buffer_get_size(picture));
    gst_buffer_extract(picture, 0, bytes.data(), bytes.size());
    if (time != nullptr) *time = GST_BUFFER_PTS(picture);
    gst_buffer_unref(picture);
    return bytes;
  }

  std::string Format() const {
    GstCaps* const caps = gst_pad_get_current_caps(mHarness->sinkpad);
    const char* const format = gst_structure_get_string(gst_caps_get_structure(caps, 0), "format");
    std::string text = format;
    gst_caps_unref(caps);
    return text;
  }

 private:
  GstHarness* mHarness;
  GstElement* mElement;
};

TEST_F(Stream, RefusesWithAReason) {
  Write("in.raw", Bytes(100));
  Write("bad.json", {'{', '"', 'x', '"', ':', '1', '}'});
  const std::string any = "application/octet-stream,width=10,height=10";
  struct Case {
    std::string frames, element, pictures, reason;
  };
  const Case cases[] = {
      {any, "format=BayerRG12q", "RGB", "format: no pixel type is named 'BayerRG12q'"},
      {any, "format=BayerRGB12", "RGB", "does not say which colours its mosaic begins with"},
      {any, "", "RGB", "format: is missing; caps application/octet-stream need it"},
      {"application/octet-stream,height=10", "format=Mono8", "RGB", "width: is missing"},
      {any, "format=Mono12", "RGB", "a buffer has 100 bytes; a frame of 10 x 10 pixels takes 200"},
      {any, "format=Mono8 stride=9", "RGB", "stride: '9' is too small; a line of 10 pixels"},
      {any, "format=Mono8 tone=dark", "RGB", "tone: 'dark' is unknown; allowed: linear"},
      {any, "format=Mono8 development-file=NAME/none.json", "RGB", "development-file: "},
      {any, "format=Mono8 development-file=NAME/bad.json", "RGB", "has the unknown key 'x'"},
      {any, "format=Mono8", "NV12,colorimetry=bt2020", "colorimetry: allowed for YUV"},
      {any, "format=Mono8", "I420,chroma-site=mpeg2", "chroma-site: allowed: jpeg"},
  };
  for (const Case& c : cases) {
    const PipelineResult result = Launch("filesrc location=NAME/in.raw ! " + c.frames + " ! lmimagingconvert " +
                                         c.element + " ! video/x-raw,format=" + c.pictures + " ! fakesink");
    EXPECT_NE(result.error.find(c.reason), std::string::npos) << c.reason << "\n" << result.error;
  }
}

TEST_F(Stream, LeavesOutAFrameThatIsCutShort) {
  Write("in.raw", Bytes(250, 7));
  const PipelineResult result = Launch(
      "filesrc location=NAME/in.raw blocksize=100 ! application/octet-stream,width=10,height=10 ! "
      "lmimagingconvert format=Mono8 red-gain=2 ! video/x-raw,format=GRAY16_LE ! filesink location=NAME/out.raw");
  EXPECT_EQ(result.error, "");
  EXPECT_NE(result.warning.find("a buffer has 50 bytes"), std::string::npos) << result.warning;
  EXPECT_EQ(Read("out.raw").size(), 400U);
}

TEST_F(Stream, ChoosesAFormatThatSuitsTheFrames) {
  struct Case {
    const char *element, *caps, *format;
  };
  constexpr Case kCases[] = {
      {"", "video/x-bayer,format=rggb,width=6,height=4", "BGRx"},
      {"", "video/x-raw,format=GRAY8,width=6,height=4", "GRAY8"},
      {"format=Mono10", "video/x-raw,format=GRAY16_LE,width=6,height=4", "GRAY16_LE"},
      {"format=BayerRG10", "video/x-raw,format=GRAY16_LE,width=6,height=4", "BGRx"},
      {"format=Mono12p", "application/octet-stream,width=6,height=4", "GRAY16_LE"},
  };
  for (const Case& c : kCases) {
    const Harness harness(c.element, c.caps);
    harness.Push(Bytes(64));
    EXPECT_EQ(harness.Format(), c.format) << c.caps;
  }
}

TEST_F(Stream, GivesTimesToFramesWithoutThem) {
  const Harness harness("format=Mono8", "application/octet-stream,width=6,height=4,framerate=25/1");
  GstClockTime times[2];
  for (GstClockTime& time : times) harness.Push(Bytes(24), 0, &time);
  EXPECT_EQ(times[0], 0U);
  EXPECT_EQ(times[1], 40 * GST_MSECOND);
}

TEST_F(Stream, ReadsLinesWhereTheBufferOrTheStrideSays) {
  Bytes padded(4 + 4 * 9);
  Bytes plain(8 * 4);  // lines of video/x-bayer begin at multiples of four bytes
  for (std::size_t i = 0; i < 24; ++i) {
    padded[4 + i / 6 * 9 + i % 6] = plain[i / 6 * 8 + i % 6] = static_cast<std::uint8_t>(10 * i);
  }
  const Harness harness("demosaic=bilinear", "video/x-bayer,format=gbrg,width=6,height=4");
  const Bytes picture = harness.Push(plain);
  EXPECT_EQ(harness.Push(padded, 9), picture);
  const Harness strided("demosaic=bilinear stride=9", "video/x-bayer,format=gbrg,width=6,height=4");
  EXPECT_EQ(strided.Push(Bytes(padded.begin() + 4, padded.end())), picture);
}

// A gray card whose light has less red: of `red` where other samples are 200.
Bytes GrayCard(unsigned red) {
  Bytes frame(64 * 64);
  for (std::size_t i = 0; i < frame.size(); ++i) {
    frame[i] = static_cast<std::uint8_t>(i % 2 == 0 && i / 64 % 2 == 0 ? red : 200);
  }
  return frame;
}

TEST_F(Stream, FollowsTheLightAndKeepsTheGains) {
  const Harness harness("white-balance=gray", "video/x-bayer,format=rggb,width=64,height=64");
  const auto gain = [&] {
    gdouble red = 0;
    g_object_get(harness.Element(), "red-gain", &red, nullptr);
    return red;
  };
  harness.Push(GrayCard(160));
  EXPECT_EQ(gain(), 1.25) << "the first frame at once";
  harness.Push(GrayCard(100));
  EXPECT_NEAR(gain(), 1.25 + 0.15 * 0.75, 1e-3) << "then a little at a time";
  harness.Push(Bytes(64 * 64, 255));
  EXPECT_NEAR(gain(), 1.25 + 0.15 * 0.75, 1e-3) << "an overexposed frame says nothing";
  Bytes picture;
  for (int i = 0; i < 60; ++i) picture = harness.Push(GrayCard(100));
  EXPECT_NEAR(gain(), 2, 0.01);
  EXPECT_NEAR(picture[2], 200, 2) << "red of the first pixel";

  g_object_set(harness.Element(), "white-balance", 0, nullptr);
  const double found = gain();
  EXPECT_NEAR(found, 2, 0.01);
  EXPECT_EQ(harness.Push(GrayCard(100)), picture);
  EXPECT_EQ(gain(), found);
  g_object_set(harness.Element(), "red-gain", 1.0, nullptr);
  EXPECT_EQ(harness.Push(GrayCard(100))[2], 100);
}

}  // namespace
