// Parses a line as the name of a type, and several lines as the arguments of a command that has all options of the
// tool. Accepted values must be in the ranges that messages promise, and be the same when they are written out and
// parsed again.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <optional>
#include <string>
#include <vector>

#include "LmImagingLib/PixelConverter.h"
#include "LmImagingLib/PixelTypeFactory.h"
#include "color_options.h"
#include "error.h"
#include "named_type.h"
#include "numbers.h"
#include "options.h"
#include "pixel_type_names.h"
#include "terminal.h"

namespace LmTool {
namespace {

namespace Flags = LmImagingLib::ConversionFlags;

void Check(bool holds, const std::string& fault) {
  if (holds) return;
  std::cerr << fault << '\n';
  std::abort();
}

struct Values {
  LmImagingLib::PixelTypeID from = 0x10001, to = 0x10001;
  ImageSize size{1, 1};
  std::size_t lineSize = 1;
  std::optional<FrameRange> frames;
  MosaicLayout mosaic;
  unsigned long flags = 0;
  ColorArguments colors;
};

// Messages begin with the argument and end with what is allowed.
void CheckMessage(const std::string& message, const std::string& argument) {
  Check(message.rfind(argument, 0) == 0, "names no argument: " + message);
  Check(message.find("; allowed: ") != std::string::npos, "does not say what is allowed: " + message);
}

std::optional<Values> Parse(std::vector<std::string> arguments) {
  Values values;
  CLI::App app;
  AddTypeOption(app, "--from", values.from, &values.mosaic, "");
  AddTypeOption(app, "--to", values.to, &values.mosaic, "");
  AddSizeOption(app, values.size, "");
  AddLineSizeOption(app, values.lineSize);
  AddFramesOption(app, values.frames);
  AddLayoutOptions(app, values.mosaic, values.flags);
  AddDemosaicOptions(app, values.flags);
  AddTripleOption(app, "--black", values.colors.black, 65535, "", 0, true);
  AddTripleOption(app, "--gain", values.colors.gain, 1000, "");
  AddTripleOption(app, "--offset", values.colors.offset, 255, "", -255);
  AddColorOptions(app, values.colors);
  try {
    std::reverse(arguments.begin(), arguments.end());  // as the parser wants it
    app.parse(arguments);
  } catch (const ToolError& error) {
    CheckMessage(error.what(), "--");
    return std::nullopt;
  } catch (const CLI::ParseError&) {
    return std::nullopt;
  }
  return values;
}

bool IsIn(const Triple& triple, double least, double most) {
  const auto fits = [=](double value) { return value >= least && value <= most; };
  return fits(triple.red) && fits(triple.green) && fits(triple.blue);
}

void CheckRanges(const Values& values) {
  constexpr unsigned long kLayouts = Flags::kBayerGR | Flags::kBayerGB | Flags::kBayerRG | Flags::kBayerBG;
  for (const auto& id : {values.from, values.to}) {
    Check(LmImagingLib::PixelTypeFactory::HasPixelType(id), "no type " + HexID(id));
  }
  Check(IsAllowed(values.size), "size " + values.size.Text());
  Check(values.lineSize - 1 < 1 << 20, "line size " + std::to_string(values.lineSize));
  Check(!values.frames || values.frames->first <= values.frames->last, "frames " + values.frames->Text());
  Check((values.flags & ~(Flags::kFieldOrder | kMethodFlags | Flags::kFilterFirst)) == 0,
        "flags " + std::to_string(values.flags));
  const unsigned long layout = values.mosaic.Flag();
  Check((layout & ~kLayouts) == 0 && (layout & (layout - 1)) == 0, "layout " + std::to_string(layout));
  const ColorArguments& colors = values.colors;
  Check(IsIn(colors.black, 0, 65535) && IsIn(colors.gain, 0, 1000) && IsIn(colors.offset, -255, 255), "black or gain");
  Check(colors.tone.IsValid() && colors.defects.value_or(1) <= 65535, "tone or defects");
  for (const double factor : colors.matrix) Check(factor >= -7 && factor <= 7, "matrix");
}

void CheckAgain(const Values& values) {
  std::vector<std::string> arguments{"--from=" + HexID(values.from), "--to",        std::to_string(values.to),
                                     "--size=" + values.size.Text(), "--line-size", std::to_string(values.lineSize)};
  if (values.frames) arguments.push_back("--frames=" + values.frames->Text());
  const std::optional<Values> again = Parse(arguments);
  Check(again.has_value(), "refused when written out");
  Check(again->from == values.from && again->to == values.to && again->size.width == values.size.width &&
            again->size.height == values.size.height && again->lineSize == values.lineSize,
        "another type or size");
  Check(again->frames.has_value() == values.frames.has_value(), "no more frames");
  Check(!values.frames || (again->frames->first == values.frames->first && again->frames->last == values.frames->last),
        "other frames");
}

void CheckName(const std::string& text) {
  Check(Printable(Printable(text)) == Printable(text), "a printable text is not printable");
  try {
    const NamedType type = FindNamedType("TYPE", text);
    Check(LmImagingLib::PixelTypeFactory::HasPixelType(type.id), "no type " + HexID(type.id));
    Check(Printable(text) == text, "a name of control characters");
  } catch (const ToolError& error) {
    CheckMessage(error.what(), "TYPE: ");
  }
}

}  // namespace
}  // namespace LmTool

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::vector<std::string> lines = LmTool::Split({data, data + size}, '\n');
  if (lines.size() == 1) {
    LmTool::CheckName(lines.front());
    return 0;
  }
  std::vector<std::string> arguments;
  for (const std::string& line : lines) arguments.emplace_back(line.c_str());  // as a process gets them
  if (const std::optional<LmTool::Values> values = LmTool::Parse(arguments)) {
    LmTool::CheckRanges(*values);
    LmTool::CheckAgain(*values);
  }
  return 0;
}
