#include "factory/builtin_converters.h"

#include "LmImagingLib/PixelTypeFactory.h"
#include "converters/bayer_converter.h"
#include "converters/line_converter.h"
#include "converters/line_copy.h"
#include "converters/reorder_converter.h"
#include "formats/catalogue.h"

namespace LmImagingLib {

namespace {

using Made = std::unique_ptr<const PixelConverter>;

Made MakeReorder(const TypeRow& row, const PixelTypeID& from, const PixelTypeID& to) {
  if (ReadoutOf(from).taps == Readout::Taps::kTwoLines) {
    return std::make_unique<DualLinesGrayscale8ToGrayscale8>(from, to);
  }
  if (row.format->groupBits == 8) return std::make_unique<Dalsa4x8ToGrayscale8>(from, to);
  return std::make_unique<Dalsa4x16ToGrayscale16>(from, to);
}

}  // namespace

Made MakeBuiltinConverter(const PixelTypeID& from, const PixelTypeID& to, Extent extent) {
  const Route route = RouteOf(from, to, extent);
  if (route.kind == Route::Kind::kNone) return nullptr;
  const TypeRow& row = *FindTypeRow(from);
  switch (route.kind) {
    case Route::Kind::kIdentity:
      return std::make_unique<IdentityConverter>(from, PixelTypeFactory::FindPixelType(from)->GetPixelByteSize());
    case Route::Kind::kCopy:
      return std::make_unique<LineCopy>(from, to);
    case Route::Kind::kReorder:
      return MakeReorder(row, from, to);
    case Route::Kind::kDemosaic:
      return std::make_unique<BayerConverter>(SourceType(row), *FindWriter(row, to), from, to);
    case Route::Kind::kChain:
      return std::make_unique<ComplexConverter>(*PixelTypeFactory::FindConverter(from, route.via),
                                                *PixelTypeFactory::FindConverter(route.via, to));
    default:
      return std::make_unique<LineConverter>(SourceType(row), *FindWriter(row, to), from, to);
  }
}

}  // namespace LmImagingLib
