#pragma once

#include "LmImagingLib/PFNC.h"
#include "LmImagingLib/PixelConverter.h"

// The formats of the GenICam Pixel Format Naming Convention as constants.
namespace LmImagingLib::PFNC {

using ConversionFlags::kBayerBG;
using ConversionFlags::kBayerGB;
using ConversionFlags::kBayerGR;
using ConversionFlags::kBayerRG;
using ConversionFlags::kBT709;
using ConversionFlags::kFullRange;

struct Entry {
  PFNCFormat format;
  const char* olderName;  // of GigE Vision 1 and of drivers of its time, or null
};

// Of entries with one type and flags the first is the one to announce it with. YUV has the studio range and the factors
// of BT.601, and so has YCbCr601. The YCbCr names without a number have the full range, YCbCr709 the factors of BT.709.
inline constexpr Entry kFormats[] = {
    {{0x01010037, "Mono1p", 0x410801, 0}, "Mono1Packed"},
    {{0x01020038, "Mono2p", 0x410802, 0}, "Mono2Packed"},
    {{0x01040039, "Mono4p", 0x410804, 0}, "Mono4Packed"},
    {{0x01080001, "Mono8", 0x10001, 0}, nullptr},
    {{0x01080002, "Mono8s", 0x10401, 0}, "Mono8Signed"},
    {{0x01100003, "Mono10", 0x10002, 0}, nullptr},
    {{0x010C0004, "Mono10Packed", 0x10008, 0}, nullptr},
    {{0x010A0046, "Mono10p", 0x41080A, 0}, nullptr},
    {{0x01100005, "Mono12", 0x10003, 0}, nullptr},
    {{0x010C0006, "Mono12Packed", 0x10009, 0}, nullptr},
    {{0x010C0047, "Mono12p", 0x410003, 0}, nullptr},
    {{0x01100025, "Mono14", 0x10004, 0}, nullptr},
    {{0x010E0104, "Mono14p", 0x41080E, 0}, nullptr},
    {{0x01100007, "Mono16", 0x10005, 0}, nullptr},
    {{0x01080008, "BayerGR8", 0x20010, kBayerGR}, nullptr},
    {{0x01080009, "BayerRG8", 0x20010, kBayerRG}, nullptr},
    {{0x0108000A, "BayerGB8", 0x20010, kBayerGB}, nullptr},
    {{0x0108000B, "BayerBG8", 0x20010, kBayerBG}, nullptr},
    {{0x0110000C, "BayerGR10", 0x20011, kBayerGR}, nullptr},
    {{0x0110000D, "BayerRG10", 0x20011, kBayerRG}, nullptr},
    {{0x0110000E, "BayerGB10", 0x20011, kBayerGB}, nullptr},
    {{0x0110000F, "BayerBG10", 0x20011, kBayerBG}, nullptr},
    {{0x01100010, "BayerGR12", 0x20012, kBayerGR}, nullptr},
    {{0x01100011, "BayerRG12", 0x20012, kBayerRG}, nullptr},
    {{0x01100012, "BayerGB12", 0x20012, kBayerGB}, nullptr},
    {{0x01100013, "BayerBG12", 0x20012, kBayerBG}, nullptr},
    {{0x01100109, "BayerGR14", 0x20016, kBayerGR}, nullptr},
    {{0x0110010A, "BayerRG14", 0x20016, kBayerRG}, nullptr},
    {{0x0110010B, "BayerGB14", 0x20016, kBayerGB}, nullptr},
    {{0x0110010C, "BayerBG14", 0x20016, kBayerBG}, nullptr},
    {{0x010E0105, "BayerGR14p", 0x42090E, kBayerGR}, nullptr},
    {{0x010E0106, "BayerRG14p", 0x42090E, kBayerRG}, nullptr},
    {{0x010E0107, "BayerGB14p", 0x42090E, kBayerGB}, nullptr},
    {{0x010E0108, "BayerBG14p", 0x42090E, kBayerBG}, nullptr},
    {{0x0110002E, "BayerGR16", 0x20020, kBayerGR}, nullptr},
    {{0x0110002F, "BayerRG16", 0x20020, kBayerRG}, nullptr},
    {{0x01100030, "BayerGB16", 0x20020, kBayerGB}, nullptr},
    {{0x01100031, "BayerBG16", 0x20020, kBayerBG}, nullptr},
    {{0x010C0026, "BayerGR10Packed", 0x20041, kBayerGR}, nullptr},
    {{0x010C0027, "BayerRG10Packed", 0x20041, kBayerRG}, nullptr},
    {{0x010C0028, "BayerGB10Packed", 0x20041, kBayerGB}, nullptr},
    {{0x010C0029, "BayerBG10Packed", 0x20041, kBayerBG}, nullptr},
    {{0x010A0056, "BayerGR10p", 0x42090A, kBayerGR}, nullptr},
    {{0x010A0058, "BayerRG10p", 0x42090A, kBayerRG}, nullptr},
    {{0x010A0054, "BayerGB10p", 0x42090A, kBayerGB}, nullptr},
    {{0x010A0052, "BayerBG10p", 0x42090A, kBayerBG}, nullptr},
    {{0x010C002A, "BayerGR12Packed", 0x20040, kBayerGR}, nullptr},
    {{0x010C002B, "BayerRG12Packed", 0x20040, kBayerRG}, nullptr},
    {{0x010C002C, "BayerGB12Packed", 0x20040, kBayerGB}, nullptr},
    {{0x010C002D, "BayerBG12Packed", 0x20040, kBayerBG}, nullptr},
    {{0x010C0057, "BayerGR12p", 0x420012, kBayerGR}, nullptr},
    {{0x010C0059, "BayerRG12p", 0x420012, kBayerRG}, nullptr},
    {{0x010C0055, "BayerGB12p", 0x420012, kBayerGB}, nullptr},
    {{0x010C0053, "BayerBG12p", 0x420012, kBayerBG}, nullptr},
    {{0x02180014, "RGB8", 0x420002, 0}, "RGB8Packed"},
    {{0x02180015, "BGR8", 0x420006, 0}, "BGR8Packed"},
    {{0x02200016, "RGBa8", 0x20003, 0}, "RGBA8Packed"},
    {{0x02200017, "BGRa8", 0x20007, 0}, "BGRA8Packed"},
    {{0x02300018, "RGB10", 0x20008, 0}, "RGB10Packed"},
    {{0x02300019, "BGR10", 0x20042, 0}, "BGR10Packed"},
    {{0x0230001A, "RGB12", 0x2000C, 0}, "RGB12Packed"},
    {{0x0230001B, "BGR12", 0x20043, 0}, "BGR12Packed"},
    {{0x02300033, "RGB16", 0x20004, 0}, "RGB16Packed"},
    {{0x0230004B, "BGR16", 0x20A40, 0}, "BGR16Packed"},
    {{0x0240005F, "RGBa10", 0x20009, 0}, nullptr},
    {{0x02400061, "RGBa12", 0x2000D, 0}, nullptr},
    {{0x02400064, "RGBa16", 0x20005, 0}, "RGBA16Packed"},
    {{0x02400051, "BGRa16", 0x20A41, 0}, "BGRA16Packed"},
    {{0x021E005C, "RGB10p", 0x420A0A, 0}, nullptr},
    {{0x021E0048, "BGR10p", 0x420A1A, 0}, nullptr},
    {{0x0224005D, "RGB12p", 0x420A0C, 0}, nullptr},
    {{0x02240049, "BGR12p", 0x420A1C, 0}, nullptr},
    {{0x0220001C, "RGB10V1Packed", 0x20A21, 0}, nullptr},
    {{0x0220001D, "RGB10p32", 0x20A20, 0}, "RGB10V2Packed"},
    {{0x02240034, "RGB12V1Packed", 0x20046, 0}, nullptr},
    {{0x02100035, "RGB565p", 0x20A30, 0}, "RGB565Packed"},
    {{0x02100036, "BGR565p", 0x20001, 0}, "BGR565Packed"},
    {{0x02180021, "RGB8_Planar", 0x820002, 0}, "RGB8Planar"},
    {{0x02300022, "RGB10_Planar", 0x820008, 0}, "RGB10Planar"},
    {{0x02300023, "RGB12_Planar", 0x82000C, 0}, "RGB12Planar"},
    {{0x02300024, "RGB16_Planar", 0x820004, 0}, "RGB16Planar"},
    {{0x020C001E, "YUV411_8_UYYVYY", 0x440006, 0}, "YUV411Packed"},
    {{0x0210001F, "YUV422_8_UYVY", 0x40008, 0}, "YUV422Packed"},
    {{0x02100032, "YUV422_8", 0x40001, 0}, "YUV422_YUYV_Packed"},
    {{0x02180020, "YUV8_UYV", 0x440007, 0}, "YUV444Packed"},
    {{0x0218003D, "YCbCr601_8_CbYCr", 0x440007, 0}, nullptr},
    {{0x020C003F, "YCbCr601_411_8_CbYYCrYY", 0x440006, 0}, nullptr},
    {{0x0210003E, "YCbCr601_422_8", 0x40001, 0}, nullptr},
    {{0x02100044, "YCbCr601_422_8_CbYCrY", 0x40008, 0}, nullptr},
    {{0x0218005B, "YCbCr8", 0x440003, kFullRange}, nullptr},
    {{0x0218003A, "YCbCr8_CbYCr", 0x440007, kFullRange}, nullptr},
    {{0x020C003C, "YCbCr411_8_CbYYCrYY", 0x440006, kFullRange}, nullptr},
    {{0x0210003B, "YCbCr422_8", 0x40001, kFullRange}, nullptr},
    {{0x02100043, "YCbCr422_8_CbYCrY", 0x40008, kFullRange}, nullptr},
    {{0x02180040, "YCbCr709_8_CbYCr", 0x440007, kBT709}, nullptr},
    {{0x020C0042, "YCbCr709_411_8_CbYYCrYY", 0x440006, kBT709}, nullptr},
    {{0x02100041, "YCbCr709_422_8", 0x40001, kBT709}, nullptr},
    {{0x02100045, "YCbCr709_422_8_CbYCrY", 0x40008, kBT709}, nullptr},
};

// Names that put blue where their codes, by the names of today, have red.
inline constexpr PFNCFormat kByNameOnly[] = {{0x0220001C, "BGR10V1Packed", 0x20044, 0},
                                             {0x0220001D, "BGR10V2Packed", 0x20045, 0}};

// Types whose bytes mean the same as those of a type in the table.
struct Synonym {
  PixelTypeID type, inTable;
};
inline constexpr Synonym kSynonyms[] = {
    {0x20002, 0x420002}, {0x2000A, 0x420002},  {0x42000A, 0x420002}, {0x20006, 0x420006}, {0x2000B, 0x20003},
    {0x42000B, 0x20003}, {0x82000A, 0x820002}, {0x110005, 0x10005},  {0x120004, 0x20004}, {0x120005, 0x20005}};

// Images that no pixel type has.
struct Unsupported {
  std::uint32_t code;
  const char* name;
  const char* reason;
};
#define LM_UNSUPPORTED(text) "the format is not supported: it is " text ", which no pixel type has"
inline constexpr Unsupported kUnsupported[] = {
    {0x0230005E, "RGB14", LM_UNSUPPORTED("RGB of 14 bits in 16-bit words")},
    {0x0230004A, "BGR14", LM_UNSUPPORTED("BGR of 14 bits in 16-bit words")},
    {0x02400063, "RGBa14", LM_UNSUPPORTED("RGB and alpha of 14 bits in 16-bit words")},
    {0x0240004C, "BGRa10", LM_UNSUPPORTED("BGR and alpha of 10 bits in 16-bit words")},
    {0x0240004E, "BGRa12", LM_UNSUPPORTED("BGR and alpha of 12 bits in 16-bit words")},
    {0x02400050, "BGRa14", LM_UNSUPPORTED("BGR and alpha of 14 bits in 16-bit words")},
    {0x020C005A, "YCbCr411_8", LM_UNSUPPORTED("YCbCr 4:1:1 in the order Y Y Cb Y Y Cr")},
    {0x020C0112, "YCbCr420_8_YY_CbCr_Semiplanar",
     LM_UNSUPPORTED("YCbCr 4:2:0 with luma in one plane and chroma in another")},
    {0x02100113, "YCbCr422_8_YY_CbCr_Semiplanar",
     LM_UNSUPPORTED("YCbCr 4:2:2 with luma in one plane and chroma in another")},
};
#undef LM_UNSUPPORTED

// Formats that carry no image of intensity or colour: how their names begin, and the numbers, the lower half of a code,
// that they have.
struct NoPicture {
  const char* prefix;
  std::uint32_t first, last;
  const char* reason;
};
inline constexpr NoPicture kNoPictures[] = {
    {"BiColor", 0x00A5, 0x00AE,
     "no picture: the format carries two of three colours a pixel, of line sensors (BiColor)"},
    {"Coord3D", 0x00AF, 0x00C3, "no picture: the format carries coordinates in space (Coord3D)"},
    {"Confidence", 0x00C4, 0x00C8, "no picture: the format carries how certain other values are (Confidence)"},
    {"Coord3D", 0x00D5, 0x00DF, "no picture: the format carries coordinates in space (Coord3D)"},
    {"Coord3D", 0x00F0, 0x00F3, "no picture: the format carries coordinates in space (Coord3D)"},
    {"Data", 0x0116, 0x011F, "no picture: the format carries data without a meaning of its own (Data)"},
    {"Polari", 0, 0, "no picture: the format carries light by the angle of its polarisation"},
};

}  // namespace LmImagingLib::PFNC
