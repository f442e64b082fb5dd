#include "options.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <iterator>
#include <vector>

#include "LmImagingLib/PixelConverter.h"
#include "error.h"
#include "pixel_type_names.h"

namespace LmTool {

namespace {

namespace Flags = LmImagingLib::ConversionFlags;

constexpr std::size_t kMostLines = 65535;
// The library counts bytes in 32 bits; at 8 bytes a pixel and with padding behind each line this stays below.
constexpr std::size_t kMostPixels = std::size_t{1} << 28;

// A word that an option takes, and the conversion flags it stands for.
struct Choice {
  const char* word;
  unsigned long flag;
};
constexpr Choice kBayerLayouts[] = {
    {"GR", Flags::kBayerGR}, {"GB", Flags::kBayerGB}, {"RG", Flags::kBayerRG}, {"BG", Flags::kBayerBG}};
constexpr Choice kFieldOrders[] = {{"top", Flags::kNone}, {"bottom", Flags::kFieldOrder}};
constexpr Choice kDemosaics[] = {{"block", Flags::kNone}, {"bilinear", Flags::kBilinear}};

// Parses a whole text as one number.
template <class Number>
bool ParseNumber(const std::string& text, Number& value) {
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value);
  return error == std::errc() && stop == end;
}

std::vector<std::string> Split(const std::string& text, char separator) {
  std::vector<std::string> parts;
  std::size_t begin = 0;
  for (std::size_t end; (end = text.find(separator, begin)) != std::string::npos; begin = end + 1) {
    parts.push_back(text.substr(begin, end - begin));
  }
  parts.push_back(text.substr(begin));
  return parts;
}

template <std::size_t kCount>
CLI::Option* AddChoiceOption(CLI::App& command, const std::string& name, const Choice (&choices)[kCount],
                             unsigned long& flags, const std::string& description) {
  std::string words;
  for (const Choice& choice : choices) words += (words.empty() ? "" : "|") + std::string(choice.word);
  const auto parse = [name, &choices, &flags, words](const std::string& text) {
    const auto* const choice =
        std::find_if(std::begin(choices), std::end(choices), [&](const Choice& entry) { return text == entry.word; });
    if (choice == std::end(choices)) throw ToolError(name, "'" + text + "' is unknown; allowed: " + words);
    flags |= choice->flag;
  };
  return command.add_option_function<std::string>(name, parse, description)->type_name(words);
}

}  // namespace

CLI::Option* AddTypeOption(CLI::App& command, const std::string& name, LmImagingLib::PixelTypeID& value,
                           const std::string& description) {
  const auto parse = [name, &value](const std::string& text) { value = ParsePixelType(name, text); };
  return command.add_option_function<std::string>(name, parse, description)->type_name("TYPE");
}

CLI::Option* AddSizeOption(CLI::App& command, ImageSize& size) {
  const auto parse = [&size](const std::string& text) {
    const std::vector<std::string> parts = Split(text, 'x');
    const auto valid = [](std::size_t value) { return value >= 1 && value <= kMostLines; };
    if (parts.size() != 2 || !ParseNumber(parts[0], size.width) || !ParseNumber(parts[1], size.height) ||
        !valid(size.width) || !valid(size.height) || size.Pixels() > kMostPixels) {
      throw ToolError("--size", "'" + text + "' is no image size; allowed: WIDTHxHEIGHT such as 1920x1080, each 1 to " +
                                    std::to_string(kMostLines) + ", at most " + std::to_string(kMostPixels) +
                                    " pixels");
    }
  };
  return command.add_option_function<std::string>("--size", parse, "Width and height of the image in pixels")
      ->type_name("WxH")
      ->required();
}

void AddLayoutOptions(CLI::App& command, unsigned long& flags) {
  AddChoiceOption(command, "--bayer", kBayerLayouts, flags,
                  "Bayer types: colours of the first two pixels of the top row (default: GR)");
  AddChoiceOption(command, "--field-order", kFieldOrders, flags,
                  "Interlaced types: which field the first half of the file holds; the top field has the top line "
                  "(default: top)");
}

void AddDemosaicOption(CLI::App& command, unsigned long& flags) {
  AddChoiceOption(command, "--demosaic", kDemosaics, flags,
                  "Bayer types: colours from 2x2 cells, or from the neighbours of each pixel (default: block)");
}

CLI::Option* AddTripleOption(CLI::App& command, const std::string& name, Triple& value, double most,
                             const std::string& description) {
  const auto parse = [name, &value, most](const std::string& text) {
    const std::vector<std::string> parts = Split(text, ',');
    std::array<double, 3> numbers{};
    bool valid = parts.size() == numbers.size();
    for (std::size_t i = 0; valid && i < numbers.size(); ++i) {
      valid = ParseNumber(parts[i], numbers[i]) && numbers[i] >= 0 && numbers[i] <= most;
    }
    if (!valid) {
      throw ToolError(name, "'" + text + "' does not fit; allowed: three numbers R,G,B, each 0 to " +
                                std::to_string(static_cast<int>(most)));
    }
    value = {numbers[0], numbers[1], numbers[2]};
  };
  return command.add_option_function<std::string>(name, parse, description)->type_name("R,G,B");
}

}  // namespace LmTool
