#pragma once

#include "LmImagingLib/PixelConverter.h"
#include "LmImagingLib/PixelTypeID.h"

// The four-character codes of Video4Linux (linux/videodev2.h), without the blanks that fill them up.
namespace LmTool {

struct V4L2Format {
  const char* fourcc;
  LmImagingLib::PixelTypeID type;
  unsigned long mosaic;  ///< the bit of `ConversionFlags` of a mosaic's layout, otherwise 0
};

inline constexpr unsigned long kGR = LmImagingLib::ConversionFlags::kBayerGR;
inline constexpr unsigned long kGB = LmImagingLib::ConversionFlags::kBayerGB;
inline constexpr unsigned long kRG = LmImagingLib::ConversionFlags::kBayerRG;
inline constexpr unsigned long kBG = LmImagingLib::ConversionFlags::kBayerBG;

inline constexpr V4L2Format kV4L2Formats[] = {
    {"GREY", 0x10001, 0},    {"Y10", 0x10002, 0},     {"Y12", 0x10003, 0},     {"Y14", 0x10004, 0},
    {"Y16", 0x10005, 0},     {"Y10P", 0x41084A, 0},   {"Y12P", 0x41084C, 0},   {"Y14P", 0x41084E, 0},
    {"BA81", 0x20010, kBG},  {"GBRG", 0x20010, kGB},  {"GRBG", 0x20010, kGR},  {"RGGB", 0x20010, kRG},
    {"BG10", 0x20011, kBG},  {"GB10", 0x20011, kGB},  {"BA10", 0x20011, kGR},  {"RG10", 0x20011, kRG},
    {"BG12", 0x20012, kBG},  {"GB12", 0x20012, kGB},  {"BA12", 0x20012, kGR},  {"RG12", 0x20012, kRG},
    {"BG14", 0x20016, kBG},  {"GB14", 0x20016, kGB},  {"GR14", 0x20016, kGR},  {"RG14", 0x20016, kRG},
    {"BYR2", 0x20020, kBG},  {"GB16", 0x20020, kGB},  {"GR16", 0x20020, kGR},  {"RG16", 0x20020, kRG},
    {"pBAA", 0x42094A, kBG}, {"pGAA", 0x42094A, kGB}, {"pgAA", 0x42094A, kGR}, {"pRAA", 0x42094A, kRG},
    {"pBCC", 0x42094C, kBG}, {"pGCC", 0x42094C, kGB}, {"pgCC", 0x42094C, kGR}, {"pRCC", 0x42094C, kRG},
    {"pBEE", 0x42094E, kBG}, {"pGEE", 0x42094E, kGB}, {"pgEE", 0x42094E, kGR}, {"pREE", 0x42094E, kRG},
    {"YUYV", 0x40001, 0},    {"UYVY", 0x40008, 0},    {"YUV3", 0x440003, 0},   {"RGBP", 0x20001, 0},
    {"RGB3", 0x420002, 0},   {"BGR3", 0x420006, 0},   {"XB24", 0x20003, 0},    {"AB24", 0x20003, 0},
    {"XR24", 0x20007, 0},    {"AR24", 0x20007, 0},    {"BGR4", 0x20007, 0},
};

}  // namespace LmTool
