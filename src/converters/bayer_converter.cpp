#include "converters/bayer_converter.h"

#include <algorithm>

#include "converters/parted_demosaicer.h"
#include "walk/lines.h"

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

unsigned long BayerConverter::GetLinesPerStep() const { return 2; }

Result BayerConverter::ConvertLine(const void* source, void* destination, unsigned long pixelCount) const {
  std::uint32_t line = 0;
  Frame frame = HandedLines(source, destination, pixelCount, line);
  if (IsHalfSize(frame.flags)) {
    frame.destinationFirst = line / 2;
    ConvertLines(frame, line / 2, line / 2 + 1);
  } else {
    ConvertLines(frame, line, line + 2);
  }
  return Result::OK;
}

Result BayerConverter::ConvertLastLine(const void* source, void* destination, unsigned long pixelCount) const {
  std::uint32_t line = 0;
  const Frame frame = HandedLines(source, destination, pixelCount, line);
  if (frame.sourceHeight < 2 || line == 0 || IsHalfSize(frame.flags)) return Result::NOT_IMPLEMENTED;
  ConvertLines(frame, line, line + 1);
  return Result::OK;
}

void BayerConverter::ConvertLines(const Frame& frame, std::uint32_t first, std::uint32_t end) const {
  const bool words = mSource.depth > 8 && mWriter.depth > 8 && (frame.flags & ConversionFlags::kFullDepth) != 0;
  const Frame rows = RowsOf(frame);
  const std::uint32_t width = RowWidth(frame);
  if (words) {
    Convert<std::uint16_t>(mSource, rows, width, first, end);
  } else {
    Convert<std::uint8_t>(mSource, rows, width, first, end);
  }
}

// Rows are read beyond the lines to convert, also those of fields.
Frame BayerConverter::RowsOf(Frame frame) {
  frame.fieldLines = frame.sourceHeight / 2 * 2;
  return frame;
}

// The place of a sample that a tap reads depends on the length of the whole line, and so may what is left out at its
// end.
std::uint32_t BayerConverter::RowWidth(const Frame& frame) const {
  // Defects are seen by their neighbours, up to the edge of the image.
  if (frame.development != nullptr) return frame.sourceWidth;
  const bool inPlace = mSource.format->groupPixels == 1 && mSource.readout.taps == Readout::Taps::kOne;
  return inPlace ? SamplesRead(frame) : frame.sourceWidth;
}

bool BayerConverter::ConvertRows(const SourceType& mosaic, const Frame& frame, std::uint32_t first,
                                 std::uint32_t end) const {
  if (mSource.depth != 8) return false;
  // The rows of an intermediate image are those of the whole source.
  Convert<std::uint8_t>(mosaic, frame, frame.sourceWidth, first, end);
  return true;
}

std::uint32_t BayerConverter::Reach(std::uint32_t flags) const { return DemosaicMethodOf(flags).reach; }

std::uint32_t BayerConverter::SourceLinesPerLine(std::uint32_t flags) const { return IsHalfSize(flags) ? 2 : 1; }

bool BayerConverter::ConvertsNothing(const Frame& frame, std::uint32_t lines) {
  if (lines == 0 || frame.pixels == 0) return true;
  switch (DemosaicMethodOf(frame.flags).kind) {
    case DemosaicMethod::Kind::kHalfSize:
      return false;
    case DemosaicMethod::Kind::kPairs:
      return frame.pixels < 2;
    default:
      return frame.pixels < 2 || frame.sourceHeight < 2;
  }
}

template <class Sample>
void BayerConverter::Convert(const SourceType& source, const Frame& frame, std::uint32_t width, std::uint32_t first,
                             std::uint32_t end) const {
  if (first >= end || ConvertsNothing(frame, end - first)) return;
  const DemosaicMethod& method = DemosaicMethodOf(frame.flags);
  if (method.kind == DemosaicMethod::Kind::kPairs || method.kind == DemosaicMethod::Kind::kHalfSize) {
    Demosaicer<Sample>({source, width}, mWriter, mShortcuts, frame, first, end).Convert();
  } else {
    PartedDemosaicer<Sample>({source, width}, mWriter, frame, first, end).Convert();
  }
}

ConversionExtent BayerConverter::ExtentOf(const Frame& frame, std::uint32_t lines) const {
  // A single line of cells needs one above it.
  if (DemosaicMethodOf(frame.flags).kind == DemosaicMethod::Kind::kPairs && lines % 2 != 0 &&
      (lines == 1 || frame.sourceHeight < 2)) {
    --lines;
  }
  if (ConvertsNothing(frame, lines)) return {};
  ConversionExtent extent;
  const Frame source = RowsOf(frame);
  const std::size_t rowBytes = RowBytesRead(mSource, RowWidth(frame));
  const std::uint32_t rows = RowsRead(frame, 0, lines);
  // Of fields, the last row may be in either, or in none.
  for (std::uint32_t row = rows - std::min(rows, 3U); row < rows && rowBytes != 0; ++row) {
    if (!HasSourceLine(source, row)) continue;
    extent.source = std::max(extent.source, static_cast<std::size_t>(SourceOffsetOf(source, row)) + rowBytes);
  }
  extent.destination = (lines - 1) * frame.destinationLine + (mWriter.planes - 1) * frame.DestinationPlane() +
                       std::size_t{frame.pixels} * mWriter.pixelBytes;
  return extent;
}

}  // namespace LmImagingLib
