#include "LmImagingLib/PFNC.h"

#include <gtest/gtest.h>

#include <cctype>
#include <map>
#include <sstream>
#include <string>

#include "LmImagingLib/Extended.h"
#include "LmImagingLib/Image.h"
#include "LmImagingLib/PixelConverter.h"
#include "LmImagingLib/PixelTypeFactory.h"

namespace LmImagingLib {
namespace {

using namespace std::string_literals;

// The codes are the convention's own and can only be checked against it.
constexpr char kCodes[] =
    R"(Mono1p 01010037  Mono2p 01020038  Mono4p 01040039  Mono8 01080001  Mono8s 01080002  Mono10 01100003
Mono10Packed 010C0004  Mono10p 010A0046  Mono12 01100005  Mono12Packed 010C0006  Mono12p 010C0047  Mono14 01100025
Mono14p 010E0104  Mono16 01100007  BayerGR8 01080008  BayerRG8 01080009  BayerGB8 0108000A  BayerBG8 0108000B
BayerGR10 0110000C  BayerRG10 0110000D  BayerGB10 0110000E  BayerBG10 0110000F  BayerGR10Packed 010C0026
BayerRG10Packed 010C0027  BayerGB10Packed 010C0028  BayerBG10Packed 010C0029  BayerGR10p 010A0056  BayerRG10p 010A0058
BayerGB10p 010A0054  BayerBG10p 010A0052  BayerGR12 01100010  BayerRG12 01100011  BayerGB12 01100012  BayerBG12 01100013
BayerGR12Packed 010C002A  BayerRG12Packed 010C002B  BayerGB12Packed 010C002C  BayerBG12Packed 010C002D
BayerGR12p 010C0057  BayerRG12p 010C0059  BayerGB12p 010C0055  BayerBG12p 010C0053  BayerGR14 01100109
BayerRG14 0110010A  BayerGB14 0110010B  BayerBG14 0110010C  BayerGR14p 010E0105  BayerRG14p 010E0106
BayerGB14p 010E0107  BayerBG14p 010E0108  BayerGR16 0110002E  BayerRG16 0110002F  BayerGB16 01100030  BayerBG16 01100031
RGB8 02180014  BGR8 02180015  RGBa8 02200016  BGRa8 02200017  RGB10 02300018  BGR10 02300019  RGB12 0230001A
BGR12 0230001B  RGB16 02300033  BGR16 0230004B  RGBa10 0240005F  RGBa12 02400061  RGBa16 02400064  BGRa16 02400051
RGB10p 021E005C  BGR10p 021E0048  RGB12p 0224005D  BGR12p 02240049  RGB10V1Packed 0220001C  RGB10p32 0220001D
RGB12V1Packed 02240034  RGB565p 02100035  BGR565p 02100036  RGB8_Planar 02180021  RGB10_Planar 02300022
RGB12_Planar 02300023  RGB16_Planar 02300024  YUV411_8_UYYVYY 020C001E  YUV422_8_UYVY 0210001F  YUV422_8 02100032
YUV8_UYV 02180020  YCbCr8 0218005B  YCbCr8_CbYCr 0218003A  YCbCr411_8_CbYYCrYY 020C003C  YCbCr422_8 0210003B
YCbCr422_8_CbYCrY 02100043  YCbCr601_8_CbYCr 0218003D  YCbCr601_411_8_CbYYCrYY 020C003F  YCbCr601_422_8 0210003E
YCbCr601_422_8_CbYCrY 02100044  YCbCr709_8_CbYCr 02180040  YCbCr709_411_8_CbYYCrYY 020C0042  YCbCr709_422_8 02100041
YCbCr709_422_8_CbYCrY 02100045)";

// Images that no pixel type has.
constexpr char kUnsupported[] =
    R"(RGB14 0230005E  BGR14 0230004A  BGRa10 0240004C  BGRa12 0240004E  RGBa14 02400063  BGRa14 02400050
YCbCr411_8 020C005A  YCbCr420_8_YY_CbCr_Semiplanar 020C0112  YCbCr422_8_YY_CbCr_Semiplanar 02100113)";

std::map<std::string, std::uint32_t> Codes(const char* list) {
  std::map<std::string, std::uint32_t> codes;
  std::istringstream text(list);
  std::string name;
  while (text >> name) text >> std::hex >> codes[name];
  return codes;
}

// Some formats, their types and their flags; the last ones by older names.
constexpr char kTypes[] =
    R"(Mono10Packed 10008 0  Mono12Packed 10009 0  Mono12p 410003 0  BayerRG12Packed 20040 40  BayerGB10Packed 20041 20
BayerBG12p 420012 80  BayerGR16 20020 10  RGB8 420002 0  BGR8 420006 0  BGRa8 20007 0  BGR12 20043 0
BGR565p 20001 0  RGB16_Planar 820004 0  YUV422_8 40001 0  YUV422_8_UYVY 40008 0
YCbCr601_411_8_CbYYCrYY 440006 0  YCbCr8 440003 4000  YCbCr8_CbYCr 440007 4000  YCbCr422_8 40001 4000
YCbCr709_422_8_CbYCrY 40008 8000  Mono4p 410804 0  Mono10p 41080A 0  BayerGB14p 42090E 20  BGR10p 420A1A 0
RGB12p 420A0C 0  RGB10p32 20A20 0  RGB10V1Packed 20A21 0  RGB565p 20A30 0  BGRa16 20A41 0  Mono8Signed 10401 0
BGR8Packed 420006 0  RGB12Planar 82000C 0  YUV422Packed 40008 0  YUV422_YUYV_Packed 40001 0
YUV444Packed 440007 0  BGR565Packed 20001 0  Mono1Packed 410801 0  RGB10V2Packed 20A20 0  BGR10V1Packed 20044 0
BGR10V2Packed 20045 0)";

class PFNC : public testing::Test {
 protected:
  PFNC() { RegisterExtendedFormats(); }
};

TEST_F(PFNC, CodesAndNamesLeadToTheSameFormat) {
  for (const auto& [name, code] : Codes(kUnsupported)) {
    for (const PFNCResult& found : {FindPFNC(code), FindPFNC(name.c_str())}) {
      EXPECT_FALSE(found) << name;
      EXPECT_EQ(std::string(found.reason).rfind("the format is not supported: it is ", 0), 0u) << found.reason;
    }
  }
  std::map<std::string, std::uint32_t> codes;
  for (std::size_t i = 0; const PFNCFormat* const format = EnumPFNC(i); ++i) {
    codes.emplace(format->name, format->code);
    std::string otherCase = format->name;
    for (char& c : otherCase) c = static_cast<char>(std::isupper(c) != 0 ? std::tolower(c) : std::toupper(c));
    EXPECT_EQ(FindPFNC(format->code).format, format) << format->name;
    EXPECT_EQ(FindPFNC(format->name).format, format) << format->name;
    EXPECT_EQ(FindPFNC(otherCase.c_str()).format, format) << format->name;
    EXPECT_EQ(FindPFNC(format->code).reason, nullptr) << format->name;
  }
  EXPECT_EQ(codes, Codes(kCodes));
}

TEST_F(PFNC, FormatsHaveTheSizeAndTheLayoutThatTheirCodesTell) {
  constexpr unsigned kColor = 2;
  for (std::size_t i = 0; const PFNCFormat* const format = EnumPFNC(i); ++i) {
    ASSERT_TRUE(PixelTypeFactory::HasPixelType(format->type)) << format->name;
    const unsigned bitsPerPixel = format->code >> 16 & 0xFF;
    EXPECT_EQ(RequiredSize(format->type, 8, 4), 8 * 4 * bitsPerPixel / 8) << format->name;
    const bool mosaic = PixelTypeFactory::FindPixelType(format->type)->IsBayerPattern();
    const bool color = (format->type & kColorSpaceMask) != kColorSpaceGrayscale && !mosaic;
    EXPECT_EQ(format->code >> 24 == kColor, color) << format->name;
    const std::string name = format->name;
    EXPECT_EQ(name.rfind("Bayer", 0) == 0, mosaic) << name;
    const unsigned long range = name.rfind("YCbCr709", 0) == 0                                  ? 0x8000
                                : name.rfind("YCbCr", 0) == 0 && name.rfind("YCbCr601", 0) != 0 ? 0x4000
                                                                                                : 0;
    EXPECT_TRUE(mosaic || format->flags == range) << name;
    // The way back announces the same pixels, if perhaps under another standard's name.
    const PFNCFormat* const back = FindPFNC(format->type, format->flags);
    ASSERT_NE(back, nullptr) << format->name;
    EXPECT_EQ(back->type, format->type) << format->name;
    EXPECT_EQ(back->flags, format->flags) << format->name;
  }
}

TEST_F(PFNC, MeansTheTypesOfTheirLayout) {
  std::istringstream cases(kTypes);
  std::string name;
  PixelTypeID type = 0;
  unsigned long flags = 0;
  while (cases >> name >> std::hex >> type >> flags) {
    const PFNCResult found = FindPFNC(name.c_str());
    ASSERT_TRUE(found) << name;
    EXPECT_EQ(found.format->type, type) << name;
    EXPECT_EQ(found.format->flags, flags) << name;
  }
}

TEST_F(PFNC, SaysWhyThereIsNoFormat) {
  const auto expectReason = [](const PFNCResult& found, const char* what, const std::string& words) {
    EXPECT_FALSE(found) << what;
    ASSERT_NE(found.reason, nullptr) << what;
    EXPECT_NE(std::string(found.reason).find(words), std::string::npos) << what << ": " << found.reason;
  };
  for (const char* const name : {"Mono10 p", " Mono8", "Mono8 ", "Mono", "", "RGB14p"}) {
    expectReason(FindPFNC(name), name, "unknown");
  }
  for (const std::uint32_t code : {0x010A0045U, 0x01080120U, 0U, ~0U, 0x81080116U})
    expectReason(FindPFNC(code), "code", "unknown");
  expectReason(FindPFNC(nullptr), "null", "unknown");
  expectReason(FindPFNC("Coord3D_ABC32f"), "Coord3D", "no picture: the format carries coordinates");
  expectReason(FindPFNC(0x026000C0), "Coord3D", "no picture: the format carries coordinates");
  expectReason(FindPFNC("confidence8"), "confidence8", "no picture: the format carries how certain");
  expectReason(FindPFNC(0x0108011F), "Data", "no picture: the format carries data");
  expectReason(FindPFNC("BiColorRGBG8"), "BiColor", "no picture: the format carries two of three colours");
  expectReason(FindPFNC("PolarizedAngles_0d_45d_90d_135d_Mono8"), "angles", "no picture: the format carries light");
  // These would be announced with the codes of other colours.
  EXPECT_EQ(FindPFNC(0x20044, 0), nullptr);
  EXPECT_EQ(FindPFNC(0x20045, 0), nullptr);
}

// The registry of another process: in this one the extended formats may be registered.
TEST(PFNCUntilRegistration, AnswersForExtendedFormatsWithTheCallThatTheyNeed) {
  if (PixelTypeFactory::HasPixelType(0x41080A)) GTEST_SKIP() << "another test has registered them";
  for (const PFNCResult& found : {FindPFNC(0x010A0046), FindPFNC("Mono10p"), FindPFNC(0x0220001D)}) {
    EXPECT_FALSE(found);
    EXPECT_NE(std::string(found.reason).find("RegisterExtendedFormats()"), std::string::npos);
  }
  EXPECT_EQ(FindPFNC(0x20A40, 0), nullptr);
  for (std::size_t i = 0; const PFNCFormat* const format = EnumPFNC(i); ++i) EXPECT_NE(format->name, "Mono10p"s);
}

TEST_F(PFNC, AnnouncesTypesByTheirLayout) {
  const auto name = [](PixelTypeID type, unsigned long flags) {
    const PFNCFormat* const format = FindPFNC(type, flags);
    return std::string(format != nullptr ? format->name : "none");
  };
  EXPECT_EQ(name(0x20012, ConversionFlags::kBayerBG | ConversionFlags::kBilinear), "BayerBG12");
  EXPECT_EQ(name(0x20012, 0), "BayerGR12");
  EXPECT_EQ(name(0x20012, ConversionFlags::kBayerBG | ConversionFlags::kBayerRG), "none");
  EXPECT_EQ(name(0x10001, ConversionFlags::kBayerBG), "Mono8");
  EXPECT_EQ(name(0x40008, 0), "YUV422_8_UYVY");
  EXPECT_EQ(name(0x40008, ConversionFlags::kFullRange | ConversionFlags::kBilinear), "YCbCr422_8_CbYCrY");
  EXPECT_EQ(name(0x40008, ConversionFlags::kFullRange | ConversionFlags::kBT709), "none");
  for (const PixelTypeID type : {0x20002, 0x2000A, 0x42000A}) EXPECT_EQ(name(type, 0), "RGB8");
  EXPECT_EQ(name(0x120005, 0), "RGBa16");
  for (const PixelTypeID type : {0x110002, 0x410002, 0x210001, 0x1010001, 0x120011, 0x440003, 0x31337}) {
    EXPECT_EQ(name(type, 0), "none") << type;
  }
}

}  // namespace
}  // namespace LmImagingLib
