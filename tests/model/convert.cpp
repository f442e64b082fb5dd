#include "model/convert.h"

#include "model/kernels.h"

namespace model {
namespace {

void Run(const Stage& stage, const Call& call, Bytes& source, Bytes& destination) {
  Line line(stage, call, source, destination);
  if (stage.interlaced) {
    const std::size_t secondHalf = line.sourceLineSize * call.sourceHeight / 2;
    for (const bool oddLines : {false, true}) {
      const bool fromSecondHalf = oddLines != ((call.flags & 1) != 0);
      for (std::size_t i = 0; i < call.lines / 2; ++i) {
        const std::size_t from = (fromSecondHalf ? secondHalf : 0) + i * line.sourceLineSize;
        line.Convert(2 * i, from, (2 * i + (oddLines ? 1 : 0)) * line.stride);
      }
    }
    return;
  }
  const std::size_t step = stage.kernel == Bayer8 || stage.kernel == Bayer16 ? 2 : 1;
  for (std::size_t y = 0; y < call.lines; y += step) {
    line.Convert(y, y * line.sourceLineSize, y * line.stride, y + step > call.lines);
  }
}

}  // namespace

std::size_t IntermediateSize(const Route& route, const Call& call) {
  if (!route.second) return 0;
  return route.first.DestinationLineSize(std::size_t{call.sourceWidth} * call.sourceHeight);
}

void Convert(const Route& route, const Call& call, Bytes& source, Bytes& destination, Bytes& intermediate) {
  if (!route.second) return Run(route.first, call, source, destination);
  Call whole = call;
  whole.destinationWidth = whole.pixelsPerLine = call.sourceWidth;
  whole.destinationHeight = whole.lines = call.sourceHeight;
  whole.padding = 0;
  whole.stride = 0;
  Run(route.first, whole, source, intermediate);
  Call second = call;
  second.sourceLine = 0;
  Run(*route.second, second, intermediate, destination);
}

}  // namespace model
