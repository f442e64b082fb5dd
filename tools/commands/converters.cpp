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

void PrintJson(const std::vector<Pair>& pairs) {
  nlohmann::ordered_json list = nlohmann::ordered_json::array();
  const auto describe = [](const PixelTypeID& id) {
    return nlohmann::ordered_json{
        {"id", id}, {"hex", HexID(id)}, {"name", PixelTypeFactory::GetPixelTypeName(id)}, {"class", ClassName(id)}};
  };
  for (const auto& [from, to] : pairs) list.push_back({{"from", describe(from)}, {"to", describe(to)}});
  std::cout << list.dump(2) << '\n';
}

void PrintTable(const std::vector<Pair>& pairs) {
  std::cout << std::left << std::setw(76) << "from"
            << "to\n";
  for (const auto& [from, to] : pairs) std::cout << std::setw(76) << Label(from) << Label(to) << '\n';
}

}  // namespace

void AddConvertersCommand(CLI::App& app) {
  CLI::App* const command = app.add_subcommand("converters", "List which type converts to which");
  const auto options = std::make_shared<Options>();
  AddTypeOption(*command, "--from", options->from, nullptr, "Only converters from this type");
  AddTypeOption(*command, "--to", options->to, nullptr, "Only converters to this type");
  command->add_flag("--json", options->json, "For programs, as JSON");
  command->callback([options] {
    const std::vector<Pair> pairs = Select(*options);
    options->json ? PrintJson(pairs) : PrintTable(pairs);
  });
}

}  // namespace LmTool
