#include "options.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <vector>

#include "LmImagingLib/PixelConverter.h"
#include "error.h"
#include "numbers.h"
#include "ordered_jobs.h"

namespace LmTool {

using namespace LmImagingLib;

namespace {

namespace Flags = LmImagingLib::ConversionFlags;

constexpr std::size_t kMostLineBytes = std::size_t{1} << 20;

// A word that an option takes, and the conversion flags it stands for.
struct Choice {
  const char* word;
  unsigned long flag;
};
constexpr Choice kBayerLayouts[] = {
    {"GR", Flags::kBayerGR}, {"GB", Flags::kBayerGB}, {"RG", Flags::kBayerRG}, {"BG", Flags::kBayerBG}};
constexpr Choice kFieldOrders[] = {{"top", Flags::kNone}, {"bottom", Flags::kFieldOrder}};
constexpr Choice kDemosaics[] = {{"block", Flags::kNone},
                                 {"bilinear", Flags::kBilinear},
                                 {"mhc", Flags::kGradientCorrected},
                                 {"adaptive", Flags::kAdaptive},
                                 {"half", Flags::kHalfSize}};
constexpr Choice kFilterOrders[] = {{"mosaic", Flags::kFilterFirst}, {"colour", Flags::kNone}};
constexpr Choice kYuvRanges[] = {{"studio", Flags::kNone}, {"full", Flags::kFullRange}};
constexpr Choice kYuvMatrices[] = {{"bt601", Flags::kNone}, {"bt709", Flags::kBT709}};

template <std::size_t kCount>
std::string WordsOf(const Choice (&choices)[kCount]) {
  std::string words;
  for (const Choice& choice : choices) words += (words.empty() ? "" : "|") + std::string(choice.word);
  return words;
}

template <std::size_t kCount>
const Choice& FindChoice(const std::string& name, const Choice (&choices)[kCount], const std::string& text) {
  const auto* const choice =
      std::find_if(std::begin(choices), std::end(choices), [&](const Choice& entry) { return text == entry.word; });
  if (choice == std::end(choices)) {
    throw ToolError(name, "'" + text + "' is unknown; allowed: " + WordsOf(choices));
  }
  return *choice;
}

template <std::size_t kCount>
void AddChoiceOption(CLI::App& command, const std::string& name, const Choice (&choices)[kCount], unsigned long& flags,
                     const std::string& description) {
  const auto parse = [name, &choices, &flags](const std::string& text) {
    flags |= FindChoice(name, choices, text).flag;
  };
  command.add_option_function<std::string>(name, parse, description)->type_name(WordsOf(choices));
}

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

const char* WordOf(unsigned long layout) {
  return std::find_if(std::begin(kBayerLayouts), std::end(kBayerLayouts),
                      [=](const Choice& choice) { return choice.flag == layout; })
      ->word;
}

}  // namespace

void MosaicLayout::Set(const std::string& argument, const std::string& says, unsigned long flag) {
  if (mFlag != 0 && mFlag != flag) {
    throw ToolError(argument, "'" + says + "' is a mosaic that begins " + WordOf(flag) + ", but " + mArgument + " '" +
                                  mSays + "' says that it begins " + WordOf(mFlag) +
                                  "; allowed: the same layout in both");
  }
  mFlag = flag;
  mArgument = argument;
  mSays = says;
}

CLI::Option* AddTypeOption(CLI::App& command, const std::string& name, LmImagingLib::PixelTypeID& value,
                           MosaicLayout* mosaic, const std::string& description, unsigned long* flags) {
  const auto parse = [name, &value, mosaic, flags](const std::string& text) {
    const NamedType type = FindNamedType(name, text);
    value = type.id;
    if (mosaic != nullptr && type.mosaic != 0) mosaic->Set(name, text, type.mosaic);
    if (flags != nullptr) *flags |= type.yuv;
  };
  return command.add_option_function<std::string>(name, parse, description)->type_name("TYPE");
}

CLI::Option* AddSizeOption(CLI::App& command, ImageSize& size, const std::string& description) {
  const auto parse = [&size](const std::string& text) {
    const std::vector<std::string> parts = Split(text, 'x');
    if (parts.size() != 2 || !ParseNumber(parts[0], size.width) || !ParseNumber(parts[1], size.height) ||
        !IsAllowed(size)) {
      throw ToolError("--size",
                      "'" + text + "' is no image size; allowed: WIDTHxHEIGHT such as 1920x1080, " + AllowedSizes());
    }
  };
  return command.add_option_function<std::string>("--size", parse, description)->type_name("WxH");
}

void AddLineSizeOption(CLI::App& command, std::size_t& lineSize) {
  const auto parse = [&lineSize](const std::string& text) {
    if (!ParseNumber(text, lineSize) || lineSize == 0 || lineSize > kMostLineBytes) {
      throw ToolError("--line-size",
                      "'" + text + "' is no number of bytes; allowed: 1 to " + std::to_string(kMostLineBytes));
    }
  };
  command
      .add_option_function<std::string>("--line-size", parse,
                                        "Bytes from the beginning of a raw frame's line to that of the next, where "
                                        "lines are padded (default: no padding)")
      ->type_name("BYTES");
}

void AddFramesOption(CLI::App& command, std::optional<FrameRange>& frames) {
  const auto parse = [&frames](const std::string& text) {
    frames.emplace();
    if (text == "all") return;
    const std::vector<std::string> parts = Split(text, '-');
    const bool valid = parts.size() <= 2 && ParseNumber(parts.front(), frames->first) &&
                       ParseNumber(parts.back(), frames->last) && frames->first <= frames->last &&
                       frames->last < FrameRange::kEnd / kMostFrameBytes;
    if (!valid) {
      throw ToolError("--frames", "'" + text +
                                      "' tells no frames; allowed: all, a number such as 7, or a range such "
                                      "as 10-19, counted from 0");
    }
  };
  command
      .add_option_function<std::string>(
          "--frames", parse,
          "The raw files hold several frames, one behind the other: convert all, the one of "
          "a number, or a range such as 10-19, counted from 0")
      ->type_name("FRAMES");
}

void AddLayoutOptions(CLI::App& command, MosaicLayout& mosaic, unsigned long& flags) {
  const auto setLayout = [&mosaic](const std::string& text) {
    mosaic.Set("--bayer", text, FindChoice("--bayer", kBayerLayouts, text).flag);
  };
  command
      .add_option_function<std::string>(
          "--bayer", setLayout,
          "Bayer types: colours of the first two pixels of the top row, unless a PFNC name says "
          "them. To make colours of a mosaic, convert needs one of the two")
      ->type_name(WordsOf(kBayerLayouts));
  AddChoiceOption(command, "--field-order", kFieldOrders, flags,
                  "Interlaced types: which field the first half of the frame holds; the top field has the top line "
                  "(default: top)");
}

void AddDemosaicOptions(CLI::App& command, unsigned long& flags) {
  AddChoiceOption(
      command, "--demosaic", kDemosaics, flags,
      "Bayer types: colours along edges (adaptive), by linear 5x5 filters (mhc), from the neighbours of each "
      "pixel (bilinear) or from 2x2 cells (block); or a picture of half the size (half) (default: adaptive)");
  AddChoiceOption(command, "--filter-order", kFilterOrders, flags,
                  "Bayer types: whether --gain and its like act on the samples of the mosaic, which makes better "
                  "colours, or on the colours (default: mosaic)");
}

void AddYuvOptions(CLI::App& command, unsigned long& flags) {
  AddChoiceOption(command, "--yuv-range", kYuvRanges, flags,
                  "YUV types: whether brightness has the values 16 to 235, or all (default: as a YCbCr name says, else "
                  "studio)");
  AddChoiceOption(command, "--yuv-matrix", kYuvMatrices, flags,
                  "YUV types: the coefficients of BT.601 or BT.709 (default: as a YCbCr name says, else bt601)");
}

void AddDepthOption(CLI::App& command, LmImagingLib::ConversionDepth& depth) {
  const auto parse = [&depth](const std::string& text) {
    using LmImagingLib::ConversionDepth;
    if (text != "full" && text != "8") throw ToolError("--depth", "'" + text + "' is unknown; allowed: full|8");
    depth = text == "8" ? ConversionDepth::kEightBits : ConversionDepth::kFull;
  };
  command
      .add_option_function<std::string>("--depth", parse,
                                        "Bits of each colour value that are converted: all, or the upper 8; 8 also "
                                        "makes pictures of 8 bits (default: full)")
      ->type_name("full|8");
}

void AddThreadsOption(CLI::App& command, const std::string& name, unsigned& threads, const std::string& description) {
  const auto parse = [name, &threads](const std::string& text) {
    if (!ParseNumber(text, threads) || threads == 0 || threads > kMostJobs) {
      throw ToolError(name, "'" + text + "' does not fit; allowed: 1 to " + std::to_string(kMostJobs));
    }
  };
  command.add_option_function<std::string>(name, parse, description)->type_name("N");
}

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

std::optional<ToneCurve> ParseTone(const std::string& text) {
  if (text == "linear") return ToneCurve{ToneCurve::kLinear};
  if (text == "srgb") return ToneCurve{ToneCurve::kSRGB};
  if (text == "bt709") return ToneCurve{ToneCurve::kBT709};
  double gamma = 0;
  if (!ParseNumber(text, gamma) || !(gamma >= 0.1 && gamma <= 10)) return std::nullopt;
  return ToneCurve{ToneCurve::kGamma, gamma};
}

std::optional<unsigned long> ParseMethod(const std::string& word) {
  for (const Choice& choice : kDemosaics) {
    if (word == choice.word) return choice.flag;
  }
  return std::nullopt;
}

std::string MethodWords() { return WordsOf(kDemosaics); }

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
