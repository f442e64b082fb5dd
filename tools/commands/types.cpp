#include <CLI/CLI.hpp>
#include <iomanip>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>

#include "LmImagingLib/PixelType.h"
#include "LmImagingLib/PixelTypeFactory.h"
#include "commands/commands.h"
#include "encode/layout.h"
#include "encode/layout_bits.h"
#include "pixel_type_names.h"

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
        const bool numbered = layout.pixels > 1 && bit->sample != 'U' && bit->sample != 'V';
        const std::string name = bit->sample + (numbered ? std::to_string(bit->pixel) : "");
        bits.push_back(bit->sample == 0 ? "" : name + '.' + std::to_string(bit->bit));
      }
      bytes.push_back(bits);
    }
    planes.push_back(bytes);
  }
  return planes;
}

void PrintJson() {
  nlohmann::ordered_json list = nlohmann::ordered_json::array();
  for (const PixelTypeID id : RegisteredTypes()) {
    const PixelType& type = *PixelTypeFactory::FindPixelType(id);
    const LayoutBits layout = BitsOf(id);
    list.push_back({{"id", id},
                    {"hex", HexID(id)},
                    {"name", PixelTypeFactory::GetPixelTypeName(id)},
                    {"class", ClassName(id)},
                    {"bits", type.GetPixelBitSize()},
                    {"bytes", type.GetPixelByteSize()},
                    {"bayer", type.IsBayerPattern()},
                    {"normalized", (id & kNormalizedFlag) != 0},
                    {"interlaced", (id & kInterlacedFlag) != 0},
                    {"packed", (id & kPackedFlag) != 0},
                    {"planar", (id & kPlanarFlag) != 0},
                    {"layout", LayoutInWords(id)},
                    {"group", layout.pixels},
                    {"memory", MemoryOf(layout)},
                    {"readout", ReadoutOf(id)}});
  }
  std::cout << list.dump(2) << '\n';
}

void PrintTable() {
  const auto row = [](const auto& id, const auto& className, const auto& bits, const auto& bytes, const auto& name) {
    std::cout << std::left << std::setw(12) << id << std::setw(33) << className << std::right << std::setw(4) << bits
              << std::setw(7) << bytes << "  " << name << '\n';
  };
  row("id", "class", "bits", "bytes", "name");
  for (const PixelTypeID id : RegisteredTypes()) {
    const PixelType& type = *PixelTypeFactory::FindPixelType(id);
    row(HexID(id), ClassName(id), type.GetPixelBitSize(), type.GetPixelByteSize(),
        PixelTypeFactory::GetPixelTypeName(id));
  }
}

}  // namespace

void AddTypesCommand(CLI::App& app) {
  CLI::App* const command = app.add_subcommand("types", "List the pixel types");
  const auto json = std::make_shared<bool>(false);
  command->add_flag("--json", *json, "For programs: all attributes, as JSON");
  command->callback([json] { *json ? PrintJson() : PrintTable(); });
}

}  // namespace LmTool
