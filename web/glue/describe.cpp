#include "describe.h"

#include <algorithm>
#include <array>
#include <memory>
#include <sstream>
#include <stdexcept>

#include "LmImagingLib/Image.h"
#include "LmImagingLib/PFNC.h"
#include "LmImagingLib/PixelConverter.h"
#include "LmImagingLib/PixelType.h"
#include "LmImagingLib/PixelTypeFactory.h"
#include "encode/layout.h"
#include "encode/layout_bits.h"
#include "layout_drawing.h"

namespace LmPage {

using namespace LmImagingLib;

namespace {

struct Order {
  unsigned long flag;
  const char* name;
  const char* cell;  // row by row
};
constexpr Order kOrders[] = {{ConversionFlags::kBayerRG, "RG", "RGGB"},
                             {ConversionFlags::kBayerBG, "BG", "BGGR"},
                             {ConversionFlags::kBayerGR, "GR", "GRBG"},
                             {ConversionFlags::kBayerGB, "GB", "GBRG"}};

const char* KindOf(const PixelType& type) {
  if (type.IsBayerPattern()) return "mosaic";
  const PixelTypeID space = type.GetTypeID() & kColorSpaceMask;
  return space == kColorSpaceGrayscale ? "gray" : space == kColorSpaceYUV ? "yuv" : "rgb";
}

std::string Hex(PixelTypeID type) {
  std::ostringstream text;
  text << "0x" << std::hex << std::uppercase << type;
  return text.str();
}

void PutFormat(std::ostream& text, const PixelType& type, unsigned long flags, const std::string& name,
               const std::string& arguments) {
  text << type.GetTypeID() << '\t' << flags << '\t' << KindOf(type) << '\t' << DepthOf(type.GetTypeID()) << '\t' << name
       << '\t' << arguments << '\n';
}

void PutUnnamedFormats(std::ostream& text) {
  for (unsigned long i = 0;; ++i) {
    const std::unique_ptr<const PixelType> type(PixelTypeFactory::CreatePixelType(i, {}));
    if (type == nullptr) return;
    const PixelTypeID id = type->GetTypeID();
    const PFNCFormat* const named = FindPFNC(id, 0);
    if (named != nullptr && named->type == id) continue;  // another type of the same layout may have the name
    const std::string name = std::string(PixelTypeFactory::GetPixelTypeName(id)) + " (" + Hex(id);
    if (!type->IsBayerPattern()) PutFormat(text, *type, 0, name + ")", Hex(id));
    for (const Order& order : kOrders) {
      if (!type->IsBayerPattern()) break;
      PutFormat(text, *type, order.flag, name + ", " + order.name + ")", Hex(id) + " --bayer " + order.name);
    }
  }
}

// The samples of a frame that are read one by one.
FrameSamples SamplesOf(const RawFrame& frame, const SampleMap& map) {
  const Reading& reading = frame.reading;
  const std::size_t dense = RequiredSize(reading.type, reading.width, reading.height).value_or(~std::size_t{0});
  if (reading.width == 0 || reading.width % map.pixels != 0 || dense > frame.bytes.size || frame.lineSize != 0) {
    throw std::runtime_error("Counts are shown of whole groups of pixels in lines without padding.");
  }
  return {frame.bytes, map, reading};
}

// The channel behind which colour a sample of a mosaic is.
char NameOf(const RawFrame& frame, char channel, std::size_t x, std::size_t y) {
  if (channel != 'p' || !PixelTypeFactory::FindPixelType(frame.reading.type)->IsBayerPattern()) return channel;
  for (const Order& order : kOrders) {
    if ((frame.reading.flags & order.flag) != 0) return order.cell[y % 2 * 2 + x % 2];
  }
  return channel;
}

}  // namespace

std::string ListFormats() {
  std::ostringstream text;
  for (std::size_t i = 0; const PFNCFormat* const format = EnumPFNC(i); ++i) {
    PutFormat(text, *PixelTypeFactory::FindPixelType(format->type), format->flags, format->name, format->name);
  }
  PutUnnamedFormats(text);
  return text.str();
}

std::string ListBits(PixelTypeID type) {
  std::ostringstream text;
  text << LmTool::LayoutInWords(type) << '\n';
  const LmTool::LayoutBits layout = LmTool::BitsOf(type);
  for (const auto& plane : layout.planes) {
    text << '\n';
    for (const LmTool::LayoutBits::Byte& byte : plane) {
      for (auto bit = byte.rbegin(); bit != byte.rend(); ++bit) {
        if (bit != byte.rbegin()) text << '\t';
        if (bit->sample == 0) {
          text << '-';
          continue;
        }
        text << bit->sample;
        if (LmTool::IsNumbered(layout, *bit)) text << bit->pixel;
        text << '.' << bit->bit;
      }
      text << '\n';
    }
  }
  return text.str();
}

std::string List(const std::vector<Guess>& guesses) {
  std::ostringstream text;
  for (const Guess& guess : guesses) {
    text << guess.reading.type << '\t' << guess.reading.flags << '\t' << guess.reading.width << '\t'
         << guess.reading.height << '\t' << guess.bits << '\n';
  }
  return text.str();
}

std::string ListSamples(const RawFrame& frame, std::size_t x, std::size_t y) {
  const SampleMap map = MapOf(frame.reading.type);
  const FrameSamples samples = SamplesOf(frame, map);
  std::ostringstream text;
  for (const Channel& channel : map.channels) {
    text << NameOf(frame, channel.name, x, y) << '\t' << samples.At(channel, x / channel.step, y) << '\t'
         << (1UL << channel.bits) - 1 << '\n';
  }
  return text.str();
}

std::string ListHistogram(const RawFrame& frame) {
  constexpr std::size_t kParts = 256, kMostRows = 1024;
  const SampleMap map = MapOf(frame.reading.type);
  const FrameSamples samples = SamplesOf(frame, map);
  const std::size_t step = frame.reading.height / kMostRows * 2 + 1;  // odd, so that all rows of cells are counted
  std::vector<std::pair<char, std::array<unsigned, kParts>>> counts;
  std::vector<std::int32_t> row(frame.reading.width);
  for (const Channel& channel : map.channels) {
    for (std::size_t y = 0; y < frame.reading.height; y += step) {
      samples.Read(channel, 0, y, frame.reading.width / channel.step, row.data());
      for (std::size_t parity = 0; parity < 2; ++parity) {
        const char name = NameOf(frame, channel.name, parity, y);
        auto found = std::find_if(counts.begin(), counts.end(), [&](const auto& c) { return c.first == name; });
        if (found == counts.end()) found = counts.insert(counts.end(), {name, {}});
        for (std::size_t x = parity; x < frame.reading.width / channel.step; x += 2) {
          ++found->second[static_cast<std::size_t>(row[x]) * kParts >> channel.bits];
        }
      }
    }
  }
  std::ostringstream text;
  for (const auto& [name, parts] : counts) {
    text << name << '\t';
    for (const unsigned count : parts) text << count << ' ';
    text << '\n';
  }
  return text.str();
}

}  // namespace LmPage
