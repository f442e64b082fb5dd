#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>

#include "LmImagingLib/PixelTypeID.h"
#include "conversion.h"
#include "file_io.h"

namespace LmTool {

inline constexpr std::size_t kMostFrameBytes = std::size_t{1} << 32;  ///< with the padding of its lines

/// What the frames of a raw file are: of a registered type and an allowed size, in lines that hold their pixels.
struct RawFormat {
  LmImagingLib::PixelTypeID type;
  ImageSize size;
  unsigned long flags;
  std::size_t lineSize;  ///< bytes from line to line; 0 for lines without padding

  /// The bytes of a frame, with the padding after its last line.
  std::size_t FrameBytes() const;
  /// The bytes that a frame has at least: the padding after the last line may be missing.
  std::size_t LeastFrameBytes() const;
};

/// Which frames of a raw file are wanted, counted from 0.
struct FrameRange {
  static constexpr std::size_t kEnd = ~std::size_t{0};

  std::size_t first = 0;
  std::size_t last = kEnd;  ///< included; `kEnd` for all

  std::string Text() const;
};

/// Reads the frames of a raw file one after the other. Faults are `ToolError`s that name the file.
class RawFile {
 public:
  /// @param range  empty for a file that must be exactly one frame
  RawFile(const std::filesystem::path& path, const RawFormat& format, const std::optional<FrameRange>& range);

  /// The number of frames to come; 0 for a pipe.
  std::size_t Count() const { return mCount; }

  /// The next frame; empty after the last one.
  std::optional<RawFrame> Next();
  /// The number of the frame that `Next` gave, counted from 0.
  std::size_t Number() const { return mNext - 1; }

 private:
  void CheckOnlyFrame(std::size_t bytes) const;
  void CheckFrames(std::size_t bytes);
  [[noreturn]] void Refuse(const std::string& reason) const;
  std::string HoldsText(std::size_t bytes) const;

  std::filesystem::path mPath;
  RawFormat mFormat;
  std::optional<FrameRange> mRange;
  FileReader mReader;
  std::size_t mCount = 0;
  std::size_t mNext = 0;
};

}  // namespace LmTool
