#pragma once

/// @file
/// The interface for C, and for the languages that call C. docs/c.md has short declarations for C#, Rust and Python.
///
/// **Structs** begin with their own size in bytes: `LmiImage image = {.structSize = sizeof image};`. Zero is the
/// default of every other member, unless its text says otherwise. Later versions add members at the end, and programs
/// that were compiled before keep working. A struct that is newer than the library is accepted as long as the members
/// that the library does not know are zero.
///
/// **Errors.** A function that returns an `LmiCode` changes nothing that its pointers lead to unless it returns
/// `LMI_OK`. `lmiMessage` then returns a sentence that names the argument, its value and the values that are allowed.
/// Constants of C++ in it have the same meaning as those of this header: `kBilinear` is `LMI_BILINEAR`. No exception
/// leaves a function.
///
/// **Threads.** Any number of threads may call any function at the same time. A filter must not be changed or freed
/// while another thread uses it, and a development must not be freed.
///
/// **Formats.** The first call registers the extended formats in the registry of the process, as
/// `LmImagingLib::RegisterExtendedFormats` does.

#include <stddef.h>  // NOLINT(modernize-deprecated-headers): this is C
#include <stdint.h>  // NOLINT(modernize-deprecated-headers)

#include "LmBaseLib/Export.h"

#ifdef __cplusplus
extern "C" {
#endif

// NOLINTBEGIN(modernize-use-using,modernize-redundant-void-arg,readability-identifier-naming): this is C

/// What a function reports: `LMI_OK`, another one of these codes, or the code of an application's own converter.
typedef int32_t LmiCode;

/// The codes.
enum LmiCodes {
  LMI_FAILED = -2,             ///< an error that the library does not expect
  LMI_NOT_FOUND = -1,          ///< no format has the name or number; there is none at the index
  LMI_OK = 0,                  ///< success
  LMI_INVALID_PARAMETER = 18,  ///< an argument is refused
  LMI_NOT_ENOUGH_MEMORY = 24,  ///< memory ran out
  LMI_NOT_IMPLEMENTED = 26     ///< no converter for the pair of types
};

/// Bits of flags. `LmImagingLib/PixelConverter.h` describes them in `ConversionFlags`, under the same names.
enum LmiFlags {
  LMI_FIELD_ORDER = 0x01,          ///< interlaced sources: the second half of the buffer has the even lines
  LMI_BAYER_GR = 0x10,             ///< a mosaic that begins with G R / B G
  LMI_BAYER_GB = 0x20,             ///< G B / R G
  LMI_BAYER_RG = 0x40,             ///< R G / G B
  LMI_BAYER_BG = 0x80,             ///< B G / G R
  LMI_BILINEAR = 0x100,            ///< demosaic by means of 3 x 3 samples; no method: by blocks of 2 x 2 equal pixels
  LMI_GRADIENT_CORRECTED = 0x200,  ///< demosaic by linear filters of 5 x 5 samples
  LMI_ADAPTIVE = 0x400,            ///< demosaic along edges: the best pictures
  LMI_FILTER_FIRST = 0x1000,       ///< the filter changes the samples of a mosaic before they are demosaiced
  LMI_OPAQUE = 0x2000,             ///< the fourth channel is all ones, not 0
  LMI_FULL_RANGE = 0x4000,         ///< YUV of the full range, not the studio range
  LMI_BT709 = 0x8000,              ///< YUV of ITU-R BT.709, not BT.601
  LMI_HALF_SIZE = 0x10000,         ///< each 2 x 2 cell of a mosaic becomes one pixel
  LMI_READ_LATER = 0x20000,        ///< a hint: the destination will not be read soon, so it may go past the caches
  LMI_BLOCKS = 0x40000000          ///< only for `LmiDevelopmentSettings::method`: blocks of 2 x 2 equal pixels
};

/// The bits that destinations of more than 8 bits receive.
enum LmiDepth {
  LMI_DEPTH_FULL = 0,       ///< all that the source has, and the destination has room for
  LMI_DEPTH_EIGHT_BITS = 1  ///< the upper 8 of each colour value
};

/// The curves from light to the values of a picture.
enum LmiToneKind {
  LMI_TONE_DEFAULT = 0,  ///< sRGB for developments, linear for filters
  LMI_TONE_LINEAR = 1,   ///< values are proportional to light
  LMI_TONE_SRGB = 2,     ///< IEC 61966-2-1
  LMI_TONE_BT709 = 3,    ///< ITU-R BT.709
  LMI_TONE_GAMMA = 4     ///< light to the power of 1 / gamma
};

/// How gray is found for the white balance.
enum LmiWhiteBalanceMethod {
  LMI_GRAY_WORLD = 0,   ///< the mean of the picture
  LMI_WHITE_PATCH = 1,  ///< the brightest hundredth of each colour
  LMI_RECTANGLE = 2     ///< the mean of a rectangle that is known to be gray
};

/// A colour channel.
enum LmiChannel {
  LMI_RED = 0,    ///< red
  LMI_GREEN = 1,  ///< green
  LMI_BLUE = 2    ///< blue
};

/// The version of the library that is loaded, such as "1.2.3".
LM_EXPORT const char* lmiVersion(void);

/// The message of the last call of this thread that returned an `LmiCode`. It is empty if the call succeeded and has
/// nothing to say. It is valid until the thread's next such call, and cut after 1023 bytes. Each thread has its own:
/// read it on the thread that made the call.
LM_EXPORT const char* lmiMessage(void);

/// A pixel format, as cameras and the library name it. Strings live as long as the library.
typedef struct LmiFormat {
  size_t structSize;       ///< `sizeof(LmiFormat)`, set by the caller
  int64_t type;            ///< the pixel type, for `LmiImage::type`
  const char* name;        ///< the name that the type is registered with
  const char* pfncName;    ///< the name by the GenICam Pixel Format Naming Convention, such as "BayerRG12p", or null
  const char* fourccName;  ///< the fourcc of Video4Linux as a text, such as "pRAA", or null
  uint32_t pfnc;           ///< the code of the naming convention, or 0
  uint32_t fourcc;         ///< the fourcc, or 0
  uint32_t flags;          ///< bits of `LmiFlags`: the layout of a mosaic, range and matrix of YUV
  uint32_t isMosaic;       ///< 1 for a Bayer mosaic, else 0
  uint32_t sampleDepth;    ///< the bits of a sample, in whose steps black levels count; 0 for types of applications
  uint32_t reserved;       ///< 0
} LmiFormat;

/// Finds a format by the name that cameras have for it, in any case: of the naming convention, a fourcc, or the name of
/// a registered type. `flags` are 0 where the name does not say the layout of a mosaic.
/// @param format  its `structSize` is set; receives the format
/// @return `LMI_NOT_FOUND`, with the reason as message
LM_EXPORT LmiCode lmiFindFormat(const char* name, LmiFormat* format);
/// Finds the format of a pixel type.
/// @param flags  bits of `LmiFlags` that choose between its names: the layout of a mosaic, range and matrix of YUV
LM_EXPORT LmiCode lmiFindFormatByType(int64_t type, uint32_t flags, LmiFormat* format);
/// Finds the format of a code of the naming convention, which is the value of a camera's PixelFormat feature.
LM_EXPORT LmiCode lmiFindFormatByPFNC(uint32_t code, LmiFormat* format);
/// Finds the format of a fourcc of Video4Linux, whose first character is in the low bits.
LM_EXPORT LmiCode lmiFindFormatByFourcc(uint32_t fourcc, LmiFormat* format);
/// The index-th registered pixel type, in ascending order; `LMI_NOT_FOUND` past the last. Mosaics come without a
/// layout, and so without names of cameras.
LM_EXPORT LmiCode lmiEnumTypes(size_t index, LmiFormat* format);
/// The index-th format of the naming convention; `LMI_NOT_FOUND` past the last.
LM_EXPORT LmiCode lmiEnumPFNC(size_t index, LmiFormat* format);
/// The index-th fourcc of Video4Linux; `LMI_NOT_FOUND` past the last.
LM_EXPORT LmiCode lmiEnumFourccs(size_t index, LmiFormat* format);
/// The index-th pixel type that `source` converts to, in ascending order; `LMI_NOT_FOUND` past the last.
LM_EXPORT LmiCode lmiEnumDestinations(int64_t source, size_t index, int64_t* destination);

/// The bytes of an image, from its first byte to the last byte of its last line.
/// @param width, height  in pixels
/// @param lineSize  bytes from the beginning of a line to that of the next; 0 for lines without padding
/// @param bytes  receives the size
LM_EXPORT LmiCode lmiRequiredSize(int64_t type, size_t width, size_t height, size_t lineSize, size_t* bytes);

/// An image in the caller's memory. Calls never write to the image that is their source. A plane of a planar image
/// begins `lineSize` x `height` bytes after the previous one.
typedef struct LmiImage {
  size_t structSize;  ///< `sizeof(LmiImage)`
  int64_t type;       ///< a pixel type
  void* data;         ///< the first byte of the first line
  size_t size;        ///< bytes that `data` has, at least those of `lmiRequiredSize`
  size_t width;       ///< pixels
  size_t height;      ///< lines
  size_t lineSize;    ///< bytes from the beginning of a line to that of the next; 0 for lines without padding
} LmiImage;

/// A part of a conversion, for an executor to run.
typedef void (*LmiJob)(void* jobContext, size_t index);
/// Runs `job(jobContext, 0)` to `job(jobContext, count - 1)`, each exactly once, on threads of its choice, and returns
/// after all of them have returned. It neither throws nor jumps. Jobs do not wait for each other.
typedef void (*LmiExecutor)(void* context, size_t count, LmiJob job, void* jobContext);

/// Lookup tables of the colours; see `lmiCreateFilter`.
typedef struct LmiFilter LmiFilter;

/// How to convert or to develop.
typedef struct LmiOptions {
  size_t structSize;        ///< `sizeof(LmiOptions)`
  const LmiFilter* filter;  ///< looks every colour value up; null changes none. Developments refuse it.
  LmiExecutor executor;     ///< runs the parts of large images; null starts threads for the call
  void* executorContext;    ///< the first argument of `executor`
  size_t threads;           ///< the most threads that may work on the image; 0 is 1
  size_t firstLine;         ///< the first line to convert
  size_t lines;             ///< lines to convert; 0 for all from `firstLine` on
  uint32_t flags;           ///< bits of `LmiFlags`; a mosaic that becomes colour needs its layout
  uint32_t depth;           ///< an `LmiDepth`. Developments have their own, and refuse another than 0 here.
} LmiOptions;

/// Checks its arguments and converts an image, as `LmImagingLib::ConvertImage` does. It refuses what that refuses, and
/// neither reads nor writes a byte outside the pixels of the two images.
/// @param destination  of the width and height of `source`; with `LMI_HALF_SIZE` half of both. The images do not
///   overlap.
/// @param options  null for the defaults
LM_EXPORT LmiCode lmiConvert(const LmiImage* source, const LmiImage* destination, const LmiOptions* options);

/// A curve from light to values: one of `LmiToneKind`.
typedef struct LmiTone {
  uint32_t kind;      ///< an `LmiToneKind`
  uint32_t reserved;  ///< 0
  double gamma;       ///< of `LMI_TONE_GAMMA`, more than 0; 0 is 2.2
} LmiTone;

/// The value of a curve for an amount of light, both 0 (black) to 1 (white).
/// @param tone  its kind is none of `LMI_TONE_DEFAULT`
/// @param value  receives the value
LM_EXPORT LmiCode lmiToneAt(const LmiTone* tone, double light, double* value);

/// Makes a filter that changes nothing: a table of 1 << `bitSize` entries for each colour, 1 to 16 bits. Conversions
/// derive tables for samples of other depths.
/// @param filter  receives the filter, which the caller frees by `lmiFreeFilter`
LM_EXPORT LmiCode lmiCreateFilter(uint32_t bitSize, LmiFilter** filter);
/// Frees a filter; null does nothing.
LM_EXPORT void lmiFreeFilter(LmiFilter* filter);
/// Makes each entry i of the tables min(gain * i + offset, greatest entry).
/// @param gains  three, of red, green and blue, 0 or more
/// @param offsets  three, in steps of the table; null for none
LM_EXPORT LmiCode lmiSetGains(LmiFilter* filter, const double* gains, const uint16_t* offsets);
/// Sets the table of a colour.
/// @param channel  an `LmiChannel`
/// @param values  1 << bit size of them, each less than that
/// @param count  of the values
LM_EXPORT LmiCode lmiSetTable(LmiFilter* filter, uint32_t channel, const uint16_t* values, size_t count);

/// Black level, gain, offset and tone, each of red, green and blue in this order.
typedef struct LmiCurve {
  size_t structSize;  ///< `sizeof(LmiCurve)`
  double black[3];    ///< the levels of black in steps of the table, 0 or more; fractions count
  double gains[3];    ///< 0 or more; three zeros are three ones
  double offsets[3];  ///< added after the gain, in steps of the table
  LmiTone tone;       ///< the curve from light to values
} LmiCurve;

/// Makes the tables those of a curve: the tone of max(i - black, 0) * gain + offset.
LM_EXPORT LmiCode lmiSetCurve(LmiFilter* filter, const LmiCurve* curve);

/// How the frames of a camera become pictures, in the order of the members. docs/development.md has the formulas.
typedef struct LmiDevelopmentSettings {
  size_t structSize;         ///< `sizeof(LmiDevelopmentSettings)`
  uint32_t correctsDefects;  ///< 1 to correct defect pixels of mosaics, else 0
  uint32_t defectThreshold;  ///< of defects, in steps of the samples; 0 is 1/64 of their range
  double black[3];           ///< the levels of black of red, green and blue, in steps of the samples
  double gains[3];           ///< their gains, 0 to 1000; three zeros are three ones
  uint32_t method;           ///< of demosaicing: one of `LmiFlags`, or `LMI_BLOCKS`; 0 is `LMI_ADAPTIVE`
  uint32_t depth;            ///< an `LmiDepth`
  double matrix[9];          ///< the colour matrix, row by row, in linear light; nine zeros are the identity
  LmiTone tone;              ///< the curve from light to values of the picture
} LmiDevelopmentSettings;

/// Settings that were checked, with their tables. Any number of threads may develop with one at the same time.
typedef struct LmiDevelopment LmiDevelopment;

/// Makes a development.
/// @param settings  copied; null for the defaults
/// @param development  receives it; the caller frees it by `lmiFreeDevelopment`
LM_EXPORT LmiCode lmiCreateDevelopment(const LmiDevelopmentSettings* settings, LmiDevelopment** development);
/// Frees a development; null does nothing.
LM_EXPORT void lmiFreeDevelopment(LmiDevelopment* development);
/// Makes a picture of a mosaic or of an image in colour, as `LmImagingLib::Develop` does.
/// @param source  the frame
/// @param destination  of the same width and height; of half of both for the method `LMI_HALF_SIZE`
/// @param options  null for the defaults. `flags` describe the frame: the layout of a mosaic, `LMI_FIELD_ORDER`,
///   `LMI_FULL_RANGE`, `LMI_BT709`; `LMI_OPAQUE` and `LMI_READ_LATER`.
LM_EXPORT LmiCode lmiDevelop(const LmiDevelopment* development, const LmiImage* source, const LmiImage* destination,
                             const LmiOptions* options);

/// How to find the colour of the light in a frame.
typedef struct LmiWhiteBalanceOptions {
  size_t structSize;  ///< `sizeof(LmiWhiteBalanceOptions)`
  uint32_t method;    ///< an `LmiWhiteBalanceMethod`
  uint32_t flags;     ///< bits of `LmiFlags` that describe the frame, as in `lmiDevelop`
  size_t x;           ///< the first column of the rectangle
  size_t y;           ///< its first line
  size_t width;       ///< its columns
  size_t height;      ///< its lines
  double black[3];    ///< the levels of black of red, green and blue, in steps of the samples
} LmiWhiteBalanceOptions;

/// An estimate of the white balance.
typedef struct LmiWhiteBalance {
  size_t structSize;     ///< `sizeof(LmiWhiteBalance)`, set by the caller
  double gains[3];       ///< of red, green and blue; 1 where none were found
  uint64_t cells;        ///< the cells that were looked at
  uint64_t usableCells;  ///< those that are neither too dark nor overexposed
  uint32_t isFound;      ///< 1 if gains were found; 0 if the gains are 1, and `lmiMessage` returns the reason
  uint32_t reserved;     ///< 0
} LmiWhiteBalance;

/// Estimates the white balance of a frame, as `LmImagingLib::EstimateWhiteBalance` does.
/// @param options  null for gray world, which suits images in colour; a mosaic needs its layout in the flags
/// @param estimate  its `structSize` is set; receives the estimate
/// @return `LMI_OK` also if no gains were found
LM_EXPORT LmiCode lmiEstimateWhiteBalance(const LmiImage* source, const LmiWhiteBalanceOptions* options,
                                          LmiWhiteBalance* estimate);

// NOLINTEND(modernize-use-using,modernize-redundant-void-arg,readability-identifier-naming)

#ifdef __cplusplus
}
#endif
