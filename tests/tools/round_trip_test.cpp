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
  const char* reference;
  double psnr;  // that its picture of the scene must have, in decibels; what chroma sharing and demosaicing cost
};

Kind KindOf(long id) {
  const long colorSpace = id & 0x70000;
  const long format = id & 0xFFFF;
  if (colorSpace == 0x10000) return {"0x10001", 48};  // rounded twice: each channel, and the luminance
  if (id == 0x20001) return {"0x20001", 36};
  if (colorSpace == 0x20000) {
    const bool bayer = format >= 0x10 && format <= 0x41;
    return bayer ? Kind{"0x20010", 18} : Kind{"0x420006", INFINITY};
  }
  if (format == 6) return {"0x440006", 29};
  if (format == 3 || format == 5 || format == 7) return {"0x440003", 55};
  return {"0x40001", 40};
}

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
  Bytes Picture(const std::string& type, const Size& size, const std::string& layout, const std::string& demosaic) {
    RunSilently("synth frame.raw --type " + type + " --size " + size.Text() + layout);
    RunSilently("convert frame.raw picture.raw --from " + type + " --to 0x420006 --size " + size.Text() + layout +
                " --demosaic " + demosaic);
    Bytes picture = Read("picture.raw");
    EXPECT_EQ(picture.size(), size.width * size.height * 3) << type;
    picture.resize(size.width * size.height * 3);
    return picture;
  }
};

TEST_F(RoundTrip, EveryTypeShowsTheScene) {
  const Size size{240, 180};
  const Bytes scene = Picture("0x420006", size, "", "block");
  const std::vector<std::string> types = Types();
  EXPECT_EQ(types.size(), 155U);
  std::map<std::string, Bytes> references;
  for (const std::string& type : types) {
    const long id = std::stol(type, nullptr, 16);
    const Kind kind = KindOf(id);
    const Bytes picture = Picture(type, size, " --bayer BG --field-order bottom", "bilinear");
    const bool gray = (id & 0x70000) == 0x10000;
    EXPECT_GE(Psnr(picture, gray ? ToGray(scene) : scene), kind.psnr) << type;
    Bytes& reference = references[kind.reference];
    if (reference.empty()) reference = Picture(kind.reference, size, " --bayer BG", "bilinear");
    EXPECT_TRUE(picture == reference) << type;
  }
}

// No layout divides these sizes: the last pixels of a line and the last line of an interlaced image are lost to some,
// the others are right.
TEST_F(RoundTrip, OddSizesKeepAllWholeGroups) {
  for (const Size& size : {Size{14, 7}, Size{15, 9}}) {
    const Size whole{12, size.height - 1};
    std::map<std::string, Bytes> references;
    for (const std::string& type : Types()) {
      const std::string kind = KindOf(std::stol(type, nullptr, 16)).reference;
      Bytes& reference = references[kind];
      if (reference.empty()) reference = Crop(Picture(kind, size, "", "block"), size.width, whole);
      EXPECT_EQ(Crop(Picture(type, size, "", "block"), size.width, whole), reference) << type << " " << size.Text();
    }
  }
}

TEST_F(RoundTrip, SmallestImagesConvert) {
  for (const std::string& type : Types()) {
    const bool mosaic = KindOf(std::stol(type, nullptr, 16)).psnr == 18;  // takes two lines of two pixels
    Picture(type, mosaic ? Size{2, 2} : Size{1, 1}, "", "bilinear");
    Picture(type, {3, 2}, "", "bilinear");
  }
}

TEST_F(RoundTrip, EveryMosaicLayoutGivesTheSameColours) {
  const Size size{32, 24};
  const Bytes scene = Picture("0x420006", size, "", "block");
  for (const char* const option : {" --bayer GR", " --bayer GB", " --bayer RG", " --bayer BG"}) {
    EXPECT_GE(Psnr(Picture("BayerRGB12", size, option, "bilinear"), scene), 14) << option;
  }
}

// A frame copied to its own type holds the same pixels, of interlaced types with the lines in order.
TEST_F(RoundTrip, CopiesKeepTheFrame) {
  for (const std::string type : {"RGB24", "Grayscale12_Packed_GEV", "YUV8_411", "0x82000B", "RGB12PackedV1"}) {
    RunSilently("synth frame.raw --type " + type + " --size 22x10");
    RunSilently("convert frame.raw copy.raw --size 22x10 --from " + type + " --to " + type);
    EXPECT_EQ(Read("copy.raw"), Read("frame.raw")) << type;
  }
  RunSilently("synth fields.raw --type 0x640006 --size 22x10");
  RunSilently("convert fields.raw lines.raw --size 22x10 --from 0x640006 --to 0x640006");
  RunSilently("synth progressive.raw --type 0x440006 --size 22x10");
  EXPECT_EQ(Read("lines.raw"), Read("progressive.raw"));
}

TEST_F(RoundTrip, WhiteBalanceScalesAndShiftsChannels) {
  Write("pixel.raw", {10, 20, 200});
  RunSilently("convert pixel.raw out.raw --from RGB24 --to RGB24 --size 1x1");
  EXPECT_EQ(Read("out.raw"), (Bytes{10, 20, 200}));
  RunSilently("convert pixel.raw out.raw --from RGB24 --to 0x420006 --size 1x1 --gain 1.5,1,2 --offset 3,0,0");
  EXPECT_EQ(Read("out.raw"), (Bytes{255, 20, 18}));
}

}  // namespace
