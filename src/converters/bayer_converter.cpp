#include "converters/bayer_converter.h"

namespace LmImagingLib {

using LmBaseLib::Result;

BayerConverter::BayerConverter(const SourceType& source, const Writer& writer, const PixelTypeID& from,
                               const PixelTypeID& to)
    : LibraryConverter(from, to,
                       (source.format->groupBits / 8 + source.format->groupPixels - 1) / source.format->groupPixels,
                       writer.pixelBytes, 1, {source.format, writer.planes, true}),
      mSource(source),
      mWriter(writer),
      mShortcuts(writer) {}

unsigned long BayerConverter::GetSourceLineSize(unsigned long pixelCount) const {
  return DenseLineBytes(*mSource.format, static_cast<std::uint32_t>(pixelCount));
}

unsigned long BayerConverter::GetLinesPerStep() const { return 2; }

Result BayerConverter::ConvertLine(const void* source, void* destination, unsigned long pixelCount) const {
  std::uint32_t line = 0;
  const Frame frame = HandedLines(source, destination, pixelCount, line);
  ConvertLines(frame, line, line + 2);
  return Result::OK;
}

Result BayerConverter::ConvertLastLine(const void* source, void* destination, unsigned long pixelCount) const {
  std::uint32_t line = 0;
  const Frame frame = HandedLines(source, destination, pixelCount, line);
  if (frame.sourceHeight < 2 || line == 0) return Result::NOT_IMPLEMENTED;
  ConvertLines(frame, line, line + 1);
  return Result::OK;
}

void BayerConverter::ConvertLines(const Frame& frame, std::uint32_t first, std::uint32_t end) const {
  const bool words = mSource.depth > 8 && mWriter.depth > 8 && (frame.flags & ConversionFlags::kFullDepth) != 0;
  if (words) {
    Convert<std::uint16_t>(mSource, frame, frame.pixels, first, end);
  } else {
    Convert<std::uint8_t>(mSource, frame, frame.pixels, first, end);
  }
}

bool BayerConverter::ConvertRows(const SourceType& mosaic, const Frame& frame, std::uint32_t first,
                                 std::uint32_t end) const {
  if (mSource.depth != 8) return false;
  // The rows of an intermediate image are those of the whole source.
  Convert<std::uint8_t>(mosaic, frame, frame.sourceWidth, first, end);
  return true;
}

std::uint32_t BayerConverter::Reach(std::uint32_t flags) const { return ReachOf(MethodOf(flags)); }

template <class Sample>
void BayerConverter::Convert(const SourceType& source, const Frame& frame, std::uint32_t width, std::uint32_t first,
                             std::uint32_t end) const {
  if (frame.pixels < 2 || first >= end) return;
  Demosaicer<Sample>({source, width}, mWriter, mShortcuts, frame, first, end).Convert();
}

ConversionExtent BayerConverter::ExtentOf(const Frame& frame, std::uint32_t lines) const {
  // A single line needs one above it.
  if (lines % 2 != 0 && (lines == 1 || frame.sourceHeight < 2)) --lines;
  if (frame.pixels < 2 || lines == 0) return {};
  const std::uint32_t rows = RowsRead(frame, 0, lines);
  return {(rows - 1) * frame.sourceLine + std::size_t{frame.pixels} * mSource.format->groupBits / 8,
          (lines - 1) * frame.destinationLine + (mWriter.planes - 1) * frame.DestinationPlane() +
              std::size_t{frame.pixels} * mWriter.pixelBytes};
}

}  // namespace LmImagingLib
