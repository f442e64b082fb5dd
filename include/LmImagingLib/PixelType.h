#pragma once

#include "LmBaseLib/Export.h"
#include "LmImagingLib/PixelTypeID.h"

namespace LmImagingLib {

class PixelConverter;

/// Describes one pixel format: its id, its sizes, and whether it is a Bayer colour mosaic.
///
/// Immutable after construction, so any number of threads may read one object.
class LM_EXPORT PixelType {
 public:
  /// @param bitSize  significant bits a pixel (of some wide RGB types: a sample)
  /// @param byteSize  bytes a pixel in memory; of packed layouts the nominal size
  PixelType(const PixelTypeID& id, unsigned short bitSize, unsigned short byteSize, bool isBayer);
  /// Copies the id, the sizes and the Bayer flag.
  PixelType(const PixelType& other);
  /// As the copy constructor.
  PixelType& operator=(const PixelType& other);
  virtual ~PixelType();

  /// A new plain `PixelType` with this object's id, sizes and Bayer flag; the caller deletes it.
  virtual PixelType* Clone() const;

  /// The id that the object describes.
  virtual const PixelTypeID& GetTypeID() const;
  /// Significant bits a pixel.
  virtual unsigned short GetPixelBitSize() const;
  /// Bytes a pixel, nominal for packed layouts.
  virtual unsigned short GetPixelByteSize() const;
  /// Whether the format is a colour mosaic.
  virtual bool IsBayerPattern() const;

  /// The bytes of an image buffer of `width` x `height` pixels, in 32-bit arithmetic that wraps.
  ///
  /// Packed grayscale and Bayer types of 10 or 12 bits take 1.5 bytes a pixel, with the pixel count rounded up to even.
  /// Unpacked 24-bit types take 4 bytes a pixel, although their converters read and write 3: the identity conversion
  /// copies this whole size, so buffers must have it. Packed extended types have lines of whole bytes, and do not wrap.
  /// All others take `GetPixelByteSize` bytes a pixel. Some conversions touch more: see `FindConversionExtent`.
  virtual unsigned long GetBufferSizeFor(unsigned long width, unsigned long height) const;

  /// The registered converter from this type to `other`; a null address if there is none, so ask `HasConverterTo`
  /// first, or `PixelTypeFactory::FindConverter`.
  const PixelConverter& GetConverterTo(const PixelType& other) const;
  /// The registered converter from `other` to this type; otherwise as `GetConverterTo`.
  const PixelConverter& GetConverterFrom(const PixelType& other) const;
  /// Whether a converter from this type to `other` is registered.
  bool HasConverterTo(const PixelType& other) const;
  /// Whether a converter from `other` to this type is registered.
  bool HasConverterFrom(const PixelType& other) const;

 private:
  PixelTypeID mTypeID;
  unsigned short mPixelBitSize;
  unsigned short mPixelByteSize;
  bool mBayer;
};

// One class a format. The default constructor takes the format's base id; the other one any id, usually a variant of
// it. A Bayer class built on an id outside the RGB colour space is not a mosaic.

/// Grayscale of 4 bits, one sample in the low bits of a byte.
class LM_EXPORT Grayscale4 : public PixelType {
 public:
  Grayscale4();
  explicit Grayscale4(const PixelTypeID& id);
};

/// Grayscale of 8 bits, one byte a pixel.
class LM_EXPORT Grayscale8 : public PixelType {
 public:
  Grayscale8();
  explicit Grayscale8(const PixelTypeID& id);
};

/// Grayscale of 8 bits, two's complement: -128 is black.
class LM_EXPORT Grayscale8Signed : public PixelType {
 public:
  Grayscale8Signed();
  explicit Grayscale8Signed(const PixelTypeID& id);
};

/// Grayscale of 10 bits in 16-bit little-endian words.
class LM_EXPORT Grayscale10 : public PixelType {
 public:
  Grayscale10();
  explicit Grayscale10(const PixelTypeID& id);
};

/// Grayscale of 12 bits in 16-bit little-endian words.
class LM_EXPORT Grayscale12 : public PixelType {
 public:
  Grayscale12();
  explicit Grayscale12(const PixelTypeID& id);
};

/// Grayscale of 14 bits in 16-bit little-endian words.
class LM_EXPORT Grayscale14 : public PixelType {
 public:
  Grayscale14();
  explicit Grayscale14(const PixelTypeID& id);
};

/// Grayscale of 16 bits in 16-bit little-endian words.
class LM_EXPORT Grayscale16 : public PixelType {
 public:
  Grayscale16();
  explicit Grayscale16(const PixelTypeID& id);
};

/// Grayscale of 8 bits, four inverted taps multiplexed on two.
class LM_EXPORT Grayscale8_DualQuadMultiplexed : public PixelType {
 public:
  Grayscale8_DualQuadMultiplexed();
  explicit Grayscale8_DualQuadMultiplexed(const PixelTypeID& id);
};

/// Grayscale of 10 bits, four inverted taps multiplexed on two.
class LM_EXPORT Grayscale10_DualQuadMultiplexed : public PixelType {
 public:
  Grayscale10_DualQuadMultiplexed();
  explicit Grayscale10_DualQuadMultiplexed(const PixelTypeID& id);
};

/// Grayscale of 10 bits, two pixels in three bytes, GigE Vision layout.
class LM_EXPORT Grayscale10_Packed_GEV : public PixelType {
 public:
  Grayscale10_Packed_GEV();
  explicit Grayscale10_Packed_GEV(const PixelTypeID& id);
};

/// Grayscale of 12 bits, two pixels in three bytes, GigE Vision layout.
class LM_EXPORT Grayscale12_Packed_GEV : public PixelType {
 public:
  Grayscale12_Packed_GEV();
  explicit Grayscale12_Packed_GEV(const PixelTypeID& id);
};

/// 16-bit little-endian words: red in bits 15-11, green in 10-5, blue in 4-0.
class LM_EXPORT RGB16 : public PixelType {
 public:
  RGB16();
  explicit RGB16(const PixelTypeID& id);
};

/// The bytes red, green, blue.
class LM_EXPORT RGB24 : public PixelType {
 public:
  RGB24();
  explicit RGB24(const PixelTypeID& id);
};

/// The bytes red, green, blue and one unused.
class LM_EXPORT RGB32 : public PixelType {
 public:
  RGB32();
  explicit RGB32(const PixelTypeID& id);
};

/// Three 16-bit words red, green, blue.
class LM_EXPORT RGB48 : public PixelType {
 public:
  RGB48();
  explicit RGB48(const PixelTypeID& id);
};

/// Four 16-bit words red, green, blue and one unused.
class LM_EXPORT RGB64 : public PixelType {
 public:
  RGB64();
  explicit RGB64(const PixelTypeID& id);
};

/// The bytes blue, green, red.
class LM_EXPORT BGR24 : public PixelType {
 public:
  BGR24();
  explicit BGR24(const PixelTypeID& id);
};

/// The bytes blue, green, red and one unused.
class LM_EXPORT BGR32 : public PixelType {
 public:
  BGR32();
  explicit BGR32(const PixelTypeID& id);
};

/// Three 16-bit words red, green, blue of 10 bits.
class LM_EXPORT RGB48_10Bits : public PixelType {
 public:
  RGB48_10Bits();
  explicit RGB48_10Bits(const PixelTypeID& id);
};

/// Four 16-bit words red, green, blue of 10 bits and one unused.
class LM_EXPORT RGB64_10Bits : public PixelType {
 public:
  RGB64_10Bits();
  explicit RGB64_10Bits(const PixelTypeID& id);
};

/// Three samples of 8 bits: red, green, blue.
class LM_EXPORT RGB8_3 : public PixelType {
 public:
  RGB8_3();
  explicit RGB8_3(const PixelTypeID& id);
};

/// Four samples of 8 bits: red, green, blue and one unused.
class LM_EXPORT RGB8_4 : public PixelType {
 public:
  RGB8_4();
  explicit RGB8_4(const PixelTypeID& id);
};

/// Three 16-bit words red, green, blue of 12 bits.
class LM_EXPORT RGB48_12Bits : public PixelType {
 public:
  RGB48_12Bits();
  explicit RGB48_12Bits(const PixelTypeID& id);
};

/// Four 16-bit words red, green, blue of 12 bits and one unused.
class LM_EXPORT RGB64_12Bits : public PixelType {
 public:
  RGB64_12Bits();
  explicit RGB64_12Bits(const PixelTypeID& id);
};

/// Three 16-bit words blue, green, red of 10 bits.
class LM_EXPORT BGR48_10Bits : public PixelType {
 public:
  BGR48_10Bits();
  explicit BGR48_10Bits(const PixelTypeID& id);
};

/// Three 16-bit words blue, green, red of 12 bits.
class LM_EXPORT BGR48_12Bits : public PixelType {
 public:
  BGR48_12Bits();
  explicit BGR48_12Bits(const PixelTypeID& id);
};

/// Four bytes: low bits, then the top 8 bits of blue, green, red.
class LM_EXPORT BGR10PackedV1 : public PixelType {
 public:
  BGR10PackedV1();
  explicit BGR10PackedV1(const PixelTypeID& id);
};

/// A 32-bit little-endian word: blue in bits 9-0, green in 19-10, red in 29-20.
class LM_EXPORT BGR10PackedV2 : public PixelType {
 public:
  BGR10PackedV2();
  explicit BGR10PackedV2(const PixelTypeID& id);
};

/// Two pixels of 3 x 12 bits in nine bytes.
class LM_EXPORT RGB12PackedV1 : public PixelType {
 public:
  RGB12PackedV1();
  explicit RGB12PackedV1(const PixelTypeID& id);
};

/// Colour mosaic of 8 bits.
class LM_EXPORT BayerRGB8 : public PixelType {
 public:
  BayerRGB8();
  explicit BayerRGB8(const PixelTypeID& id);
};

/// Colour mosaic of 10 bits in 16-bit words.
class LM_EXPORT BayerRGB10 : public PixelType {
 public:
  BayerRGB10();
  explicit BayerRGB10(const PixelTypeID& id);
};

/// Colour mosaic of 12 bits in 16-bit words.
class LM_EXPORT BayerRGB12 : public PixelType {
 public:
  BayerRGB12();
  explicit BayerRGB12(const PixelTypeID& id);
};

/// Colour mosaic of 14 bits in 16-bit words.
class LM_EXPORT BayerRGB14 : public PixelType {
 public:
  BayerRGB14();
  explicit BayerRGB14(const PixelTypeID& id);
};

/// Colour mosaic of 16-bit words; its bit size reads 14, as its users expect.
class LM_EXPORT BayerRGB16 : public PixelType {
 public:
  BayerRGB16();
  explicit BayerRGB16(const PixelTypeID& id);
};

/// Colour mosaic of 12 bits, two pixels in three bytes, GigE Vision layout.
class LM_EXPORT BayerRGB12_Packed_GEV : public PixelType {
 public:
  BayerRGB12_Packed_GEV();
  explicit BayerRGB12_Packed_GEV(const PixelTypeID& id);
};

/// Colour mosaic of 10 bits, two pixels in three bytes, GigE Vision layout.
class LM_EXPORT BayerRGB10_Packed_GEV : public PixelType {
 public:
  BayerRGB10_Packed_GEV();
  explicit BayerRGB10_Packed_GEV(const PixelTypeID& id);
};

/// YUV 4:2:2, two pixels in the bytes Y0 U Y1 V.
class LM_EXPORT YUV8 : public PixelType {
 public:
  YUV8();
  explicit YUV8(const PixelTypeID& id);
};

/// YUV 4:2:2, two pixels in the 16-bit words Y0 U Y1 V of 10 bits.
class LM_EXPORT YUV10 : public PixelType {
 public:
  YUV10();
  explicit YUV10(const PixelTypeID& id);
};

/// YUV 4:4:4, the bytes Y U V.
class LM_EXPORT YUV8_444 : public PixelType {
 public:
  YUV8_444();
  explicit YUV8_444(const PixelTypeID& id);
};

/// YCrCb 4:4:4, the bytes Y Cr Cb.
class LM_EXPORT YCrCb : public PixelType {
 public:
  YCrCb();
  explicit YCrCb(const PixelTypeID& id);
};

/// YUV 4:1:1, four pixels in the bytes U Y0 Y1 V Y2 Y3.
class LM_EXPORT YUV8_411 : public PixelType {
 public:
  YUV8_411();
  explicit YUV8_411(const PixelTypeID& id);
};

/// YUV 4:4:4, the bytes U Y V.
class LM_EXPORT YUV8_444_GEV : public PixelType {
 public:
  YUV8_444_GEV();
  explicit YUV8_444_GEV(const PixelTypeID& id);
};

/// YUV 4:2:2, two pixels in the bytes U Y0 V Y1.
class LM_EXPORT YUV8_422_GEV : public PixelType {
 public:
  YUV8_422_GEV();
  explicit YUV8_422_GEV(const PixelTypeID& id);
};

}  // namespace LmImagingLib
