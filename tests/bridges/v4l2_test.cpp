#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <tuple>
#include <vector>

#include "LmImagingLib/Extended.h"
#include "LmImagingLib/V4L2Views.h"

namespace LmImagingLib {
namespace {

using namespace ConversionFlags;

v4l2_pix_format FormatOf(std::uint32_t fourcc) {
  v4l2_pix_format format{};
  format.width = 8;
  format.height = 4;
  format.pixelformat = fourcc;
  format.field = V4L2_FIELD_NONE;
  format.priv = V4L2_PIX_FMT_PRIV_MAGIC;
  return format;
}

v4l2_pix_format_mplane PlanesOf(const v4l2_pix_format& format) {
  v4l2_pix_format_mplane planes{};
  planes.width = format.width;
  planes.height = format.height;
  planes.pixelformat = format.pixelformat;
  planes.field = format.field;
  planes.colorspace = format.colorspace;
  planes.num_planes = 1;
  planes.plane_fmt[0].bytesperline = format.bytesperline;
  planes.ycbcr_enc = static_cast<std::uint8_t>(format.ycbcr_enc);
  planes.quantization = static_cast<std::uint8_t>(format.quantization);
  return planes;
}

// The kernel's own constants are the codes of the table.
TEST(V4L2Bridge, FindsTheFormatsOfTheKernel) {
  RegisterExtendedFormats();
  using Case = std::tuple<std::uint32_t, PixelTypeID, unsigned long>;
  const Case cases[] = {
      {V4L2_PIX_FMT_GREY, 0x10001, 0},
      {V4L2_PIX_FMT_Y10, 0x10002, 0},
      {V4L2_PIX_FMT_Y12, 0x10003, 0},
      {V4L2_PIX_FMT_Y16, 0x10005, 0},
      {V4L2_PIX_FMT_Y10P, 0x41084A, 0},
      {V4L2_PIX_FMT_SBGGR8, 0x20010, kBayerBG},
      {V4L2_PIX_FMT_SRGGB8, 0x20010, kBayerRG},
      {V4L2_PIX_FMT_SGRBG10, 0x20011, kBayerGR},
      {V4L2_PIX_FMT_SGBRG12, 0x20012, kBayerGB},
      {V4L2_PIX_FMT_SRGGB14, 0x20016, kBayerRG},
      {V4L2_PIX_FMT_SBGGR16, 0x20020, kBayerBG},
      {V4L2_PIX_FMT_SRGGB10P, 0x42094A, kBayerRG},
      {V4L2_PIX_FMT_SGRBG12P, 0x42094C, kBayerGR},
      {V4L2_PIX_FMT_SBGGR14P, 0x42094E, kBayerBG},
      {V4L2_PIX_FMT_RGB565, 0x20001, 0},
      {V4L2_PIX_FMT_RGB24, 0x420002, 0},
      {V4L2_PIX_FMT_BGR24, 0x420006, 0},
      {V4L2_PIX_FMT_RGBX32, 0x20003, 0},
      {V4L2_PIX_FMT_XBGR32, 0x20007, 0},
      {V4L2_PIX_FMT_YUYV, 0x40001, 0},
      {V4L2_PIX_FMT_UYVY, 0x40008, 0},
      {V4L2_PIX_FMT_YUV24, 0x440003, 0},
  };
  for (const auto& [fourcc, type, flags] : cases) {
    v4l2_pix_format format = FormatOf(fourcc);
    format.bytesperline = 99;
    const unsigned char buffer = 0;
    for (const V4L2View& image : {ViewOf(format, &buffer, 77), ViewOf(PlanesOf(format), &buffer, 77)}) {
      ASSERT_TRUE(image) << std::hex << fourcc << ": " << image.reason;
      const auto& [id, data, size, width, height, lineSize] = image.view;
      EXPECT_EQ(Case(fourcc, id, image.flags), Case(fourcc, type, flags)) << std::hex << fourcc;
      EXPECT_EQ(std::tuple(data, size, width, height, lineSize), std::tuple(&buffer, 77U, 8U, 4U, 99U));
    }
  }
}

TEST(V4L2Bridge, KnowsRangeAndMatrixOfYUV) {
  constexpr unsigned long kRefused = ~0UL;
  const struct {
    std::uint32_t colorspace, encoding, quantization;
    unsigned long flags;
  } cases[] = {{V4L2_COLORSPACE_DEFAULT, 0, 0, 0},
               {V4L2_COLORSPACE_SMPTE170M, 0, 0, 0},
               {V4L2_COLORSPACE_SRGB, 0, 0, 0},
               {V4L2_COLORSPACE_JPEG, 0, 0, kFullRange},
               {V4L2_COLORSPACE_REC709, 0, 0, kBT709},
               {V4L2_COLORSPACE_REC709, V4L2_YCBCR_ENC_601, V4L2_QUANTIZATION_FULL_RANGE, kFullRange},
               {V4L2_COLORSPACE_SRGB, V4L2_YCBCR_ENC_709, V4L2_QUANTIZATION_LIM_RANGE, kBT709},
               {V4L2_COLORSPACE_JPEG, V4L2_YCBCR_ENC_XV601, V4L2_QUANTIZATION_LIM_RANGE, 0},
               {V4L2_COLORSPACE_BT2020, 0, 0, kRefused},
               {V4L2_COLORSPACE_SMPTE240M, 0, 0, kRefused}};
  for (const auto& c : cases) {
    v4l2_pix_format format = FormatOf(V4L2_PIX_FMT_YUYV);
    format.colorspace = c.colorspace;
    format.ycbcr_enc = c.encoding;
    format.quantization = c.quantization;
    for (const V4L2View& image : {ViewOf(format, nullptr, 0), ViewOf(PlanesOf(format), nullptr, 0)}) {
      EXPECT_EQ(image ? image.flags : kRefused, c.flags) << c.colorspace << " " << c.encoding;
    }
    format.pixelformat = V4L2_PIX_FMT_GREY;
    EXPECT_EQ(ViewOf(format, nullptr, 0).flags, 0U) << "gray has neither";
  }
  v4l2_pix_format format = FormatOf(V4L2_PIX_FMT_YUYV);
  format.ycbcr_enc = V4L2_YCBCR_ENC_709;
  format.priv = 0;
  EXPECT_EQ(ViewOf(format, nullptr, 0).flags, 0U) << "the member is not valid";
}

TEST(V4L2Bridge, SortsTheLinesOfFields) {
  const struct {
    std::uint32_t field;
    std::vector<std::uint8_t> lines;
  } cases[] = {{V4L2_FIELD_INTERLACED, {0, 1, 2, 3}},
               {V4L2_FIELD_ALTERNATE, {0, 1, 2, 3}},
               {V4L2_FIELD_SEQ_TB, {0, 2, 1, 3}},
               {V4L2_FIELD_SEQ_BT, {2, 0, 3, 1}}};
  for (const auto& c : cases) {
    v4l2_pix_format format = FormatOf(V4L2_PIX_FMT_GREY);
    format.field = c.field;
    format.bytesperline = 10;
    std::vector<std::uint8_t> buffer(40), gray(32);
    for (std::size_t i = 0; i < buffer.size(); ++i) buffer[i] = static_cast<std::uint8_t>(i / 10);
    const V4L2View image = ViewOf(format, buffer.data(), buffer.size());
    ASSERT_TRUE(image) << image.reason;
    ConvertOptions options;
    options.flags = image.flags;
    const ConversionResult result = ConvertImage(image.view, {0x10001, gray.data(), 32, 8, 4, 0}, options);
    ASSERT_TRUE(result.IsOK()) << result.message;
    for (std::size_t i = 0; i < gray.size(); ++i) EXPECT_EQ(gray[i], c.lines[i / 8]) << c.field << " at " << i;
  }
}

TEST(V4L2Bridge, SaysWhyABufferIsNoImage) {
  RegisterExtendedFormats();
  const auto expectReason = [](const V4L2View& image, const char* words) {
    ASSERT_FALSE(image) << words;
    EXPECT_NE(std::string(image.reason).find(words), std::string::npos) << image.reason;
    EXPECT_EQ(image.view.data, nullptr);
  };
  const unsigned char buffer = 0;
  expectReason(ViewOf(FormatOf(V4L2_PIX_FMT_MJPEG), &buffer, 1), "compressed");
  expectReason(ViewOf(FormatOf(V4L2_PIX_FMT_NV12), &buffer, 1), "planes of their own");
  expectReason(ViewOf(FormatOf(V4L2_PIX_FMT_Y16_BE), &buffer, 1), "high byte");
  expectReason(ViewOf(FormatOf(1), &buffer, 1), "unknown");
  v4l2_pix_format_mplane planes = PlanesOf(FormatOf(V4L2_PIX_FMT_GREY));
  planes.num_planes = 2;
  expectReason(ViewOf(planes, &buffer, 1), "buffers of their own");
  v4l2_pix_format format = FormatOf(V4L2_PIX_FMT_SRGGB10P);
  format.field = V4L2_FIELD_SEQ_TB;
  expectReason(ViewOf(format, &buffer, 1), "fields one after the other");
}

}  // namespace
}  // namespace LmImagingLib
