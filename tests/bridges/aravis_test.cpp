#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "LmImagingLib/lmimaging_aravis.h"

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr std::uint32_t kMono8 = 0x01080001, kBayerRG12p = 0x010C0059;

Bytes Converted(const LmiCameraImage& frame) {
  LmiFormat rgb{};
  rgb.structSize = sizeof rgb;
  EXPECT_EQ(lmiFindFormat("RGB8", &rgb), LMI_OK);
  Bytes bytes(3 * frame.image.width * frame.image.height);
  const LmiImage picture{sizeof picture,     rgb.type, bytes.data(), bytes.size(), frame.image.width,
                         frame.image.height, 0};
  LmiOptions options{};
  options.structSize = sizeof options;
  options.flags = frame.flags;
  EXPECT_EQ(lmiConvert(&frame.image, &picture, &options), LMI_OK) << lmiMessage();
  return bytes;
}

TEST(CameraImage, HasLinesWithTheirPadding) {
  // Two lines of 4 pixels of 12 bits in 6 bytes, each with a byte of padding, and a chunk of 4 bytes.
  const Bytes buffer{0x20, 0x05, 0, 0, 0, 0, 0xEE, 0, 0x80, 0x7A, 0, 0, 0, 0xEE, 1, 2, 3, 4};
  const LmiCameraImage frame = lmiCameraImage(kBayerRG12p, 4, 2, 1, buffer.data(), buffer.size());
  ASSERT_EQ(frame.reason, nullptr);
  EXPECT_EQ(frame.flags, LMI_BAYER_RG);
  EXPECT_EQ(frame.image.lineSize, 7U);
  const Bytes picture = Converted(frame);
  EXPECT_EQ(picture[0], 0x52) << "red of the first line";
  EXPECT_EQ(picture[2], 0x7A) << "blue of the second one";
  EXPECT_EQ(lmiCameraImage(kBayerRG12p, 4, 2, 0, buffer.data(), buffer.size()).image.lineSize, 0U);
}

TEST(CameraImage, GivesReasons) {
  const Bytes buffer(12);
  const auto reason = [&](std::uint32_t code, std::size_t width, std::size_t size) {
    const LmiCameraImage frame = lmiCameraImage(code, width, 3, 0, buffer.data(), size);
    EXPECT_EQ(frame.image.data, nullptr);
    return std::string(frame.reason == nullptr ? "" : frame.reason);
  };
  EXPECT_EQ(reason(kMono8, 4, 11), "the buffer has fewer bytes than its image");
  EXPECT_NE(reason(0x01080FFF, 4, 12).find("unknown"), std::string::npos);
  EXPECT_EQ(std::string(lmiArvImage(nullptr).reason), "the buffer was not filled by a whole frame");
  ArvBuffer* const empty = arv_buffer_new(100, nullptr);
  EXPECT_EQ(std::string(lmiArvImage(empty).reason), "the buffer was not filled by a whole frame");
  g_object_unref(empty);
}

// The fake camera shows one ramp of grays, and one of colours, which moves from frame to frame.
TEST(ArvImage, IsTheFrameOfTheFakeCamera) {
  arv_enable_interface("Fake");
  ArvCamera* const camera = arv_camera_new("Fake_1", nullptr);
  ASSERT_NE(camera, nullptr);
  guint count = 0;
  gint64* const codes = arv_camera_dup_available_pixel_formats(camera, &count, nullptr);
  EXPECT_GE(count, 7U);
  for (guint i = 0; i < count; ++i) {
    arv_camera_set_pixel_format(camera, static_cast<ArvPixelFormat>(codes[i]), nullptr);
    ArvBuffer* const buffer = arv_camera_acquisition(camera, 2000000, nullptr);
    const LmiCameraImage frame = lmiArvImage(buffer);
    ASSERT_EQ(frame.reason, nullptr) << std::hex << codes[i] << frame.reason;
    const std::size_t width = frame.image.width;
    EXPECT_EQ(width, 512U);
    EXPECT_EQ(frame.image.height, 512U);
    const Bytes picture = Converted(frame);
    // Neighbours along a ramp differ a little, except where it begins anew. A wrong size or depth breaks that.
    std::size_t far = 0;
    for (std::size_t x = 8; x + 8 < width; ++x) {
      for (std::size_t k = 0; k < 3; ++k) {
        const auto at = [&](std::size_t column) { return int{picture[3 * (100 * width + column) + k]}; };
        far += std::abs(at(x) - at(x + 2)) > 24 ? 1 : 0;
      }
    }
    EXPECT_LT(far, 30U) << std::hex << codes[i];
    EXPECT_GT(*std::max_element(picture.begin(), picture.end()), 200) << std::hex << codes[i];
    g_object_unref(buffer);
  }
  g_free(codes);
  g_object_unref(camera);
}

}  // namespace
