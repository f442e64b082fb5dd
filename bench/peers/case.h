#pragma once

#include "LmImagingLib/PixelConverter.h"

namespace LmImagingLib::Bench {

/// Values that cameras deliver, to which the noise is limited before conversions of it are compared and timed.
enum class Noise {
  kAny,
  kTwelveBits,  ///< words
  kStudio,      ///< YUV bytes of 16 or more; OpenCV does not clamp less
};

/// A conversion that other libraries have, too.
struct PeerCase {
  const char* name;
  PixelTypeID source;
  PixelTypeID destination;
  unsigned long flags;
  int tolerance;        ///< how far a peer's values may be from ours
  int sampleBytes = 1;  ///< of the destination's values, which are compared
  Noise noise = Noise::kAny;
};

// Tolerances: values that are rounded, not cut; 5 or 6 bits that are shifted, not repeated; coefficients of YUV with 6
// to 8 bits.
inline constexpr PeerCase kCases[] = {
    {"RGB24 to BGR24", 0x420002, 0x420006, 0, 0},
    {"RGB24 to BGR32", 0x420002, 0x20007, 0, 0},
    {"BGR32 to RGB24", 0x20007, 0x420002, 0, 0},
    {"RGB32 to BGR32", 0x20003, 0x20007, 0, 0},
    {"YUYV to BGR32", 0x40001, 0x20007, 0, 4, 1, Noise::kStudio},
    {"UYVY to BGR32", 0x40008, 0x20007, 0, 4, 1, Noise::kStudio},
    {"YUYV to BGR24", 0x40001, 0x420006, 0, 4, 1, Noise::kStudio},
    {"RGB24 to planar", 0x420002, 0x820002, 0, 0},
    {"planar to RGB24", 0x820002, 0x420002, 0, 0},
    {"RGB16 (5-6-5) to RGB24", 0x20001, 0x420002, 0, 7},
    {"RGB48 to RGB24", 0x20004, 0x420002, 0, 1},
    {"Mono12 to Mono8", 0x10003, 0x10001, 0, 1, 1, Noise::kTwelveBits},
    {"Mono8 to RGB24", 0x10001, 0x420002, 0, 0},
    {"Mono8 to BGR32", 0x10001, 0x20007, 0, 0},
    {"bilinear Bayer8 to RGB24", 0x20010, 0x420002, ConversionFlags::kBayerRG | ConversionFlags::kBilinear, 1},
};

}  // namespace LmImagingLib::Bench
