// Bayer mosaic, gradient-corrected method: each colour is a mean of its nearest samples, corrected by how much the
// pixel differs from those of its own colour around it (Malvar, He, Cutler: High-quality linear interpolation for
// demosaicing of Bayer-patterned color images, 2004). The weights of the filters are sixteenths.
#include "kernels/bayer/row_colors.h"

namespace LmImagingLib::LM_ISA {
namespace {

// The pixels of one parity of columns, which are green or not.
template <std::ptrdiff_t kParity, bool kGreen, class Value>
inline Colors<Value> ColorsAt(const PartedRows<Value>& in, std::size_t i, Numbers<Value> white) {
  const auto at = [&](std::size_t row, std::ptrdiff_t by) {
    return Read(Column<kParity>(in.row[row], in.odd, by) + i);
  };
  const auto own = at(3, 0);
  const auto poles = at(2, 0) + at(4, 0), sides = at(3, -1) + at(3, 1);
  // The poles of the neighbours, which compilers then compute once.
  const auto corners = (at(2, -1) + at(4, -1)) + (at(2, 1) + at(4, 1));
  const auto farPoles = at(1, 0) + at(5, 0), farSides = at(3, -2) + at(3, 2);
  if constexpr (kGreen) {
    const auto same = 10 * own - 2 * corners;
    return {ClampColor(Rounded<4>(same + 8 * sides - 2 * farSides + farPoles), white), own,
            ClampColor(Rounded<4>(same + 8 * poles - 2 * farPoles + farSides), white)};
  } else {
    const auto far = farPoles + farSides;
    // Half of 8 own + 4 (poles + sides) - 2 far.
    return {own, ClampColor(Rounded<3>(4 * own + 2 * (poles + sides) - far), white),
            ClampColor(Rounded<4>(12 * own + 4 * corners - 3 * far), white)};
  }
}

template <std::ptrdiff_t kColor, class Value, class To>
void Filter(const PartedRows<Value>& rows, std::size_t first, std::size_t end, const To to) {
  const PartedRows<Value> in = rows;
  const auto white = Numbers<Value>{} + static_cast<Value>(in.white);
  for (std::size_t i = first; i < end; i += kNumbers<Value>) {
    to(i, ColorsAt<0, kColor != 0>(in, i, white), ColorsAt<1, kColor == 0>(in, i, white));
  }
}

template <class Value, class To>
void FilterRow(const PartedRows<Value>& in, std::size_t first, std::size_t end, const To& to) {
  in.color == 0 ? Filter<0>(in, first, end, to) : Filter<1>(in, first, end, to);
}

template <class Writer>
void FilterTo(const PartedRows<std::int16_t>& in, const std::int16_t* const* /*differences*/, std::size_t first,
              std::size_t end, const TargetLine& target) {
  MakePixels<Writer>(first, end, target, [&](const auto& to) { FilterRow(in, first / 2, (end + 1) / 2, to); });
}

}  // namespace

GradientCorrectedKernel<std::uint8_t> BayerGradientCorrected;
GradientCorrectedKernel<std::uint16_t> BayerGradientCorrected;
void BayerGradientCorrected(const PartedRows<std::int16_t>& in, std::size_t pairs, const RowColors<std::uint8_t>& out) {
  FilterRow(in, 0, pairs, ToRows<std::uint8_t>{out});
}
void BayerGradientCorrected(const PartedRows<std::int32_t>& in, std::size_t pairs,
                            const RowColors<std::uint16_t>& out) {
  FilterRow(in, 0, pairs, ToRows<std::uint16_t>{out});
}

}  // namespace LmImagingLib::LM_ISA

LM_EXPORT_ROW_PIXELS(GradientCorrected, FilterTo)
