#pragma once

#include <CLI/CLI.hpp>
#include <optional>
#include <string>
#include <vector>

#include "LmImagingLib/Image.h"
#include "LmImagingLib/PixelTypeID.h"
#include "image.h"
#include "named_type.h"
#include "raw_file.h"

namespace LmTool {

/// What pixel types' names and `--bayer` say about the layout of a mosaic. They must agree.
class MosaicLayout {
 public:
  /// @param says  the argument that names the layout, with its value
  /// @throws ToolError naming both arguments if another one named another layout
  void Set(const std::string& argument, const std::string& says, unsigned long flag);

  /// The bit of `ConversionFlags`; 0 if no argument named one, which means GR.
  unsigned long Flag() const { return mFlag; }

 private:
  unsigned long mFlag = 0;
  std::string mArgument, mSays;
};

/// Adds an option whose value names a pixel type.
/// @param mosaic  gets the layout of a mosaic if the name says it; null where no mosaic is read
/// @param flags  gets the range and the matrix of YUV if the name says them; null where no colours are made of it
CLI::Option* AddTypeOption(CLI::App& command, const std::string& name, LmImagingLib::PixelTypeID& value,
                           MosaicLayout* mosaic, const std::string& description, unsigned long* flags = nullptr);

/// Adds `--size WIDTHxHEIGHT`.
CLI::Option* AddSizeOption(CLI::App& command, ImageSize& size, const std::string& description);

/// Adds `--line-size BYTES`.
void AddLineSizeOption(CLI::App& command, std::size_t& lineSize);

/// Adds `--frames FRAMES`.
void AddFramesOption(CLI::App& command, std::optional<FrameRange>& frames);

/// Adds `--bayer` and `--field-order`, which sets bits of the conversion flags.
void AddLayoutOptions(CLI::App& command, MosaicLayout& mosaic, unsigned long& flags);

/// Adds `--demosaic` and `--filter-order`, which set bits of the conversion flags.
void AddDemosaicOptions(CLI::App& command, unsigned long& flags);

/// Adds `--yuv-range` and `--yuv-matrix`, which set bits of the conversion flags.
void AddYuvOptions(CLI::App& command, unsigned long& flags);

/// Adds `--depth full|8`.
void AddDepthOption(CLI::App& command, LmImagingLib::ConversionDepth& depth);

/// Adds an option of a number of threads, from 1 to `kMostJobs`.
void AddThreadsOption(CLI::App& command, const std::string& name, unsigned& threads, const std::string& description);

}  // namespace LmTool
