#include <gtest/gtest.h>

#include <initializer_list>
#include <memory>

#include "LmImagingLib/PixelType.h"
#include "model/catalogue.h"

namespace LmImagingLib {
namespace {

void ExpectType(const PixelType& type, const PixelTypeID& id, unsigned bits, unsigned bytes, bool bayer) {
  EXPECT_EQ(type.GetTypeID(), id);
  EXPECT_EQ(type.GetPixelBitSize(), bits);
  EXPECT_EQ(type.GetPixelByteSize(), bytes);
  EXPECT_EQ(type.IsBayerPattern(), bayer);
}

/// Checks a format's class on its own id and on others.
template <class Type>
void CheckClass(const PixelTypeID& id) {
  SCOPED_TRACE(testing::Message() << std::hex << "0x" << id);
  const bool isPlain = model::AllTypes(model::Registered::STANDARD).count(id) != 0;
  const model::Source& source = model::SourceOf(isPlain ? id : id | kPackedFlag);
  const bool bayer = source.family == model::Family::BAYER;
  ExpectType(Type(), id, source.bits, source.bytes, bayer);
  const PixelTypeID variant = id | kNormalizedFlag | PixelTypeID{1} << 40;
  ExpectType(Type(variant), variant, source.bits, source.bytes, bayer);
  const std::unique_ptr<PixelType> clone(Type(variant).Clone());
  ExpectType(*clone, variant, source.bits, source.bytes, bayer);
  // Outside its colour space a mosaic is none.
  ExpectType(Type(0x10001), 0x10001, source.bits, source.bytes, false);
}

template <class... Types>
void CheckClasses(std::initializer_list<PixelTypeID> ids) {
  ASSERT_EQ(ids.size(), sizeof...(Types));
  const PixelTypeID* id = ids.begin();
  (CheckClass<Types>(*id++), ...);
}

TEST(PixelType, DescribesItsFormatOnAnyId) {
  CheckClasses<Grayscale8, Grayscale8Signed, Grayscale10, Grayscale12, Grayscale14, Grayscale16,
               Grayscale8_DualQuadMultiplexed, Grayscale10_DualQuadMultiplexed, Grayscale10_Packed_GEV,
               Grayscale12_Packed_GEV, RGB16, RGB24, RGB32, RGB48, RGB64, BGR24, BGR32, RGB48_10Bits, RGB64_10Bits,
               RGB8_3, RGB8_4, RGB48_12Bits, RGB64_12Bits, BGR48_10Bits, BGR48_12Bits, BGR10PackedV1, BGR10PackedV2,
               RGB12PackedV1, BayerRGB8, BayerRGB10, BayerRGB12, BayerRGB14, BayerRGB16, BayerRGB12_Packed_GEV,
               BayerRGB10_Packed_GEV, YUV8, YUV10, YUV8_444, YCrCb, YUV8_411, YUV8_444_GEV, YUV8_422_GEV>(
      {0x10001, 0x10401, 0x10002, 0x10003, 0x10004, 0x10005, 0x10006, 0x10007, 0x10008, 0x10009, 0x20001,
       0x20002, 0x20003, 0x20004, 0x20005, 0x20006, 0x20007, 0x20008, 0x20009, 0x2000A, 0x2000B, 0x2000C,
       0x2000D, 0x20042, 0x20043, 0x20044, 0x20045, 0x20046, 0x20010, 0x20011, 0x20012, 0x20016, 0x20020,
       0x20040, 0x20041, 0x40001, 0x40002, 0x40003, 0x40005, 0x40006, 0x40007, 0x40008});
  ExpectType(Grayscale4(), 0x10400, 4, 1, false);  // which is not registered
}

TEST(PixelType, SizesBuffers) {
  const struct {
    PixelType type;
    unsigned long width, height, size;
  } cases[] = {
      // Two samples in three bytes, by the Packed flag alone.
      {Grayscale10(0x410002), 3, 1, 6},
      {Grayscale10(0x410002), 3, 3, 15},
      {Grayscale12(0x610003), 4, 2, 12},
      {BayerRGB10(0x420011), 3, 1, 6},
      {BayerRGB12(0x1420012), 5, 1, 9},
      {BayerRGB10(0x410002), 3, 1, 6},
      {Grayscale10(0x450002), 2, 1, 3},  // the grayscale bit decides, not the whole colour space
      {Grayscale10_Packed_GEV(), 3, 1, 6},
      {Grayscale10_Packed_GEV(), 4, 1, 8},
      {BayerRGB12_Packed_GEV(), 3, 1, 6},
      {BayerRGB14(0x420016), 3, 1, 6},
      {BayerRGB14(0x420016), 4, 1, 8},
      {Grayscale8(0x410001), 3, 1, 3},
      {RGB48_10Bits(0x420008), 3, 1, 18},
      {YUV8_411(0x440006), 4, 1, 8},
      // Unpacked pixels of 24 bits take four bytes.
      {RGB24(), 3, 2, 24},
      {RGB24(0x420002), 3, 2, 18},
      {RGB24(0x820002), 3, 2, 24},
      {BGR24(), 1, 1, 4},
      {BGR24(0x420006), 1, 1, 3},
      {YUV8_444(), 5, 1, 20},
      {YUV8_444(0x440003), 5, 1, 15},
      {YUV8_444_GEV(), 1, 1, 4},
      {YCrCb(0x440005), 1, 1, 3},
      {RGB8_3(), 1, 1, 3},
      {RGB12PackedV1(), 2, 1, 10},
      // Sizes wrap at 32 bits, and so does every step towards them.
      {Grayscale8(), 0x10000, 0x10000, 0},
      {Grayscale8(), static_cast<unsigned long>(0x100000005), 1, 5},
      {RGB32(), 0x40000001, 1, 4},
      {RGB24(), 0x10001, 0x4000, 0x10000},
      {Grayscale10(0x410002), 0xFFFFFFFF, 1, 0},
      {Grayscale10(0x410002), 0x55555556, 1, 1},
      {Grayscale16(), 0, 7, 0},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(c.type.GetBufferSizeFor(c.width, c.height), c.size)
        << std::hex << "0x" << c.type.GetTypeID() << std::dec << ", " << c.width << " x " << c.height;
  }
}

/// A description that works its values out.
class Overriding : public PixelType {
 public:
  Overriding() : PixelType(0x20003, 32, 4, false) {}
  const PixelTypeID& GetTypeID() const override { return mOwn; }
  unsigned short GetPixelBitSize() const override { return 10; }
  unsigned short GetPixelByteSize() const override { return 2; }
  bool IsBayerPattern() const override { return true; }

 private:
  const PixelTypeID mOwn = 0x420011;
};

TEST(PixelType, HonoursWhatASubclassTells) {
  const Overriding type;
  EXPECT_EQ(type.GetBufferSizeFor(3, 1), 6u);
  const std::unique_ptr<PixelType> clone(type.Clone());
  ExpectType(*clone, 0x420011, 10, 2, true);
}

}  // namespace
}  // namespace LmImagingLib
