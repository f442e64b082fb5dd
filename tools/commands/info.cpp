#include <CLI/CLI.hpp>
#include <algorithm>
#include <iomanip>
#include <iostream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "LmImagingLib/PixelType.h"
#include "LmImagingLib/PixelTypeFactory.h"
#include "camera_names.h"
#include "commands/commands.h"
#include "commands/type_rows.h"
#include "encode/layout.h"
#include "kept_bits.h"
#include "layout_drawing.h"
#include "options.h"
#include "pixel_type_names.h"
#include "text_columns.h"
#include "type_facts.h"
#include "type_report.h"

namespace LmTool {

using namespace LmImagingLib;

namespace {

struct InfoOptions {
  PixelTypeID type = 0;
  bool json = false;
  bool all = false;
};

using Enumerate = bool (*)(unsigned long index, const PixelTypeID& of, PixelTypeID& found);

std::vector<PixelTypeID> ListOf(const PixelTypeID& type, Enumerate enumerate) {
  std::vector<PixelTypeID> types;
  PixelTypeID found = 0;
  for (unsigned long i = 0; enumerate(i, type, found); ++i) types.push_back(found);
  return types;
}

std::vector<PixelTypeID> DestinationsOf(const PixelTypeID& type) {
  return ListOf(type, [](unsigned long index, const PixelTypeID& from, PixelTypeID& to) {
    return PixelTypeFactory::EnumConverterTo(index, from, to);
  });
}

std::vector<PixelTypeID> SourcesOf(const PixelTypeID& type) {
  return ListOf(type, [](unsigned long index, const PixelTypeID& to, PixelTypeID& from) {
    return PixelTypeFactory::EnumConverterFrom(index, to, from);
  });
}

void PrintJson(const PixelTypeID& id) {
  nlohmann::ordered_json type = DescribeType(id);
  const BitProbe probe(id);
  nlohmann::ordered_json kept = nlohmann::ordered_json::array();
  for (const PixelTypeID to : DestinationsOf(id)) kept.push_back(probe.To(to).kept);
  type["destinations"] = DestinationsOf(id);
  type["kept"] = kept;
  type["sources"] = SourcesOf(id);
  std::cout << type.dump(2) << '\n';
}

std::string NamesWithCodes(const PixelTypeID& id) {
  std::string names;
  for (const PFNCFormat* const format : FormatsOf(id)) {
    std::ostringstream code;
    code << std::hex << std::uppercase << std::setw(8) << std::setfill('0') << format->code;
    names += (names.empty() ? "" : ", ") + std::string(format->name) + " (0x" + code.str() + ")";
  }
  return names;
}

// The pixels of a line of eight in the order in which they come; empty if that is from left to right.
std::string Readout(const PixelTypeID& id) {
  const std::vector<std::size_t> order = ReadoutOf(id);
  if (std::is_sorted(order.begin(), order.end())) return {};
  std::string text;
  for (const std::size_t pixel : order) text += ' ' + std::to_string(pixel);
  return text;
}

void PrintText(const PixelTypeID& id, bool all) {
  const PixelType& type = *PixelTypeFactory::FindPixelType(id);
  const LayoutBits layout = BitsOf(id);
  const TypeFacts facts = FactsOf(id);
  const auto row = [](const char* name, const std::string& value) {
    PrintRow(std::cout, {{name, 15}, {value.empty() ? "none" : value, kTerminalColumns - 16}});
  };
  row("id", HexID(id) + " (" + std::to_string(id) + ")");
  row("name", PixelTypeFactory::GetPixelTypeName(id));
  if (!facts.note.empty()) row("", "(" + facts.note + ")");
  row("class", ClassName(id));
  row("PFNC", NamesWithCodes(id));
  row("V4L2", Joined(FourccsOf(id), ", "));
  row("a sample", facts.sampleBits + " bits");
  row("a pixel", PixelBytesInWords(facts.pixelBytes) + " bytes");
  row("layout", LayoutInWords(id));
  row("Bayer mosaic", type.IsBayerPattern() ? "yes" : "no");
  row("registered as",
      std::to_string(type.GetPixelBitSize()) + " bits, " + std::to_string(type.GetPixelByteSize()) + " bytes");

  std::cout << "\nIn memory, each byte from its highest to its lowest bit";
  if (layout.pixels > 1) std::cout << ", " << layout.pixels << " pixels together";
  std::cout << ":\n\n" << Drawing(layout);
  if (const std::string order = Readout(id); !order.empty()) {
    std::cout << "\nThe pixels of a line of eight come in the order" << order << ".\n";
  }
  const BitProbe probe(id);
  std::cout << "\nConverts to\n";
  std::size_t omitted =
      PrintTypes(DestinationsOf(id), all, [&](const PixelTypeID& to) { return LossInWords(probe.To(to)); });
  std::cout << "\nIs converted from\n";
  omitted +=
      PrintTypes(SourcesOf(id), all, [&](const PixelTypeID& from) { return LossInWords(BitProbe(from).To(id)); });
  PrintOmitted(omitted, "types");
}

}  // namespace

void AddInfoCommand(CLI::App& app) {
  CLI::App* const command = app.add_subcommand("info", "Describe a type, and draw its bits in memory");
  const auto options = std::make_shared<InfoOptions>();
  AddTypeOption(*command, "TYPE", options->type, nullptr,
                "An id, a name, a class name, or the name that a camera has for it: a PFNC name or code, or a V4L2 "
                "fourcc")
      ->required();
  AddAllOption(*command, options->all);
  command->add_flag("--json", options->json, "For programs, as JSON");
  command->footer(
      "In the drawing, R, G, B, Y, U and V are samples of a channel, and p is the only sample of a pixel. The number "
      "after "
      "the letter counts the pixels that are stored together. The bits of the sample follow, 0 for the lowest. Bits "
      "with a dash are not used. Where a conversion loses bits, the list of types shows how many of a sample are "
      "kept.\n"
      "\n"
      "The registered bits are the significant bits of a pixel, but of a sample in wide RGB types. The registered "
      "bytes "
      "are those of a pixel, rounded up in packed types.");
  command->callback([options] { options->json ? PrintJson(options->type) : PrintText(options->type, options->all); });
}

}  // namespace LmTool
