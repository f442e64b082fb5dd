// Bayer mosaic, adaptive method: green is interpolated along the row, along the column, or between both, whichever
// changes less around the pixel; red and blue follow by their differences to green. Each function is one step of a row.
#include "kernels/bayer/numbers.h"

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
  return (near << 3) - near + (at(-3) + at(3)) - (at(0) << 3) - ((at(-2) + at(2)) << 2);
}

template <class Sample>
void SubtractGreen(const PartedRows<Number<Sample>>& rows, const std::int16_t* weights, std::size_t pairs,
                   Number<Sample>* differences) {
  using Value = Number<Sample>;
  const PartedRows<Value> in = rows;
  const auto white = Numbers<Value>{} + static_cast<Value>(in.white);
  for (std::size_t i = 0; i < pairs; i += kNumbers<Value>) {
    const auto inRow = [&](std::ptrdiff_t by) { return Read(Column(in.row[3], in.odd, in.color, by) + i); };
    const auto inColumn = [&](std::ptrdiff_t by) { return Read(Column(in.row[3 + by], in.odd, in.color, 0) + i); };
    const auto own = inRow(0);
    const auto along = Estimate(inRow), across = Estimate(inColumn);
    const auto mean = ((along << 2) + ReadWeights<Value>(weights + i) * (across - along) + 32) >> 6;
    auto green = own + mean;
    // What passes the green neighbours is halved.
    const auto least = Lesser(Lesser(inRow(-1), inRow(1)), Lesser(inColumn(-1), inColumn(1)));
    const auto most = Greater(Greater(inRow(-1), inRow(1)), Greater(inColumn(-1), inColumn(1)));
    const auto none = Numbers<Value>{};
    green = green + ((Greater(least - green, none) + 1) >> 1) - ((Greater(green - most, none) + 1) >> 1);
    Write(own - Clamp(green, white), differences + i);
  }
}

template <class Sample>
void AddDifferences(const PartedRows<Number<Sample>>& rows, const Number<Sample>* const* around, std::size_t pairs,
                    const RowColors<Sample>& out) {
  using Value = Number<Sample>;
  const std::ptrdiff_t odd = rows.odd, color = rows.color;
  const Value* const row = rows.row[3];
  // The rows above and below have their colour in the other columns.
  const Value* const below[] = {around[0], around[2], around[3], around[4], around[6]};
  const auto white = Numbers<Value>{} + static_cast<Value>(rows.white);
  const RowColors<Sample> to = out;
  for (std::size_t i = 0; i < pairs; i += kNumbers<Value>) {
    const auto difference = [&](std::size_t k, std::ptrdiff_t parity, std::ptrdiff_t by) {
      return Read(Column(below[k], 0, parity, by) + i);
    };
    const auto near = [&](std::ptrdiff_t by) { return difference(1, color, by) + difference(3, color, by); };
    const auto far = [&](std::ptrdiff_t by) { return difference(0, color, by) + difference(4, color, by); };
    const auto own = Read(Column(row, odd, color, 0) + i);
    const auto green = own - difference(2, color, 0);
    const auto corners = near(-1) + near(1);
    const auto knights = near(-3) + near(3) + far(-1) + far(1);
    const auto other = Clamp(green + ((10 * corners - knights + 16) >> 5), white);

    const std::ptrdiff_t site = 1 - color;
    const auto between = Read(Column(row, odd, site, 0) + i);
    const auto line = Clamp(between + ((difference(2, site, -1) + difference(2, site, 1) + 1) >> 1), white);
    const auto column = Clamp(between + ((difference(1, site, 0) + difference(3, site, 0) + 1) >> 1), white);
    if (color == 0) {
      StoreColumns(own, line, to.line + 2 * i);
      StoreColumns(green, between, to.green + 2 * i);
      StoreColumns(other, column, to.column + 2 * i);
    } else {
      StoreColumns(line, own, to.line + 2 * i);
      StoreColumns(between, green, to.green + 2 * i);
      StoreColumns(column, other, to.column + 2 * i);
    }
  }
}

}  // namespace

ChangesKernel AdaptiveChanges;
void AdaptiveChanges(const PartedRows<std::int16_t>& rows, std::size_t pairs, std::uint32_t shift,
                     std::int16_t* changes, std::int16_t* sums) {
  const PartedRows<std::int16_t> in = rows;
  const auto down = static_cast<std::int16_t>(shift);
  const auto replace = [&](std::size_t at, Numbers<std::int16_t> change) {
    change = change >> down;
    Write(Read(sums + at) + change - Read(changes + at), sums + at);
    Write(change, changes + at);
  };
  for (std::ptrdiff_t parity = 0; parity < 2; ++parity) {
    const std::size_t part = static_cast<std::size_t>(parity * in.odd);
    for (std::size_t i = 0; i < pairs; i += kNumbers<std::int16_t>) {
      const auto inRow = [&](std::ptrdiff_t by) { return Read(Column(in.row[3], in.odd, parity, by) + i); };
      const auto inColumn = [&](std::ptrdiff_t by) { return Read(Column(in.row[3 + by], in.odd, parity, 0) + i); };
      replace(part + i, Change(inRow));
      replace(part + i + 2 * static_cast<std::size_t>(in.odd), Change(inColumn));
    }
  }
}

WeightsKernel AdaptiveWeights;
void AdaptiveWeights(const std::int16_t* sums, std::ptrdiff_t odd, std::ptrdiff_t color, std::size_t pairs,
                     std::int16_t* weights) {
  for (std::size_t i = 0; i < pairs; i += kNumbers<std::int16_t>) {
    const auto sum = [&](const std::int16_t* of) {
      const auto at = [&](std::ptrdiff_t by) { return Read(Column(of, odd, color, by) + i); };
      return at(-2) + at(-1) + at(0) + at(1) + at(2);
    };
    const Numbers<std::int16_t> alongRow = sum(sums), alongColumn = sum(sums + 2 * odd);
    const auto least = Lesser(alongRow, alongColumn), most = Greater(alongRow, alongColumn);
    const Numbers<std::int16_t> share = One(least >= most - (most >> 2)) + One(least >= (most >> 1));
    Write(Choose(alongRow < alongColumn, share, 4 - share), weights + i);
  }
}

DifferencesKernel<std::uint8_t> AdaptiveDifferences;
DifferencesKernel<std::uint16_t> AdaptiveDifferences;
void AdaptiveDifferences(const PartedRows<std::int16_t>& in, const std::int16_t* weights, std::size_t pairs,
                         std::int16_t* differences) {
  SubtractGreen<std::uint8_t>(in, weights, pairs, differences);
}
void AdaptiveDifferences(const PartedRows<std::int32_t>& in, const std::int16_t* weights, std::size_t pairs,
                         std::int32_t* differences) {
  SubtractGreen<std::uint16_t>(in, weights, pairs, differences);
}

AdaptiveKernel<std::uint8_t> BayerAdaptive;
AdaptiveKernel<std::uint16_t> BayerAdaptive;
void BayerAdaptive(const PartedRows<std::int16_t>& in, const std::int16_t* const* differences, std::size_t pairs,
                   const RowColors<std::uint8_t>& out) {
  AddDifferences(in, differences, pairs, out);
}
void BayerAdaptive(const PartedRows<std::int32_t>& in, const std::int32_t* const* differences, std::size_t pairs,
                   const RowColors<std::uint16_t>& out) {
  AddDifferences(in, differences, pairs, out);
}

}  // namespace LmImagingLib::LM_ISA
