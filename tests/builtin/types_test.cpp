#include <gtest/gtest.h>

#include "LmImagingLib/PixelConverter.h"
#include "LmImagingLib/PixelTypeFactory.h"
#include "model/registered.h"

namespace LmImagingLib {
namespace {

TEST(BuiltinTypes, AreDescribed) {
  EXPECT_FALSE(PixelTypeFactory::HasPixelType(Grayscale4().GetTypeID()));
  for (const PixelTypeID id : model::AllTypes(model::RegisteredNow())) {
    SCOPED_TRACE(testing::Message() << std::hex << "0x" << id);
    const PixelType* const type = PixelTypeFactory::FindPixelType(id);
    ASSERT_NE(type, nullptr);
    const model::Source& expected = model::SourceOf(id);
    EXPECT_EQ(type->GetTypeID(), id);
    EXPECT_EQ(type->GetPixelBitSize(), expected.bits);
    EXPECT_EQ(type->GetPixelByteSize(), expected.bytes);
    EXPECT_EQ(type->IsBayerPattern(), expected.family == model::Family::BAYER);
    EXPECT_NE(dynamic_cast<const IdentityConverter*>(PixelTypeFactory::FindConverter(id, id)), nullptr);
  }
}

}  // namespace
}  // namespace LmImagingLib
