#include "LmImagingLib/PFNC.h"

#include <gtest/gtest.h>

#include <map>
#include <sstream>
#include <string>

#include "LmImagingLib/Image.h"
#include "LmImagingLib/PixelConverter.h"
#include "LmImagingLib/PixelTypeFactory.h"

namespace LmImagingLib {
namespace {

// The codes are the convention's own and can only be checked against it.
constexpr char kCodes[] =
    R"(Mono8 01080001  Mono8s 01080002  Mono10 01100003  Mono10Packed 010C0004  Mono12 01100005  Mono12Packed 010C0006
Mono12p 010C0047  Mono14 01100025  Mono16 01100007  BayerGR8 01080008  BayerRG8 01080009  BayerGB8 0108000A
BayerBG8 0108000B  BayerGR10 0110000C  BayerRG10 0110000D  BayerGB10 0110000E  BayerBG10 0110000F
BayerGR12 01100010  BayerRG12 01100011  BayerGB12 01100012  BayerBG12 01100013  BayerGR14 01100109
BayerRG14 0110010A  BayerGB14 0110010B  BayerBG14 0110010C  BayerGR16 0110002E  BayerRG16 0110002F
BayerGB16 01100030  BayerBG16 01100031  BayerGR10Packed 010C0026  BayerRG10Packed 010C0027
BayerGB10Packed 010C0028  BayerBG10Packed 010C0029  BayerGR12Packed 010C002A  BayerRG12Packed 010C002B
BayerGB12Packed 010C002C  BayerBG12Packed 010C002D  BayerGR12p 010C0057  BayerRG12p 010C0059
BayerGB12p 010C0055  BayerBG12p 010C0053  RGB8 02180014  BGR8 02180015  RGBa8 02200016  BGRa8 02200017
RGB10 02300018  BGR10 02300019  RGB12 0230001A  BGR12 0230001B  RGB16 02300033  RGBa10 0240005F  RGBa12 02400061
RGBa16 02400064  RGB12V1Packed 02240034  BGR565p 02100036  RGB8_Planar 02180021  RGB10_Planar 02300022
RGB12_Planar 02300023  RGB16_Planar 02300024  YUV411_8_UYYVYY 020C001E  YUV422_8_UYVY 0210001F
YUV422_8 02100032  YUV8_UYV 02180020  YCbCr601_8_CbYCr 0218003D  YCbCr601_411_8_CbYYCrYY 020C003F
YCbCr601_422_8 0210003E  YCbCr601_422_8_CbYCrY 02100044)";

TEST(PFNC, CodesAndNamesLeadToTheSameFormat) {
  std::map<std::string, std::uint32_t> codes, expected;
  std::istringstream text(kCodes);
  std::string name;
  std::uint32_t code = 0;
  while (text >> name >> std::hex >> code) expected.emplace(name, code);
  for (std::size_t i = 0; const PFNCFormat* const format = EnumPFNC(i); ++i) {
    codes.emplace(format->name, format->code);
    EXPECT_EQ(FindPFNC(format->code).format, format) << format->name;
    EXPECT_EQ(FindPFNC(format->name).format, format) << format->name;
    EXPECT_EQ(FindPFNC(format->code).reason, nullptr) << format->name;
  }
  EXPECT_EQ(codes, expected);
}

TEST(PFNC, FormatsHaveTheSizeAndTheLayoutThatTheirCodesTell) {
  constexpr unsigned kColor = 2;
  for (std::size_t i = 0; const PFNCFormat* const format = EnumPFNC(i); ++i) {
    ASSERT_TRUE(PixelTypeFactory::HasPixelType(format->type)) << format->name;
    const unsigned bitsPerPixel = format->code >> 16 & 0xFF;
    EXPECT_EQ(RequiredSize(format->type, 8, 4), 8 * 4 * bitsPerPixel / 8) << format->name;
    const bool mosaic = PixelTypeFactory::FindPixelType(format->type)->IsBayerPattern();
    const bool color = (format->type & kColorSpaceMask) != kColorSpaceGrayscale && !mosaic;
    EXPECT_EQ(format->code >> 24 == kColor, color) << format->name;
    EXPECT_EQ(std::string(format->name).rfind("Bayer", 0) == 0, mosaic) << format->name;
    EXPECT_EQ(format->flags != 0, mosaic) << format->name;
    // The way back announces the same pixels, if perhaps under another standard's name.
    const PFNCFormat* const back = FindPFNC(format->type, format->flags);
    ASSERT_NE(back, nullptr) << format->name;
    EXPECT_EQ(back->type, format->type) << format->name;
    EXPECT_EQ(back->flags, format->flags) << format->name;
  }
}

TEST(PFNC, MeansTheTypesOfTheirLayout) {
  const struct {
    const char* name;
    PixelTypeID type;
    unsigned long flags;
  } cases[] = {{"Mono10Packed", 0x10008, 0},
               {"Mono12Packed", 0x10009, 0},
               {"Mono12p", 0x410003, 0},
               {"BayerRG12Packed", 0x20040, ConversionFlags::kBayerRG},
               {"BayerGB10Packed", 0x20041, ConversionFlags::kBayerGB},
               {"BayerBG12p", 0x420012, ConversionFlags::kBayerBG},
               {"BayerGR16", 0x20020, ConversionFlags::kBayerGR},
               {"RGB8", 0x420002, 0},
               {"BGR8", 0x420006, 0},
               {"BGRa8", 0x20007, 0},
               {"BGR12", 0x20043, 0},
               {"BGR565p", 0x20001, 0},
               {"RGB16_Planar", 0x820004, 0},
               {"YUV422_8", 0x40001, 0},
               {"YUV422_8_UYVY", 0x40008, 0},
               {"YCbCr601_411_8_CbYYCrYY", 0x440006, 0},
               // older names
               {"Mono8Signed", 0x10401, 0},
               {"BGR8Packed", 0x420006, 0},
               {"RGB12Planar", 0x82000C, 0},
               {"YUV422Packed", 0x40008, 0},
               {"YUV422_YUYV_Packed", 0x40001, 0},
               {"YUV444Packed", 0x440007, 0},
               {"BGR565Packed", 0x20001, 0},
               {"BGR10V1Packed", 0x20044, 0},
               {"BGR10V2Packed", 0x20045, 0}};
  for (const auto& c : cases) {
    const PFNCResult found = FindPFNC(c.name);
    ASSERT_TRUE(found) << c.name;
    EXPECT_EQ(found.format->type, c.type) << c.name;
    EXPECT_EQ(found.format->flags, c.flags) << c.name;
  }
}

TEST(PFNC, RefusesWhatWouldSwapRedAndBlue) {
  for (const PFNCResult& found : {FindPFNC(0x0220001C), FindPFNC(0x0220001D), FindPFNC("RGB10V1Packed"),
                                  FindPFNC("RGB10p32"), FindPFNC("RGB10V2Packed")}) {
    EXPECT_FALSE(found);
    ASSERT_NE(found.reason, nullptr);
    EXPECT_NE(std::string(found.reason).find("swapped"), std::string::npos);
  }
  // These would be announced with the codes above.
  EXPECT_EQ(FindPFNC(0x20044, 0), nullptr);
  EXPECT_EQ(FindPFNC(0x20045, 0), nullptr);
}

TEST(PFNC, ReportsEverythingElseAsUnknown) {
  for (const char* const name :
       {"Mono10p", "Mono14p", "BayerRG10p", "BayerRG14p", "RGB10p", "RGB12p", "RGB565p", "YCbCr8", "YCbCr422_8",
        "YCbCr411_8", "YCbCr709_422_8", "BGR16", "mono8", " Mono8", "Mono8 ", "Mono", ""}) {
    const PFNCResult found = FindPFNC(name);
    EXPECT_FALSE(found) << name;
    ASSERT_NE(found.reason, nullptr) << name;
    EXPECT_NE(std::string(found.reason).find("unknown"), std::string::npos) << name;
  }
  for (const std::uint32_t code : {0x010A0046U, 0x010E0104U, 0x02100035U, 0x0210003BU, 0U, ~0U}) {
    EXPECT_FALSE(FindPFNC(code)) << code;
  }
  EXPECT_FALSE(FindPFNC(nullptr));
}

TEST(PFNC, AnnouncesTypesByTheirLayout) {
  const auto name = [](PixelTypeID type, unsigned long flags) {
    const PFNCFormat* const format = FindPFNC(type, flags);
    return std::string(format != nullptr ? format->name : "none");
  };
  EXPECT_EQ(name(0x20012, ConversionFlags::kBayerBG | ConversionFlags::kBilinear), "BayerBG12");
  EXPECT_EQ(name(0x20012, 0), "BayerGR12");
  EXPECT_EQ(name(0x20012, ConversionFlags::kBayerBG | ConversionFlags::kBayerRG), "none");
  EXPECT_EQ(name(0x10001, ConversionFlags::kBayerBG), "Mono8");
  EXPECT_EQ(name(0x40008, 0), "YUV422_8_UYVY");
  for (const PixelTypeID type : {0x20002, 0x2000A, 0x42000A}) EXPECT_EQ(name(type, 0), "RGB8");
  EXPECT_EQ(name(0x120005, 0), "RGBa16");
  for (const PixelTypeID type : {0x110002, 0x410002, 0x210001, 0x1010001, 0x120011, 0x440003, 0x31337}) {
    EXPECT_EQ(name(type, 0), "none") << type;
  }
}

}  // namespace
}  // namespace LmImagingLib
