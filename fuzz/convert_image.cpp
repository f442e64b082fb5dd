// Throws views of any type, geometry and size at ConvertImage. Buffers have exactly the size that the views say, so
// that the sanitizers see every byte too many. A conversion that is accepted must equal the model; one that is refused
// must say why and touch nothing.
#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <iterator>
#include <memory>
#include <vector>

#include "LmImagingLib/Extended.h"
#include "LmImagingLib/Image.h"
#include "LmImagingLib/PixelTypeFactory.h"
#include "LmImagingLib/RGBFilter.h"
#include "choices.h"
#include "model/frame.h"
#include "model/image.h"
#include "simd/instruction_set.h"

namespace LmImagingLib {
namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr std::size_t kMostBytes = 1 << 18;

struct Pair {
  PixelTypeID from, to;
};

const std::vector<Pair>& Pairs() {
  static const std::vector<Pair> sPairs = [] {
    RegisterExtendedFormats();
    std::vector<Pair> pairs;
    Pair pair{};
    for (unsigned long i = 0; PixelTypeFactory::EnumConverters(i, pair.from, pair.to); ++i) pairs.push_back(pair);
    return pairs;
  }();
  return sPairs;
}

const model::Filters& Filters() {
  static model::Random sRandom(1);
  static const model::Filters sFilters(sRandom);
  return sFilters;
}

const model::Filter* AnyFilter(Choices& choices) {
  model::Random random(static_cast<std::uint32_t>(choices.Number(1)));
  return Filters().Pick(random);
}

unsigned long AnyLength(Choices& choices) {
  if (choices.OneIn(32)) return choices.Number(1 + choices.Below(8));
  return 1 + choices.Below(choices.OneIn(8) ? 1100 : 40);
}

template <class View>
void ChooseBytes(View& view, Choices& choices) {
  // More often right than wrong, or nothing would be converted.
  constexpr std::size_t kOff[] = {0, 0, 0, 0, 0, 1, 16, std::size_t(-1)};
  if (choices.OneIn(2)) {
    const std::size_t line = RequiredSize(view.type, view.width, 1).value_or(8);
    view.lineSize = choices.OneIn(16) ? choices.Number(1 + choices.Below(8))
                                      : line + choices.Below(24) + kOff[choices.Below(std::size(kOff))];
  }
  const std::size_t required = RequiredSize(view.type, view.width, view.height, view.lineSize).value_or(100);
  view.size = choices.OneIn(32) ? choices.Number(2) : required + kOff[choices.Below(std::size(kOff))];
  if (view.size > kMostBytes) view.size = choices.Number(2);
}

// Most of the flags mean something for the source, or nearly everything would be refused.
unsigned long AnyFlags(PixelTypeID from, Choices& choices) {
  if (choices.OneIn(32)) return choices.Number(8);
  unsigned long flags = choices.OneIn(2) ? ConversionFlags::kOpaque : 0;
  const auto add = [&](unsigned long flag) { flags |= choices.OneIn(2) ? flag : 0; };
  const PixelType* const type = PixelTypeFactory::FindPixelType(from);
  if (type != nullptr && type->IsBayerPattern()) {
    flags |= ConversionFlags::kBayerGR << choices.Below(4);
    add(ConversionFlags::kBilinear);
  }
  if ((from & kInterlacedFlag) != 0) add(ConversionFlags::kFieldOrder);
  if ((from & kColorSpaceMask) == kColorSpaceYUV) {
    add(ConversionFlags::kFullRange);
    add(ConversionFlags::kBT709);
  }
  return flags;
}

ConvertOptions AnyOptions(PixelTypeID from, unsigned long height, const model::Filter* filter, Choices& choices) {
  ConvertOptions options;
  options.flags = AnyFlags(from, choices);
  if (choices.OneIn(4)) options.depth = ConversionDepth::kEightBits;
  options.filter = Filters().FilterOf(filter);
  if (choices.OneIn(3)) {
    options.firstLine = choices.OneIn(16) ? choices.Number(8) : choices.Below(height % 256 + 1);
    options.lines = choices.OneIn(16) ? choices.Number(8) : choices.Below(height % 256 + 1);
  }
  return options;
}

/// Memory for both images: two blocks, or one in which they may overlap.
struct Memory {
  Memory(std::size_t sourceBytes, std::size_t destinationBytes, Choices& choices) {
    const std::size_t shared = sourceBytes + destinationBytes;
    const bool together = choices.OneIn(8);
    blocks[0].reset(static_cast<std::uint8_t*>(std::malloc(together ? shared : sourceBytes)));
    source = blocks[0].get();
    if (together) {
      const bool behind = choices.OneIn(2);
      destination = source + (behind ? sourceBytes - std::min(sourceBytes, choices.Below(3)) : 0);
      if (!behind) source += destinationBytes - std::min(destinationBytes, choices.Below(3));
    } else {
      blocks[1].reset(static_cast<std::uint8_t*>(std::malloc(destinationBytes)));
      destination = blocks[1].get();
    }
  }

  struct Free {
    void operator()(void* memory) const { std::free(memory); }
  };
  std::unique_ptr<std::uint8_t, Free> blocks[2];
  std::uint8_t* source;
  std::uint8_t* destination;
};

void FillWithNoise(std::uint8_t* bytes, std::size_t size, std::uint64_t seed) {
  for (std::size_t i = 0; i < size; ++i) {
    seed = seed * 6364136223846793005U + 1442695040888963407U;
    bytes[i] = static_cast<std::uint8_t>(seed >> 56);
  }
}

[[noreturn]] void Fail(const char* what, const ConstImageView& source, const ImageView& destination,
                       const ConvertOptions& options, const ConversionResult& result) {
  std::cerr << what << std::hex << ": 0x" << source.type << " to 0x" << destination.type << std::dec << ", "
            << source.width << " x " << source.height << ", lines of " << source.lineSize << " and "
            << destination.lineSize << ", sizes " << source.size << " and " << destination.size << ", flags 0x"
            << std::hex << options.flags << std::dec << ", lines from " << options.firstLine << ": " << options.lines
            << ", '" << result.message << "'\n";
  std::abort();
}

Bytes Expected(const ConstImageView& source, const ImageView& destination, const ConvertOptions& options,
               const model::Filter* filter, const Bytes& from, Bytes before) {
  const model::View in(source.type, source.width, source.height, source.lineSize);
  const model::View out(destination.type, destination.width, destination.height, destination.lineSize);
  const std::size_t lines = options.lines == ConvertOptions::kAllLines ? source.height : options.lines;
  // The model reads and writes exactly the images; what is behind them stays.
  Bytes image(before.begin(), before.begin() + static_cast<std::ptrdiff_t>(out.Bytes()));
  const auto flags = static_cast<std::uint32_t>(
      options.flags | (options.depth == ConversionDepth::kFull ? ConversionFlags::kFullDepth : 0));
  image = model::ConvertImage(in, out, {flags, filter, options.firstLine, lines}, from, image);
  std::copy(image.begin(), image.end(), before.begin());
  return before;
}

void Run(Choices& choices) {
  std::size_t set = choices.Below(kInstructionSets);
  while (!HasInstructionSet(set)) set = (set + 1) % kInstructionSets;
  ForceInstructionSet(set);

  const Pair& pair = Pairs()[choices.Below(Pairs().size())];
  ConstImageView source;
  ImageView destination;
  source.type = choices.OneIn(64) ? static_cast<PixelTypeID>(choices.Number(8)) : pair.from;
  destination.type = choices.OneIn(64) ? static_cast<PixelTypeID>(choices.Number(8)) : pair.to;
  source.width = AnyLength(choices);
  source.height = AnyLength(choices);
  destination.width = choices.OneIn(32) ? AnyLength(choices) : source.width;
  destination.height = choices.OneIn(32) ? AnyLength(choices) : source.height;
  ChooseBytes(source, choices);
  ChooseBytes(destination, choices);
  const model::Filter* const filter = AnyFilter(choices);
  const ConvertOptions options = AnyOptions(source.type, source.height, filter, choices);

  const Memory memory(source.size, destination.size, choices);
  FillWithNoise(memory.source, source.size, choices.Number(2));
  FillWithNoise(memory.destination, destination.size, choices.Number(2));
  const Bytes from(memory.source, memory.source + source.size);
  const Bytes before(memory.destination, memory.destination + destination.size);
  source.data = choices.OneIn(64) ? nullptr : memory.source;
  destination.data = choices.OneIn(64) ? nullptr : memory.destination;

  const ConversionResult result = ConvertImage(source, destination, options);

  const bool accepted = result.IsOK();
  if (accepted != result.message.empty()) Fail("message and result contradict", source, destination, options, result);
  const Bytes expected = accepted ? Expected(source, destination, options, filter, from, before) : before;
  if (!std::equal(expected.begin(), expected.end(), memory.destination)) {
    Fail(accepted ? "another picture" : "written though refused", source, destination, options, result);
  }
}

}  // namespace
}  // namespace LmImagingLib

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Choices choices(data, size);
  LmImagingLib::Run(choices);
  return 0;
}
