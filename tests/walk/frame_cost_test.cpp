#include <gtest/gtest.h>
#include <pthread.h>

#include <cstddef>
#include <functional>
#include <new>
#include <string>
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
thread_local unsigned tFailing = 0;  // the allocation that fails, counted down; 0 for none

void CountAllocation() {
  ++tAllocations;
  if (tFailing != 0 && --tFailing == 0) throw std::bad_alloc();
}

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
  CountAllocation();
  return __real__Znwm(bytes);
}
void* __real__Znam(std::size_t bytes);
void* __wrap__Znam(std::size_t bytes) {
  CountAllocation();
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
        EXPECT_EQ(many.locks, 0u) << std::hex << from << " to " << to;
      }
    }
  }
}

// Padded lines of packed mosaics go through a chain a band at a time.
TEST(FrameCost, OfCheckedImagesDoesNotGrowWithLines) {
  const std::vector<unsigned char> source(kRoomyFrame, 85);
  std::vector<unsigned char> destination(kRoomyFrame);
  for (const PixelTypeID from : {0x10001, 0x20040, 0x420012, 0x20011, 0x440006, 0x20004}) {
    ConvertOptions options;
    if (PixelTypeFactory::FindPixelType(from)->IsBayerPattern()) options.flags = ConversionFlags::kBayerGR;
    for (const std::size_t padding : {0U, 1U}) {
      for (const unsigned long width : {kWidth, kWidth - 1}) {
        const std::size_t line = *RequiredSize(from, kWidth, 2) - *RequiredSize(from, kWidth, 1) + padding;
        const auto convert = [&](unsigned long lines) {
          const ConstImageView in{from, source.data(), source.size(), width, lines, line};
          const ImageView out{0x20002, destination.data(), destination.size(), width, lines};
          EXPECT_TRUE(ConvertImage(in, out, options).IsOK());
        };
        convert(kManyLines);
        const Cost few = CostOf([&] { convert(kFewLines); });
        const Cost many = CostOf([&] { convert(kManyLines); });
        EXPECT_EQ(few.locks, many.locks) << std::hex << from;
        EXPECT_EQ(few.allocations, many.allocations) << std::hex << from;
        EXPECT_EQ(many.allocations, 0u) << std::hex << from;
      }
    }
  }
}

/// Calls `work` with one allocation failing after the other, until none is left to fail.
/// @param work  returns whether it succeeded
template <class Work>
void FailEachAllocation(const Work& work) {
  for (unsigned failing = 1; failing < 1000; ++failing) {
    tFailing = failing;
    const bool succeeded = work();
    const bool failed = tFailing == 0;
    tFailing = 0;
    EXPECT_EQ(succeeded, !failed) << "allocation " << failing;
    if (!failed) return;
  }
  FAIL() << "no end of allocations";
}

TEST(FailingAllocations, LeaveTheRegistryAsItWas) {
  using LmBaseLib::Result;
  constexpr PixelTypeID kFrom = 0x60000000010001, kTo = 0x60000000010002;
  const Grayscale8 type(kFrom);
  const std::string name(100, 'n');
  FailEachAllocation([&] {
    const Result result = PixelTypeFactory::RegisterPixelType(kFrom, &type, name.c_str());
    if (result.IsOK()) return true;
    EXPECT_EQ(result.GetCode(), Result::NOT_ENOUGH_MEMORY);
    EXPECT_FALSE(PixelTypeFactory::HasPixelType(kFrom));
    EXPECT_FALSE(PixelTypeFactory::HasConverter(kFrom, kFrom));
    EXPECT_STREQ(PixelTypeFactory::GetPixelTypeName(kFrom), "Unregistered pixel type");
    return false;
  });
  EXPECT_EQ(PixelTypeFactory::GetPixelTypeName(kFrom), name);
  static const PixelConverter sConverter(kFrom, kTo, 1, 1, 1, 1);  // stays registered
  FailEachAllocation([&] {
    const bool done = PixelTypeFactory::RegisterPixelConverter(sConverter).IsOK();
    EXPECT_EQ(PixelTypeFactory::HasConverter(kFrom, kTo), done);
    return done;
  });
  FailEachAllocation([&] {
    const bool done = PixelTypeFactory::ClonePixelConverters(kFrom, kTo).IsOK();
    EXPECT_EQ(PixelTypeFactory::HasConverter(kTo, kTo), done);
    return done;
  });
}

// Wide images, whose rows and bands are not on the stack, with tables that are derived for the call, in two parts.
TEST(FailingAllocations, LeaveConversionsRepeatable) {
  constexpr unsigned long kWide = 20000, kLines = 20;
  const std::vector<unsigned char> source(kWide * kLines * 2, 85);
  std::vector<unsigned char> destination(kWide * kLines * 4);
  const Executor inTurn = [](std::size_t count, const std::function<void(std::size_t)>& job) {
    for (std::size_t band = 0; band < count; ++band) job(band);
  };
  const struct {
    PixelTypeID from, to;
    unsigned long flags;
  } calls[] = {{0x20012, 0x420002, ConversionFlags::kBilinear | ConversionFlags::kBayerGR},
               {0x420012, 0x420002, ConversionFlags::kBilinear | ConversionFlags::kBayerGR},
               {0x10007, 0x420002, 0}};
  for (const auto& call : calls) {
    const PixelConverter& converter = *PixelTypeFactory::FindConverter(call.from, call.to);
    void* scratch = new unsigned char[1];
    unsigned long scratchSize = 1;
    FailEachAllocation([&] {
      try {
        return converter
            .Convert(source.data(), kWide, kLines, destination.data(), kWide, kLines, kWide, kLines, call.flags, 0,
                     &scratch, &scratchSize)
            .IsOK();
      } catch (const std::bad_alloc&) {
        EXPECT_EQ(scratch == nullptr, scratchSize == 0);
        return false;
      }
    });
    delete[] static_cast<unsigned char*>(scratch);
    FailEachAllocation([&] {
      ConvertOptions options;
      options.flags = call.flags;
      options.threads = 2;
      options.executor = &inTurn;
      const ConversionResult result =
          ConvertImage({call.from, source.data(), source.size(), kWide, kLines},
                       {call.to, destination.data(), destination.size(), kWide, kLines}, options);
      EXPECT_TRUE(result.IsOK() || result.result.GetCode() == LmBaseLib::Result::NOT_ENOUGH_MEMORY);
      return result.IsOK();
    });
  }
}

// The calling thread converts the bands of threads that the system does not give.
TEST(FailingThreads, LeaveTheirBandsToTheCaller) {
  const std::vector<unsigned char> source(2048 * 2048, 85);
  std::vector<unsigned char> destination(source.size() * 3);
  pthread_attr_t usual, impossible;
  pthread_getattr_default_np(&usual);
  pthread_attr_init(&impossible);
  pthread_attr_setstacksize(&impossible, std::size_t{1} << 50);
  pthread_setattr_default_np(&impossible);
  ConvertOptions options;
  options.threads = 4;
  EXPECT_TRUE(ConvertImage({0x10001, source.data(), source.size(), 2048, 2048},
                           {0x20002, destination.data(), destination.size(), 2048, 2048}, options)
                  .IsOK());
  pthread_setattr_default_np(&usual);
  EXPECT_EQ(destination, std::vector<unsigned char>(destination.size(), 85));
}

}  // namespace
}  // namespace LmImagingLib
