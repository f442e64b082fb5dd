// Pictures of pipelines, compared with those of the tool, and YUV with its equation.
#include <cmath>
#include <cstring>

#include "pipeline.h"

namespace {

class Pictures : public PipelineTest {};

constexpr char kAny[] = "application/octet-stream,width=66,height=38";

TEST_F(Pictures, HaveTheBytesOfTheTool) {
  Write("camera.json", [] {
    const std::string text =
        R"({"black": 64, "gains": [1.6, 1, 1.09], "matrix": [[1.5, -0.3, -0.2], [-0.2, 1.4, -0.2], [0, -0.5, 1.5]],)"
        R"( "tone": "srgb", "defects": true})";
    return Bytes(text.begin(), text.end());
  }());
  const std::string file = "development-file=NAME/camera.json";
  struct Case {
    std::string type, frames, element, pictures, to, options;
  };
  const Case cases[] = {
      {"BayerRG12p", kAny, "format=BayerRG12p", "RGB", "RGB8", ""},
      {"BayerRG12p", kAny, "format=bayerrg12p white-balance=gray tone=srgb n-threads=3", "BGR", "BGR8",
       "--white-balance gray --tone srgb"},
      {"BayerRG12p", kAny, "format=BayerRG12p white-balance=white black-level=9", "RGB", "RGB8",
       "--white-balance white --black 9"},
      {"BayerGB10p", kAny, "format=BayerGB10p red-gain=1.5 blue-gain=1.25 black-level=32", "GRAY16_LE", "Mono16",
       "--gain 1.5,1,1.25 --black 32"},
      {"BayerGB10p", "application/octet-stream", "format=BayerGB10p width=66 height=38 demosaic=half", "RGB", "RGB8",
       "--demosaic half"},
      {"BayerRG12Packed", kAny, "format=BayerRG12Packed " + file, "RGB", "RGB8", "--development camera.json"},
      {"BayerRG12p", kAny, "format=BayerRG12p tone=2.2 demosaic=bilinear blue-gain=2 " + file, "GRAY8", "Mono8",
       "--development camera.json --tone 2.2 --demosaic bilinear --gain 1.6,1,2"},
      {"BayerGR12", "video/x-bayer,format=grbg12le,width=66,height=38", "demosaic=mhc", "BGR", "BGR8",
       "--demosaic mhc"},
      {"BayerBG8", "video/x-bayer,format=bggr,width=66,height=38", "demosaic=block", "RGB", "RGB8",
       "--demosaic block"},  // without padding, though lines of 68 bytes are usual
      {"BayerRG10", "video/x-bayer,format=rggb,width=66,height=38", "format=BayerRG10", "RGB", "RGB8", ""},
      {"Mono12p", kAny, "format=Mono12p", "GRAY16_LE", "Mono16", ""},
      {"Mono8", "video/x-raw,format=GRAY8,width=66,height=38", "", "RGB", "RGB8", ""},
      {"RGB8", kAny, "format=RGB8 red-gain=1.5", "BGR", "BGR8", "--gain 1.5,1,1"},
      {"YUV422_8", "video/x-raw,format=YUY2,width=66,height=38,colorimetry=bt709", "", "RGB", "RGB8",
       "--yuv-matrix bt709"},
  };
  for (const Case& c : cases) {
    Run("synth in.raw --size 66x38 --type " + c.type);
    const ToolResult run =
        Run("convert in.raw tool.raw --size 66x38 --from " + c.type + " --to " + c.to + " " + c.options);
    ASSERT_EQ(run.exitCode, 0) << run.output;
    const Bytes expected = Read("tool.raw");
    const Bytes made = Convert(c.frames, c.element, "format=" + c.pictures);
    const std::size_t lines = c.options == "--demosaic half" ? 19 : 38;
    const std::size_t line = expected.size() / lines;
    const std::size_t padded = (line + 3) / 4 * 4;  // lines of pictures begin at multiples of four bytes
    ASSERT_EQ(made.size(), padded * lines) << c.type << " " << c.element;
    for (std::size_t y = 0; y < lines; ++y) {
      ASSERT_EQ(std::memcmp(&made[y * padded], &expected[y * line], line), 0) << c.type << " " << c.element << " " << y;
    }
  }
}

TEST_F(Pictures, AreOpaque) {
  Run("synth in.raw --size 66x38 --type BayerRG12p");
  const Bytes rgb = Convert(kAny, "format=BayerRG12p", "format=RGB");
  const Bytes bytes = Convert(kAny, "format=BayerRG12p", "format=RGBA");
  const Bytes words = Convert(kAny, "format=BayerRG12p", "format=RGBA64_LE");
  Run("convert in.raw tool.raw --size 66x38 --from BayerRG12p --to 0x20005");
  const Bytes tool = Read("tool.raw");
  const Bytes alphaFirst = Convert(kAny, "format=BayerRG12p", "format=ARGB64");
  ASSERT_EQ(alphaFirst.size(), 66U * 38 * 8);
  for (std::size_t i = 0; i < 66U * 38; ++i) {
    const std::uint8_t* const pixel = &rgb[i / 66 * 200 + i % 66 * 3];
    ASSERT_EQ(bytes[4 * i + 3], 255);
    ASSERT_EQ(std::memcmp(&bytes[4 * i], pixel, 3), 0);
    ASSERT_EQ(std::memcmp(&words[8 * i], &tool[8 * i], 6), 0);
    ASSERT_EQ(words[8 * i + 6] & words[8 * i + 7], 255);
    ASSERT_EQ(std::memcmp(&alphaFirst[8 * i], &words[8 * i + 6], 2), 0);
    ASSERT_EQ(std::memcmp(&alphaFirst[8 * i + 2], &words[8 * i], 6), 0);
  }
  Write("in.raw", {1, 2, 3, 4});  // the last byte means nothing
  EXPECT_EQ(Convert("video/x-raw,format=RGBx,width=1,height=1", "", "format=RGBA"), (Bytes{1, 2, 3, 255}));
  EXPECT_EQ(Convert("video/x-raw,format=RGBA,width=1,height=1", "", "format=RGBA"), (Bytes{1, 2, 3, 4}));
}

// The equation of yuv.h, in halves of a unit less than a rounding error.
struct Equation {
  double kr, kb, offset, range, chroma;

  double Y(const double (&c)[3]) const { return kr * c[0] + (1 - kr - kb) * c[1] + kb * c[2]; }
  std::uint8_t Luma(const double (&c)[3]) const { return Rounded(offset + range * Y(c) / 255); }
  std::uint8_t Cb(const double (&c)[3]) const { return Rounded(128 + chroma * (c[2] - Y(c)) / (2 - 2 * kb) / 255); }
  std::uint8_t Cr(const double (&c)[3]) const { return Rounded(128 + chroma * (c[0] - Y(c)) / (2 - 2 * kr) / 255); }
  static std::uint8_t Rounded(double value) {
    return static_cast<std::uint8_t>(std::min(std::floor(value + 0.5 + 1e-7), 255.0));
  }
};

TEST_F(Pictures, HaveTheEquationOfYuv) {
  struct Case {
    const char* colorimetry;
    Equation equation;
  };
  constexpr Case kCases[] = {{"bt601", {0.299, 0.114, 16, 219, 224}},
                             {"bt709", {0.2126, 0.0722, 16, 219, 224}},
                             {"1:4:0:0", {0.299, 0.114, 0, 255, 255}},
                             {"1:3:5:1", {0.2126, 0.0722, 0, 255, 255}}};
  constexpr std::size_t kWidth = 1031, kHeight = 35;  // odd, and more than a strip
  constexpr std::size_t kLine = 3096;
  Bytes rgb(kLine * kHeight);
  std::uint32_t random = 1;
  for (std::uint8_t& value : rgb) {  // among them many of the least and the greatest
    random = random * 1664525 + 1013904223;
    value = random >> 30 == 0 ? (random >> 29 & 1U ? 255 : 0) : static_cast<std::uint8_t>(random >> 20);
  }
  Write("in.raw", rgb);
  const auto mean = [&](std::size_t x, std::size_t y, std::size_t lines, double(&color)[3]) {
    for (std::size_t k = 0; k < 3; ++k) {
      double sum = 0;
      for (std::size_t i = 0; i < 2 * lines; ++i) {
        const std::size_t column = std::min(x + i % 2, kWidth - 1);
        sum += rgb[std::min(y + i / 2, kHeight - 1) * kLine + 3 * column + k];
      }
      color[k] = sum / static_cast<double>(2 * lines);
    }
  };
  for (const Case& c : kCases) {
    const std::string size = "width=1031,height=35";
    const std::string code = std::string(",colorimetry=") + c.colorimetry;
    const Bytes i420 = Convert("video/x-raw,format=RGB," + size, "", "format=I420" + code);
    const Bytes nv12 = Convert("video/x-raw,format=RGB," + size, "", "format=NV12" + code);
    const Bytes yuy2 = Convert("video/x-raw,format=RGB," + size, "", "format=YUY2" + code);
    constexpr std::size_t kY = 1032, kC = 516, kUV = 1032, kYUY2 = 2064;
    constexpr std::size_t kPlane = kY * 36, kHalf = kC * 18;
    ASSERT_EQ(i420.size(), kPlane + 2 * kHalf);
    ASSERT_EQ(nv12.size(), kPlane + kUV * 18);
    ASSERT_EQ(yuy2.size(), kYUY2 * kHeight);
    std::size_t wrong = 0;
    for (std::size_t y = 0; y < kHeight; ++y) {
      for (std::size_t x = 0; x < kWidth; ++x) {
        const std::uint8_t* const p = &rgb[y * kLine + 3 * x];
        const double color[3] = {1.0 * p[0], 1.0 * p[1], 1.0 * p[2]};
        const std::uint8_t luma = c.equation.Luma(color);
        wrong += i420[y * kY + x] != luma || nv12[y * kY + x] != luma || yuy2[y * kYUY2 + 2 * x] != luma;
        if (x % 2 != 0) continue;
        double two[3], four[3];
        mean(x, y, 1, two);
        wrong += yuy2[y * kYUY2 + 2 * x + 1] != c.equation.Cb(two) || yuy2[y * kYUY2 + 2 * x + 3] != c.equation.Cr(two);
        if (y % 2 != 0) continue;
        mean(x, y, 2, four);
        const std::size_t at = y / 2 * kC + x / 2;
        wrong += i420[kPlane + at] != c.equation.Cb(four) || i420[kPlane + kHalf + at] != c.equation.Cr(four);
        wrong += nv12[kPlane + y / 2 * kUV + x] != c.equation.Cb(four) ||
                 nv12[kPlane + y / 2 * kUV + x + 1] != c.equation.Cr(four);
      }
    }
    EXPECT_EQ(wrong, 0U) << c.colorimetry;
  }
}

// Bars that went through a mosaic, the element, an encoder and a decoder have their colours.
TEST_F(Pictures, AreEncodedAndDecoded) {
  const PipelineResult result = Launch(
      "videotestsrc num-buffers=2 ! video/x-bayer,format=gbrg,width=448,height=256,framerate=30/1 ! lmimagingconvert ! "
      "theoraenc quality=60 ! theoradec ! videoconvert ! video/x-raw,format=RGB ! filesink location=NAME/out.raw");
  if (result.error.find("no element") != std::string::npos) GTEST_SKIP() << result.error;
  ASSERT_EQ(result.error, "");
  const Bytes rgb = Read("out.raw");
  ASSERT_EQ(rgb.size(), 2U * 448 * 256 * 3);
  constexpr int kBars[7][3] = {{255, 255, 255}, {255, 255, 0}, {0, 255, 255}, {0, 255, 0},
                               {255, 0, 255},   {255, 0, 0},   {0, 0, 255}};
  for (std::size_t bar = 0; bar < 7; ++bar) {
    for (std::size_t k = 0; k < 3; ++k) {
      EXPECT_NEAR(rgb[(80 * 448 + 64 * bar + 32) * 3 + k], kBars[bar][k], 8) << bar;
    }
  }
}

}  // namespace
