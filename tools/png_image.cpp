#include "png_image.h"

#include <algorithm>
#include <stdexcept>

#ifdef LM_HAS_PNG

#include <png.h>

namespace LmTool {

namespace {

// The reference decoder, whose errors are jumps: a function that may be left by one has no objects to destroy.
class PngReader {
 public:
  explicit PngReader(const Bytes& file) : mRest(file.data()), mRestBytes(file.size()) {
    mPng = png_create_read_struct(PNG_LIBPNG_VER_STRING, this, OnError, [](png_structp, png_const_charp) {});
    if (mPng != nullptr) mInfo = png_create_info_struct(mPng);
    if (mInfo == nullptr) throw std::bad_alloc();
  }
  PngReader(const PngReader&) = delete;
  PngReader& operator=(const PngReader&) = delete;
  ~PngReader() { png_destroy_read_struct(&mPng, &mInfo, nullptr); }

  Picture Read() {
    if (!ReadHeader()) throw std::runtime_error(mMessage);
    Picture picture{{png_get_image_width(mPng, mInfo), png_get_image_height(mPng, mInfo)}, mGray, mBits, {}};
    if (!IsAllowed(picture.size)) {
      throw std::runtime_error("it is " + picture.size.Text() + "; allowed: " + AllowedSizes());
    }
    const std::size_t rowBytes = picture.RowBytes();
    picture.pixels.resize(rowBytes * picture.size.height);
    if (!ReadPixels(picture.pixels.data(), rowBytes, picture.size.height)) throw std::runtime_error(mMessage);
    return picture;
  }

 private:
  bool ReadHeader() {
    if (setjmp(png_jmpbuf(mPng)) != 0) return false;  // NOLINT(cert-err52-cpp)
    png_set_read_fn(mPng, this, TakeBytes);
    png_set_user_limits(mPng, PNG_UINT_31_MAX, PNG_UINT_31_MAX);  // sizes are checked before memory is taken
    png_read_info(mPng, mInfo);
    mGray = (png_get_color_type(mPng, mInfo) & PNG_COLOR_MASK_COLOR) == 0;
    mBits = png_get_bit_depth(mPng, mInfo) == 16 ? 16 : 8;
    return true;
  }

  bool ReadPixels(std::uint8_t* pixels, std::size_t rowBytes, std::size_t height) {
    if (setjmp(png_jmpbuf(mPng)) != 0) return false;  // NOLINT(cert-err52-cpp)
    if (mBits == 16) png_set_swap(mPng);              // the file has the high byte first
    png_set_strip_alpha(mPng);
    if (mGray) {
      png_set_expand_gray_1_2_4_to_8(mPng);
    } else {
      png_set_palette_to_rgb(mPng);
      png_set_bgr(mPng);
    }
    const int passes = png_set_interlace_handling(mPng);
    png_read_update_info(mPng, mInfo);
    if (png_get_rowbytes(mPng, mInfo) != rowBytes) png_error(mPng, "its rows are of no known form");
    for (int pass = 0; pass < passes; ++pass) {
      for (std::size_t y = 0; y < height; ++y) png_read_row(mPng, pixels + y * rowBytes, nullptr);
    }
    png_read_end(mPng, nullptr);  // fails if the file was cut off after its pixels
    return true;
  }

  static void TakeBytes(png_structp png, png_bytep to, std::size_t count) {
    PngReader& reader = *static_cast<PngReader*>(png_get_io_ptr(png));
    if (count > reader.mRestBytes) png_error(png, "the file ends too early");
    std::copy_n(reader.mRest, count, to);
    reader.mRest += count;
    reader.mRestBytes -= count;
  }

  static void OnError(png_structp png, png_const_charp message) {
    static_cast<PngReader*>(png_get_error_ptr(png))->mMessage = message;
    png_longjmp(png, 1);
  }

  png_structp mPng = nullptr;
  png_infop mInfo = nullptr;
  const std::uint8_t* mRest;
  std::size_t mRestBytes;
  bool mGray = false;
  unsigned mBits = 8;
  std::string mMessage;
};

// The encoder, which jumps as the decoder does. Files say nothing about the light that their samples stand for.
class PngWriter {
 public:
  PngWriter() {
    mPng = png_create_write_struct(PNG_LIBPNG_VER_STRING, this, OnError, [](png_structp, png_const_charp) {});
    if (mPng != nullptr) mInfo = png_create_info_struct(mPng);
    if (mInfo == nullptr) throw std::bad_alloc();
  }
  PngWriter(const PngWriter&) = delete;
  PngWriter& operator=(const PngWriter&) = delete;
  ~PngWriter() { png_destroy_write_struct(&mPng, &mInfo); }

  Bytes Write(const Picture& picture) {
    if (!WritePicture(picture)) throw std::runtime_error("cannot make a PNG image: " + mMessage);
    return std::move(mFile);
  }

 private:
  bool WritePicture(const Picture& picture) {
    if (setjmp(png_jmpbuf(mPng)) != 0) return false;  // NOLINT(cert-err52-cpp)
    png_set_write_fn(mPng, this, KeepBytes, [](png_structp) {});
    png_set_compression_level(mPng, kCompression);
    png_set_IHDR(mPng, mInfo, static_cast<png_uint_32>(picture.size.width),
                 static_cast<png_uint_32>(picture.size.height), static_cast<int>(picture.bits),
                 picture.gray ? PNG_COLOR_TYPE_GRAY : PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_BASE,
                 PNG_FILTER_TYPE_BASE);
    png_write_info(mPng, mInfo);
    if (!picture.gray) png_set_bgr(mPng);
    if (picture.bits == 16) png_set_swap(mPng);
    for (std::size_t y = 0; y < picture.size.height; ++y) {
      png_write_row(mPng, picture.pixels.data() + y * picture.RowBytes());
    }
    png_write_end(mPng, nullptr);
    return true;
  }

  static void KeepBytes(png_structp png, png_bytep from, std::size_t count) {
    Bytes& file = static_cast<PngWriter*>(png_get_io_ptr(png))->mFile;
    bool kept = true;
    try {
      file.insert(file.end(), from, from + count);
    } catch (const std::bad_alloc&) {
      kept = false;
    }
    if (!kept) png_error(png, "there is not enough memory");
  }

  static void OnError(png_structp png, png_const_charp message) {
    static_cast<PngWriter*>(png_get_error_ptr(png))->mMessage = message;
    png_longjmp(png, 1);
  }

  static constexpr int kCompression = 3;  // a third of the time of the usual 6, for files a tenth larger

  png_structp mPng = nullptr;
  png_infop mInfo = nullptr;
  Bytes mFile;
  std::string mMessage;
};

}  // namespace

Bytes EncodePng(const Picture& picture) { return PngWriter().Write(picture); }

Picture DecodePng(const Bytes& file) { return PngReader(file).Read(); }

}  // namespace LmTool

#else

namespace LmTool {

Bytes EncodePng(const Picture&) {
  throw std::runtime_error("cannot make a PNG image: this lmimaging was built without libpng");
}

Picture DecodePng(const Bytes&) { throw std::runtime_error("this lmimaging was built without libpng"); }

}  // namespace LmTool

#endif
