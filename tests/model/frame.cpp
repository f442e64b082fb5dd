#include "model/frame.h"

#include <algorithm>
#include <sstream>

#include "model/convert.h"
#include "model/kernels.h"

namespace model {
namespace {

constexpr std::uint8_t kUntouched = 0xA5;

/// Noise; in one frame of four mostly black and white, where clamping shows.
std::vector<std::uint8_t> MakeSamples(std::size_t size, Random& random) {
  std::vector<std::uint8_t> samples(size);
  const bool extreme = random() % 4 == 0;
  for (std::uint8_t& sample : samples) {
    const std::uint32_t bits = random();
    sample = static_cast<std::uint8_t>(!extreme || bits % 8 == 0 ? bits >> 8 : bits % 2 == 0 ? 0 : 0xFF);
  }
  return samples;
}

std::vector<std::uint8_t> Cut(const std::vector<std::uint8_t>& content, std::size_t size) {
  return {content.begin(), content.begin() + static_cast<std::ptrdiff_t>(size)};
}

}  // namespace

std::uint32_t OneOf(Random& random, std::initializer_list<std::uint32_t> choices) {
  return choices.begin()[random() % choices.size()];
}

void ReadTables(const LmImagingLib::RGBFilter& filter, Filter& tables) {
  for (unsigned i = 0; i < 256; ++i) {
    tables.red.bytes[i] = filter.GetRedValue8(i);
    tables.green.bytes[i] = filter.GetGreenValue8(i);
    tables.blue.bytes[i] = filter.GetBlueValue8(i);
  }
  for (unsigned long i = 0; i < filter.GetEntryCount(); ++i) {
    tables.red.entries.push_back(filter.GetRedValue16(i));
    tables.green.entries.push_back(filter.GetGreenValue16(i));
    tables.blue.entries.push_back(filter.GetBlueValue16(i));
  }
}

Filters::Filters(Random& random)
    : mFilters{LmImagingLib::RGBFilter(8), LmImagingLib::RGBFilter(8), LmImagingLib::RGBFilter(12),
               LmImagingLib::RGBFilter(8), LmImagingLib::RGBFilter(10)} {
  SetMultipliers(1, {1.6, 1.0, 0.25}, {0, 7, 100});
  SetMultipliers(2, {1.0, 2.0, 1.09}, {0, 0, 0});
  // Written without bringing the identity flag up to date, which a conversion must not trust.
  for (unsigned long i = 0; i < 256; ++i) {
    for (LmImagingLib::RGBFilter* filter : {&mFilters[3], &mFilters[4]}) {
      const auto any = [&] { return static_cast<unsigned short>(random() % filter->GetEntryCount()); };
      filter->SetRedValue(i, any(), false);
      filter->SetGreenValue(i, any(), false);
      filter->SetBlueValue(i, any(), false);
    }
  }
  for (std::size_t k = 0; k < kCount; ++k) ReadTables(mFilters[k], mTables[k]);
}

void Filters::SetMultipliers(std::size_t k, const std::array<double, 3>& by,
                             const std::array<unsigned short, 3>& offsets) {
  mFilters[k].SetMultipliers(by[0], by[1], by[2], offsets[0], offsets[1], offsets[2]);
  FilterChannel* const channels[] = {&mTables[k].red, &mTables[k].green, &mTables[k].blue};
  for (std::size_t c = 0; c < 3; ++c) {
    channels[c]->multiplier = by[c];
    channels[c]->offset = offsets[c];
  }
  mTables[k].byMultipliers = true;
}

const Filter* Filters::Pick(Random& random) const {
  const std::size_t k = random() % (kCount + 1);
  return k < kCount ? &mTables[k] : nullptr;
}

std::string Frame::Describe() const {
  std::ostringstream text;
  text << std::hex << "0x" << from << " to 0x" << to << std::dec << ", source " << call.sourceWidth << " x "
       << call.sourceHeight << ", destination " << call.destinationWidth << " x " << call.destinationHeight << " + "
       << call.padding << " bytes, " << call.pixelsPerLine << " pixels of " << call.lines << " lines, flags 0x"
       << std::hex << call.flags << (call.filter != nullptr ? ", filtered" : "");
  return text.str();
}

Frame MakeFrame(Id from, Id to, const Call& call, Random& random, std::uint8_t between) {
  const Route route = RouteOf(from, to);
  const std::size_t room = 8u * (call.sourceWidth + 8) * (call.sourceHeight + 2);
  const std::size_t destinationRoom =
      3 * (8u * (call.destinationWidth + 8) + call.padding) * (call.destinationHeight + 2);
  Bytes source(MakeSamples(room, random));
  Bytes destination(std::vector<std::uint8_t>(destinationRoom, kUntouched));
  Bytes intermediate(std::vector<std::uint8_t>(route.second ? room : 0, between));
  Convert(route, call, source, destination, intermediate);

  Frame frame{from, to, call, {}, {}, {}, {}, IntermediateSize(route, call)};
  frame.source = Cut(source.Content(), source.Extent());
  frame.expected = Cut(destination.Content(), destination.Extent());
  frame.untouched.assign(frame.expected.size(), kUntouched);
  frame.intermediate.assign(std::max(intermediate.Extent(), frame.intermediateSize), between);
  return frame;
}

LmImagingLib::ConversionGeometry GeometryOf(const Call& call) {
  return {call.sourceWidth, call.sourceHeight, call.destinationWidth, call.destinationHeight, call.pixelsPerLine,
          call.lines,       call.flags,        call.padding};
}

LmBaseLib::Result ConvertWithLibrary(const LmImagingLib::PixelConverter& converter, const Call& call,
                                     const LmImagingLib::RGBFilter* filter, const void* source, void* destination,
                                     void** scratch, unsigned long* scratchSize) {
  return converter.Convert(filter, source, call.sourceWidth, call.sourceHeight, destination, call.destinationWidth,
                           call.destinationHeight, call.pixelsPerLine, call.lines, call.flags, call.padding, scratch,
                           scratchSize);
}

std::size_t FirstDifference(const std::uint8_t* actual, const std::vector<std::uint8_t>& expected) {
  const auto end = actual + expected.size();
  return static_cast<std::size_t>(std::mismatch(actual, end, expected.begin()).first - actual);
}

}  // namespace model
