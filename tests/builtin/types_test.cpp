#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <set>
#include <string>

#include "LmImagingLib/PixelConverter.h"
#include "LmImagingLib/PixelTypeFactory.h"
#include "model/registered.h"
#include "types/type_name.h"

namespace LmImagingLib {
namespace {

// Applications show and store these names; every other type has a composed one.
const std::map<PixelTypeID, std::string> kNames = {
    {0x10006, "Grayscale, 8-bits, Inverted Quad taps multiplexed on dual taps"},
    {0x10007, "Grayscale, 10-bits, Inverted Quad taps"},
    {0x110007, "Grayscale, 10-bits, Normalized, Inverted Quad taps"},
    {0x10008, "Grayscale, 10-bits, Packed, GEV"},
    {0x10009, "Grayscale, 12-bits, Packed, GEV"},
    {0x20006, "BGR 24-bits"},
    {0x420006, "BGR 24-bits, Packed"},
    {0x2000A, "RGB 24-bits (3 X 8-bits)"},
    {0x42000A, "RGB 24-bits (3 X 8-bits), Packed"},
    {0x82000A, "RGB 24-bits (3 X 8-bits), Planar"},
    {0x2000B, "RGB 32-bits (4 X 8-bits)"},
    {0x42000B, "RGB 32-bits (4 X 8-bits), Packed"},
    {0x82000B, "RGB 32-bits (4 X 8-bits), Planar"},
    {0x20008, "RGB 48-bits (3 x 10 bits)"},
    {0x120008, "RGB 48-bits (3 x 10 bits), Normalized"},
    {0x2000C, "RGB 48-bits (3 x 12 bits)"},
    {0x12000C, "RGB 48-bits (3 x 12 bits), Normalized"},
    {0x20042, "BGR 48-bits (3 x 10 bits)"},
    {0x20043, "BGR 48-bits (3 x 12 bits)"},
    {0x20009, "RGB 64-bits (4 x 10 bits)"},
    {0x120009, "RGB 64-bits (4 x 10 bits), Normalized"},
    {0x2000D, "RGB 64-bits (4 x 12 bits)"},
    {0x12000D, "RGB 64-bits (4 x 12 bits), Normalized"},
    {0x410801, "Mono1p"},
    {0x410802, "Mono2p"},
    {0x410804, "Mono4p"},
    {0x41080A, "Mono10p"},
    {0x41080E, "Mono14p"},
    {0x41084A, "Mono10 (CSI-2)"},
    {0x41084C, "Mono12 (CSI-2)"},
    {0x41084E, "Mono14 (CSI-2)"},
    {0x42090A, "Bayer10p"},
    {0x42090E, "Bayer14p"},
    {0x42094A, "Bayer10 (CSI-2)"},
    {0x42094C, "Bayer12 (CSI-2)"},
    {0x42094E, "Bayer14 (CSI-2)"},
    {0x20A20, "RGB10p32"},
    {0x20A21, "RGB10V1Packed"},
    {0x20A30, "RGB565p"},
    {0x420A0A, "RGB10p"},
    {0x420A0C, "RGB12p"},
    {0x420A1A, "BGR10p"},
    {0x420A1C, "BGR12p"},
    {0x20A40, "BGR48"},
    {0x20A41, "BGR64"},
    {0x40001, "YUV 8-bits 4:2:2"},
    {0x240001, "YUV 8-bits 4:2:2, Interlaced"},
    {0x40008, "YUV 8-bits 4:2:2 GEV"},
    {0x440003, "YUV 8-bits 4:4:4, Packed"},
    {0x640003, "YUV 8-bits 4:4:4, Packed, Interlaced"},
    {0x440007, "YUV 8-bits 4:4:4 GEV, Packed"},
    {0x440005, "YCrCb 8-bits 4:4:4, Packed"},
    {0x640005, "YCrCb 8-bits 4:4:4, Packed, Interlaced"},
    {0x440006, "YUV 8-bits 4:1:1, Packed"},
    {0x640006, "YUV 8-bits 4:1:1, Packed, Interlaced"},
    {0x40002, "YUV 10-bits 4:2:2"},
    {0x240002, "YUV 10-bits 4:2:2, Interlaced"},
    {0x140002, "YUV 10-bits 4:2:2, Normalized"},
    {0x340002, "YUV 10-bits 4:2:2, Normalized, Interlaced"},
};

TEST(BuiltinTypes, AreTheOnesOfTheTable) {
  std::set<PixelTypeID> builtin;
  for (unsigned long i = 0;; ++i) {
    const std::unique_ptr<PixelType> type(PixelTypeFactory::CreatePixelType(i, {}));
    if (type == nullptr) break;
    if (type->GetTypeID() >> 32 == 0) builtin.insert(type->GetTypeID());
  }
  EXPECT_EQ(builtin, model::AllTypes(model::RegisteredNow()));
  EXPECT_FALSE(PixelTypeFactory::HasPixelType(Grayscale4().GetTypeID()));
}

TEST(BuiltinTypes, AreDescribedAndNamed) {
  for (const PixelTypeID id : model::AllTypes(model::RegisteredNow())) {
    SCOPED_TRACE(testing::Message() << std::hex << "0x" << id);
    const PixelType* const type = PixelTypeFactory::FindPixelType(id);
    ASSERT_NE(type, nullptr);
    const model::Source& expected = model::SourceOf(id);
    EXPECT_EQ(type->GetTypeID(), id);
    EXPECT_EQ(type->GetPixelBitSize(), expected.bits);
    EXPECT_EQ(type->GetPixelByteSize(), expected.bytes);
    EXPECT_EQ(type->IsBayerPattern(), expected.family == model::Family::BAYER);

    const auto named = kNames.find(id);
    EXPECT_EQ(PixelTypeFactory::GetPixelTypeName(id),
              named != kNames.end() ? named->second : ComposeTypeName(id, *type));
    EXPECT_NE(dynamic_cast<const IdentityConverter*>(PixelTypeFactory::FindConverter(id, id)), nullptr);
  }
}

}  // namespace
}  // namespace LmImagingLib
