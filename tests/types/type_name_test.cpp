#include "types/type_name.h"

#include <gtest/gtest.h>

namespace LmImagingLib {
namespace {

TEST(TypeName, TellsWhatTheIdAndTheTypeSay) {
  const struct {
    PixelTypeID id;
    PixelType type;
    const char* name;
  } cases[] = {
      {0x10001, Grayscale8(), "Grayscale8-bits"},
      {0x210001, Grayscale8(), "Grayscale8-bits, Interlaced"},
      {0x1010002, Grayscale10(), "Grayscale10-bits, Dual Left+Right output"},
      {0x2110002, Grayscale10(), "Grayscale10-bits, Normalized, Dual Left+Right Inverted output"},
      {0x4010002, Grayscale10(), "Grayscale10-bits, Dual Left Inverted+Right output"},
      {0x8610003, Grayscale12(), "Grayscale12-bits, Interlaced, Packed, Dual Left Inverted+Right Inverted output"},
      {0x10010001, Grayscale8(), "Grayscale8-bits, Dual Lines output"},
      {0x120011, BayerRGB10(), "Bayer RGB10-bits, Normalized"},
      {0x20020, BayerRGB16(), "Bayer RGB14-bits"},
      {0x820004, RGB48(), "RGB48-bits, Planar"},
      {0x20001, BayerRGB8(), "Bayer RGB8-bits"},  // a mosaic is a matter of the type, not of the id
      {0x20010, BayerRGB8(0x10001), "RGB8-bits"},
      {0x10001, BayerRGB8(), "Grayscale8-bits"},
      {0xF40001, YUV8(), "YUV16-bits, Normalized, Interlaced, Packed, Planar"},
      {0x3010001, Grayscale8(), "Grayscale8-bits"},  // two modes at once are none
      {0x1F010001, Grayscale8(), "Grayscale8-bits"},
      {0xE0090001, Grayscale8(), "Grayscale8-bits"},  // bits that mean nothing
      {0x00001, Grayscale8(), "Unknown Colorspace8-bits"},
      {0x30001, BayerRGB8(), "Unknown Colorspace8-bits"},
      {0x50001, Grayscale8(), "Unknown Colorspace8-bits"},
      {0x60001, Grayscale8(), "Unknown Colorspace8-bits"},
      {0x470001, Grayscale8(), "Unknown Colorspace8-bits, Packed"},
      {0x10001, PixelType(0x10001, 0, 1, false), "Grayscale0-bits"},
      {0x10001, PixelType(0x10001, 65535, 1, false), "Grayscale65535-bits"},
      {0x7FFFFFFF00010001, Grayscale8(), "Grayscale8-bits"},
      {-0x100000000 + 0x40001, YUV8(), "YUV16-bits"},
  };
  for (const auto& c : cases) EXPECT_EQ(ComposeTypeName(c.id, c.type), c.name) << std::hex << "0x" << c.id;
}

}  // namespace
}  // namespace LmImagingLib
