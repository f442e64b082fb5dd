#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "LmImagingLib/LmImagingLib.h"

// Converters of an application: what they inherit, what is called when, and what becomes of their failures.

namespace LmImagingLib {
namespace {

using LmBaseLib::Result;
using Bytes = std::vector<unsigned char>;

/// Records its calls as text: the operation, the source's first byte, the destination's offset, the pixels.
class Recorder : public PixelConverter {
 public:
  Recorder(PixelTypeID from, unsigned long linesPerStep) : PixelConverter(from, 0x10001, 1, 1, 1, linesPerStep) {}

  Result ConvertLine(const void* source, void* destination, unsigned long pixels) const override {
    Record('L', source, destination, pixels);
    return Result::NOT_IMPLEMENTED;  // which the frame drops
  }
  Result ConvertLastLine(const void* source, void* destination, unsigned long pixels) const override {
    Record('l', source, destination, pixels);
    return Result::NOT_IMPLEMENTED;
  }

  std::string Calls(unsigned long lines, unsigned long flags) const {
    Bytes source(2 * (lines + 1));
    for (std::size_t i = 0; i < source.size(); ++i) source[i] = static_cast<unsigned char>(i);
    mCalls.clear();
    mBase = source.data();
    EXPECT_TRUE(Convert(source.data(), 2, lines, source.data(), 2, lines, 1, lines, flags, 8, nullptr, nullptr).IsOK());
    return mCalls;
  }

 private:
  void Record(char operation, const void* source, const void* destination, unsigned long pixels) const {
    EXPECT_EQ(pixels, 1u);
    const auto offset = static_cast<const unsigned char*>(destination) - mBase;
    mCalls +=
        operation + std::to_string(*static_cast<const unsigned char*>(source)) + ">" + std::to_string(offset) + " ";
  }

  mutable std::string mCalls;
  mutable const unsigned char* mBase = nullptr;
};

// Lines of two bytes, ten from a destination line to the next.
TEST(OwnConverters, AreCalledLineByLine) {
  EXPECT_EQ(Recorder(0x10001, 1).Calls(0, 0), "");
  EXPECT_EQ(Recorder(0x10001, 1).Calls(2, 0), "L0>0 L2>10 ");
  EXPECT_EQ(Recorder(0x10001, 2).Calls(3, 0), "L0>0 l4>20 ");
  EXPECT_EQ(Recorder(0x10001, 3).Calls(8, 0), "L0>0 L6>30 l12>60 l14>70 ");
  EXPECT_EQ(Recorder(0x10001, 0).Calls(1, 0), "L0>0 ");
  // The first half of the source has the even lines, or the odd ones; a line without a partner is left out.
  EXPECT_EQ(Recorder(0x210001, 1).Calls(5, 0), "L0>0 L2>20 L5>10 L7>30 ");
  EXPECT_EQ(Recorder(0x210001, 1).Calls(4, ConversionFlags::kFieldOrder), "L4>0 L6>20 L0>10 L2>30 ");
}

/// Hands each line of two fields to a built-in converter of mosaics, and keeps the first red.
class Handing : public PixelConverter {
 public:
  Handing() : PixelConverter(0x210001, 0x420002, 1, 3, 1, 1) {}
  Result ConvertLine(const void* source, void* /*destination*/, unsigned long pixels) const override {
    Bytes colors(2 * 3 * pixels);
    PixelTypeFactory::FindConverter(0x20010, 0x420002)->ConvertLine(source, colors.data(), pixels);
    reds.push_back(colors[0]);
    return Result::OK;
  }
  mutable Bytes reds;
};

TEST(OwnConverters, HandOnLinesOfFieldsAsUpperOnesOfPairs) {
  const Handing hands;
  const Bytes mosaic{0, 0, 1, 1, 2, 2, 3, 3, 4, 4, 5, 5};
  hands.Convert(mosaic.data(), 2, 6, nullptr, 2, 6, 2, 4, ConversionFlags::kBayerRG, 0, nullptr, nullptr);
  EXPECT_EQ(hands.reds, (Bytes{0, 1, 3, 4}));
}

TEST(OwnConverters, HaveNoOperationsByThemselves) {
  const PixelConverter bare(1, 2, 1, 1, 1, 1);
  Bytes bytes{1, 2};
  EXPECT_EQ(bare.ConvertLine(&bytes[0], &bytes[1], 1).GetCode(), Result::NOT_IMPLEMENTED);
  EXPECT_EQ(bare.ConvertLastLine(&bytes[0], &bytes[1], 1).GetCode(), Result::NOT_IMPLEMENTED);
  EXPECT_EQ(bare.ConvertPixel(&bytes[0], &bytes[1]).GetCode(), Result::NOT_IMPLEMENTED);
  EXPECT_EQ(bytes, (Bytes{1, 2}));
}

/// Converts whole images, or a line or a pixel, by a function.
class ByFunction : public PixelConverter {
 public:
  using Function = std::function<Result(const void* source, void* destination, unsigned long pixels)>;

  ByFunction(PixelTypeID from, PixelTypeID to, Function convert)
      : PixelConverter(from, to, 1, 1, 1, 1), mConvert(std::move(convert)) {}

  using PixelConverter::Convert;
  Result Convert(const void* source, unsigned long, unsigned long, void* destination, unsigned long, unsigned long,
                 unsigned long pixels, unsigned long, unsigned long, unsigned long, void**,
                 unsigned long*) const override {
    return mConvert(source, destination, pixels);
  }
  Result ConvertLine(const void* source, void* destination, unsigned long pixels) const override {
    return mConvert(source, destination, pixels);
  }
  Result ConvertPixel(const void* source, void* destination) const override { return mConvert(source, destination, 1); }

 private:
  Function mConvert;
};

Result Invert(const void* source, void* destination, unsigned long pixels) {
  for (unsigned long i = 0; i < pixels; ++i) {
    static_cast<unsigned char*>(destination)[i] =
        static_cast<unsigned char>(255 - static_cast<const unsigned char*>(source)[i]);
  }
  return Result::OK;
}

TEST(Chains, EndWithTheFirstStageThatFails) {
  const ByFunction fails(1, 2, [](const void*, void*, unsigned long) { return Result(77); });
  const ByFunction inverts(2, 3, Invert);
  const ComplexConverter chain(fails, inverts);
  const Bytes source(4, 1);
  Bytes destination(4, 9);
  void* scratch = nullptr;
  unsigned long size = 0;
  for (void** given : {static_cast<void**>(nullptr), &scratch}) {
    EXPECT_EQ(chain.Convert(source.data(), 4, 1, destination.data(), 4, 1, 4, 1, 0, 0, given, &size).GetCode(), 77);
  }
  delete[] static_cast<unsigned char*>(scratch);
  EXPECT_EQ(chain.ConvertLine(source.data(), destination.data(), 4).GetCode(), 77);
  EXPECT_EQ(chain.ConvertPixel(source.data(), destination.data()).GetCode(), 77);
  EXPECT_EQ(destination, Bytes(4, 9));
}

TEST(Chains, ConvertLinesAndPixels) {
  const ByFunction first(1, 2, Invert);
  const ByFunction second(2, 3, Invert);
  const ComplexConverter chain(first, second);
  const Bytes source{3, 1, 4, 1};
  Bytes destination(4);
  EXPECT_TRUE(chain.ConvertLine(source.data(), destination.data(), 4).IsOK());
  EXPECT_EQ(destination, source);
  EXPECT_TRUE(chain.ConvertPixel(&source[2], destination.data()).IsOK());
  EXPECT_EQ(destination, (Bytes{4, 1, 4, 1}));
  EXPECT_TRUE(PixelTypeFactory::FindConverter(0x10003, 0x10003)->ConvertPixel(&source[0], &destination[2]).IsOK());
  EXPECT_EQ(destination, (Bytes{4, 1, 3, 1}));
}

TEST(Chains, BeginWithZerosBetweenTheirStages) {
  bool writes = true;
  const ByFunction first(1, 2, [&](const void*, void* destination, unsigned long pixels) {
    if (writes) std::memset(destination, 7, pixels);
    return Result::OK;
  });
  const ByFunction second(2, 3, Invert);
  const ComplexConverter chain(first, second);
  const Bytes source(4);
  for (const int value : {255 - 7, 255}) {
    Bytes destination(4);
    EXPECT_TRUE(chain.Convert(source.data(), 4, 1, destination.data(), 4, 1, 4, 1, 0, 0, nullptr, nullptr).IsOK());
    EXPECT_EQ(destination, Bytes(4, static_cast<unsigned char>(value)));
    writes = false;  // by which the pixels of the call before would be seen
  }
}

TEST(Chains, CombineTheStepsOfTheirStages) {
  const PixelConverter a(1, 2, 1, 1, 4, 1), b(2, 3, 1, 1, 6, 2), c(2, 3, 1, 1, 2, 3);
  EXPECT_EQ(ComplexConverter(a, b).GetPixelsPerStep(), 24u);  // a common multiple, not the least one
  EXPECT_EQ(ComplexConverter(a, b).GetLinesPerStep(), 2u);
  EXPECT_EQ(ComplexConverter(a, c).GetPixelsPerStep(), 4u);
  EXPECT_EQ(ComplexConverter(b, c).GetLinesPerStep(), 6u);
}

// The filter of a call is used up by it, whatever becomes of the call; a class that overrides the conversion without a
// filter hands it on.
TEST(OwnConverters, NeverLeakAFilter) {
  RGBFilter black(8);
  black.SetMultipliers(0, 0, 0);
  const PixelConverter& swaps = *PixelTypeFactory::FindConverter(0x420002, 0x420006);
  const Bytes source{1, 2, 3};
  const auto swapped = [&] {
    Bytes destination(3);
    swaps.Convert(source.data(), 1, 1, destination.data(), 1, 1, 1, 1, 0, 0, nullptr, nullptr);
    return destination;
  };
  std::vector<Bytes> seen;
  const ByFunction handsOn(1, 2, [&](const void*, void*, unsigned long) {
    seen = {swapped(), swapped()};
    return Result::OK;
  });
  const ByFunction throws(1, 2, [](const void*, void*, unsigned long) -> Result { throw std::runtime_error("no"); });
  const auto call = [&](const PixelConverter& converter) {
    return converter.Convert(&black, source.data(), 1, 1, nullptr, 1, 1, 1, 1, 0, 0, nullptr, nullptr);
  };
  EXPECT_TRUE(call(handsOn).IsOK());
  EXPECT_EQ(seen, (std::vector<Bytes>{{0, 0, 0}, {3, 2, 1}}));  // the first conversion uses the filter up
  EXPECT_EQ(swapped(), (Bytes{3, 2, 1}));
  EXPECT_THROW(call(throws), std::runtime_error);
  EXPECT_EQ(swapped(), (Bytes{3, 2, 1}));
}

}  // namespace
}  // namespace LmImagingLib
