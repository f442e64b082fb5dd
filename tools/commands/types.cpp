#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>

#include "camera_names.h"
#include "commands/commands.h"
#include "commands/type_rows.h"
#include "pixel_type_names.h"
#include "text_columns.h"
#include "type_facts.h"
#include "type_report.h"

namespace LmTool {

using namespace LmImagingLib;

namespace {

struct TypesOptions {
  bool json = false;
  bool all = false;
};

void PrintJson() {
  nlohmann::ordered_json list = nlohmann::ordered_json::array();
  for (const PixelTypeID id : RegisteredTypes()) list.push_back(DescribeType(id));
  std::cout << list.dump(2) << '\n';
}

void PrintTable(bool all) {
  const auto print = [](const std::string& id, const std::string& bits, const std::string& bytes,
                        const std::string& name, const std::string& cameras) {
    PrintRow(std::cout, {{id, 10}, {bits, 5, true}, {bytes, 5, true}, {"", 0}, {name, 28}, {cameras, 27}});
  };
  print("id", "bits", "bytes", "registered name", "names of cameras");
  std::size_t omitted = 0;
  for (const TypeWithVariants& row : RowsOf(RegisteredTypes(), all)) {
    const TypeFacts facts = FactsOf(row.type);
    print(HexID(row.type), facts.sampleBits, PixelBytesInWords(facts.pixelBytes), NameOfRow(row),
          CameraNames(row.type));
    omitted += row.variants.size();
  }
  PrintOmitted(omitted, "types");
}

}  // namespace

void AddTypesCommand(CLI::App& app) {
  CLI::App* const command = app.add_subcommand("types", "List the pixel types");
  const auto options = std::make_shared<TypesOptions>();
  AddAllOption(*command, options->all);
  command->add_flag("--json", options->json, "For programs: all types and attributes, as JSON");
  command->footer(
      "Bits are those of a sample. Bytes are those of a pixel in memory. Cameras' names are those of the GenICam Pixel "
      "Format Naming Convention, or else of V4L2. Any of the names is accepted, in upper or lower case. A mosaic has a "
      "name for each layout: BayerGR10 (RG, GB, BG) means BayerGR10, BayerRG10, BayerGB10 and BayerBG10.");
  command->callback([options] { options->json ? PrintJson() : PrintTable(options->all); });
}

}  // namespace LmTool
