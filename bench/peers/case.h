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

namespace Cases {

inline constexpr unsigned long kDeep = ConversionFlags::kFullDepth;
inline constexpr unsigned long kFullRange = ConversionFlags::kFullRange;
inline constexpr unsigned long kBilinear = ConversionFlags::kBayerRG | ConversionFlags::kBilinear;
inline constexpr unsigned long kGradient = ConversionFlags::kBayerRG | ConversionFlags::kGradientCorrected;

}  // namespace Cases

// What users of cameras convert and at least one of the libraries converts to the same pixels, in one call or in two.
// Whether we win plays no part: a case is chosen before it is measured, and stays. Of cases that differ in the order of
// channels or in the bits of words only, one or two stand for all.
//
// Not here: packed gray, packed mosaics, taps and fields, which no peer has; demosaicing in blocks and along edges,
// which nobody does alike; half size, which libdc1394 alone has; colours of 64 bits and YUV of 10, which are rare.
//
// Tolerances of 1 and 2: values that are rounded, not cut; coefficients of another precision. 4: those of YUV in the
// studio range, with 6 to 8 bits. 7: 5 or 6 bits that are shifted up to 8, not repeated. 15 and 255 of 65535: 12 and 8
// bits that are shifted up to 16, not repeated. 120 of 65535: our luma, whose coefficients have 8 bits.
inline constexpr PeerCase kCases[] = {
    // Gray
    {"Mono8 to RGB24", 0x10001, 0x420002, 0, 0},
    {"Mono8 to BGR32", 0x10001, 0x20007, 0, 0},
    {"Mono8 to Mono16", 0x10001, 0x10005, Cases::kDeep, 255, 2},
    {"Mono12 to Mono8", 0x10003, 0x10001, 0, 1, 1, Noise::kTwelveBits},
    {"Mono12 to Mono16", 0x10003, 0x10005, Cases::kDeep, 15, 2, Noise::kTwelveBits},
    {"Mono16 to Mono8", 0x10005, 0x10001, 0, 1},
    // Gray of colours
    {"RGB24 to Mono8", 0x420002, 0x10001, 0, 1},
    {"BGR32 to Mono8", 0x20007, 0x10001, 0, 1},
    {"RGB48 to Mono8", 0x20004, 0x10001, 0, 2},
    {"RGB48 to Mono16", 0x20004, 0x10005, Cases::kDeep, 120, 2},
    {"YUYV to Mono8, full range", 0x40001, 0x10001, Cases::kFullRange, 0},
    // YUV
    {"YUYV to BGR32", 0x40001, 0x20007, 0, 4, 1, Noise::kStudio},
    {"UYVY to BGR32", 0x40008, 0x20007, 0, 4, 1, Noise::kStudio},
    {"YUYV to BGR24", 0x40001, 0x420006, 0, 4, 1, Noise::kStudio},
    {"YUV 4:1:1 to RGB24, full range", 0x440006, 0x420002, Cases::kFullRange, 1},
    {"UYV 4:4:4 to RGB24, full range", 0x440007, 0x420002, Cases::kFullRange, 1},
    {"YCrCb 4:4:4 to RGB24, full range", 0x440005, 0x420002, Cases::kFullRange, 1},
    // Colours of 8 bits and less
    {"RGB24 to BGR24", 0x420002, 0x420006, 0, 0},
    {"RGB24 to BGR32", 0x420002, 0x20007, 0, 0},
    {"BGR32 to RGB24", 0x20007, 0x420002, 0, 0},
    {"RGB32 to BGR32", 0x20003, 0x20007, 0, 0},
    {"RGB24 to planar", 0x420002, 0x820002, 0, 0},
    {"BGR32 to planar", 0x20007, 0x820002, 0, 0},
    {"planar to RGB24", 0x820002, 0x420002, 0, 0},
    {"BGR32 to RGB16 (5-6-5)", 0x20007, 0x20001, 0, 0},
    {"RGB16 (5-6-5) to RGB24", 0x20001, 0x420002, 0, 7},
    {"RGB16 (5-6-5) to BGR32", 0x20001, 0x20007, 0, 7},
    // Deep colours
    {"RGB24 to RGB48", 0x420002, 0x20004, Cases::kDeep, 255, 2},
    {"RGB48 to RGB24", 0x20004, 0x420002, 0, 1},
    {"RGB48 to BGR48", 0x20004, 0x20A40, Cases::kDeep, 0, 2},
    {"16-bit planar to RGB48", 0x820004, 0x20004, Cases::kDeep, 0, 2},
    {"BGR 10-10-10 to BGR32", 0x20045, 0x20007, 0, 1},
    // Mosaics
    {"bilinear Bayer8 to RGB24", 0x20010, 0x420002, Cases::kBilinear, 1},
    {"bilinear Bayer8 to BGR32", 0x20010, 0x20007, Cases::kBilinear, 1},
    {"bilinear Bayer8 to Mono8", 0x20010, 0x10001, Cases::kBilinear, 2},
    {"bilinear Bayer16 to RGB24", 0x20020, 0x420002, Cases::kBilinear, 2},
    {"bilinear Bayer12 to RGB48", 0x20012, 0x2000C, Cases::kBilinear | Cases::kDeep, 1, 2, Noise::kTwelveBits},
    {"gradient-corrected Bayer8 to RGB24", 0x20010, 0x420002, Cases::kGradient, 1},
};

}  // namespace LmImagingLib::Bench
