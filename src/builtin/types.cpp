// The pixel types that the library registers at load, with their names; types without one get a composed name.
#include <initializer_list>

#include "LmImagingLib/PixelType.h"
#include "LmImagingLib/PixelTypeFactory.h"
#include "builtin/builtin.h"

namespace LmImagingLib::Builtin {

namespace {

struct Named {
  PixelTypeID id;
  const char* name;
};

template <class Type>
void Register(std::initializer_list<Named> types) {
  for (const Named& type : types) {
    const Type description(type.id);
    PixelTypeFactory::RegisterPixelType(type.id, &description, type.name);
  }
}

template <class Type>
void Register(std::initializer_list<PixelTypeID> ids) {
  for (const PixelTypeID& id : ids) Register<Type>({Named{id, nullptr}});
}

}  // namespace

void RegisterBuiltinTypes() {
  Register<Grayscale8>({0x10001, 0x210001, 0x1010001, 0x2010001, 0x4010001, 0x8010001, 0x10010001});
  Register<Grayscale8_DualQuadMultiplexed>(
      {Named{0x10006, "Grayscale, 8-bits, Inverted Quad taps multiplexed on dual taps"}});
  Register<Grayscale8Signed>({0x10401});
  Register<Grayscale10>({0x10002,   0x210002,  0x110002,  0x310002,  0x1010002, 0x1110002, 0x2010002, 0x2110002,
                         0x4010002, 0x4110002, 0x8010002, 0x8110002, 0x410002,  0x610002,  0x1410002, 0x1610002,
                         0x2410002, 0x2610002, 0x4410002, 0x4610002, 0x8410002, 0x8610002});
  Register<Grayscale10_DualQuadMultiplexed>({{0x10007, "Grayscale, 10-bits, Inverted Quad taps"},
                                             {0x110007, "Grayscale, 10-bits, Normalized, Inverted Quad taps"}});
  Register<Grayscale10_Packed_GEV>({Named{0x10008, "Grayscale, 10-bits, Packed, GEV"}});
  Register<Grayscale12>({0x10003,   0x210003,  0x110003,  0x310003,  0x1010003, 0x1110003, 0x2010003, 0x2110003,
                         0x4010003, 0x4110003, 0x8010003, 0x8110003, 0x410003,  0x610003,  0x1410003, 0x1610003,
                         0x2410003, 0x2610003, 0x4410003, 0x4610003, 0x8410003, 0x8610003});
  Register<Grayscale12_Packed_GEV>({Named{0x10009, "Grayscale, 12-bits, Packed, GEV"}});
  Register<Grayscale14>({0x10004, 0x210004, 0x110004, 0x310004});
  Register<Grayscale16>({0x10005, 0x210005, 0x110005, 0x310005});
  Register<BayerRGB8>({0x20010, 0x1020010, 0x2020010, 0x4020010, 0x8020010});
  Register<BayerRGB10>({0x20011, 0x220011, 0x120011, 0x320011, 0x1020011, 0x1120011, 0x2020011, 0x2120011, 0x4020011,
                        0x4120011, 0x8020011, 0x8120011, 0x420011, 0x1420011, 0x2420011, 0x4420011, 0x8420011});
  Register<BayerRGB10_Packed_GEV>({0x20041});
  Register<BayerRGB12>({0x20012, 0x120012, 0x1020012, 0x1120012, 0x2020012, 0x2120012, 0x4020012, 0x4120012, 0x8020012,
                        0x8120012, 0x420012, 0x1420012, 0x2420012, 0x4420012, 0x8420012});
  Register<BayerRGB12_Packed_GEV>({0x20040});
  Register<BayerRGB14>({0x20016, 0x120016});
  Register<BayerRGB16>({0x20020});
  Register<RGB16>({0x20001});
  Register<RGB24>({0x20002, 0x420002, 0x820002});
  Register<BGR24>({{0x20006, "BGR 24-bits"}, {0x420006, "BGR 24-bits, Packed"}});
  Register<RGB8_3>({{0x2000A, "RGB 24-bits (3 X 8-bits)"},
                    {0x42000A, "RGB 24-bits (3 X 8-bits), Packed"},
                    {0x82000A, "RGB 24-bits (3 X 8-bits), Planar"}});
  Register<RGB32>({0x20003});
  Register<BGR32>({0x20007});
  Register<RGB8_4>({{0x2000B, "RGB 32-bits (4 X 8-bits)"},
                    {0x42000B, "RGB 32-bits (4 X 8-bits), Packed"},
                    {0x82000B, "RGB 32-bits (4 X 8-bits), Planar"}});
  Register<RGB48>({0x20004, 0x120004, 0x820004});
  Register<RGB48_10Bits>({{0x20008, "RGB 48-bits (3 x 10 bits)"}, {0x120008, "RGB 48-bits (3 x 10 bits), Normalized"}});
  Register<RGB48_10Bits>({0x820008});
  Register<RGB48_12Bits>({{0x2000C, "RGB 48-bits (3 x 12 bits)"}, {0x12000C, "RGB 48-bits (3 x 12 bits), Normalized"}});
  Register<RGB48_12Bits>({0x82000C});
  Register<BGR48_10Bits>({Named{0x20042, "BGR 48-bits (3 x 10 bits)"}});
  Register<BGR48_12Bits>({Named{0x20043, "BGR 48-bits (3 x 12 bits)"}});
  Register<RGB64>({0x20005, 0x120005});
  Register<RGB64_10Bits>({{0x20009, "RGB 64-bits (4 x 10 bits)"}, {0x120009, "RGB 64-bits (4 x 10 bits), Normalized"}});
  Register<RGB64_12Bits>({{0x2000D, "RGB 64-bits (4 x 12 bits)"}, {0x12000D, "RGB 64-bits (4 x 12 bits), Normalized"}});
  Register<BGR10PackedV1>({0x20044});
  Register<BGR10PackedV2>({0x20045});
  Register<RGB12PackedV1>({0x20046});
  Register<YUV8>({{0x40001, "YUV 8-bits 4:2:2"}, {0x240001, "YUV 8-bits 4:2:2, Interlaced"}});
  Register<YUV8_422_GEV>({Named{0x40008, "YUV 8-bits 4:2:2 GEV"}});
  Register<YUV8_444>({{0x440003, "YUV 8-bits 4:4:4, Packed"}, {0x640003, "YUV 8-bits 4:4:4, Packed, Interlaced"}});
  Register<YUV8_444_GEV>({Named{0x440007, "YUV 8-bits 4:4:4 GEV, Packed"}});
  Register<YCrCb>({{0x440005, "YCrCb 8-bits 4:4:4, Packed"}, {0x640005, "YCrCb 8-bits 4:4:4, Packed, Interlaced"}});
  Register<YUV8_411>({{0x440006, "YUV 8-bits 4:1:1, Packed"}, {0x640006, "YUV 8-bits 4:1:1, Packed, Interlaced"}});
  Register<YUV10>({{0x40002, "YUV 10-bits 4:2:2"},
                   {0x240002, "YUV 10-bits 4:2:2, Interlaced"},
                   {0x140002, "YUV 10-bits 4:2:2, Normalized"},
                   {0x340002, "YUV 10-bits 4:2:2, Normalized, Interlaced"}});
}

}  // namespace LmImagingLib::Builtin
