#include "type_report.h"

#include <string>

#include "LmImagingLib/PixelType.h"
#include "LmImagingLib/PixelTypeFactory.h"
#include "camera_names.h"
#include "encode/layout.h"
#include "encode/layout_bits.h"
#include "layout_drawing.h"
#include "named_type.h"
#include "pixel_type_names.h"
#include "type_facts.h"

namespace LmTool {

using namespace LmImagingLib;

namespace {

// The bytes of each plane, of each byte bits 7 to 0: "p1.3" is bit 3 of the second pixel's sample, "" is unused.
nlohmann::ordered_json MemoryOf(const LayoutBits& layout) {
  nlohmann::ordered_json planes = nlohmann::ordered_json::array();
  for (const auto& plane : layout.planes) {
    nlohmann::ordered_json bytes = nlohmann::ordered_json::array();
    for (const LayoutBits::Byte& byte : plane) {
      nlohmann::ordered_json bits = nlohmann::ordered_json::array();
      for (auto bit = byte.rbegin(); bit != byte.rend(); ++bit) {
        const bool numbered = IsNumbered(layout, *bit);
        const std::string name = bit->sample + (numbered ? std::to_string(bit->pixel) : "");
        bits.push_back(bit->sample == 0 ? "" : name + '.' + std::to_string(bit->bit));
      }
      bytes.push_back(bits);
    }
    planes.push_back(bytes);
  }
  return planes;
}

nlohmann::ordered_json CameraNamesOf(const PixelTypeID& id) {
  nlohmann::ordered_json names = nlohmann::ordered_json::array();
  for (const PFNCFormat* const format : FormatsOf(id))
    names.push_back({{"name", format->name}, {"code", format->code}});
  return names;
}

}  // namespace

nlohmann::ordered_json DescribeType(const PixelTypeID& id) {
  const PixelType& type = *PixelTypeFactory::FindPixelType(id);
  const LayoutBits layout = BitsOf(id);
  const TypeFacts facts = FactsOf(id);
  return {{"id", id},
          {"hex", HexID(id)},
          {"name", PixelTypeFactory::GetPixelTypeName(id)},
          {"class", ClassName(id)},
          {"pfnc", CameraNamesOf(id)},
          {"bits", type.GetPixelBitSize()},
          {"bytes", type.GetPixelByteSize()},
          {"bayer", type.IsBayerPattern()},
          {"normalized", (id & kNormalizedFlag) != 0},
          {"interlaced", (id & kInterlacedFlag) != 0},
          {"packed", (id & kPackedFlag) != 0},
          {"planar", (id & kPlanarFlag) != 0},
          {"v4l2", FourccsOf(id)},
          {"sample_bits", facts.sampleBits},
          {"pixel_bytes", facts.pixelBytes},
          {"note", facts.note},
          {"layout", LayoutInWords(id)},
          {"group", layout.pixels},
          {"memory", MemoryOf(layout)},
          {"readout", ReadoutOf(id)}};
}

}  // namespace LmTool
