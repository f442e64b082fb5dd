#include "LmImagingLib/PixelType.h"

namespace LmImagingLib {

namespace {

// A mosaic class built on an id of another colour space describes no mosaic.
bool IsMosaic(const PixelTypeID& id) { return (id & kColorSpaceRGB) != 0; }

}  // namespace

Grayscale4::Grayscale4() : Grayscale4(0x10400) {}
Grayscale4::Grayscale4(const PixelTypeID& id) : PixelType(id, 4, 1, false) {}

Grayscale8::Grayscale8() : Grayscale8(0x10001) {}
Grayscale8::Grayscale8(const PixelTypeID& id) : PixelType(id, 8, 1, false) {}

Grayscale8Signed::Grayscale8Signed() : Grayscale8Signed(0x10401) {}
Grayscale8Signed::Grayscale8Signed(const PixelTypeID& id) : PixelType(id, 8, 1, false) {}

Grayscale10::Grayscale10() : Grayscale10(0x10002) {}
Grayscale10::Grayscale10(const PixelTypeID& id) : PixelType(id, 10, 2, false) {}

Grayscale12::Grayscale12() : Grayscale12(0x10003) {}
Grayscale12::Grayscale12(const PixelTypeID& id) : PixelType(id, 12, 2, false) {}

Grayscale14::Grayscale14() : Grayscale14(0x10004) {}
Grayscale14::Grayscale14(const PixelTypeID& id) : PixelType(id, 14, 2, false) {}

Grayscale16::Grayscale16() : Grayscale16(0x10005) {}
Grayscale16::Grayscale16(const PixelTypeID& id) : PixelType(id, 16, 2, false) {}

Grayscale8_DualQuadMultiplexed::Grayscale8_DualQuadMultiplexed() : Grayscale8_DualQuadMultiplexed(0x10006) {}
Grayscale8_DualQuadMultiplexed::Grayscale8_DualQuadMultiplexed(const PixelTypeID& id) : PixelType(id, 8, 1, false) {}

Grayscale10_DualQuadMultiplexed::Grayscale10_DualQuadMultiplexed() : Grayscale10_DualQuadMultiplexed(0x10007) {}
Grayscale10_DualQuadMultiplexed::Grayscale10_DualQuadMultiplexed(const PixelTypeID& id) : PixelType(id, 10, 2, false) {}

Grayscale10_Packed_GEV::Grayscale10_Packed_GEV() : Grayscale10_Packed_GEV(0x10008) {}
Grayscale10_Packed_GEV::Grayscale10_Packed_GEV(const PixelTypeID& id) : PixelType(id, 10, 2, false) {}

Grayscale12_Packed_GEV::Grayscale12_Packed_GEV() : Grayscale12_Packed_GEV(0x10009) {}
Grayscale12_Packed_GEV::Grayscale12_Packed_GEV(const PixelTypeID& id) : PixelType(id, 12, 2, false) {}

RGB16::RGB16() : RGB16(0x20001) {}
RGB16::RGB16(const PixelTypeID& id) : PixelType(id, 16, 2, false) {}

RGB24::RGB24() : RGB24(0x20002) {}
RGB24::RGB24(const PixelTypeID& id) : PixelType(id, 24, 3, false) {}

RGB32::RGB32() : RGB32(0x20003) {}
RGB32::RGB32(const PixelTypeID& id) : PixelType(id, 32, 4, false) {}

RGB48::RGB48() : RGB48(0x20004) {}
RGB48::RGB48(const PixelTypeID& id) : PixelType(id, 48, 6, false) {}

RGB64::RGB64() : RGB64(0x20005) {}
RGB64::RGB64(const PixelTypeID& id) : PixelType(id, 64, 8, false) {}

BGR24::BGR24() : BGR24(0x20006) {}
BGR24::BGR24(const PixelTypeID& id) : PixelType(id, 24, 3, false) {}

BGR32::BGR32() : BGR32(0x20007) {}
BGR32::BGR32(const PixelTypeID& id) : PixelType(id, 32, 4, false) {}

RGB48_10Bits::RGB48_10Bits() : RGB48_10Bits(0x20008) {}
RGB48_10Bits::RGB48_10Bits(const PixelTypeID& id) : PixelType(id, 10, 6, false) {}

RGB64_10Bits::RGB64_10Bits() : RGB64_10Bits(0x20009) {}
RGB64_10Bits::RGB64_10Bits(const PixelTypeID& id) : PixelType(id, 10, 8, false) {}

RGB8_3::RGB8_3() : RGB8_3(0x2000A) {}
RGB8_3::RGB8_3(const PixelTypeID& id) : PixelType(id, 8, 3, false) {}

RGB8_4::RGB8_4() : RGB8_4(0x2000B) {}
RGB8_4::RGB8_4(const PixelTypeID& id) : PixelType(id, 8, 4, false) {}

RGB48_12Bits::RGB48_12Bits() : RGB48_12Bits(0x2000C) {}
RGB48_12Bits::RGB48_12Bits(const PixelTypeID& id) : PixelType(id, 12, 6, false) {}

RGB64_12Bits::RGB64_12Bits() : RGB64_12Bits(0x2000D) {}
RGB64_12Bits::RGB64_12Bits(const PixelTypeID& id) : PixelType(id, 12, 8, false) {}

BGR48_10Bits::BGR48_10Bits() : BGR48_10Bits(0x20042) {}
BGR48_10Bits::BGR48_10Bits(const PixelTypeID& id) : PixelType(id, 10, 6, false) {}

BGR48_12Bits::BGR48_12Bits() : BGR48_12Bits(0x20043) {}
BGR48_12Bits::BGR48_12Bits(const PixelTypeID& id) : PixelType(id, 12, 6, false) {}

BGR10PackedV1::BGR10PackedV1() : BGR10PackedV1(0x20044) {}
BGR10PackedV1::BGR10PackedV1(const PixelTypeID& id) : PixelType(id, 32, 4, false) {}

BGR10PackedV2::BGR10PackedV2() : BGR10PackedV2(0x20045) {}
BGR10PackedV2::BGR10PackedV2(const PixelTypeID& id) : PixelType(id, 32, 4, false) {}

RGB12PackedV1::RGB12PackedV1() : RGB12PackedV1(0x20046) {}
RGB12PackedV1::RGB12PackedV1(const PixelTypeID& id) : PixelType(id, 36, 5, false) {}

BayerRGB8::BayerRGB8() : BayerRGB8(0x20010) {}
BayerRGB8::BayerRGB8(const PixelTypeID& id) : PixelType(id, 8, 1, IsMosaic(id)) {}

BayerRGB10::BayerRGB10() : BayerRGB10(0x20011) {}
BayerRGB10::BayerRGB10(const PixelTypeID& id) : PixelType(id, 10, 2, IsMosaic(id)) {}

BayerRGB12::BayerRGB12() : BayerRGB12(0x20012) {}
BayerRGB12::BayerRGB12(const PixelTypeID& id) : PixelType(id, 12, 2, IsMosaic(id)) {}

BayerRGB14::BayerRGB14() : BayerRGB14(0x20016) {}
BayerRGB14::BayerRGB14(const PixelTypeID& id) : PixelType(id, 14, 2, IsMosaic(id)) {}

BayerRGB16::BayerRGB16() : BayerRGB16(0x20020) {}
BayerRGB16::BayerRGB16(const PixelTypeID& id) : PixelType(id, 14, 2, IsMosaic(id)) {}

BayerRGB12_Packed_GEV::BayerRGB12_Packed_GEV() : BayerRGB12_Packed_GEV(0x20040) {}
BayerRGB12_Packed_GEV::BayerRGB12_Packed_GEV(const PixelTypeID& id) : PixelType(id, 12, 2, IsMosaic(id)) {}

BayerRGB10_Packed_GEV::BayerRGB10_Packed_GEV() : BayerRGB10_Packed_GEV(0x20041) {}
BayerRGB10_Packed_GEV::BayerRGB10_Packed_GEV(const PixelTypeID& id) : PixelType(id, 10, 2, IsMosaic(id)) {}

YUV8::YUV8() : YUV8(0x40001) {}
YUV8::YUV8(const PixelTypeID& id) : PixelType(id, 16, 2, false) {}

YUV10::YUV10() : YUV10(0x40002) {}
YUV10::YUV10(const PixelTypeID& id) : PixelType(id, 20, 4, false) {}

YUV8_444::YUV8_444() : YUV8_444(0x40003) {}
YUV8_444::YUV8_444(const PixelTypeID& id) : PixelType(id, 24, 3, false) {}

YCrCb::YCrCb() : YCrCb(0x40005) {}
YCrCb::YCrCb(const PixelTypeID& id) : PixelType(id, 24, 3, false) {}

YUV8_411::YUV8_411() : YUV8_411(0x40006) {}
YUV8_411::YUV8_411(const PixelTypeID& id) : PixelType(id, 12, 2, false) {}

YUV8_444_GEV::YUV8_444_GEV() : YUV8_444_GEV(0x40007) {}
YUV8_444_GEV::YUV8_444_GEV(const PixelTypeID& id) : PixelType(id, 24, 3, false) {}

YUV8_422_GEV::YUV8_422_GEV() : YUV8_422_GEV(0x40008) {}
YUV8_422_GEV::YUV8_422_GEV(const PixelTypeID& id) : PixelType(id, 16, 2, false) {}

}  // namespace LmImagingLib
