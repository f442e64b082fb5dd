#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <utility>
#include <vector>

#include "LmImagingLib/PixelTypeFactory.h"
#include "camera_names.h"
#include "commands/commands.h"
#include "commands/type_rows.h"
#include "kept_bits.h"
#include "options.h"
#include "pixel_type_names.h"
#include "text_columns.h"

namespace LmTool {

using namespace LmImagingLib;

namespace {

constexpr PixelTypeID kAny = -1;

struct ConvertersOptions {
  PixelTypeID from = kAny;
  PixelTypeID to = kAny;
  bool json = false;
  bool all = false;
};

using Pair = std::pair<PixelTypeID, PixelTypeID>;  // from, to

std::vector<Pair> Select(const ConvertersOptions& options) {
  std::vector<Pair> pairs;
  Pair pair;
  for (unsigned long i = 0; PixelTypeFactory::EnumConverters(i, pair.first, pair.second); ++i) {
    const bool wanted =
        (options.from == kAny || options.from == pair.first) && (options.to == kAny || options.to == pair.second);
    if (wanted) pairs.push_back(pair);
  }
  return pairs;
}

// Pairs are in the order of their sources.
template <class Print>
void ForEach(const std::vector<Pair>& pairs, const Print& print) {
  std::optional<BitProbe> probe;
  PixelTypeID from = kAny;
  for (const Pair& pair : pairs) {
    if (pair.first != from) probe.emplace(from = pair.first);
    print(pair, probe->To(pair.second));
  }
}

void PrintJson(const std::vector<Pair>& pairs) {
  nlohmann::ordered_json list = nlohmann::ordered_json::array();
  const auto describe = [](const PixelTypeID& id) {
    return nlohmann::ordered_json{
        {"id", id}, {"hex", HexID(id)}, {"name", PixelTypeFactory::GetPixelTypeName(id)}, {"class", ClassName(id)}};
  };
  ForEach(pairs, [&](const Pair& pair, const KeptBits& bits) {
    list.push_back(
        {{"from", describe(pair.first)}, {"to", describe(pair.second)}, {"bits", bits.sample}, {"kept", bits.kept}});
  });
  std::cout << list.dump(2) << '\n';
}

// The types that pairs have at one end, with the other end given.
std::vector<PixelTypeID> Ends(const std::vector<Pair>& pairs, PixelTypeID Pair::*end, PixelTypeID Pair::*other,
                              const PixelTypeID& given) {
  std::vector<PixelTypeID> ends;
  for (const Pair& pair : pairs) {
    if (pair.*other == given) ends.push_back(pair.*end);
  }
  return ends;
}

void PrintHeading(const char* before, const PixelTypeID& type, const char* after) {
  const std::string cameras = CameraNames(type);
  const std::string text = before + Label(type) + (cameras.empty() ? "" : ", " + cameras) + after;
  for (const std::string& line : Wrapped(text, kTerminalColumns)) std::cout << line << '\n';
}

void PrintLists(const std::vector<Pair>& pairs, const ConvertersOptions& options) {
  std::size_t omitted = 0;
  if (options.from == kAny && options.to != kAny) {
    PrintHeading("To ", options.to, " from");
    omitted = PrintTypes(Ends(pairs, &Pair::first, &Pair::second, options.to), options.all,
                         [&](const PixelTypeID& from) { return LossInWords(BitProbe(from).To(options.to)); });
  } else {
    std::vector<PixelTypeID> sources;
    for (const Pair& pair : pairs) {
      if (sources.empty() || sources.back() != pair.first) sources.push_back(pair.first);
    }
    for (const TypeWithVariants& source : RowsOf(sources, options.all)) {
      const std::vector<PixelTypeID> destinations = Ends(pairs, &Pair::second, &Pair::first, source.type);
      const BitProbe probe(source.type);
      PrintHeading("From ", source.type, " to");
      omitted +=
          PrintTypes(destinations, options.all, [&](const PixelTypeID& to) { return LossInWords(probe.To(to)); });
      for (const PixelTypeID variant : source.variants) {
        omitted += Ends(pairs, &Pair::second, &Pair::first, variant).size();
      }
    }
  }
  PrintOmitted(omitted, "pairs");
}

}  // namespace

void AddConvertersCommand(CLI::App& app) {
  CLI::App* const command = app.add_subcommand("converters", "List which type converts to which");
  const auto options = std::make_shared<ConvertersOptions>();
  AddTypeOption(*command, "--from", options->from, nullptr, "Only converters from this type");
  AddTypeOption(*command, "--to", options->to, nullptr, "Only converters to this type");
  AddAllOption(*command, options->all);
  command->add_flag("--json", options->json, "For programs: all pairs, as JSON");
  command->footer(
      "Bits are those of a sample of the channel that loses most. They are lost where the destination has no room for "
      "them. Colours are made of YUV at 8 bits.");
  command->callback([options] {
    const std::vector<Pair> pairs = Select(*options);
    options->json ? PrintJson(pairs) : PrintLists(pairs, *options);
  });
}

}  // namespace LmTool
