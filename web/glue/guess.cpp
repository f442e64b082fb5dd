#include "guess.h"

#include <algorithm>
#include <optional>

#include "LmImagingLib/Image.h"
#include "LmImagingLib/PixelConverter.h"
#include "candidates.h"
#include "code_length.h"
#include "color_order.h"
#include "sizes.h"

namespace LmPage {

using namespace LmImagingLib;

namespace {

struct Ranked {
  const Candidate* candidate;
  Size size;
  double bits;
};

// The pixels of a file: frames have whole groups.
std::optional<std::size_t> PixelsOf(const SampleMap& map, std::size_t bytes) {
  const std::size_t group = map.bytes * map.planes;
  if (bytes == 0 || bytes % group != 0) return {};
  return bytes / group * map.pixels;
}

bool Fits(const Candidate& candidate, const Size& size, std::size_t bytes) {
  const bool isWhole = size.width % candidate.map.pixels == 0;
  const bool hasCells = !candidate.isMosaic || (size.width % 2 == 0 && size.height % 2 == 0);
  const bool hasFields = (candidate.type & (kInterlacedFlag | kDualLines)) == 0 || size.height % 2 == 0;
  return isWhole && hasCells && hasFields && RequiredSize(candidate.type, size.width, size.height) == bytes;
}

// The best readings of one round take part in the next.
struct Round {
  std::size_t readings, tiles, width, height;
  bool isLast;
};
constexpr Round kRounds[] = {{~std::size_t{0}, 10, 32, 4, false}, {400, 40, 32, 6, false}, {60, 300, 64, 8, true}};

void Rank(std::vector<Ranked>& ranked, FileBytes file, const Round& round) {
  for (Ranked& r : ranked) {
    const FrameSamples frame(file, r.candidate->map, {r.candidate->type, 0, r.size.width, r.size.height});
    r.bits = CodeLength(frame, r.candidate->isMosaic, SpreadTiles(frame, round.tiles, round.width, round.height)) +
             r.candidate->rarity + r.size.rarity;
    if (round.isLast) r.bits += ChromaRarity(frame);
  }
  std::stable_sort(ranked.begin(), ranked.end(), [](const Ranked& a, const Ranked& b) { return a.bits < b.bits; });
}

}  // namespace

std::vector<Guess> GuessReadings(FileBytes file, const GuessOptions& options) {
  static const std::vector<Candidate> kCandidates = Candidates();
  std::vector<Candidate> candidates = kCandidates;
  BitUse use(file);
  std::vector<Ranked> ranked;
  for (Candidate& candidate : candidates) {
    const std::optional<std::size_t> pixels = PixelsOf(candidate.map, file.size);
    if (!pixels || !use.Examine(candidate)) continue;
    for (const Size& size : SizesOf(*pixels, options)) {
      if (Fits(candidate, size, file.size)) ranked.push_back({&candidate, size, 0});
    }
  }
  // A few small tiles find the readings that are worth many.
  for (const Round& round : kRounds) {
    if (ranked.size() > round.readings) ranked.resize(round.readings);
    Rank(ranked, file, round);
  }

  std::vector<Guess> guesses;
  for (const Ranked& r : ranked) {
    const Reading reading{r.candidate->type, 0, r.size.width, r.size.height};
    const FrameSamples frame(file, r.candidate->map, reading);
    for (const unsigned long flags : r.candidate->isMosaic ? MosaicOrders(frame) : std::vector<unsigned long>{0}) {
      guesses.push_back({{reading.type, flags, reading.width, reading.height}, r.bits});
    }
  }
  // Beside the best guess with its orders of colours, one order of each other reading.
  std::vector<Guess> best;
  for (const Guess& guess : guesses) {
    const bool isFirst = best.empty() || guess.reading.type != guesses[0].reading.type ||
                         guess.reading.width != guesses[0].reading.width;
    const bool isKnown = std::any_of(best.begin(), best.end(), [&](const Guess& other) {
      return other.reading.type == guess.reading.type && other.reading.width == guess.reading.width;
    });
    if ((!isFirst || !isKnown) && best.size() < options.most) best.push_back(guess);
  }
  return best;
}

}  // namespace LmPage
