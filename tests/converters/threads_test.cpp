#include <gtest/gtest.h>

#include <array>
#include <thread>

#include "LmImagingLib/PixelTypeFactory.h"
#include "model/frame.h"

// Threads share converters, a filter and a chain's own scratch buffer; each must get what it would get alone.

namespace LmImagingLib {
namespace {

constexpr unsigned kThreads = 8;
constexpr unsigned kRounds = 12;

enum class Scratch { OWN, CONVERTERS };

struct Job {
  model::Pair pair;
  Scratch scratch;
};

const Job kJobs[] = {
    {{0x40001, 0x20002}, Scratch::OWN},           // YUV 4:2:2
    {{0x10003, 0x20003}, Scratch::OWN},           // 12-bit grayscale
    {{0x20011, 0x820002}, Scratch::OWN},          // a mosaic to planes
    {{0x640006, 0x20007}, Scratch::OWN},          // two fields
    {{0x20002, 0x20002}, Scratch::OWN},           // the identity
    {{0x1020011, 0x20002}, Scratch::CONVERTERS},  // a chain whose scratch buffer all threads reach for
    {{0x10006, 0x20006}, Scratch::CONVERTERS},
    {{0x420012, 0x20003}, Scratch::OWN},  // a chain with a scratch buffer for each thread
};

/// Frames of a thread's own, at geometries of its own.
std::vector<model::Frame> MakeFrames(unsigned thread, const model::Filter& tables) {
  model::Random random(thread);
  std::vector<model::Frame> frames;
  for (const Job& job : kJobs) {
    model::Call call{};
    call.pixelsPerLine = call.sourceWidth = call.destinationWidth = 32 + 4 * thread;
    call.lines = call.sourceHeight = call.destinationHeight = 8 + 2 * (thread % 3);
    call.padding = thread % 2;
    call.flags = model::OneOf(random, {0x10, 0x20, 0x40, 0x80}) | model::OneOf(random, {0x100, 0x200, 0x400, 0x1400});
    call.filter = thread % 4 != 0 ? &tables : nullptr;
    frames.push_back(model::MakeFrame(job.pair.first, job.pair.second, call, random));
  }
  return frames;
}

std::string FirstFailure(unsigned thread, const std::vector<model::Frame>& frames, const RGBFilter& filter) {
  void* scratch = nullptr;
  unsigned long scratchSize = 0;
  std::string failure;
  for (unsigned i = 0; i < kRounds * std::size(kJobs) && failure.empty(); ++i) {
    const std::size_t k = (i + thread / 4) % std::size(kJobs);  // four threads at once are at the same pair
    const model::Frame& frame = frames[k];
    const bool own = kJobs[k].scratch == Scratch::OWN;
    std::vector<std::uint8_t> destination = frame.untouched;
    const auto result =
        model::ConvertWithLibrary(*PixelTypeFactory::FindConverter(frame.from, frame.to), frame.call,
                                  frame.call.filter != nullptr ? &filter : nullptr, frame.source.data(),
                                  destination.data(), own ? &scratch : nullptr, own ? &scratchSize : nullptr);
    if (result.GetCode() != 0 || destination != frame.expected) failure = frame.Describe();
  }
  delete[] static_cast<unsigned char*>(scratch);
  return failure;
}

TEST(Threads, ShareConvertersFilterAndChains) {
  RGBFilter filter(8);
  filter.SetMultipliers(1.5, 0.5, 1.25, 0, 0, 0);
  model::Filter tables{};
  model::ReadTables(filter, tables);
  tables.byMultipliers = true;  // of which tables for more bits are derived by whichever thread comes first
  tables.red.multiplier = 1.5;
  tables.green.multiplier = 0.5;
  tables.blue.multiplier = 1.25;

  std::vector<std::vector<model::Frame>> frames;
  for (unsigned thread = 0; thread < kThreads; ++thread) frames.push_back(MakeFrames(thread, tables));
  std::array<std::string, kThreads> failures;
  std::vector<std::thread> threads;
  for (unsigned thread = 0; thread < kThreads; ++thread) {
    threads.emplace_back([&, thread] { failures[thread] = FirstFailure(thread, frames[thread], filter); });
  }
  for (std::thread& thread : threads) thread.join();
  for (const std::string& failure : failures) EXPECT_EQ(failure, "");
}

}  // namespace
}  // namespace LmImagingLib
