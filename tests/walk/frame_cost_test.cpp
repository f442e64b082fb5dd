#include <gtest/gtest.h>
#include <pthread.h>

#include <cstddef>
#include <new>
#include <utility>
#include <vector>

#include "LmImagingLib/Image.h"
#include "LmImagingLib/PixelConverter.h"
#include "LmImagingLib/PixelTypeFactory.h"
#include "LmImagingLib/RGBFilter.h"

// What a frame asks of locks and of the heap must not grow with its lines: at a lock all threads meet. The linker leads
// the library's calls through the counters below.

namespace {

thread_local unsigned tLocks = 0;
thread_local unsigned tAllocations = 0;

}  // namespace

// NOLINTBEGIN(bugprone-reserved-identifier, readability-identifier-naming): names that the linker's --wrap makes.
extern "C" {
int __real_pthread_mutex_lock(pthread_mutex_t* mutex);
int __wrap_pthread_mutex_lock(pthread_mutex_t* mutex) {
  ++tLocks;
  return __real_pthread_mutex_lock(mutex);
}
void* __real__Znwm(std::size_t bytes);
void* __wrap__Znwm(std::size_t bytes) {
  ++tAllocations;
  return __real__Znwm(bytes);
}
void* __real__Znam(std::size_t bytes);
void* __wrap__Znam(std::size_t bytes) {
  ++tAllocations;
  return __real__Znam(bytes);
}
}
// NOLINTEND(bugprone-reserved-identifier, readability-identifier-naming)

namespace LmImagingLib {
namespace {

struct Cost {
  unsigned locks;
  unsigned allocations;
};

template <class Work>
Cost CostOf(const Work& work) {
  const Cost before{tLocks, tAllocations};
  work();
  return {tLocks - before.locks, tAllocations - before.allocations};
}

constexpr unsigned long kWidth = 64;
constexpr unsigned long kFewLines = 6;
constexpr unsigned long kManyLines = 48;
constexpr std::size_t kRoomyFrame = kWidth * kManyLines * 32;

TEST(FrameCost, IsCounted) {
  EXPECT_GE(CostOf([] { PixelTypeFactory::HasPixelType(0x10001); }).locks, 1u);
  EXPECT_GE(CostOf([] { delete PixelTypeFactory::CreatePixelType(0x10001); }).allocations, 1u);
  // Calls of the functions: compilers may leave out a new-expression whose object is not used.
  EXPECT_GE(CostOf([] { ::operator delete[](::operator new[](100)); }).allocations, 1u);
}

TEST(FrameCost, DoesNotGrowWithLines) {
  const std::vector<unsigned char> source(kRoomyFrame, 85);
  std::vector<unsigned char> destination(kRoomyFrame);
  RGBFilter filter(8);
  filter.SetMultipliers(1.6, 1.0, 1.09);
  PixelTypeID from = 0;
  PixelTypeID to = 0;
  for (unsigned long i = 0; PixelTypeFactory::EnumConverters(i, from, to); ++i) {
    const PixelConverter& converter = *PixelTypeFactory::FindConverter(from, to);
    for (const unsigned long flags : {ConversionFlags::kNone, ConversionFlags::kBilinear}) {
      const auto convert = [&](const RGBFilter* frameFilter, unsigned long lines) {
        converter.Convert(frameFilter, source.data(), kWidth, lines, destination.data(), kWidth, lines, kWidth, lines,
                          flags, 0, nullptr, nullptr);
      };
      convert(nullptr, kManyLines);  // chains grow their scratch buffer once, and sources are looked up once
      for (const RGBFilter* const frameFilter : {static_cast<const RGBFilter*>(nullptr), &std::as_const(filter)}) {
        const Cost few = CostOf([&] { convert(frameFilter, kFewLines); });
        const Cost many = CostOf([&] { convert(frameFilter, kManyLines); });
        EXPECT_EQ(few.locks, many.locks) << std::hex << from << " to " << to;
        EXPECT_EQ(few.allocations, many.allocations) << std::hex << from << " to " << to;
        EXPECT_LE(many.locks, 2u) << std::hex << from << " to " << to;  // into the map of contexts and out of it
      }
    }
  }
}

// Padded lines of packed mosaics go through a chain a band at a time.
TEST(FrameCost, OfCheckedImagesDoesNotGrowWithLines) {
  const std::vector<unsigned char> source(kRoomyFrame, 85);
  std::vector<unsigned char> destination(kRoomyFrame);
  for (const PixelTypeID from : {0x10001, 0x20040, 0x420012, 0x20011, 0x440006, 0x20004}) {
    for (const std::size_t padding : {0U, 1U}) {
      for (const unsigned long width : {kWidth, kWidth - 1}) {
        const std::size_t line = *RequiredSize(from, kWidth, 2) - *RequiredSize(from, kWidth, 1) + padding;
        const auto convert = [&](unsigned long lines) {
          const ConstImageView in{from, source.data(), source.size(), width, lines, line};
          const ImageView out{0x20002, destination.data(), destination.size(), width, lines};
          EXPECT_TRUE(ConvertImage(in, out).IsOK());
        };
        convert(kManyLines);
        const Cost few = CostOf([&] { convert(kFewLines); });
        const Cost many = CostOf([&] { convert(kManyLines); });
        EXPECT_EQ(few.locks, many.locks) << std::hex << from;
        EXPECT_EQ(few.allocations, many.allocations) << std::hex << from;
        // The map of contexts, and its context.
        EXPECT_LE(many.allocations, 2u) << std::hex << from;
      }
    }
  }
}

}  // namespace
}  // namespace LmImagingLib
