#include "LmImagingLib/OpenCV.h"

#include <gtest/gtest.h>

#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>
#include <string>

namespace LmImagingLib {
namespace {

constexpr int kWidth = 38, kHeight = 26;

bool Equal(const cv::Mat& a, const cv::Mat& b) {
  return a.size() == b.size() && a.type() == b.type() &&
         cv::countNonZero(a.reshape(1) != b.reshape(1)) == 0;  // one channel, as countNonZero has it
}

cv::Mat Noise(int rows, int columns, int type, int limit) {
  cv::Mat noise(rows, columns, type);
  cv::theRNG().state = 26;
  cv::randu(noise, 0, limit);
  return noise;
}

// OpenCV's word for the order of its colours, and ours.
TEST(OpenCVBridge, AgreesWithOpenCVAboutColours) {
  RegisterExtendedFormats();
  const struct {
    int from;
    int code;
    PixelTypeID to;
    int toMatrix;
  } cases[] = {{CV_8UC3, cv::COLOR_BGR2RGB, 0x420002, CV_8UC3},   {CV_8UC4, cv::COLOR_BGRA2RGB, 0x420002, CV_8UC3},
               {CV_8UC1, cv::COLOR_GRAY2RGB, 0x420002, CV_8UC3},  {CV_16UC3, cv::COLOR_BGR2RGB, 0x20004, CV_16UC3},
               {CV_16UC4, cv::COLOR_BGRA2RGB, 0x20004, CV_16UC3}, {CV_16UC1, cv::COLOR_GRAY2RGB, 0x20004, CV_16UC3}};
  for (const auto& c : cases) {
    const cv::Mat source = Noise(kHeight, kWidth, c.from, CV_MAT_DEPTH(c.from) == CV_8U ? 256 : 65536);
    cv::Mat expected, ours(kHeight, kWidth, c.toMatrix);
    cv::cvtColor(source, expected, c.code);
    const ConversionResult result = ConvertImage(ViewOfMat(source), ViewOf(c.to, ours));
    ASSERT_TRUE(result.IsOK()) << c.from << ": " << result.message;
    EXPECT_TRUE(Equal(ours, expected)) << c.from;
  }
  for (const MatType& row : kMatTypes) {  // and back
    const cv::Mat source = Noise(kHeight, kWidth, CV_16UC3, 65536);
    cv::Mat matrix;
    ConvertOptions options;
    options.flags = CV_MAT_CN(row.matrix) == 4 ? ConversionFlags::kOpaque : ConversionFlags::kNone;
    const ConversionResult result = ConvertToMat(ViewOf(0x20004, source), row.matrix, matrix, options);
    ASSERT_TRUE(result.IsOK()) << row.matrix << ": " << result.message;
    ASSERT_EQ(matrix.type(), row.matrix);
    if (CV_MAT_CN(row.matrix) == 1) continue;
    cv::Mat expected;
    cv::cvtColor(source, expected, CV_MAT_CN(row.matrix) == 4 ? cv::COLOR_RGB2BGRA : cv::COLOR_RGB2BGR);
    if (CV_MAT_DEPTH(row.matrix) == CV_8U) {
      // The upper bytes; convertTo rounds, halves to even.
      expected.convertTo(expected, CV_8U, 1.0 / 256, -127.5 / 256);
    }
    EXPECT_TRUE(Equal(matrix, expected)) << row.matrix;
  }
}

TEST(OpenCVBridge, MakesMatricesOfPackedRows) {
  RegisterExtendedFormats();
  const cv::Mat rows = Noise(kHeight, kWidth * 3 / 2 + 7, CV_8UC1, 256).colRange(0, kWidth * 3 / 2);  // padded lines
  const CameraMat frame = ViewOfRows("BayerGB12p", rows, kWidth);
  ASSERT_EQ(frame.reason, nullptr);
  for (const unsigned long method : {ConversionFlags::kAdaptive, ConversionFlags::kHalfSize}) {
    const int divisor = method == ConversionFlags::kHalfSize ? 2 : 1;
    cv::Mat expected(kHeight / divisor, kWidth / divisor, CV_16UC3), picture;
    const ImageView view = ViewOf(0x20A40, expected);
    ConvertOptions options;
    options.flags = frame.flags | method;
    ASSERT_TRUE(ConvertImage(frame.view, view, options).IsOK());
    const ConversionResult result = ConvertToMat(frame.view, CV_16UC3, picture, options);
    ASSERT_TRUE(result.IsOK()) << result.message;
    EXPECT_TRUE(Equal(picture, expected));

    DevelopmentSettings settings;
    settings.method = method;
    Development development;
    ASSERT_TRUE(Development::Make(settings, development).IsOK());
    DevelopOptions how;
    how.flags = frame.flags;
    ASSERT_TRUE(Develop(development, frame.view, view, how).IsOK());
    ASSERT_TRUE(DevelopToMat(development, frame.view, CV_16UC3, picture, how).IsOK());
    EXPECT_TRUE(Equal(picture, expected));
  }
}

TEST(OpenCVBridge, WritesIntoPartsOfMatrices) {
  const cv::Mat source = Noise(4, 5, CV_8UC1, 256);
  cv::Mat parent(8, 9, CV_8UC3, cv::Scalar::all(7));
  cv::Mat part = parent(cv::Rect(2, 1, 5, 4));
  ASSERT_TRUE(ConvertToMat(ViewOfMat(source), CV_8UC3, part).IsOK());
  cv::Mat expected(8, 9, CV_8UC3, cv::Scalar::all(7));
  cv::cvtColor(source, expected(cv::Rect(2, 1, 5, 4)), cv::COLOR_GRAY2BGR);
  EXPECT_TRUE(Equal(parent, expected));
}

TEST(OpenCVBridge, RefusesAndKeepsTheMatrix) {
  cv::Mat gray = Noise(4, 4, CV_8UC1, 256);
  cv::Mat matrix = Noise(2, 2, CV_8UC1, 256);
  const uchar* const data = matrix.data;
  const auto expectRefusal = [&](const ConversionResult& result, const std::string& words) {
    EXPECT_FALSE(result.IsOK()) << words;
    EXPECT_NE(result.message.find(words), std::string::npos) << result.message;
    EXPECT_EQ(matrix.data, data);
    EXPECT_EQ(matrix.size(), cv::Size(2, 2));
  };
  expectRefusal(ConvertToMat(ViewOfMat(gray), CV_32FC1, matrix), "type is 5; allowed: CV_8UC1 (0)");
  expectRefusal(ConvertToMat(ViewOfMat(cv::Mat(4, 4, CV_32FC1)), CV_8UC1, matrix), "source.type is 0x0");
  expectRefusal(ConvertToMat(ViewOf(0x20010, gray), CV_8UC3, matrix), "no Bayer layout");
  const CameraMat tooShort = ViewOfRows("BayerRG12p", gray, 3);
  expectRefusal(ConvertToMat(tooShort.view, CV_8UC3, matrix, {nullptr, tooShort.flags}), "source.size is 0");
  expectRefusal(ConvertToMat({0x10001, gray.data, 16, 2000000000, 2000000000, 0}, CV_16UC4, matrix),
                "source.size is 16");
  expectRefusal(ConvertToMat(ViewOfMat(cv::Mat()), CV_8UC3, matrix), "source");
  EXPECT_NE(std::string(ViewOfRows("BayerRG11", gray, 4).reason).find("unknown"), std::string::npos);
}

}  // namespace
}  // namespace LmImagingLib
