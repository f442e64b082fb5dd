#include <CLI/CLI.hpp>
#include <iomanip>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <utility>
#include <vector>

#include "LmImagingLib/PixelTypeFactory.h"
#include "commands/commands.h"
#include "kept_bits.h"
#include "options.h"
#include "pixel_type_names.h"

namespace LmTool {

using namespace LmImagingLib;

namespace {

constexpr PixelTypeID kAny = -1;

struct Options {
  PixelTypeID from = kAny;
  PixelTypeID to = kAny;
  bool json = false;
};

using Pair = std::pair<PixelTypeID, PixelTypeID>;

std::vector<Pair> Select(const Options& options) {
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

void PrintTable(const std::vector<Pair>& pairs) {
  std::cout << std::left << std::setw(76) << "from" << std::setw(76) << "to"
            << "bits lost\n";
  ForEach(pairs, [](const Pair& pair, const KeptBits& bits) {
    std::cout << std::setw(76) << Label(pair.first);
    if (const std::string loss = LossInWords(bits); !loss.empty()) {
      std::cout << std::setw(76) << Label(pair.second) << loss << '\n';
    } else {
      std::cout << Label(pair.second) << '\n';
    }
  });
}

}  // namespace

void AddConvertersCommand(CLI::App& app) {
  CLI::App* const command = app.add_subcommand("converters", "List which type converts to which");
  const auto options = std::make_shared<Options>();
  AddTypeOption(*command, "--from", options->from, nullptr, "Only converters from this type");
  AddTypeOption(*command, "--to", options->to, nullptr, "Only converters to this type");
  command->add_flag("--json", options->json, "For programs, as JSON");
  command->footer(
      "Bits are those of a sample, of the channel that loses most. They are lost where the destination has no room "
      "for\n"
      "them. Colours of YUV are made at 8 bits.");
  command->callback([options] {
    const std::vector<Pair> pairs = Select(*options);
    options->json ? PrintJson(pairs) : PrintTable(pairs);
  });
}

}  // namespace LmTool
