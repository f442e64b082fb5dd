#include <cmath>
#include <map>
#include <sstream>

#include "tools/tool.h"

namespace {

struct Size {
  std::size_t width, height;
  std::string Text() const { return std::to_string(width) + "x" + std::to_string(height); }
};

// Types whose frames of the scene must give the same picture, because the upper 8 bits of their samples agree: each is
// compared with the reference.
struct Kind {
  const char* reference;  // null of fewer bits than the others
  double psnr;  // that its picture of the scene must have, in decibels; what chroma sharing and demosaicing cost
};

Kind KindOf(long id) {
  const long colorSpace = id & 0x70000;
  const long format = id & 0xFFFF;
  const bool extended = format >= 0x0800;
  if (extended && format <= 0x0804) return {nullptr, format == 0x0801 ? 7.0 : format == 0x0802 ? 17.0 : 30.0};
  if (colorSpace == 0x10000) return {"0x10001", 48};  // rounded twice: each channel, and the luminance
  if (id == 0x20001 || id == 0x20A30) return {"0x20001", 36};
  if (colorSpace == 0x20000) {
    const bool bayer = extended ? format / 0x100 == 9 : format >= 0x10 && format <= 0x41;
    return bayer ? Kind{"0x20010", 18} : Kind{"0x420006", INFINITY};
  }
  if (format == 6) return {"0x440006", 26};
  if (format == 3 || format == 5 || format == 7) return {"0x440003", 55};
  return {"0x40001", 29};
}

bool IsMosaic(long id) { return KindOf(id).psnr == 18; }

bool IsInterlaced(long id) { return (id & 0x200000) != 0; }

double Psnr(const Bytes& picture, const Bytes& scene) {
  double sum = 0;
  for (std::size_t i = 0; i < scene.size(); ++i) sum += std::pow(picture[i] - scene[i], 2);
  return 10 * std::log10(255.0 * 255.0 * static_cast<double>(scene.size()) / sum);
}

Bytes ToGray(const Bytes& bgr) {
  Bytes gray;
  for (std::size_t i = 0; i < bgr.size(); i += 3) {
    const auto luminance = static_cast<std::uint8_t>((29 * bgr[i] + 150 * bgr[i + 1] + 77 * bgr[i + 2]) >> 8);
    gray.insert(gray.end(), 3, luminance);
  }
  return gray;
}

// The upper left part of a picture of 3 bytes a pixel.
Bytes Crop(const Bytes& picture, std::size_t width, const Size& part) {
  Bytes cropped;
  for (std::size_t y = 0; y < part.height; ++y) {
    const auto line = picture.begin() + static_cast<std::ptrdiff_t>(y * width * 3);
    cropped.insert(cropped.end(), line, line + static_cast<std::ptrdiff_t>(part.width * 3));
  }
  return cropped;
}

class RoundTrip : public ToolTest {
 protected:
  std::vector<std::string> Types() const {
    std::istringstream table(Run("types").output);
    std::vector<std::string> ids;
    for (std::string line; std::getline(table, line);) {
      if (line.rfind("0x", 0) == 0) ids.push_back(line.substr(0, line.find(' ')));
    }
    return ids;
  }

  // The scene as a frame of a type, converted to 24-bit BGR.
  Bytes Picture(const std::string& type, const Size& size) {
    const long id = std::stol(type, nullptr, 16);
    const std::string frame = "frame.raw --size " + size.Text() + (IsInterlaced(id) ? " --field-order bottom" : "") +
                              (IsMosaic(id) ? " --bayer BG" : "");
    RunSilently("synth " + frame + " --type " + type);
    RunSilently("convert " + frame + " picture.raw --to 0x420006 --from " + type +
                (IsMosaic(id) ? " --demosaic bilinear" : ""));
    Bytes picture = Read("picture.raw");
    EXPECT_EQ(picture.size(), size.width * size.height * 3) << type;
    picture.resize(size.width * size.height * 3);
    return picture;
  }
};

// No layout divides this size: some lose the last pixels of a line, and interlaced ones the last line. All others are
// right.
TEST_F(RoundTrip, EveryTypeShowsTheScene) {
  const Size size{239, 181};
  const Size part{236, 176};
  const std::vector<std::string> types = Types();
  ASSERT_FALSE(types.empty());
  const Bytes scene = Crop(Picture("0x420006", size), size.width, part);
  std::map<std::string, Bytes> references;
  for (const std::string& type : types) {
    const long id = std::stol(type, nullptr, 16);
    const Kind kind = KindOf(id);
    const auto picture = [&](const std::string& of) { return Crop(Picture(of, size), size.width, part); };
    const bool gray = (id & 0x70000) == 0x10000;
    const Bytes converted = picture(type);
    EXPECT_GE(Psnr(converted, gray ? ToGray(scene) : scene), kind.psnr) << type;
    if (kind.reference == nullptr) continue;
    Bytes& reference = references[kind.reference];
    if (reference.empty()) reference = picture(kind.reference);
    EXPECT_TRUE(converted == reference) << type;
  }
}

TEST_F(RoundTrip, SmallestImagesConvert) {
  for (const std::string& type : Types()) {
    Picture(type, IsMosaic(std::stol(type, nullptr, 16)) ? Size{2, 2} : Size{1, 1});
  }
}

TEST_F(RoundTrip, EveryMosaicLayoutIsThatOfTheCameraName) {
  for (const std::string layout : {"GR", "GB", "RG", "BG"}) {
    RunSilently("synth named.raw --type Bayer" + layout + "12 --size 32x24");
    RunSilently("synth told.raw --type BayerRGB12 --size 32x24 --bayer " + layout);
    EXPECT_EQ(Read("named.raw"), Read("told.raw")) << layout;
    const std::string convert = "convert named.raw --to RGB8 --demosaic bilinear --size 32x24 ";
    RunSilently(convert + "named.rgb --from Bayer" + layout + "12");
    RunSilently(convert + "told.rgb --from BayerRGB12 --bayer " + layout);
    EXPECT_EQ(Read("named.rgb"), Read("told.rgb")) << layout;
    const std::string mosaics = "--from Bayer" + layout + "12 --to Bayer" + layout + "8 --bayer " + layout;
    RunSilently("convert named.raw mosaic.raw --size 32x24 " + mosaics);
    RunSilently("synth scene.rgb --type RGB8 --size 32x24");
    EXPECT_GE(Psnr(Read("named.rgb"), Read("scene.rgb")), 14) << layout;
  }
}

TEST_F(RoundTrip, FieldsAreSortedByTheirOrder) {
  Write("fields.raw", {1, 2, 3, 4});
  RunSilently("convert fields.raw top.raw --from 0x210001 --to Mono8 --size 1x4");
  RunSilently("convert fields.raw bottom.raw --from 0x210001 --to Mono8 --size 1x4 --field-order bottom");
  EXPECT_EQ(Read("top.raw"), (Bytes{1, 3, 2, 4}));
  EXPECT_EQ(Read("bottom.raw"), (Bytes{3, 1, 4, 2}));
}

TEST_F(RoundTrip, OptionsOfYuvWinOverTheNameOfTheType) {
  RunSilently("synth frame.raw --type YUV422_8 --size 16x8");
  const auto converted = [&](const std::string& from) {
    RunSilently("convert frame.raw colors.raw --to RGB8 --size 16x8 --from " + from);
    return Read("colors.raw");
  };
  const Bytes plain = converted("YUV422_8");
  EXPECT_NE(converted("YCbCr422_8"), plain);
  EXPECT_NE(converted("YCbCr709_422_8"), plain);
  EXPECT_EQ(converted("YCbCr422_8 --yuv-range studio"), plain);
  EXPECT_EQ(converted("YCbCr709_422_8 --yuv-matrix bt601"), plain);
  EXPECT_EQ(converted("YUV422_8 --yuv-range full"), converted("YCbCr422_8"));
}

}  // namespace
