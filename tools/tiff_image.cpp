#include "tiff_image.h"

#include <stdexcept>

#ifdef LM_HAS_TIFF

#include <tiffio.h>

#include <algorithm>
#include <array>
#include <cstdarg>
#include <cstdio>
#include <memory>
#include <vector>

namespace LmTool {

namespace {

// A file in memory, as libtiff reads and writes it, and the first fault that was found.
struct Memory {
  Bytes bytes;
  std::size_t at = 0;
  std::string fault;
};

Memory& MemoryOf(thandle_t handle) { return *static_cast<Memory*>(handle); }

tmsize_t Read(thandle_t handle, void* to, tmsize_t count) {
  Memory& memory = MemoryOf(handle);
  const std::size_t rest = memory.bytes.size() - std::min(memory.at, memory.bytes.size());
  const std::size_t part = std::min(rest, static_cast<std::size_t>(count));
  std::copy_n(memory.bytes.data() + memory.at - (part == 0 ? memory.at : 0), part, static_cast<std::uint8_t*>(to));
  memory.at += part;
  return static_cast<tmsize_t>(part);
}

tmsize_t Write(thandle_t handle, void* from, tmsize_t count) {
  Memory& memory = MemoryOf(handle);
  const auto size = static_cast<std::size_t>(count);
  try {
    memory.bytes.resize(std::max(memory.bytes.size(), memory.at + size));
  } catch (const std::bad_alloc&) {  // may not pass the C code
    return -1;
  }
  std::copy_n(static_cast<const std::uint8_t*>(from), size, memory.bytes.data() + memory.at);
  memory.at += size;
  return count;
}

toff_t Seek(thandle_t handle, toff_t offset, int whence) {
  Memory& memory = MemoryOf(handle);
  const std::size_t base = whence == SEEK_SET ? 0 : whence == SEEK_CUR ? memory.at : memory.bytes.size();
  memory.at = base + static_cast<std::size_t>(offset);
  return memory.at;
}

int Close(thandle_t) { return 0; }
toff_t Size(thandle_t handle) { return MemoryOf(handle).bytes.size(); }

void KeepFault(thandle_t handle, const char*, const char* format, va_list arguments) {
  if (handle == nullptr || !MemoryOf(handle).fault.empty()) return;
  std::array<char, 256> text{};
  std::vsnprintf(text.data(), text.size(), format, arguments);
  MemoryOf(handle).fault = text.data();
}

struct TiffCloser {
  void operator()(TIFF* tiff) const { TIFFClose(tiff); }
};
using Tiff = std::unique_ptr<TIFF, TiffCloser>;

[[noreturn]] void Fail(const Memory& memory, const char* fault) {
  throw std::runtime_error(memory.fault.empty() ? fault : memory.fault);
}

Tiff Open(Memory& memory, const char* mode) {
  // They are the process's, not the file's. Nothing is printed.
  static const bool isSet =
      (TIFFSetErrorHandler(nullptr), TIFFSetWarningHandler(nullptr), TIFFSetErrorHandlerExt(KeepFault), true);
  static_cast<void>(isSet);
  Tiff tiff(TIFFClientOpen("picture", mode, &memory, Read, Write, Seek, Close, Size, nullptr, nullptr));
  if (tiff == nullptr) Fail(memory, "it does not begin as a TIFF file does");
  return tiff;
}

template <class Value>
Value FieldOf(const Tiff& tiff, std::uint32_t tag) {
  Value value = 0;
  TIFFGetFieldDefaulted(tiff.get(), tag, &value);
  return value;
}

// A property of a file that pictures cannot have.
void Refuse(bool refused, const std::string& what, const std::string& allowed) {
  if (refused) throw std::runtime_error("it " + what + "; allowed: " + allowed);
}

constexpr std::uint16_t kMostSamples = 64;

struct Form {
  std::uint16_t bits, samples, photometric;
  bool separate;
};

Form CheckedForm(const Tiff& tiff) {
  const auto field = [&](std::uint32_t tag) { return FieldOf<std::uint16_t>(tiff, tag); };
  const Form form{field(TIFFTAG_BITSPERSAMPLE), field(TIFFTAG_SAMPLESPERPIXEL), field(TIFFTAG_PHOTOMETRIC),
                  field(TIFFTAG_PLANARCONFIG) == PLANARCONFIG_SEPARATE};
  const auto format = field(TIFFTAG_SAMPLEFORMAT);
  const auto compression = field(TIFFTAG_COMPRESSION);
  const bool isGray = form.photometric == PHOTOMETRIC_MINISBLACK || form.photometric == PHOTOMETRIC_MINISWHITE;
  const bool isColor = form.photometric == PHOTOMETRIC_RGB && form.samples >= 3;
  Refuse(form.bits != 8 && form.bits != 16, "has " + std::to_string(form.bits) + " bits a sample", "8 or 16");
  Refuse(format != SAMPLEFORMAT_UINT && format != SAMPLEFORMAT_VOID, "has samples that are no whole numbers from 0",
         "unsigned whole numbers");
  Refuse(!isGray && !isColor,
         "has colours of kind " + std::to_string(form.photometric) + " in " + std::to_string(form.samples) + " samples",
         "gray and RGB");
  // More would only cost memory: samples after the colours are never read.
  Refuse(form.samples > kMostSamples, "has " + std::to_string(form.samples) + " samples a pixel",
         "1 to " + std::to_string(kMostSamples));
  Refuse(TIFFIsTiled(tiff.get()) != 0, "has tiles", "strips");
  Refuse(field(TIFFTAG_ORIENTATION) != ORIENTATION_TOPLEFT, "is turned or mirrored", "rows from the top left corner");
  Refuse(TIFFIsCODECConfigured(compression) == 0, "is compressed by method " + std::to_string(compression),
         "the methods that libtiff was built with");
  return form;
}

std::uint16_t SampleAt(const std::vector<std::uint16_t>& row, std::size_t index, unsigned bits) {
  return bits == 16 ? row[index] : reinterpret_cast<const std::uint8_t*>(row.data())[index];
}

}  // namespace

Bytes EncodeTiff(const Picture& picture) {
  Memory memory;
  {
    const Tiff tiff = Open(memory, "wl");
    const auto set = [&](std::uint32_t tag, auto value) { TIFFSetField(tiff.get(), tag, value); };
    set(TIFFTAG_IMAGEWIDTH, static_cast<std::uint32_t>(picture.size.width));
    set(TIFFTAG_IMAGELENGTH, static_cast<std::uint32_t>(picture.size.height));
    set(TIFFTAG_BITSPERSAMPLE, static_cast<int>(picture.bits));
    set(TIFFTAG_SAMPLESPERPIXEL, static_cast<int>(picture.Channels()));
    set(TIFFTAG_PHOTOMETRIC, picture.gray ? PHOTOMETRIC_MINISBLACK : PHOTOMETRIC_RGB);
    set(TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
    set(TIFFTAG_COMPRESSION, COMPRESSION_NONE);
    set(TIFFTAG_ORIENTATION, ORIENTATION_TOPLEFT);
    set(TIFFTAG_ROWSPERSTRIP, TIFFDefaultStripSize(tiff.get(), 0));
    set(TIFFTAG_RESOLUTIONUNIT, RESUNIT_INCH);
    set(TIFFTAG_XRESOLUTION, 72.0);  // a picture of no known size must claim one
    set(TIFFTAG_YRESOLUTION, 72.0);
    std::vector<std::uint16_t> words(picture.size.width * picture.Channels());
    Bytes bytes(words.size());
    for (std::size_t y = 0; y < picture.size.height; ++y) {
      const std::uint8_t* const row = &picture.pixels[y * picture.RowBytes()];
      for (std::size_t i = 0; i < words.size(); ++i) {
        const std::size_t from = picture.gray ? i : i / 3 * 3 + 2 - i % 3;
        if (picture.bits == 16) {
          words[i] = static_cast<std::uint16_t>(row[2 * from] | row[2 * from + 1] << 8);
        } else {
          bytes[i] = row[from];
        }
      }
      void* const line = picture.bits == 16 ? static_cast<void*>(words.data()) : bytes.data();
      if (TIFFWriteScanline(tiff.get(), line, static_cast<std::uint32_t>(y), 0) < 0) break;
    }
    if (TIFFFlush(tiff.get()) == 0) Fail(memory, "cannot make a TIFF image");
  }
  if (!memory.fault.empty()) Fail(memory, "");
  return std::move(memory.bytes);
}

Picture DecodeTiff(const Bytes& file) {
  Memory memory{file, 0, {}};
  const Tiff tiff = Open(memory, "rm");
  Picture picture{{FieldOf<std::uint32_t>(tiff, TIFFTAG_IMAGEWIDTH), FieldOf<std::uint32_t>(tiff, TIFFTAG_IMAGELENGTH)},
                  false,
                  8,
                  {}};
  if (!IsAllowed(picture.size))
    throw std::runtime_error("it is " + picture.size.Text() + "; allowed: " + AllowedSizes());
  const Form form = CheckedForm(tiff);
  picture.bits = form.bits;
  picture.gray = form.photometric != PHOTOMETRIC_RGB;
  picture.pixels.resize(picture.RowBytes() * picture.size.height);
  const unsigned inverted = form.photometric == PHOTOMETRIC_MINISWHITE ? (1U << form.bits) - 1 : 0;
  const std::size_t channels = picture.Channels();
  const std::size_t rowSamples = picture.size.width * (form.separate ? 1 : form.samples);
  const auto lineBytes = static_cast<std::size_t>(TIFFScanlineSize64(tiff.get()));
  if (lineBytes != rowSamples * picture.SampleBytes()) throw std::runtime_error("its rows have no known form");
  std::vector<std::uint16_t> row(rowSamples);

  // Compressed rows are read in their order: of separate planes one after the other.
  for (std::size_t plane = 0; plane < (form.separate ? channels : 1); ++plane) {
    for (std::size_t y = 0; y < picture.size.height; ++y) {
      if (TIFFReadScanline(tiff.get(), row.data(), static_cast<std::uint32_t>(y), static_cast<std::uint16_t>(plane)) <
          0) {
        Fail(memory, "its pixels cannot be read");
      }
      std::uint8_t* const out = &picture.pixels[y * picture.RowBytes()];
      for (std::size_t i = 0; i < picture.size.width * (form.separate ? 1 : channels); ++i) {
        const std::size_t x = form.separate ? i : i / channels;
        const std::size_t channel = form.separate ? plane : i % channels;
        const unsigned value = SampleAt(row, form.separate ? x : x * form.samples + channel, form.bits) ^ inverted;
        const std::size_t place = (x * channels + channels - 1 - channel) * picture.SampleBytes();
        out[place] = static_cast<std::uint8_t>(value);
        if (form.bits == 16) out[place + 1] = static_cast<std::uint8_t>(value >> 8);
      }
    }
  }
  return picture;
}

}  // namespace LmTool

#else

namespace LmTool {

Bytes EncodeTiff(const Picture&) {
  throw std::runtime_error("cannot make a TIFF image: this lmimaging was built without libtiff");
}

Picture DecodeTiff(const Bytes&) { throw std::runtime_error("this lmimaging was built without libtiff"); }

}  // namespace LmTool

#endif
