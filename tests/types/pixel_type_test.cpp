#include <gtest/gtest.h>

#include <memory>

#include "LmImagingLib/PixelType.h"

namespace LmImagingLib {
namespace {

/// A format's class on its own id, or on another one.
template <class Type>
std::unique_ptr<PixelType> Make(const PixelTypeID* id) {
  return id == nullptr ? std::make_unique<Type>() : std::make_unique<Type>(*id);
}

const struct {
  std::unique_ptr<PixelType> (*make)(const PixelTypeID* id);
  PixelTypeID id;
  unsigned bits, bytes;
  bool bayer;
} kClasses[] = {
    {Make<Grayscale4>, 0x10400, 4, 1, false},
    {Make<Grayscale8>, 0x10001, 8, 1, false},
    {Make<Grayscale8Signed>, 0x10401, 8, 1, false},
    {Make<Grayscale10>, 0x10002, 10, 2, false},
    {Make<Grayscale12>, 0x10003, 12, 2, false},
    {Make<Grayscale14>, 0x10004, 14, 2, false},
    {Make<Grayscale16>, 0x10005, 16, 2, false},
    {Make<Grayscale8_DualQuadMultiplexed>, 0x10006, 8, 1, false},
    {Make<Grayscale10_DualQuadMultiplexed>, 0x10007, 10, 2, false},
    {Make<Grayscale10_Packed_GEV>, 0x10008, 10, 2, false},
    {Make<Grayscale12_Packed_GEV>, 0x10009, 12, 2, false},
    {Make<RGB16>, 0x20001, 16, 2, false},
    {Make<RGB24>, 0x20002, 24, 3, false},
    {Make<RGB32>, 0x20003, 32, 4, false},
    {Make<RGB48>, 0x20004, 48, 6, false},
    {Make<RGB64>, 0x20005, 64, 8, false},
    {Make<BGR24>, 0x20006, 24, 3, false},
    {Make<BGR32>, 0x20007, 32, 4, false},
    {Make<RGB48_10Bits>, 0x20008, 10, 6, false},
    {Make<RGB64_10Bits>, 0x20009, 10, 8, false},
    {Make<RGB8_3>, 0x2000A, 8, 3, false},
    {Make<RGB8_4>, 0x2000B, 8, 4, false},
    {Make<RGB48_12Bits>, 0x2000C, 12, 6, false},
    {Make<RGB64_12Bits>, 0x2000D, 12, 8, false},
    {Make<BGR48_10Bits>, 0x20042, 10, 6, false},
    {Make<BGR48_12Bits>, 0x20043, 12, 6, false},
    {Make<BGR10PackedV1>, 0x20044, 32, 4, false},
    {Make<BGR10PackedV2>, 0x20045, 32, 4, false},
    {Make<RGB12PackedV1>, 0x20046, 36, 5, false},
    {Make<BayerRGB8>, 0x20010, 8, 1, true},
    {Make<BayerRGB10>, 0x20011, 10, 2, true},
    {Make<BayerRGB12>, 0x20012, 12, 2, true},
    {Make<BayerRGB14>, 0x20016, 14, 2, true},
    {Make<BayerRGB16>, 0x20020, 14, 2, true},
    {Make<BayerRGB12_Packed_GEV>, 0x20040, 12, 2, true},
    {Make<BayerRGB10_Packed_GEV>, 0x20041, 10, 2, true},
    {Make<YUV8>, 0x40001, 16, 2, false},
    {Make<YUV10>, 0x40002, 20, 4, false},
    {Make<YUV8_444>, 0x40003, 24, 3, false},
    {Make<YCrCb>, 0x40005, 24, 3, false},
    {Make<YUV8_411>, 0x40006, 12, 2, false},
    {Make<YUV8_444_GEV>, 0x40007, 24, 3, false},
    {Make<YUV8_422_GEV>, 0x40008, 16, 2, false},
};

void ExpectType(const PixelType& type, const PixelTypeID& id, unsigned bits, unsigned bytes, bool bayer) {
  EXPECT_EQ(type.GetTypeID(), id);
  EXPECT_EQ(type.GetPixelBitSize(), bits);
  EXPECT_EQ(type.GetPixelByteSize(), bytes);
  EXPECT_EQ(type.IsBayerPattern(), bayer);
}

TEST(PixelType, DescribesItsFormatOnAnyId) {
  ASSERT_EQ(std::size(kClasses), 43u);
  const PixelTypeID gray = 0x10001;
  for (const auto& format : kClasses) {
    SCOPED_TRACE(testing::Message() << std::hex << "0x" << format.id);
    ExpectType(*format.make(nullptr), format.id, format.bits, format.bytes, format.bayer);
    const PixelTypeID variant = format.id | kNormalizedFlag | PixelTypeID{1} << 40;
    ExpectType(*format.make(&variant), variant, format.bits, format.bytes, format.bayer);
    // Outside its colour space a mosaic is none.
    ExpectType(*format.make(&gray), gray, format.bits, format.bytes, false);

    const std::unique_ptr<PixelType> clone(format.make(&variant)->Clone());
    ExpectType(*clone, variant, format.bits, format.bytes, format.bayer);
  }
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
