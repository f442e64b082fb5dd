#include "tools/tool.h"

namespace {

class Bmp : public ToolTest {
 protected:
  // The pixels, top row first and without padding, of a file that must hold to the letter of the format.
  static Bytes Pixels(const Bytes& file, std::uint32_t width, std::uint32_t height) {
    const std::uint32_t stride = (width * 3 + 3) / 4 * 4;
    EXPECT_EQ(file.size(), 54 + stride * height);
    if (file.size() != 54 + stride * height) return {};
    // From the size of the file on: where pixels begin, planes and bits a pixel, no compression.
    Bytes header{'B', 'M'};
    for (const std::uint32_t field :
         {54 + stride * height, 0U, 54U, 40U, width, height, 1U | 24U << 16, 0U, stride * height}) {
      for (unsigned shift = 0; shift < 32; shift += 8) header.push_back(static_cast<std::uint8_t>(field >> shift));
    }
    EXPECT_EQ(Bytes(file.begin(), file.begin() + 38), header);
    Bytes pixels;
    for (std::uint32_t y = height; y-- > 0;) {
      const auto row = file.begin() + 54 + y * stride;
      pixels.insert(pixels.end(), row, row + width * 3);
      EXPECT_EQ(Bytes(row + width * 3, row + stride), Bytes(stride - width * 3)) << "padding of width " << width;
    }
    return pixels;
  }
};

TEST_F(Bmp, EveryWidthIsReadable) {
  for (std::uint32_t width = 1; width <= 9; ++width) {
    const std::string size = std::to_string(width) + "x3";
    RunSilently("synth frame.raw --type BGR24 --size " + size);
    RunSilently("convert frame.raw picture.bmp --from BGR24 --size " + size);
    EXPECT_EQ(Pixels(Read("picture.bmp"), width, 3), Read("frame.raw")) << size;
  }
}

// Gray types of any depth show their upper 8 bits, mosaics their samples, colours their colours.
TEST_F(Bmp, ShowsWhatTheDestinationHolds) {
  struct Case {
    const char* from;
    const char* to;
    Bytes frame;
    Bytes pixel;
  };
  const Case cases[] = {{"Grayscale8", "Grayscale8", {0x12}, {0x12, 0x12, 0x12}},
                        {"Grayscale12", "Grayscale10", {0xBC, 0x0A}, {0xAB, 0xAB, 0xAB}},
                        {"Grayscale12", "Grayscale16", {0xBC, 0x0A}, {0xAB, 0xAB, 0xAB}},
                        {"0x110003", "Grayscale16", {0x00, 0xAB}, {0xAB, 0xAB, 0xAB}},
                        {"RGB24", "RGB32", {1, 2, 3}, {3, 2, 1}},
                        {"RGB24", "0x820002", {1, 2, 3}, {3, 2, 1}}};
  for (const Case& c : cases) {
    Write("frame.raw", c.frame);
    RunSilently(std::string("convert frame.raw picture.BMP --size 1x1 --from ") + c.from + " --to " + c.to);
    EXPECT_EQ(Pixels(Read("picture.BMP"), 1, 1), c.pixel) << c.from << " to " << c.to;
  }
  Write("mosaic.raw", {1, 2, 3, 4});
  RunSilently("convert mosaic.raw picture.bmp --size 2x2 --from BayerRGB8 --to BayerRGB8");
  EXPECT_EQ(Pixels(Read("picture.bmp"), 2, 2), (Bytes{1, 1, 1, 2, 2, 2, 3, 3, 3, 4, 4, 4}));
}

}  // namespace
