#include "options.h"

#include <algorithm>
#include <iterator>
#include <vector>

#include "LmImagingLib/PixelConverter.h"
#include "error.h"
#include "numbers.h"
#include "ordered_jobs.h"
#include "words.h"

namespace LmTool {

using namespace LmImagingLib;

namespace {

namespace Flags = LmImagingLib::ConversionFlags;

constexpr std::size_t kMostLineBytes = std::size_t{1} << 20;

constexpr Choice kBayerLayouts[] = {
    {"GR", Flags::kBayerGR}, {"GB", Flags::kBayerGB}, {"RG", Flags::kBayerRG}, {"BG", Flags::kBayerBG}};
constexpr Choice kFieldOrders[] = {{"top", Flags::kNone}, {"bottom", Flags::kFieldOrder}};
constexpr Choice kFilterOrders[] = {{"mosaic", Flags::kFilterFirst}, {"colour", Flags::kNone}};
constexpr Choice kYuvRanges[] = {{"studio", Flags::kNone}, {"full", Flags::kFullRange}};
constexpr Choice kYuvMatrices[] = {{"bt601", Flags::kNone}, {"bt709", Flags::kBT709}};

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
                                      "' is no range of frames; allowed: all, a number such as 7, or a range such "
                                      "as 10-19, counted from 0");
    }
  };
  command
      .add_option_function<std::string>("--frames", parse,
                                        "The raw files hold several frames, one after the other: convert all of them, "
                                        "one such as 7, or a range such as "
                                        "10-19, counted from 0")
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

}  // namespace LmTool
