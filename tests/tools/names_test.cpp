#include <gtest/gtest.h>

#include "LmImagingLib/Extended.h"
#include "LmImagingLib/PixelConverter.h"
#include "error.h"
#include "named_type.h"

namespace {

using namespace LmImagingLib::ConversionFlags;

TEST(NamedTypes, AreFoundByCamerasNamesFirst) {
  LmImagingLib::RegisterExtendedFormats();
  const struct {
    const char* text;
    LmImagingLib::PixelTypeID id;
    unsigned long mosaic, yuv;
  } cases[] = {{"BayerRG10p", 0x42090A, kBayerRG, 0},
               {"bayerrg10P", 0x42090A, kBayerRG, 0},
               {"Mono10Packed", 0x10008, 0, 0},
               {"RGB16", 0x20004, 0, 0},  // the camera's, not the class's
               {"RGB565", 0x20001, 0, 0},
               {"RGB16-bits", 0x20001, 0, 0},
               {"grayscale8", 0x10001, 0, 0},
               {"BayerRGB10", 0x20011, 0, 0},
               {"Bayer10 (CSI-2)", 0x42094A, 0, 0},
               {"0x0220001D", 0x20A20, 0, 0},
               {"0x20A20", 0x20A20, 0, 0},
               {"0x010C002D", 0x20040, kBayerBG, 0},
               {"35127316", 0x420002, 0, 0},
               {"YCbCr422_8", 0x40001, 0, kFullRange},
               {"YCbCr709_8_CbYCr", 0x440007, 0, kBT709},
               {"pGAA", 0x42094A, kBayerGB, 0},  // two fourccs that the case of a letter tells apart
               {"pgAA", 0x42094A, kBayerGR, 0},
               {"PRCC", 0x42094C, kBayerRG, 0},
               {"BA12", 0x20012, kBayerGR, 0},
               {"BYR2", 0x20020, kBayerBG, 0},
               {"Y14P", 0x41084E, 0, 0},
               {"grey", 0x10001, 0, 0},
               {"UYVY", 0x40008, 0, 0}};
  for (const auto& c : cases) {
    const LmTool::NamedType found = LmTool::FindNamedType("TYPE", c.text);
    EXPECT_EQ(found.id, c.id) << c.text;
    EXPECT_EQ(found.mosaic, c.mosaic) << c.text;
    EXPECT_EQ(found.yuv, c.yuv) << c.text;
  }
}

TEST(NamedTypes, SuggestNoTypeThatLeavesTheLayoutToBeGuessed) {
  LmImagingLib::RegisterExtendedFormats();
  for (const char* const text : {"BayerRGB10x", "bayer10pp", "BayerRGB", "Bayer RGB8"}) {
    try {
      LmTool::FindNamedType("TYPE", text);
      ADD_FAILURE() << text;
    } catch (const LmTool::ToolError& error) {
      const std::string message = error.what();
      EXPECT_NE(message.find("did you mean 'Bayer"), std::string::npos) << message;
      const std::string hints = message.substr(message.find("did you mean"));
      for (const char* const guess : {"'BayerRGB", "'Bayer RGB", "'Bayer10p'"}) {
        EXPECT_EQ(hints.find(guess), std::string::npos) << message;
      }
    }
  }
}

}  // namespace
