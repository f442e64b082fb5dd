#pragma once

#include <optional>

#include "LmBaseLib/Export.h"
#include "LmBaseLib/Result.h"
#include "LmImagingLib/Extended.h"
#include "LmImagingLib/PixelType.h"
#include "LmImagingLib/PixelTypeID.h"

namespace LmImagingLib {

class PixelConverter;
class PixelTypeFactoryInternal;
struct RegistryExtension;
struct RegistryRelease;

/// The attributes that a query for pixel types asks for. An empty member matches every type.
///
/// All members except the bit count are read from the id that the type is registered under.
struct PixelTypeAttributes {
  std::optional<PixelTypeID> colorSpace;      ///< `kColorSpaceGrayscale`, `kColorSpaceRGB` or `kColorSpaceYUV`
  std::optional<unsigned short> bitCount;     ///< `PixelType::GetPixelBitSize`
  std::optional<bool> normalized;             ///< `kNormalizedFlag`
  std::optional<bool> interlaced;             ///< `kInterlacedFlag`
  std::optional<bool> packed;                 ///< `kPackedFlag`
  std::optional<bool> planar;                 ///< `kPlanarFlag`
  std::optional<PixelTypeID> dualOutputMode;  ///< 0 for none, or one of the `kDual...` values
};

/// The process-wide registry of pixel types and of the converters between them.
///
/// The built-in types and converters are registered before the first call returns. Entries are never removed. Every
/// operation holds one lock while it runs, so any thread may call at any time. Look a converter up once and keep it,
/// rather than looking it up for each frame.
///
/// Every function that returns a `Result` reports `NOT_ENOUGH_MEMORY` when memory runs out, and then has changed
/// nothing. Functions that return a new object throw `std::bad_alloc`.
///
/// `GetPixelType` and `GetConverter` return a reference whose address is null where nothing is registered. A compiler
/// may assume that a reference is never null, so call them only after `HasPixelType` or `HasConverter`, or use
/// `FindPixelType` and `FindConverter`, which return a pointer.
class LM_EXPORT PixelTypeFactory {
 public:
  PixelTypeFactory() = delete;

  /// Registers a clone of `type` under `id`, and an `IdentityConverter` from the id to itself unless it has a
  /// converter.
  /// @param type  cloned; the caller keeps ownership
  /// @param name  copied; null composes one from the id and the type, such as "Grayscale8-bits, Interlaced"
  /// @return `INVALID_PARAMETER` if the id is already registered, and nothing is changed
  static LmBaseLib::Result RegisterPixelType(const PixelTypeID& id, const PixelType* type, const char* name);
  /// The registered object, owned by the registry; a null address for an unregistered id.
  static const PixelType& GetPixelType(const PixelTypeID& id);
  /// The registered object, owned by the registry, or null.
  static const PixelType* FindPixelType(const PixelTypeID& id);
  /// Whether a type is registered under `id`.
  static bool HasPixelType(const PixelTypeID& id);
  /// A new clone of the registered object, which the caller deletes, or null for an unregistered id.
  static PixelType* CreatePixelType(const PixelTypeID& id);
  /// The registered or composed name, or "Unregistered pixel type"; valid until the library is unloaded.
  static const char* GetPixelTypeName(const PixelTypeID& id);

  /// The number of registered types that have the attributes.
  static unsigned long CountPixelTypes(const PixelTypeAttributes& attributes);
  /// A new clone of the index-th type that has the attributes, counted from 0 in ascending order of ids; the caller
  /// deletes it. Null past the last.
  static PixelType* CreatePixelType(unsigned long index, const PixelTypeAttributes& attributes);

  /// Registers a converter for a pair of ids. It is not copied, and must exist as long as the library is loaded.
  /// @return `INVALID_PARAMETER` if the pair is already registered, and nothing is changed
  static LmBaseLib::Result RegisterPixelConverter(const PixelTypeID& from, const PixelTypeID& to,
                                                  const PixelConverter* converter);
  /// The same for the converter's own source and destination id.
  static LmBaseLib::Result RegisterPixelConverter(const PixelConverter& converter);
  /// The converter of a pair; a null address if none is registered.
  static const PixelConverter& GetConverter(const PixelTypeID& from, const PixelTypeID& to);
  /// The converter of a pair, or null.
  static const PixelConverter* FindConverter(const PixelTypeID& from, const PixelTypeID& to);
  /// Whether a converter is registered for the pair.
  static bool HasConverter(const PixelTypeID& from, const PixelTypeID& to);
  /// Puts `converter` in place of the one registered for its own source and destination id.
  /// @param previous  receives the displaced converter, or null; may be null
  /// @return `INVALID_PARAMETER` if the pair is not registered, and nothing is changed
  static LmBaseLib::Result ReplacePixelConverter(const PixelConverter& converter, const PixelConverter** previous);
  /// Registers for `to` every converter that `from` has, as source or as destination, except its identity. Pairs that
  /// `to` already has stay as they are.
  /// @return `INVALID_PARAMETER` if `from` has no pair
  static LmBaseLib::Result ClonePixelConverters(const PixelTypeID& from, const PixelTypeID& to);

  /// The index-th registered pair, ascending by (from, to); false past the last, and the ids are left alone.
  static bool EnumConverters(unsigned long index, PixelTypeID& from, PixelTypeID& to);
  /// The index-th destination that `from` reaches, ascending; false past the last.
  static bool EnumConverterTo(unsigned long index, const PixelTypeID& from, PixelTypeID& to);
  /// The index-th source that converts to `to`, ascending; false past the last.
  static bool EnumConverterFrom(unsigned long index, const PixelTypeID& to, PixelTypeID& from);

 private:
  friend struct RegistryRelease;
  friend struct RegistryExtension;
  static PixelTypeFactoryInternal* Internal();

  static PixelTypeFactoryInternal* sInternal;
};

}  // namespace LmImagingLib
