#pragma once

#include "converters/bayer_converter.h"
#include "converters/reorder_converter.h"
#include "converters/two_tap_converter.h"

// The catalogue of source layouts. A layout is decoded in the file of its name; here it gets its geometry and the
// names of its converters, which take the writer as their last argument.
namespace LmImagingLib {

LM_DECLARE_KERNEL(DecodeKernel, Grayscale8Bytes)
LM_DECLARE_KERNEL(DecodeKernel, Grayscale8Signed)
LM_DECLARE_KERNEL(DecodeKernel, Grayscale16)
LM_DECLARE_KERNEL(DecodeKernel, GrayscalePackedGEV)
LM_DECLARE_KERNEL(DecodeKernel, Grayscale12Packed)
LM_DECLARE_KERNEL(DecodeKernel, YUV8_422)
LM_DECLARE_KERNEL(DecodeKernel, YUV8_422_GEV)
LM_DECLARE_KERNEL(DecodeKernel, YUV10)
LM_DECLARE_KERNEL(DecodeKernel, YUV8_444)
LM_DECLARE_KERNEL(DecodeKernel, YUV8_444_GEV)
LM_DECLARE_KERNEL(DecodeKernel, YCrCb444)
LM_DECLARE_KERNEL(DecodeKernel, YUV8_411)
LM_DECLARE_KERNEL(DecodeKernel, RGB24)
LM_DECLARE_KERNEL(DecodeKernel, BGR24)
LM_DECLARE_KERNEL(DecodeKernel, RGB32)
LM_DECLARE_KERNEL(DecodeKernel, BGR32)
LM_DECLARE_KERNEL(DecodeKernel, RGB16)
LM_DECLARE_KERNEL(DecodeKernel, RGB48)
LM_DECLARE_KERNEL(DecodeKernel, BGR48)
LM_DECLARE_KERNEL(DecodeKernel, RGB64)
LM_DECLARE_KERNEL(DecodeKernel, RGBPlanar8)
LM_DECLARE_KERNEL(DecodeKernel, RGBPlanar16)
LM_DECLARE_KERNEL(DecodeKernel, BGR10PackedV1Bytes)
LM_DECLARE_KERNEL(DecodeKernel, BGR10PackedV2Word)
LM_DECLARE_KERNEL(DecodeKernel, RGB12PackedV1Bytes)

LM_DECLARE_KERNEL(DirectKernel, Swap24To24)
LM_DECLARE_KERNEL(DirectKernel, Keep24To32)
LM_DECLARE_KERNEL(DirectKernel, Swap24To32)
LM_DECLARE_KERNEL(DirectKernel, Keep32To24)
LM_DECLARE_KERNEL(DirectKernel, Swap32To24)
LM_DECLARE_KERNEL(DirectKernel, Keep32To32)
LM_DECLARE_KERNEL(DirectKernel, Swap32To32)
LM_DECLARE_KERNEL(DirectKernel, Keep48To24)
LM_DECLARE_KERNEL(DirectKernel, YUV8_422ToRGB24)
LM_DECLARE_KERNEL(DirectKernel, YUV8_422ToBGR24)
LM_DECLARE_KERNEL(DirectKernel, YUV8_422ToRGB32)
LM_DECLARE_KERNEL(DirectKernel, YUV8_422ToBGR32)
LM_DECLARE_KERNEL(DirectKernel, YUV8_422_GEVToRGB24)
LM_DECLARE_KERNEL(DirectKernel, YUV8_422_GEVToBGR24)
LM_DECLARE_KERNEL(DirectKernel, YUV8_422_GEVToRGB32)
LM_DECLARE_KERNEL(DirectKernel, YUV8_422_GEVToBGR32)

namespace Sources {

template <std::size_t kCount>
constexpr Source WithShortcuts(Source source, const Shortcut (&shortcuts)[kCount]) {
  source.shortcuts = shortcuts;
  source.shortcutCount = kCount;
  return source;
}

inline constexpr Source kGrayscale8{LmImagingLib::kGrayscale8Bytes, 1, 1, WholeGroups::kInside, kGray | kPlain};
inline constexpr Source kGrayscale8Signed{LmImagingLib::kGrayscale8Signed, 1, 1, WholeGroups::kInside, kGray};
inline constexpr Source kGrayscale16{LmImagingLib::kGrayscale16, 1, 2, WholeGroups::kInside, kGray};
inline constexpr Source kGrayscalePackedGEV{LmImagingLib::kGrayscalePackedGEV, 2, 3, WholeGroups::kCover, kGray};
inline constexpr Source kGrayscale12Packed{LmImagingLib::kGrayscale12Packed, 2, 3, WholeGroups::kInside, kGray};

// What screens and most files want of cameras' most common colour, up to a sixth quicker without strips.
inline constexpr Shortcut kShortcutsFromYUV8_422[] = {{&OutputRGB24::kWriter, kYUV8_422ToRGB24},
                                                      {&OutputBGR24::kWriter, kYUV8_422ToBGR24},
                                                      {&OutputRGB32::kWriter, kYUV8_422ToRGB32},
                                                      {&OutputBGR32::kWriter, kYUV8_422ToBGR32}};
inline constexpr Shortcut kShortcutsFromYUV8_422_GEV[] = {{&OutputRGB24::kWriter, kYUV8_422_GEVToRGB24},
                                                          {&OutputBGR24::kWriter, kYUV8_422_GEVToBGR24},
                                                          {&OutputRGB32::kWriter, kYUV8_422_GEVToRGB32},
                                                          {&OutputBGR32::kWriter, kYUV8_422_GEVToBGR32}};
inline constexpr Source kYUV8_422 = WithShortcuts({LmImagingLib::kYUV8_422, 2, 4}, kShortcutsFromYUV8_422);
inline constexpr Source kYUV8_422_GEV = WithShortcuts({LmImagingLib::kYUV8_422_GEV, 2, 4}, kShortcutsFromYUV8_422_GEV);
inline constexpr Source kYUV10{LmImagingLib::kYUV10, 2, 8};
inline constexpr Source kYUV8_444{LmImagingLib::kYUV8_444, 1, 3};
inline constexpr Source kYUV8_444_GEV{LmImagingLib::kYUV8_444_GEV, 1, 3};
inline constexpr Source kYCrCb{LmImagingLib::kYCrCb444, 1, 3};
inline constexpr Source kYUV8_411{LmImagingLib::kYUV8_411, 4, 6, WholeGroups::kYuv411};

// Bytes that only change places are shuffled in a register, without a strip: two thirds of the time and less.
inline constexpr Shortcut kShortcutsFromRGB24[] = {
    {&OutputBGR24::kWriter, kSwap24To24}, {&OutputRGB32::kWriter, kKeep24To32}, {&OutputBGR32::kWriter, kSwap24To32}};
inline constexpr Shortcut kShortcutsFromBGR24[] = {
    {&OutputRGB24::kWriter, kSwap24To24}, {&OutputRGB32::kWriter, kSwap24To32}, {&OutputBGR32::kWriter, kKeep24To32}};
inline constexpr Shortcut kShortcutsFromRGB32[] = {{&OutputRGB24::kWriter, kKeep32To24},
                                                   {&OutputBGR24::kWriter, kSwap32To24},
                                                   {&OutputRGB32::kWriter, kKeep32To32},
                                                   {&OutputBGR32::kWriter, kSwap32To32}};
inline constexpr Shortcut kShortcutsFromBGR32[] = {
    {&OutputRGB24::kWriter, kSwap32To24}, {&OutputBGR24::kWriter, kKeep32To24}, {&OutputRGB32::kWriter, kSwap32To32}};
inline constexpr Shortcut kShortcutsFromRGB48[] = {{&OutputRGB24::kWriter, kKeep48To24}};
inline constexpr Shortcut kShortcutsFromBGR48[] = {{&OutputBGR24::kWriter, kKeep48To24}};

inline constexpr Source kRGB24 = WithShortcuts({LmImagingLib::kRGB24, 1, 3}, kShortcutsFromRGB24);
inline constexpr Source kBGR24 = WithShortcuts({LmImagingLib::kBGR24, 1, 3}, kShortcutsFromBGR24);
inline constexpr Source kRGB32 = WithShortcuts({LmImagingLib::kRGB32, 1, 4}, kShortcutsFromRGB32);
inline constexpr Source kBGR32 = WithShortcuts({LmImagingLib::kBGR32, 1, 4}, kShortcutsFromBGR32);
inline constexpr Source kRGB16{LmImagingLib::kRGB16, 1, 2};
inline constexpr Source kRGB48 = WithShortcuts({LmImagingLib::kRGB48, 1, 6}, kShortcutsFromRGB48);
inline constexpr Source kBGR48 = WithShortcuts({LmImagingLib::kBGR48, 1, 6}, kShortcutsFromBGR48);
inline constexpr Source kRGB64{LmImagingLib::kRGB64, 1, 8};
inline constexpr Source kRGBPlanar8{LmImagingLib::kRGBPlanar8, 1, 1, WholeGroups::kInside, kPlanar | kPlain};
inline constexpr Source kRGBPlanar16{LmImagingLib::kRGBPlanar16, 1, 2, WholeGroups::kInside, kPlanar};
inline constexpr Source kBGR10PackedV1{LmImagingLib::kBGR10PackedV1Bytes, 1, 4};
inline constexpr Source kBGR10PackedV2{LmImagingLib::kBGR10PackedV2Word, 1, 4};
inline constexpr Source kRGB12PackedV1{LmImagingLib::kRGB12PackedV1Bytes, 2, 9, WholeGroups::kCover};

}  // namespace Sources

template <class Sample, class Output>
using GrayscaleTo = TwoTapTo<sizeof(Sample) == 1 ? Sources::kGrayscale8 : Sources::kGrayscale16, Output>;
template <class Output>
using Grayscale8SignedTo = LineTo<Sources::kGrayscale8Signed, Output>;
template <class Output>
using GrayscalePackedGEVTo = LineTo<Sources::kGrayscalePackedGEV, Output>;
template <class Output>
using Grayscale12PackedTo = TwoTapTo<Sources::kGrayscale12Packed, Output>;

template <class Output>
using YUV8To = LineTo<Sources::kYUV8_422, Output>;
template <class Output>
using YUV8422GEVTo = LineTo<Sources::kYUV8_422_GEV, Output>;
template <class Output>
using YUV10To = LineTo<Sources::kYUV10, Output>;
template <class Output>
using YUV8444To = LineTo<Sources::kYUV8_444, Output>;
template <class Output>
using YUV8444GEVTo = LineTo<Sources::kYUV8_444_GEV, Output>;
template <class Output>
using YCrCbTo = LineTo<Sources::kYCrCb, Output>;
template <class Output>
using YUV8411To = LineTo<Sources::kYUV8_411, Output>;

template <class Output>
using RGB24PackedTo = LineTo<Sources::kRGB24, Output>;
template <class Output>
using BGR24PackedTo = LineTo<Sources::kBGR24, Output>;
template <class Output>
using RGB32To = LineTo<Sources::kRGB32, Output>;
template <class Output>
using BGR32To = LineTo<Sources::kBGR32, Output>;
template <class Output>
using RGB16To = LineTo<Sources::kRGB16, Output>;
template <class Output>
using RGB48To = LineTo<Sources::kRGB48, Output>;
template <class Output>
using BGR48To = LineTo<Sources::kBGR48, Output>;
template <class Output>
using RGB64To = LineTo<Sources::kRGB64, Output>;
template <class Sample, class Output>
using RGBPlanarTo = LineTo<sizeof(Sample) == 1 ? Sources::kRGBPlanar8 : Sources::kRGBPlanar16, Output>;
template <class Output>
using BGR10PackedV1To = LineTo<Sources::kBGR10PackedV1, Output>;
template <class Output>
using BGR10PackedV2To = LineTo<Sources::kBGR10PackedV2, Output>;
template <class Output>
using RGB12PackedV1To = LineTo<Sources::kRGB12PackedV1, Output>;

}  // namespace LmImagingLib
