#include "type_facts.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <sstream>

#include "encode/layout_bits.h"
#include "type_variants.h"

namespace LmTool {

using LmImagingLib::PixelTypeID;

namespace {

struct Note {
  PixelTypeID type;
  const char* text;
};
constexpr Note kNotes[] = {
    {0x10401, "the name does not say that samples are signed"},
    {0x20001, "the name means 16 bits a pixel; cameras' RGB16, 16 bits a sample, is 0x20004"},
    {0x20007, "the name says RGB, but the first byte is blue"},
    {0x20020, "the name and the registered bits say 14, but samples have 16 bits"},
    {0x20040, "the name does not say that pixels are packed, as GigE Vision does it"},
    {0x20041, "the name does not say that pixels are packed, as GigE Vision does it"},
    {0x20044, "the name says RGB32, but samples have 10 bits, and blue comes first"},
    {0x20045, "the name says RGB32, but samples have 10 bits, and blue is in the lowest"},
};

}  // namespace

TypeFacts FactsOf(const PixelTypeID& type) {
  const LayoutBits layout = BitsOf(type);
  const std::array<unsigned, 3> rgb = {BitsOfSample(layout, 'R'), BitsOfSample(layout, 'G'), BitsOfSample(layout, 'B')};
  const unsigned other = std::max(BitsOfSample(layout, 'p'), BitsOfSample(layout, 'Y'));
  TypeFacts facts;
  facts.sampleBits = std::to_string(std::max(rgb[0], other));
  if (rgb[0] != rgb[1]) facts.sampleBits += '-' + std::to_string(rgb[1]) + '-' + std::to_string(rgb[2]);
  std::size_t bytes = 0;
  for (const auto& plane : layout.planes) bytes += plane.size();
  facts.pixelBytes = static_cast<double>(bytes) / static_cast<double>(layout.pixels);
  const auto* const note = std::find_if(std::begin(kNotes), std::end(kNotes),
                                        [&](const Note& row) { return row.type == (type & ~kVariantFlags); });
  if (note != std::end(kNotes)) facts.note = note->text;
  return facts;
}

std::string PixelBytesInWords(double bytes) {
  std::ostringstream text;
  text << bytes;
  return text.str();
}

}  // namespace LmTool
