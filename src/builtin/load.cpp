#include "builtin/builtin.h"
#include "filter/default_filters.h"

namespace LmImagingLib::Builtin {

namespace {

struct Load {
  Load() {
    DefaultFilter(0);  // all of them are made at once, before any thread needs one
    RegisterBuiltinTypes();
    RegisterGrayscaleConverters();
    RegisterBayerConverters();
    RegisterYUVConverters();
    RegisterRGBConverters();
  }
};

const Load kLoad;

}  // namespace

}  // namespace LmImagingLib::Builtin
