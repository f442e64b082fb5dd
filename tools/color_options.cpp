#include "color_options.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "error.h"
#include "numbers.h"
#include "words.h"

namespace LmTool {

using namespace LmImagingLib;

namespace {

// Numbers between commas; none if any of them is no number.
std::vector<double> ParseNumbers(const std::string& text) {
  std::vector<double> numbers;
  for (const std::string& part : Split(text, ',')) {
    double number = 0;
    if (!ParseNumber(part, number)) return {};
    numbers.push_back(number);
  }
  return numbers;
}

std::optional<WhiteBalanceOptions> ParseWhiteBalance(const std::string& text) {
  WhiteBalanceOptions options;
  if (text == "gray") return options;
  if (text == "white") {
    options.method = WhiteBalanceOptions::kWhitePatch;
    return options;
  }
  const std::vector<std::string> parts = Split(text, ',');
  const std::vector<std::string> size = Split(parts.back(), 'x');
  options.method = WhiteBalanceOptions::kRectangle;
  const bool valid = parts.size() == 3 && size.size() == 2 && ParseNumber(parts[0], options.x) &&
                     ParseNumber(parts[1], options.y) && ParseNumber(size[0], options.width) &&
                     ParseNumber(size[1], options.height);
  return valid ? std::optional(options) : std::nullopt;
}

}  // namespace

CLI::Option* AddTripleOption(CLI::App& command, const std::string& name, Triple& value, double most,
                             const std::string& description, double least, bool one) {
  const auto parse = [=, &value](const std::string& text) {
    std::vector<double> numbers = ParseNumbers(text);
    if (one && numbers.size() == 1) numbers.resize(3, numbers[0]);
    const bool valid = numbers.size() == 3 && std::all_of(numbers.begin(), numbers.end(), [=](double number) {
                         return number >= least && number <= most;
                       });
    if (!valid) {
      throw ToolError(name, "'" + text + "' does not fit; allowed: " + (one ? "a number, or " : "") +
                                "three numbers R,G,B, each " + ShortText(least) + " to " + ShortText(most));
    }
    value = {numbers[0], numbers[1], numbers[2]};
  };
  return command.add_option_function<std::string>(name, parse, description)->type_name(one ? "B|R,G,B" : "R,G,B");
}

void AddColorOptions(CLI::App& command, ColorArguments& colors) {
  const auto add = [&](const char* name, auto parse, const char* description, const char* type) {
    command.add_option_function<std::string>(name, parse, description)->type_name(type);
  };
  add(
      "--white-balance",
      [&colors](const std::string& text) {
        colors.balance = ParseWhiteBalance(text);
        if (!colors.balance) {
          throw ToolError("--white-balance", "'" + text +
                                                 "' is unknown; allowed: gray, white, or a rectangle X,Y,WxH in "
                                                 "pixels, such as 240,600,160x160");
        }
      },
      "Find the gains in the first frame of each file, and print them as --gain takes them: by the mean of the picture "
      "(gray), by its brightest hundredth (white), or by a rectangle that is gray",
      "gray|white|X,Y,WxH");
  add(
      "--tone",
      [&colors](const std::string& text) {
        const std::optional<ToneCurve> tone = ParseTone(text);
        if (!tone) throw ToolError("--tone", "'" + text + "' is unknown; allowed: " + kTones);
        colors.tone = *tone;
      },
      "The curve from light to values, after the gains; srgb is for screens (default: linear, or as --development "
      "says)",
      "linear|srgb|bt709|GAMMA");
  add(
      "--matrix",
      [&colors](const std::string& text) {
        const std::vector<double> numbers = ParseNumbers(text);
        bool valid = numbers.size() == colors.matrix.size();
        for (std::size_t row = 0; valid && row < 3; ++row) {
          const double* const first = &numbers[3 * row];
          valid = std::abs(first[0]) + std::abs(first[1]) + std::abs(first[2]) <= 7;
        }
        if (!valid) {
          throw ToolError("--matrix", "'" + text +
                                          "' does not fit; allowed: nine numbers, row by row, the absolute values of a "
                                          "row sum to 7 at most");
        }
        std::copy(numbers.begin(), numbers.end(), colors.matrix.begin());
        colors.develops = true;
      },
      "Nine numbers, row by row: red, green and blue of the picture as sums of the camera's, in linear light, before "
      "--tone",
      "A,B,C,...");
  add(
      "--defects",
      [&colors](const std::string& text) {
        unsigned threshold = 0;
        if (text == "off") {
          colors.defects.reset();
          return;
        }
        if (text != "on" && (!ParseNumber(text, threshold) || threshold < 1 || threshold > 65535)) {
          throw ToolError("--defects", "'" + text + "' is unknown; allowed: on, off, or a threshold of 1 to 65535");
        }
        colors.defects = threshold;
        colors.develops = true;
      },
      "Bayer types: correct samples that are outside of the range of the eight around by more than a threshold, in "
      "steps of the samples (on: 1/64 of their range; default: off)",
      "on|off|T");
}

}  // namespace LmTool
