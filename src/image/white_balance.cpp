#include <algorithm>
#include <cstring>
#include <new>

#include "LmImagingLib/WhiteBalance.h"
#include "converters/demosaic_method.h"
#include "converters/line_decoder.h"
#include "image/cell_statistics.h"
#include "image/flags.h"
#include "image/frames.h"
#include "image/views.h"
#include "simd/kernel.h"
#include "simd/mosaic.h"
#include "walk/lines.h"

namespace LmImagingLib {

LM_DECLARE_KERNEL(CellSumsKernel, AddByteCells)
LM_DECLARE_KERNEL(CellSumsKernel, AddWordCells)

using LmBaseLib::Result;

namespace {

using Method = WhiteBalanceOptions::Method;

/// The cells to look at, in units of cells: of 2 x 2 samples in a mosaic, else pixels.
struct Cells {
  std::uint32_t left, top, right, bottom;  ///< the last two are not among them
  std::uint32_t step;                      ///< from one that is looked at to the next

  std::size_t Count() const {
    return std::size_t{(right - left + step - 1) / step} * ((bottom - top + step - 1) / step);
  }
};

template <class Sample>
std::uint32_t SampleOf(const std::uint8_t* row, std::size_t column) {
  Sample sample;
  std::memcpy(&sample, row + column * sizeof sample, sizeof sample);
  return sample;
}

template <class Sample>
void AddMosaic(const SourceType& source, const Frame& frame, const Cells& cells, CellStatistics& statistics) {
  RowWindow<Sample> rows(source, frame, frame.sourceWidth, 2, frame.sourceHeight / 2 * 2);
  const Site site = LayoutSite(frame.flags);
  const bool isRedAbove = IsInRedRow(site);
  const std::size_t upper = IsGreen(site) ? 1 : 0, lower = 1 - upper;  // the columns of red and blue
  CellSumsKernel* const addCells = (sizeof(Sample) == 1 ? kAddByteCells : kAddWordCells).Active();
  CellSums sums;
  for (std::uint32_t y = cells.top; y < cells.bottom; y += cells.step) {
    const std::uint8_t* const top = rows.Row(2 * y);
    const std::uint8_t* const bottom = rows.Row(2 * y + 1);
    if (!statistics.HasHistograms()) {
      const std::size_t offset = 2 * sizeof(Sample) * cells.left;
      addCells(top + offset, bottom + offset, cells.right - cells.left, cells.step, statistics.Least(),
               statistics.Range(), sums);
      continue;
    }
    for (std::size_t x = cells.left; x < cells.right; x += cells.step) {
      const std::uint32_t first = SampleOf<Sample>(top, 2 * x + upper);
      const std::uint32_t second = SampleOf<Sample>(bottom, 2 * x + lower);
      statistics.Add(isRedAbove ? first : second, SampleOf<Sample>(top, 2 * x + 1 - upper),
                     SampleOf<Sample>(bottom, 2 * x + 1 - lower), isRedAbove ? second : first);
    }
  }
  statistics.AddSums(sums.cells, isRedAbove ? sums.top[upper] : sums.bottom[lower],
                     sums.top[1 - upper] + sums.bottom[1 - lower], isRedAbove ? sums.bottom[lower] : sums.top[upper]);
}

template <class Sample>
void AddColors(const SourceType& source, const Frame& frame, const Cells& cells, CellStatistics& statistics) {
  const LineDecoder<Sample> lines(source, frame);
  for (std::uint32_t y = cells.top; y < cells.bottom; y += cells.step) {
    const std::uint8_t* const line = SourceLineAt(frame, y);
    if (line == nullptr) continue;
    lines.ForEachStrip(line, [&](const Channels<Sample>& colors, std::size_t count, std::size_t first) {
      // The next cell on the grid, which strips do not divide evenly.
      const std::size_t before = first > cells.left ? (first - cells.left + cells.step - 1) / cells.step : 0;
      for (std::size_t x = cells.left + before * cells.step; x < std::min<std::size_t>(cells.right, first + count);
           x += cells.step) {
        const std::size_t i = x - first;
        statistics.Add(colors.red[i], colors.green[i], colors.green[i], colors.blue[i]);
      }
    });
  }
}

std::string Rectangle(const WhiteBalanceOptions& options) {
  return "options.x, y, width and height are " + Decimal(options.x) + ", " + Decimal(options.y) + ", " +
         Decimal(options.width) + " and " + Decimal(options.height);
}

ConversionResult FindCells(const ConstImageView& source, const WhiteBalanceOptions& options, std::uint32_t perCell,
                           Cells& cells) {
  const auto inCells = [perCell](unsigned long pixels) { return static_cast<std::uint32_t>(pixels / perCell); };
  if (options.method != WhiteBalanceOptions::kRectangle) {
    cells = {0, 0, inCells(source.width), inCells(source.height), 4};
  } else {
    if (options.x >= source.width || options.width > source.width - options.x || options.y >= source.height ||
        options.height > source.height - options.y) {
      return Refused(Rectangle(options) + "; the rectangle must be inside the image of " + Size(source));
    }
    cells = {inCells(options.x + perCell - 1), inCells(options.y + perCell - 1), inCells(options.x + options.width),
             inCells(options.y + options.height), 1};
  }
  if (cells.left < cells.right && cells.top < cells.bottom) return {};
  return Refused(options.method == WhiteBalanceOptions::kRectangle
                     ? Rectangle(options) + "; a rectangle has at least a pixel, in a mosaic a whole cell of 2 x 2"
                     : "source is " + Size(source) + " pixels; a mosaic takes at least 2 x 2");
}

ConversionResult CheckOptions(const WhiteBalanceOptions& options, unsigned depth) {
  if (options.method < WhiteBalanceOptions::kGrayWorld || options.method > WhiteBalanceOptions::kRectangle) {
    return Refused("options.method is " + std::to_string(options.method) +
                   "; it may be kGrayWorld (0), kWhitePatch (1) or kRectangle (2)");
  }
  for (const double black : {options.black.red, options.black.green, options.black.blue}) {
    if (!(black >= 0 && black < CellStatistics::White(depth))) {
      return Refused("options.black has " + std::to_string(black) + "; a level of black is at least 0 and less than " +
                     Decimal(CellStatistics::White(depth)) + ", the greatest sample");
    }
  }
  return {};
}

// The gains that make the three levels equal.
void FindGains(const CellStatistics& statistics, const WhiteBalanceOptions& options, unsigned depth,
               WhiteBalance& estimate) {
  const double blacks[] = {options.black.red, options.black.green, options.black.blue};
  const double white = CellStatistics::White(depth);
  double* const gains[] = {&estimate.gains.red, &estimate.gains.green, &estimate.gains.blue};
  // A gain is `common` over the channel's level. It is at least white / (white - black), so that a saturated sample
  // becomes white.
  double common = 0;
  double levels[3];
  for (std::size_t k = 0; k < 3; ++k) {
    const bool isPatch = options.method == WhiteBalanceOptions::kWhitePatch;
    levels[k] = (isPatch ? statistics.Percentile(k) : statistics.Mean(k)) - blacks[k];
    if (levels[k] <= 0) {
      estimate.message = "the level of black is above the gray of the picture";
      return;
    }
    common = std::max(common, levels[k] * white / (white - blacks[k]));
  }
  for (std::size_t k = 0; k < 3; ++k) *gains[k] = common / levels[k];
}

WhiteBalance Refusal(ConversionResult refused) { return {refused.result, std::move(refused.message), {}, 0, 0}; }

WhiteBalance Estimate(const ConstImageView& source, const WhiteBalanceOptions& options) {
  for (ConversionResult checked : {CheckType(source, "source"), CheckView(source, "source")}) {
    if (!checked.IsOK()) return Refusal(std::move(checked));
  }
  const TypeRow* const row = FindTypeRow(source.type);
  if (row == nullptr || row->types->reach == Reach::kGrays) {
    return Refusal(Refused("source.type is " + Label(source.type) +
                           "; white balance takes a mosaic or colours, of the library's own types"));
  }
  if (ConversionResult checked = CheckFrameFlags(source, options.flags, 0); !checked.IsOK()) {
    return Refusal(std::move(checked));
  }
  const SourceType type(*row);
  const bool isMosaic = row->types->reach == Reach::kMosaic;
  const unsigned depth = *SampleDepth(source.type);
  const bool words = depth > 8;
  std::uint64_t lineSize = 0;
  std::size_t bytes = 0;
  Cells cells{};
  for (ConversionResult checked : {CheckBytes(source, *FindLayout(source.type), "source", lineSize, bytes),
                                   CheckOptions(options, depth), FindCells(source, options, isMosaic ? 2 : 1, cells)}) {
    if (!checked.IsOK()) return Refusal(std::move(checked));
  }

  Frame frame = SourceFrame(source, lineSize, source.type);
  frame.pixels = frame.sourceWidth;
  frame.flags = static_cast<std::uint32_t>(options.flags);
  CellStatistics statistics(depth, options.method == WhiteBalanceOptions::kWhitePatch);
  if (isMosaic) {
    words ? AddMosaic<std::uint16_t>(type, frame, cells, statistics)
          : AddMosaic<std::uint8_t>(type, frame, cells, statistics);
  } else {
    words ? AddColors<std::uint16_t>(type, frame, cells, statistics)
          : AddColors<std::uint8_t>(type, frame, cells, statistics);
  }
  WhiteBalance estimate;
  estimate.cells = cells.Count();
  estimate.usableCells = statistics.Usable();
  if (estimate.usableCells == 0 || estimate.usableCells < (estimate.cells + 99) / 100) {
    estimate.message = "only " + Decimal(estimate.usableCells) + " of " + Decimal(estimate.cells) +
                       " cells are neither too dark nor overexposed; at least one in a hundred is needed";
    return estimate;
  }
  FindGains(statistics, options, depth, estimate);
  return estimate;
}

}  // namespace

WhiteBalance EstimateWhiteBalance(const ConstImageView& source, const WhiteBalanceOptions& options) {
  try {
    return Estimate(source, options);
  } catch (const std::bad_alloc&) {
    return {Result::NOT_ENOUGH_MEMORY, "out of memory", {}, 0, 0};
  }
}

}  // namespace LmImagingLib
