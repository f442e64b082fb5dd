#pragma once

namespace LmImagingLib::Builtin {

// What the library registers while it loads, in this order: converters need the types.
void RegisterBuiltinTypes();
void RegisterGrayscaleConverters();
void RegisterBayerConverters();
void RegisterYUVConverters();
void RegisterRGBConverters();

}  // namespace LmImagingLib::Builtin
