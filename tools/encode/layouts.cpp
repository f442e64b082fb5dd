#include <algorithm>
#include <iterator>
#include <string>

#include "encode/layout.h"
#include "type_variants.h"

namespace LmTool {

using namespace LmImagingLib;

namespace {

constexpr const char* kByte = "one byte a pixel";
constexpr const char* kWord = "one 16-bit word a pixel, low byte first";
constexpr const char* kPacked = "two pixels in three bytes, low bits first";
constexpr const char* kPackedGEV = "two pixels in three bytes: top 8 bits, the low bits of both, top 8 bits";
constexpr const char* kStream10 = "four pixels in five bytes, low bits first";
constexpr const char* kStream14 = "four pixels in seven bytes, low bits first";
constexpr const char* kRaw10 = "four pixels in five bytes: top 8 bits of each, then the low bits of all";
constexpr const char* kRaw12 = "two pixels in three bytes: top 8 bits of each, then the low bits of both";
constexpr const char* kRaw14 = "four pixels in seven bytes: top 8 bits of each, then the low bits of all";
constexpr const char* kRGBBytes = "bytes R G B";
constexpr const char* kBGRBytes = "bytes B G R";
constexpr const char* kRGBxBytes = "bytes R G B and one unused";
constexpr const char* kRGBWords = "16-bit words R G B";
constexpr const char* kBGRWords = "16-bit words B G R";
constexpr const char* kRGBxWords = "16-bit words R G B and one unused";
constexpr const char* kBGRxWords = "16-bit words B G R and one unused";
constexpr const char* kPlanarBytes = "planes R, G, B of one byte a pixel";
constexpr const char* kPlanarWords = "planes R, G, B of one 16-bit word a pixel";
constexpr const char* kQuad = ", four zones in turn, those of the right half backwards";

constexpr Layout kLayouts[] = {
    {0x10001, 8, EncodeGray8, kByte},
    {0x10401, 8, EncodeGray8Signed, "one signed byte a pixel, -128 is black"},
    {0x10002, 10, EncodeGray16, kWord},
    {0x10003, 12, EncodeGray16, kWord},
    {0x10004, 14, EncodeGray16, kWord},
    {0x10005, 16, EncodeGray16, kWord},
    {0x410002, 10, EncodeGrayPacked, kPacked},
    {0x410003, 12, EncodeGrayPacked, kPacked},
    {0x10006, 8, EncodeGray8, kByte},
    {0x10007, 10, EncodeGray16, kWord},
    {0x10008, 10, EncodeGrayPackedGEV, kPackedGEV},
    {0x10009, 12, EncodeGrayPackedGEV, kPackedGEV},
    {0x410801, 1, EncodeGrayStream, "eight pixels in a byte, the first in its lowest bit"},
    {0x410802, 2, EncodeGrayStream, "four pixels in a byte, the first in its lowest bits"},
    {0x410804, 4, EncodeGrayStream, "two pixels in a byte, the first in its lowest bits"},
    {0x41080A, 10, EncodeGrayStream, kStream10},
    {0x41080E, 14, EncodeGrayStream, kStream14},
    {0x41084A, 10, EncodeCSI2Raw, kRaw10},
    {0x41084C, 12, EncodeCSI2Raw, kRaw12},
    {0x41084E, 14, EncodeCSI2Raw, kRaw14},

    {0x20010, 8, EncodeGray8, kByte},
    {0x20011, 10, EncodeGray16, kWord},
    {0x20012, 12, EncodeGray16, kWord},
    {0x20016, 14, EncodeGray16, kWord},
    {0x20020, 16, EncodeGray16, kWord},
    {0x420011, 10, EncodeGrayPacked, kPacked},
    {0x420012, 12, EncodeGrayPacked, kPacked},
    {0x20040, 12, EncodeGrayPackedGEV, kPackedGEV},
    {0x20041, 10, EncodeGrayPackedGEV, kPackedGEV},
    {0x42090A, 10, EncodeGrayStream, kStream10},
    {0x42090E, 14, EncodeGrayStream, kStream14},
    {0x42094A, 10, EncodeCSI2Raw, kRaw10},
    {0x42094C, 12, EncodeCSI2Raw, kRaw12},
    {0x42094E, 14, EncodeCSI2Raw, kRaw14},

    {0x20001, 8, EncodeRGB16, "one 16-bit word: R in bits 15-11, G in 10-5, B in 4-0"},
    {0x20002, 8, EncodeRGB24, kRGBBytes},
    {0x420002, 8, EncodeRGB24, kRGBBytes},
    {0x2000A, 8, EncodeRGB24, kRGBBytes},
    {0x42000A, 8, EncodeRGB24, kRGBBytes},
    {0x20006, 8, EncodeBGR24, kBGRBytes},
    {0x420006, 8, EncodeBGR24, kBGRBytes},
    {0x20003, 8, EncodeRGB32, kRGBxBytes},
    {0x2000B, 8, EncodeRGB32, kRGBxBytes},
    {0x42000B, 8, EncodeRGB32, kRGBxBytes},
    {0x20007, 8, EncodeBGR32, "bytes B G R and one unused"},
    {0x820002, 8, EncodeRGBPlanar8, kPlanarBytes},
    {0x82000A, 8, EncodeRGBPlanar8, kPlanarBytes},
    {0x82000B, 8, EncodeRGBPlanar8, "planes R, G, B and one unused, of one byte a pixel"},
    {0x820008, 10, EncodeRGBPlanar16, kPlanarWords},
    {0x82000C, 12, EncodeRGBPlanar16, kPlanarWords},
    {0x820004, 16, EncodeRGBPlanar16, kPlanarWords},
    {0x20008, 10, EncodeRGB48, kRGBWords},
    {0x2000C, 12, EncodeRGB48, kRGBWords},
    {0x20004, 16, EncodeRGB48, kRGBWords},
    {0x20042, 10, EncodeBGR48, kBGRWords},
    {0x20043, 12, EncodeBGR48, kBGRWords},
    {0x20A40, 16, EncodeBGR48, kBGRWords},
    {0x20009, 10, EncodeRGB64, kRGBxWords},
    {0x2000D, 12, EncodeRGB64, kRGBxWords},
    {0x20005, 16, EncodeRGB64, kRGBxWords},
    {0x20A41, 16, EncodeBGR64, kBGRxWords},
    {0x20A20, 10, EncodeRGB10p32, "one 32-bit word: R in bits 9-0, G in 19-10, B in 29-20"},
    {0x20A21, 10, EncodeRGB10V1Packed, "four bytes: low bits of all, top 8 bits of R, G, B"},
    {0x20A30, 8, EncodeRGB565p, "one 16-bit word: B in bits 15-11, G in 10-5, R in 4-0"},
    {0x420A0A, 10, EncodeRGBStream, "four pixels in 15 bytes, R G B of each, low bits first"},
    {0x420A0C, 12, EncodeRGBStream, "two pixels in nine bytes, R G B of each, low bits first"},
    {0x420A1A, 10, EncodeBGRStream, "four pixels in 15 bytes, B G R of each, low bits first"},
    {0x420A1C, 12, EncodeBGRStream, "two pixels in nine bytes, B G R of each, low bits first"},
    {0x20044, 10, EncodeBGR10PackedV1, "four bytes: low bits of all, top 8 bits of B, G, R"},
    {0x20045, 10, EncodeBGR10PackedV2, "one 32-bit word: B in bits 9-0, G in 19-10, R in 29-20"},
    {0x20046, 12, EncodeRGB12PackedV1,
     "two pixels in nine bytes: of each two samples top 8 bits, low bits, top 8 bits"},

    {0x40001, 8, EncodeYUV8, "two pixels in bytes Y0 U Y1 V", 2},
    {0x40008, 8, EncodeYUV8_422_GEV, "two pixels in bytes U Y0 V Y1", 2},
    {0x40002, 10, EncodeYUV10, "two pixels in 16-bit words Y0 U Y1 V", 2},
    {0x440003, 8, EncodeYUV8_444, "bytes Y U V", 1},
    {0x440007, 8, EncodeYUV8_444_GEV, "bytes U Y V", 1},
    {0x440005, 8, EncodeYCrCb, "bytes Y Cr Cb", 1},
    {0x440006, 8, EncodeYUV8_411, "four pixels in bytes U Y0 Y1 V Y2 Y3", 4},
};

struct FlagInWords {
  PixelTypeID mask, value;
  const char* words;
};
constexpr FlagInWords kFlags[] = {
    {kNormalizedFlag, kNormalizedFlag, ", bits at the top of the word"},
    {kInterlacedFlag, kInterlacedFlag, ", one field after the other"},
    {kDualOutputMask, kDualLeftRight, ", left and right half in turn"},
    {kDualOutputMask, kDualLeftRightInverted, ", left half and right half (backwards) in turn"},
    {kDualOutputMask, kDualLeftInvertedRight, ", left half (backwards) and right half in turn"},
    {kDualOutputMask, kDualLeftInvertedRightInverted, ", left and right half (both backwards) in turn"},
    {kDualOutputMask, kDualLines, ", upper and lower of two lines in turn"},
    {kColorSpaceMask | kFormatNumberMask, 0x10006, kQuad},
    {kColorSpaceMask | kFormatNumberMask, 0x10007, kQuad},
};

}  // namespace

const Layout& LayoutOf(const PixelTypeID& type) {
  return *std::find_if(std::begin(kLayouts), std::end(kLayouts),
                       [&](const Layout& layout) { return layout.type == (type & ~kVariantFlags); });
}

std::string LayoutInWords(const PixelTypeID& type) {
  std::string words = LayoutOf(type).words;
  for (const FlagInWords& flag : kFlags) {
    if ((type & flag.mask) == flag.value) words += flag.words;
  }
  return words;
}

}  // namespace LmTool
