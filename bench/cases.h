#pragma once

#include "LmImagingLib/PixelConverter.h"

namespace LmImagingLib::Bench {

/// A source layout; there is one for each decoder, and one more for each way of demosaicing.
struct SourceCase {
  const char* name;
  PixelTypeID id;
  unsigned long flags;
};

/// A destination layout; there is one for each writer.
struct DestinationCase {
  const char* name;
  PixelTypeID id;
};

inline constexpr unsigned long kBilinearRG = ConversionFlags::kBayerRG | ConversionFlags::kBilinear;

inline constexpr SourceCase kSources[] = {
    {"Grayscale8", 0x10001, 0},
    {"Grayscale8Signed", 0x10401, 0},
    {"Grayscale12", 0x10003, 0},
    {"Grayscale12_Packed", 0x410003, 0},
    {"Grayscale12_Packed_GEV", 0x10009, 0},
    {"Grayscale8_TwoTaps", 0x1010001, 0},
    {"Grayscale12_TwoTapsInverted", 0x8010003, 0},
    {"Grayscale8_DualLines", 0x10010001, 0},
    {"Grayscale8_QuadTaps", 0x10006, 0},
    {"Bayer8_Block", 0x20010, ConversionFlags::kBayerRG},
    {"Bayer8_Bilinear", 0x20010, kBilinearRG},
    {"Bayer12_Block", 0x20012, ConversionFlags::kBayerRG},
    {"Bayer12_Bilinear", 0x20012, kBilinearRG},
    {"Bayer12_Packed_GEV_Bilinear", 0x20040, kBilinearRG},
    {"YUV8_422", 0x40001, 0},
    {"YUV8_422_GEV", 0x40008, 0},
    {"YUV10", 0x40002, 0},
    {"YUV8_444", 0x440003, 0},
    {"YUV8_444_GEV", 0x440007, 0},
    {"YCrCb", 0x440005, 0},
    {"YUV8_411", 0x440006, 0},
    {"RGB16", 0x20001, 0},
    {"RGB24", 0x420002, 0},
    {"BGR24", 0x420006, 0},
    {"RGB32", 0x20003, 0},
    {"BGR32", 0x20007, 0},
    {"RGB48", 0x20004, 0},
    {"BGR48", 0x20043, 0},
    {"RGB64", 0x20005, 0},
    {"RGBPlanar8", 0x820002, 0},
    {"RGBPlanar16", 0x820004, 0},
    {"BGR10PackedV1", 0x20044, 0},
    {"BGR10PackedV2", 0x20045, 0},
    {"RGB12PackedV1", 0x20046, 0},
    {"Mono1p", 0x410801, 0},
    {"Mono2p", 0x410802, 0},
    {"Mono4p", 0x410804, 0},
    {"Mono10p", 0x41080A, 0},
    {"Mono14p", 0x41080E, 0},
    {"Mono10_CSI2", 0x41084A, 0},
    {"Mono12_CSI2", 0x41084C, 0},
    {"Mono14_CSI2", 0x41084E, 0},
    {"Bayer10p_Bilinear", 0x42090A, kBilinearRG},
    {"Bayer10_CSI2_Bilinear", 0x42094A, kBilinearRG},
    {"RGB10p", 0x420A0A, 0},
    {"BGR10p", 0x420A1A, 0},
    {"RGB12p", 0x420A0C, 0},
    {"BGR12p", 0x420A1C, 0},
    {"RGB10p32", 0x20A20, 0},
    {"RGB10V1Packed", 0x20A21, 0},
    {"RGB565p", 0x20A30, 0},
    {"BGR64", 0x20A41, 0},
};

inline constexpr DestinationCase kDestinations[] = {
    {"Grayscale8", 0x10001},  {"Grayscale10", 0x10002}, {"Grayscale12", 0x10003},  {"Grayscale14", 0x10004},
    {"Grayscale16", 0x10005}, {"RGB16", 0x20001},       {"RGB24", 0x420002},       {"BGR24", 0x420006},
    {"RGB32", 0x20003},       {"BGR32", 0x20007},       {"RGBPlanar8", 0x820002},  {"RGB48", 0x20004},
    {"BGR48", 0x20A40},       {"RGB64", 0x20005},       {"RGBPlanar16", 0x820004},
};

}  // namespace LmImagingLib::Bench
