#include "model/convert.h"

#include <algorithm>

#include "model/kernels.h"

namespace model {
namespace {

/// Converts the first lines of an image.
/// @param fields  lines of both fields that are there
void Run(const Stage& stage, const Call& call, std::size_t fields, Bytes& source, Bytes& destination) {
  Line line(stage, call, source, destination);
  if (stage.interlaced) {
    const std::size_t secondHalf = line.sourceLineSize * call.sourceHeight / 2;
    for (const bool oddLines : {false, true}) {
      const bool fromSecondHalf = oddLines != ((call.flags & 1) != 0);
      for (std::size_t y = oddLines ? 1 : 0; y < std::min<std::size_t>(call.lines, fields); y += 2) {
        line.Convert(y, (fromSecondHalf ? secondHalf : 0) + y / 2 * line.sourceLineSize, y * line.stride);
      }
    }
    return;
  }
  const bool demosaics = stage.kernel == Bayer8 || stage.kernel == Bayer16;
  if (demosaics && IsHalfSize(call)) {
    for (std::size_t y = 0; y < call.lines; ++y) line.Convert(y, 2 * y * line.sourceLineSize, y * line.stride);
    return;
  }
  const std::size_t step = demosaics ? 2 : 1;
  for (std::size_t y = 0; y < call.lines; y += step) {
    line.Convert(y, y * line.sourceLineSize, y * line.stride, y + step > call.lines);
  }
}

/// Converts through rows that nobody sees, as many as the second stage reads.
void ConvertThroughRows(const Route& route, const Call& whole, const Call& second, Bytes& source, Bytes& destination) {
  const std::size_t line = 2 * std::size_t{whole.sourceWidth};
  const std::vector<std::uint8_t> zeros(line * (whole.sourceHeight + 1));
  Bytes seen(zeros), nowhere(destination.Content());
  Run(*route.second, second, 0, seen, nowhere);
  if (seen.Extent() == 0) return;
  Call read = whole;
  read.flags |= 0x800;
  read.lines = static_cast<std::uint32_t>((seen.Extent() + line - 1) / line);
  // Samples after the last pixel are left alone where each has bytes and a place of its own.
  if (route.first.sourceBits % 8 == 0 && route.first.left == 0 && route.first.right == 0) {
    read.pixelsPerLine = second.pixelsPerLine * (IsHalfSize(second) ? 2 : 1);
  }
  Bytes rows(zeros);
  Run(route.first, read, whole.sourceHeight / 2 * 2, source, rows);
  Run(*route.second, second, 0, rows, destination);
}

}  // namespace

std::size_t IntermediateSize(const Route& route, const Call& call) {
  if (route.via == 0) return 0;
  return route.first.DestinationLineSize(std::size_t{call.sourceWidth} * call.sourceHeight);
}

void Convert(const Route& route, const Call& call, Bytes& source, Bytes& destination, Bytes& intermediate) {
  if (!route.second) return Run(route.first, call, call.lines / 2 * 2, source, destination);
  Call whole = call;
  whole.destinationWidth = whole.pixelsPerLine = call.sourceWidth;
  whole.destinationHeight = whole.lines = call.sourceHeight;
  whole.padding = 0;
  whole.stride = 0;
  Call second = call;
  second.sourceLine = 0;
  if (route.via == 0) return ConvertThroughRows(route, whole, second, source, destination);
  Run(route.first, whole, whole.lines / 2 * 2, source, intermediate);
  // All bits of a sample are looked up before 8 are left.
  if (FiltersFirst(call) && route.second->kernel == Bayer8) {
    return ConvertThroughRows(ThroughAllBits(route), whole, second, source, destination);
  }
  Run(*route.second, second, 0, intermediate, destination);
}

}  // namespace model
