// Bayer mosaic, adaptive method: green is interpolated along the row, along the column, or between both, whichever
// changes less around the pixel; red and blue follow by their differences to green. Each function is one step of a row.
#include "kernels/bayer/row_colors.h"

namespace LmImagingLib::LM_ISA {
namespace {

template <class Vector>
inline Vector Magnitude(Vector v) {
  return Greater(v, -v);
}

// The change, from the neighbour on one side of a pixel to the one on the other, of the second derivative: at distance
// d from the middle, the derivative is 2(s(d - 1) + s(d + 1) - s(d)) - s(d - 2) - s(d + 2).
template <class At>
inline auto Change(const At& at) {
  return Magnitude(2 * (at(-2) - at(2)) - (at(-1) - at(1)) - (at(-3) - at(3)));
}

// Sixteen times green less colour at a red or blue pixel, along one direction: twice the derivative there less those of
// both neighbours.
template <class At>
inline auto Estimate(const At& at) {
  const auto near = at(-1) + at(1);
  return near * 8 - near + (at(-3) + at(3)) - at(0) * 8 - (at(-2) + at(2)) * 4;
}

template <std::ptrdiff_t kParity>
void ReplaceChanges(const PartedRows<std::int16_t>& rows, std::size_t pairs, std::uint32_t shift, std::int16_t* changes,
                    std::int16_t* sums) {
  const PartedRows<std::int16_t> in = rows;
  const auto down = static_cast<std::int16_t>(shift);
  const auto replace = [&](std::int16_t* sum, std::int16_t* last, Numbers<std::int16_t> change) {
    change = change >> down;
    Write(Read(sum) + change - Read(last), sum);
    Write(change, last);
  };
  const std::ptrdiff_t part = kParity * in.odd, across = part + 2 * in.odd;
  for (std::size_t i = 0; i < pairs; i += kNumbers<std::int16_t>) {
    const auto inRow = [&](std::ptrdiff_t by) { return Read(Column<kParity>(in.row[3], in.odd, by) + i); };
    const auto inColumn = [&](std::ptrdiff_t by) { return Read(Column<kParity>(in.row[3 + by], in.odd, 0) + i); };
    replace(sums + part + i, changes + part + i, Change(inRow));
    replace(sums + across + i, changes + across + i, Change(inColumn));
  }
}

template <std::ptrdiff_t kColor>
void Weigh(const std::int16_t* sums, std::ptrdiff_t odd, std::size_t pairs, std::int16_t* weights) {
  for (std::size_t i = 0; i < pairs; i += kNumbers<std::int16_t>) {
    const auto sum = [&](const std::int16_t* of) {
      const auto at = [&](std::ptrdiff_t by) { return Read(Column<kColor>(of, odd, by) + i); };
      return at(-2) + at(-1) + at(0) + at(1) + at(2);
    };
    const Numbers<std::int16_t> along = sum(sums), across = sum(sums + 2 * odd);
    const auto least = Lesser(along, across), most = Greater(along, across);
    const Numbers<std::int16_t> share = One(least >= most - (most >> 2)) + One(least >= (most >> 1));
    Write(Choose(along < across, share, 4 - share), weights + i);
  }
}

template <std::ptrdiff_t kColor, class Value>
void SubtractGreen(const PartedRows<Value>& rows, const std::int16_t* weights, std::size_t pairs, Value* differences) {
  const PartedRows<Value> in = rows;
  const auto white = Numbers<Value>{} + static_cast<Value>(in.white);
  for (std::size_t i = 0; i < pairs; i += kNumbers<Value>) {
    const auto inRow = [&](std::ptrdiff_t by) { return Read(Column<kColor>(in.row[3], in.odd, by) + i); };
    const auto inColumn = [&](std::ptrdiff_t by) { return Read(Column<kColor>(in.row[3 + by], in.odd, 0) + i); };
    const auto own = inRow(0);
    const auto along = Estimate(inRow), across = Estimate(inColumn);
    const auto mean = Rounded<6>(along * 4 + ReadWeights<Value>(weights + i) * (across - along));
    auto green = own + mean;
    // What passes the green neighbours is halved.
    const auto least = Lesser(Lesser(inRow(-1), inRow(1)), Lesser(inColumn(-1), inColumn(1)));
    const auto most = Greater(Greater(inRow(-1), inRow(1)), Greater(inColumn(-1), inColumn(1)));
    const auto none = Numbers<Value>{};
    green = green + Rounded<1>(Greater(least - green, none)) - Rounded<1>(Greater(green - most, none));
    Write(own - Clamp(green, white), differences + i);
  }
}

template <std::ptrdiff_t kColor, class Value, class To>
void AddDifferences(const PartedRows<Value>& rows, const Value* const* around, std::size_t first, std::size_t end,
                    const To to) {
  constexpr std::ptrdiff_t kGreen = 1 - kColor;
  const std::ptrdiff_t odd = rows.odd;
  const Value* const row = rows.row[3];
  // The rows above and below have their colour in the other columns.
  const Value *const above3 = around[0], *const above = around[2], *const here = around[3], *const below = around[4],
                     *const below3 = around[6];
  const auto white = Numbers<Value>{} + static_cast<Value>(rows.white);
  for (std::size_t i = first; i < end; i += kNumbers<Value>) {
    const auto at = [&](const Value* differences, std::ptrdiff_t by) {
      return Read(Column<kColor>(differences, 0, by) + i);
    };
    const auto near = [&](std::ptrdiff_t by) { return at(above, by) + at(below, by); };
    const auto far = [&](std::ptrdiff_t by) { return at(above3, by) + at(below3, by); };
    const auto own = Read(Column<kColor>(row, odd, 0) + i);
    const auto green = own - at(here, 0);
    const auto corners = near(-1) + near(1);
    const auto knights = near(-3) + near(3) + far(-1) + far(1);
    const auto other = ClampColor(green + Rounded<5>(10 * corners - knights), white);

    // The green pixel is one column to the right, or to the left.
    const std::ptrdiff_t by = kGreen - kColor;
    const auto between = Read(Column<kGreen>(row, odd, 0) + i);
    const auto line = ClampColor(between + Rounded<1>(at(here, by - 1) + at(here, by + 1)), white);
    const auto column = ClampColor(between + Rounded<1>(near(by)), white);
    const Colors<Value> colorPixel{own, green, other}, greenPixel{line, between, column};
    to(i, kColor == 0 ? colorPixel : greenPixel, kColor == 0 ? greenPixel : colorPixel);
  }
}

template <class Value, class To>
void AddRow(const PartedRows<Value>& in, const Value* const* differences, std::size_t first, std::size_t end,
            const To& to) {
  in.color == 0 ? AddDifferences<0>(in, differences, first, end, to)
                : AddDifferences<1>(in, differences, first, end, to);
}

template <class Writer>
void AddTo(const PartedRows<std::int16_t>& in, const std::int16_t* const* differences, std::size_t first,
           std::size_t end, const TargetLine& target) {
  MakePixels<Writer>(first, end, target,
                     [&](const auto& to) { AddRow(in, differences, first / 2, (end + 1) / 2, to); });
}

}  // namespace

ChangesKernel AdaptiveChanges;
void AdaptiveChanges(const PartedRows<std::int16_t>& in, std::size_t pairs, std::uint32_t shift, std::int16_t* changes,
                     std::int16_t* sums) {
  ReplaceChanges<0>(in, pairs, shift, changes, sums);
  ReplaceChanges<1>(in, pairs, shift, changes, sums);
}

WeightsKernel AdaptiveWeights;
void AdaptiveWeights(const std::int16_t* sums, std::ptrdiff_t odd, std::ptrdiff_t color, std::size_t pairs,
                     std::int16_t* weights) {
  color == 0 ? Weigh<0>(sums, odd, pairs, weights) : Weigh<1>(sums, odd, pairs, weights);
}

DifferencesKernel<std::uint8_t> AdaptiveDifferences;
DifferencesKernel<std::uint16_t> AdaptiveDifferences;
void AdaptiveDifferences(const PartedRows<std::int16_t>& in, const std::int16_t* weights, std::size_t pairs,
                         std::int16_t* differences) {
  in.color == 0 ? SubtractGreen<0>(in, weights, pairs, differences) : SubtractGreen<1>(in, weights, pairs, differences);
}
void AdaptiveDifferences(const PartedRows<std::int32_t>& in, const std::int16_t* weights, std::size_t pairs,
                         std::int32_t* differences) {
  in.color == 0 ? SubtractGreen<0>(in, weights, pairs, differences) : SubtractGreen<1>(in, weights, pairs, differences);
}

AdaptiveKernel<std::uint8_t> BayerAdaptive;
AdaptiveKernel<std::uint16_t> BayerAdaptive;
void BayerAdaptive(const PartedRows<std::int16_t>& in, const std::int16_t* const* differences, std::size_t pairs,
                   const RowColors<std::uint8_t>& out) {
  AddRow(in, differences, 0, pairs, ToRows<std::uint8_t>{out});
}
void BayerAdaptive(const PartedRows<std::int32_t>& in, const std::int32_t* const* differences, std::size_t pairs,
                   const RowColors<std::uint16_t>& out) {
  AddRow(in, differences, 0, pairs, ToRows<std::uint16_t>{out});
}

}  // namespace LmImagingLib::LM_ISA

LM_EXPORT_ROW_PIXELS(Adaptive, AddTo)
