// Conversions of other libraries beside ours: the fastest peer's time / ours, where more than 1 is a win, the median of
// all rounds. All run in turns in one process, on the same buffers, after their pixels were compared with ours.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "../machine.h"
#include "LmImagingLib/Extended.h"
#include "LmImagingLib/PixelTypeFactory.h"
#include "pixels.h"
#include "simd/instruction_set.h"

namespace LmImagingLib::Bench {
namespace {

constexpr FrameSize kSizes[] = {
    {{640, 480}, false}, {{1920, 1080}, false}, {{5120, 4096}, false}, {{1920, 1080}, true}};

// @param flags  of our conversions, read at each one
std::vector<Contestant> ContestantsOf(const PeerCase& job, const std::vector<Peer>& peers, const unsigned long& flags) {
  const PixelConverter* const converter = PixelTypeFactory::FindConverter(job.source, job.destination);
  const auto ours = [converter, &flags](const Image& image) {
    const auto width = static_cast<unsigned long>(image.width), height = static_cast<unsigned long>(image.height);
    converter->Convert(nullptr, image.source, width, height, image.destination, width, height, width, height, flags, 0,
                       nullptr, nullptr);
  };
  std::vector<Contestant> contestants{{"ours", ours}};
  for (const Peer& peer : peers) {
    for (const PeerConversion& conversion : peer.conversions) {
      if (conversion.name == job.name) contestants.push_back({peer.library, conversion.convert});
    }
  }
  return contestants;
}

std::vector<Peer> Peers(bool avx2) {
  std::vector<Peer> peers{Libyuv(), OpenCV(), Swscale(), Libdc1394()};
  for (const Peer& peer : peers) {
    if (avx2 && peer.limitToAVX2) peer.limitToAVX2();
    for (const PeerConversion& conversion : peer.conversions) {
      const auto named = [&](const PeerCase& job) { return conversion.name == job.name; };
      if (std::none_of(std::begin(kCases), std::end(kCases), named)) {
        std::fprintf(stderr, "%s: no case \"%s\"\n", peer.library, conversion.name.c_str());
        std::exit(1);
      }
    }
  }
  return peers;
}

bool ForceAVX2() {
  for (std::size_t set = 0; set < kInstructionSets; ++set) {
    if (InstructionSetName(set) != std::string("avx2") || !HasInstructionSet(set)) continue;
    ForceInstructionSet(set);
    return true;
  }
  return false;
}

bool IsChosen(const PeerCase& job, const std::string& part) {
  return std::string(job.name).find(part) != std::string::npos;
}

// One row: for each size the fastest peer's time / ours. Returns the ratios.
std::vector<double> PrintRow(const PeerCase& job, const std::vector<Peer>& peers, FrameRing& frames, int rounds) {
  const PixelConverter* const converter = PixelTypeFactory::FindConverter(job.source, job.destination);
  unsigned long flags = job.flags;
  std::vector<Contestant> contestants = ContestantsOf(job, peers, flags);
  frames.Prepare(*converter, kSizes[0]);
  LimitNoise(job.noise, frames);
  if (!SamePixels(job, contestants, frames, kSizes[0])) std::exit(1);

  for (const FrameSize& size : kSizes) frames.Prepare(*converter, size);  // as much room for all of them
  std::vector<double> ratios;
  std::printf("| %s |", job.name);
  for (const FrameSize& size : kSizes) {
    frames.Prepare(*converter, size);
    LimitNoise(job.noise, frames);
    // Frames of the ring are not read at all, as ours are told; some peers take that for granted at every size.
    flags = size.cold ? job.flags | ConversionFlags::kReadLater : job.flags;
    Race(contestants, frames, size, rounds);
    const auto fastest =
        std::min_element(contestants.begin() + 1, contestants.end(),
                         [](const Contestant& one, const Contestant& other) { return one.ratio < other.ratio; });
    ratios.push_back(fastest->ratio);
    std::printf(" %.2f %s | %.3f |", ratios.back(), fastest->library.c_str(),
                contestants[0].best / static_cast<double>(size.Pixels()));
    std::fflush(stdout);
  }
  std::printf("\n");
  if (job.noise != Noise::kAny) frames.Refill();
  return ratios;
}

std::string Text(double number) {
  char text[32];
  std::snprintf(text, sizeof text, "%.2f", number);
  return text;
}

template <class Summary>
void PrintSummary(const char* name, const std::vector<std::vector<double>>& columns, const Summary& summary) {
  std::printf("| %s |", name);
  for (const std::vector<double>& ratios : columns) std::printf(" %s | |", summary(ratios).c_str());
  std::printf("\n");
}

void PrintTable(const std::vector<Peer>& peers, int rounds, const std::string& part) {
  std::printf("%s, ours with %s; the fastest peer's time / ours, and ours in ns a pixel\n\n| conversion |",
              ProcessorName().c_str(), InstructionSetName(ActiveInstructionSet()));
  for (const FrameSize& size : kSizes) std::printf(" %s | ours |", size.Name().c_str());
  std::printf("\n|---|");
  for (std::size_t i = 0; i < 2 * std::size(kSizes); ++i) std::printf("---:|");
  std::printf("\n");

  std::vector<std::vector<double>> columns(std::size(kSizes));
  FrameRing frames;
  for (const PeerCase& job : kCases) {
    if (!IsChosen(job, part)) continue;
    const std::vector<double> ratios = PrintRow(job, peers, frames, rounds);
    for (std::size_t i = 0; i < ratios.size(); ++i) columns[i].push_back(ratios[i]);
  }
  PrintSummary("geometric mean", columns, [](const std::vector<double>& ratios) {
    double sum = 0;
    for (const double ratio : ratios) sum += std::log(ratio);
    return Text(std::exp(sum / static_cast<double>(ratios.size())));
  });
  PrintSummary("median", columns, [](const std::vector<double>& ratios) { return Text(Median(ratios)); });
  PrintSummary("rows of more than 1", columns, [](const std::vector<double>& ratios) {
    const auto won = std::count_if(ratios.begin(), ratios.end(), [](double ratio) { return ratio > 1; });
    return std::to_string(won) + " of " + std::to_string(ratios.size());
  });
}

}  // namespace
}  // namespace LmImagingLib::Bench

int main(int argc, char** argv) {
  using namespace LmImagingLib;
  using namespace LmImagingLib::Bench;

  const bool avx2 = argc > 1 && std::strcmp(argv[1], "--avx2") == 0;
  const std::vector<std::string> arguments(argv + (avx2 ? 2 : 1), argv + argc);
  const int rounds = arguments.empty() ? 20 : std::atoi(arguments[0].c_str());
  if (arguments.size() > 2 || rounds < 1) {
    std::fprintf(stderr, "Usage: lm_bench_peers [--avx2] [rounds [part of the names of cases]]\n");
    return 2;
  }
  const std::string part = arguments.size() > 1 ? arguments[1] : "";
  if (std::none_of(std::begin(kCases), std::end(kCases), [&](const PeerCase& job) { return IsChosen(job, part); })) {
    std::fprintf(stderr, "lm_bench_peers: no case has \"%s\" in its name\n", part.c_str());
    return 2;
  }
  RegisterExtendedFormats();
  const std::vector<Peer> peers = Peers(avx2);
  if (avx2 && !ForceAVX2()) {
    std::fprintf(stderr, "lm_bench_peers: no kernels for AVX2, or no processor that has it\n");
    return 1;
  }
  PrintTable(peers, rounds, part);
  return 0;
}
