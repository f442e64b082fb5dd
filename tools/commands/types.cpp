#include <CLI/CLI.hpp>
#include <iomanip>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>

#include "LmImagingLib/PixelType.h"
#include "LmImagingLib/PixelTypeFactory.h"
#include "commands/commands.h"
#include "pixel_type_names.h"
#include "type_report.h"

namespace LmTool {

using namespace LmImagingLib;

namespace {

void PrintJson() {
  nlohmann::ordered_json list = nlohmann::ordered_json::array();
  for (const PixelTypeID id : RegisteredTypes()) list.push_back(DescribeType(id));
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
