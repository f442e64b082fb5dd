// Conversions beside copies of the same bytes. Names read SOURCE/DESTINATION/FILTER/SIZE/INSTRUCTION_SET, or
// threads/SOURCE/DESTINATION/SIZE and the number of threads. FILTER begins with `full` at full depth.
#include <benchmark/benchmark.h>

#include <ctime>
#include <string>
#include <vector>

#include "LmImagingLib/PixelTypeFactory.h"
#include "LmImagingLib/RGBFilter.h"
#include "cases.h"
#include "frame.h"
#include "machine.h"
#include "simd/instruction_set.h"

namespace LmImagingLib::Bench {
namespace {

/// What happens to the colours on the way.
struct FilterCase {
  const char* name;
  const RGBFilter* filter;
  unsigned long flags;
};

struct Case {
  const PixelConverter* converter;
  const RGBFilter* filter;
  FrameSize size;
  unsigned long flags;
};

constexpr FrameSize kSizes[] = {
    {{64, 64}, false}, {{640, 480}, false}, {{1920, 1080}, false}, {{1920, 1080}, true}, {{5120, 4096}, false}};
constexpr FrameSize kThreadSizes[] = {{{64, 64}, false}, {{1920, 1080}, false}};
constexpr const char* kDefaultFilter = "--benchmark_filter=/1920x1080/";

// As many copies as there were conversions, in the same buffers, right after them.
void Compare(benchmark::State& state, const Case& job, FrameRing& frames, std::size_t instructionSet) {
  const std::size_t best = ActiveInstructionSet();
  ForceInstructionSet(instructionSet);
  frames.Prepare(*job.converter, job.size);
  frames.Convert(*job.converter, job.filter, job.size, job.flags);
  const std::clock_t conversionsBegin = std::clock();
  while (state.KeepRunning()) {
    frames.Convert(*job.converter, job.filter, job.size, job.flags);
    frames.Advance();
    benchmark::ClobberMemory();
  }
  const double conversions = NanosecondsSince(conversionsBegin);

  frames.Copy();
  const std::clock_t copiesBegin = std::clock();
  for (benchmark::IterationCount i = 0; i < state.iterations(); ++i) {
    frames.Copy();
    frames.Advance();
    benchmark::ClobberMemory();
  }
  const double copies = NanosecondsSince(copiesBegin);
  ForceInstructionSet(best);

  const auto iterations = static_cast<double>(state.iterations());
  const double pixels = iterations * static_cast<double>(job.size.Pixels());
  state.counters["ns/px"] = conversions / pixels;
  state.counters["copy ns/px"] = copies / pixels;
  state.counters["ours/copy"] = conversions / copies;
  state.counters["GB/s"] = iterations * static_cast<double>(frames.BytesMoved()) / conversions;
}

// Each thread converts frames of its own, all with one converter.
void Share(benchmark::State& state, const Case& job) {
  FrameRing frames;
  frames.Prepare(*job.converter, job.size);
  frames.Convert(*job.converter, job.filter, job.size, job.flags);
  while (state.KeepRunning()) {
    frames.Convert(*job.converter, job.filter, job.size, job.flags);
    benchmark::ClobberMemory();
  }
  state.counters["Mpx/s"] =
      benchmark::Counter(static_cast<double>(state.iterations()) * static_cast<double>(job.size.Pixels()) / 1e6,
                         benchmark::Counter::kIsRate);
}

void RegisterComparisons(const SourceCase& source, const DestinationCase& destination, const FilterCase& filter,
                         FrameRing& frames) {
  const PixelConverter* const converter = PixelTypeFactory::FindConverter(source.id, destination.id);
  if (converter == nullptr || source.id == destination.id) return;
  for (const FrameSize& size : kSizes) {
    for (std::size_t set = 0; set < kInstructionSets; ++set) {
      if (!HasInstructionSet(set)) continue;
      const std::string name = std::string(source.name) + "/" + destination.name + "/" + filter.name + "/" +
                               size.Name() + "/" + InstructionSetName(set);
      const Case job{converter, filter.filter, size, source.flags | filter.flags};
      benchmark::RegisterBenchmark(name.c_str(),
                                   [job, set, &frames](benchmark::State& state) { Compare(state, job, frames, set); });
    }
  }
}

void RegisterThreads() {
  const SourceCase sources[] = {
      {"Grayscale12", 0x10003, 0}, {"YUV8_422", 0x40001, 0}, {"Bayer8_Bilinear", 0x20010, kBilinearRG}};
  for (const SourceCase& source : sources) {
    for (const FrameSize& size : kThreadSizes) {
      const Case job{PixelTypeFactory::FindConverter(source.id, 0x420002), nullptr, size, source.flags};
      const std::string name = std::string("threads/") + source.name + "/RGB24/" + size.Name();
      benchmark::RegisterBenchmark(name.c_str(), [job](benchmark::State& state) { Share(state, job); })
          ->Threads(1)
          ->Threads(2)
          ->Threads(8)
          ->UseRealTime();
    }
  }
}

}  // namespace
}  // namespace LmImagingLib::Bench

int main(int argc, char** argv) {
  using namespace LmImagingLib;
  using namespace LmImagingLib::Bench;

  RegisterExtendedFormats();
  RGBFilter whiteBalance(8);
  whiteBalance.SetMultipliers(1.6, 1.0, 1.09);
  FrameRing frames;
  for (const SourceCase& source : kSources) {
    const bool gray = (source.id & kColorSpaceMask) == kColorSpaceGrayscale;
    for (const DestinationCase& destination : kDestinations) {
      RegisterComparisons(source, destination, {"identity", nullptr, 0}, frames);
      RegisterComparisons(source, destination, {"full", nullptr, ConversionFlags::kFullDepth}, frames);
      if (gray) continue;  // never looked up
      RegisterComparisons(source, destination, {"balance", &whiteBalance, 0}, frames);
      RegisterComparisons(source, destination, {"full_balance", &whiteBalance, ConversionFlags::kFullDepth}, frames);
    }
  }
  RegisterThreads();

  // The full product takes hours; what the arguments say overrides what stands before them.
  std::vector<char*> arguments{argv[0]};
  std::string defaults[] = {kDefaultFilter + std::string(InstructionSetName(ActiveInstructionSet())),
                            "--benchmark_min_time=0.02"};
  for (std::string& option : defaults) arguments.push_back(option.data());
  arguments.insert(arguments.end(), argv + 1, argv + argc);
  int count = static_cast<int>(arguments.size());
  benchmark::Initialize(&count, arguments.data());
  if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) return 1;
  benchmark::AddCustomContext("processor", ProcessorName());
  benchmark::AddCustomContext("best_instruction_set", InstructionSetName(ActiveInstructionSet()));
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
