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
#include "commands/commands.h"
#include "encode/layout.h"
#include "kept_bits.h"
#include "layout_drawing.h"
#include "options.h"
#include "pixel_type_names.h"
#include "type_report.h"

namespace LmTool {

using namespace LmImagingLib;

namespace {

struct Options {
  PixelTypeID type = 0;
  bool json = false;
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

// What is said of each goes behind it.
template <class Remark>
void PrintTypes(const char* title, const std::vector<PixelTypeID>& types, const Remark& remark) {
  std::cout << '\n' << title << '\n';
  for (const PixelTypeID id : types) {
    const std::string text = remark(id);
    std::cout << "  " << std::left << std::setw(12) << HexID(id) << std::setw(33) << ClassName(id)
              << PixelTypeFactory::GetPixelTypeName(id) << (text.empty() ? "" : ", " + text) << '\n';
  }
}

std::string CameraNames(const PixelTypeID& id) {
  std::string names;
  for (const PFNCFormat* const format : FormatsOf(id)) {
    std::ostringstream code;
    code << std::hex << std::uppercase << std::setw(8) << std::setfill('0') << format->code;
    names += (names.empty() ? "" : ", ") + std::string(format->name) + " (0x" + code.str() + ")";
  }
  return names.empty() ? "none" : names;
}

// The pixels of a line of eight in the order in which they come; empty if that is from left to right.
std::string Readout(const PixelTypeID& id) {
  const std::vector<std::size_t> order = ReadoutOf(id);
  if (std::is_sorted(order.begin(), order.end())) return {};
  std::string text;
  for (const std::size_t pixel : order) text += ' ' + std::to_string(pixel);
  return text;
}

void PrintText(const PixelTypeID& id) {
  const PixelType& type = *PixelTypeFactory::FindPixelType(id);
  const LayoutBits layout = BitsOf(id);
  const auto row = [](const char* name, const auto& value) {
    std::cout << std::left << std::setw(16) << name << value << '\n';
  };
  row("id", HexID(id) + " (" + std::to_string(id) + ")");
  row("name", PixelTypeFactory::GetPixelTypeName(id));
  row("class", ClassName(id));
  row("PFNC", CameraNames(id));
  row("bits", type.GetPixelBitSize());
  row("bytes", type.GetPixelByteSize());
  row("Bayer mosaic", type.IsBayerPattern() ? "yes" : "no");
  row("layout", LayoutInWords(id));

  std::cout << "\nIn memory, each byte from its highest to its lowest bit";
  if (layout.pixels > 1) std::cout << ", " << layout.pixels << " pixels together";
  std::cout << ":\n\n" << Drawing(layout);
  if (const std::string order = Readout(id); !order.empty()) {
    std::cout << "\nThe pixels of a line of eight come in the order" << order << ".\n";
  }
  const BitProbe probe(id);
  PrintTypes("Converts to", DestinationsOf(id), [&](const PixelTypeID& to) { return LossInWords(probe.To(to)); });
  PrintTypes("Is converted from", SourcesOf(id),
             [&](const PixelTypeID& from) { return LossInWords(BitProbe(from).To(id)); });
}

}  // namespace

void AddInfoCommand(CLI::App& app) {
  CLI::App* const command = app.add_subcommand("info", "Tell everything about a type, and draw its bits in memory");
  const auto options = std::make_shared<Options>();
  AddTypeOption(*command, "TYPE", options->type, nullptr,
                "An id, a name, a class name, or what a camera calls it, by PFNC name or code")
      ->required();
  command->add_flag("--json", options->json, "For programs, as JSON");
  command->footer(
      "In the drawing, R, G, B, Y, U and V are samples of a channel, p is the only sample of a pixel. The number "
      "behind\n"
      "the letter counts the pixels that are stored together; then follow the bits of the sample, 0 for the lowest.\n"
      "Bits with a dash are not used. `bits` are the significant ones of a pixel, of wide RGB types of a sample; "
      "`bytes`\n"
      "are those of a pixel, of packed types nominal. Behind a type to convert to or from are the bits that are kept,\n"
      "where some are lost.");
  command->callback([options] { options->json ? PrintJson(options->type) : PrintText(options->type); });
}

}  // namespace LmTool
