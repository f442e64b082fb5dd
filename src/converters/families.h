#pragma once

#include "converters/bayer/bayer_converter.h"
#include "converters/grayscale/reorder_converter.h"
#include "converters/grayscale/two_tap_converter.h"

// The catalogue of source layouts. A layout is decoded in the file of its name; here it gets its geometry and the
// names of its converters, which take the writer as their last argument.
namespace LmImagingLib {

namespace scalar {
DecodeKernel Grayscale8Bytes, Grayscale8Signed, Grayscale16, GrayscalePackedGEV, Grayscale12Packed;
DecodeKernel YUV8_422, YUV8_422_GEV, YUV10, YUV8_444, YUV8_444_GEV, YCrCb444, YUV8_411;
DecodeKernel RGB24, BGR24, RGB32, BGR32, RGB16, RGB48, BGR48, RGB64, RGBPlanar8, RGBPlanar16;
DecodeKernel BGR10PackedV1Bytes, BGR10PackedV2Word, RGB12PackedV1Bytes;
}  // namespace scalar

namespace Sources {

constexpr Source Gray(DecodeKernel* decode, std::uint32_t pixels, std::uint32_t bytes, WholeGroups groups) {
  return {decode, pixels, bytes, groups, true, false};
}
constexpr Source Planar(DecodeKernel* decode, std::uint32_t sampleBytes) {
  return {decode, 1, sampleBytes, WholeGroups::kInside, false, true};
}

inline constexpr Source kGrayscale8 = Gray(scalar::Grayscale8Bytes, 1, 1, WholeGroups::kInside);
inline constexpr Source kGrayscale8Signed = Gray(scalar::Grayscale8Signed, 1, 1, WholeGroups::kInside);
inline constexpr Source kGrayscale16 = Gray(scalar::Grayscale16, 1, 2, WholeGroups::kInside);
inline constexpr Source kGrayscalePackedGEV = Gray(scalar::GrayscalePackedGEV, 2, 3, WholeGroups::kCover);
inline constexpr Source kGrayscale12Packed = Gray(scalar::Grayscale12Packed, 2, 3, WholeGroups::kInside);

inline constexpr Source kYUV8_422{scalar::YUV8_422, 2, 4};
inline constexpr Source kYUV8_422_GEV{scalar::YUV8_422_GEV, 2, 4};
inline constexpr Source kYUV10{scalar::YUV10, 2, 8};
inline constexpr Source kYUV8_444{scalar::YUV8_444, 1, 3};
inline constexpr Source kYUV8_444_GEV{scalar::YUV8_444_GEV, 1, 3};
inline constexpr Source kYCrCb{scalar::YCrCb444, 1, 3};
inline constexpr Source kYUV8_411{scalar::YUV8_411, 4, 6, WholeGroups::kYuv411};

inline constexpr Source kRGB24{scalar::RGB24, 1, 3};
inline constexpr Source kBGR24{scalar::BGR24, 1, 3};
inline constexpr Source kRGB32{scalar::RGB32, 1, 4};
inline constexpr Source kBGR32{scalar::BGR32, 1, 4};
inline constexpr Source kRGB16{scalar::RGB16, 1, 2};
inline constexpr Source kRGB48{scalar::RGB48, 1, 6};
inline constexpr Source kBGR48{scalar::BGR48, 1, 6};
inline constexpr Source kRGB64{scalar::RGB64, 1, 8};
inline constexpr Source kRGBPlanar8 = Planar(scalar::RGBPlanar8, 1);
inline constexpr Source kRGBPlanar16 = Planar(scalar::RGBPlanar16, 2);
inline constexpr Source kBGR10PackedV1{scalar::BGR10PackedV1Bytes, 1, 4};
inline constexpr Source kBGR10PackedV2{scalar::BGR10PackedV2Word, 1, 4};
inline constexpr Source kRGB12PackedV1{scalar::RGB12PackedV1Bytes, 2, 9, WholeGroups::kCover};

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
