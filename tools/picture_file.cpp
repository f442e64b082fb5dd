#include "picture_file.h"

#include <algorithm>
#include <cctype>
#include <iterator>

#include "bmp.h"
#include "error.h"
#include "file_io.h"
#include "png_image.h"
#include "pnm.h"
#include "tiff_image.h"

namespace LmTool {

namespace {

struct Codec {
  const char* ending;
  const char* name;
  Bytes (*encode)(const Picture& picture);
  Picture (*decode)(const Bytes& file);
  PictureFormat format;
  bool holdsWords, isGrayOnly;
};
constexpr Codec kCodecs[] = {{".png", "PNG", EncodePng, DecodePng, PictureFormat::kPng, true, false},
                             {".tif", "TIFF", EncodeTiff, DecodeTiff, PictureFormat::kTiff, true, false},
                             {".tiff", "TIFF", EncodeTiff, DecodeTiff, PictureFormat::kTiff, true, false},
                             {".pgm", "PGM", EncodePgm, DecodePnm, PictureFormat::kPgm, true, true},
                             {".ppm", "PPM", EncodePpm, DecodePnm, PictureFormat::kPpm, true, false},
                             {".bmp", "BMP", EncodeBmp, DecodeBmp, PictureFormat::kBmp, false, false}};

// Who writes to such a name wants no raw frame in it.
constexpr const char* kOtherPictures[] = {
    ".jpg", ".jpeg", ".jpe",  ".jfif", ".jp2",  ".j2k",  ".jxl",  ".webp", ".gif", ".apng", ".exr",
    ".hdr", ".dng",  ".heic", ".heif", ".avif", ".svg",  ".pdf",  ".eps",  ".ico", ".icns", ".psd",
    ".tga", ".pcx",  ".pbm",  ".pnm",  ".pam",  ".pfm",  ".fits", ".xcf",  ".cr2", ".nef",  ".arw",
    ".mp4", ".m4v",  ".mov",  ".avi",  ".mkv",  ".webm", ".mpg",  ".y4m"};

const Codec& CodecOf(PictureFormat format) {
  return *std::find_if(std::begin(kCodecs), std::end(kCodecs), [=](const Codec& c) { return c.format == format; });
}

std::string EndingOf(const std::filesystem::path& path) {
  std::string ending = path.extension().string();
  std::transform(ending.begin(), ending.end(), ending.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return ending;
}

constexpr std::size_t kMostFileBytes = kMostPixels * 8 + (std::size_t{1} << 20);  // the largest picture and its headers

}  // namespace

std::optional<PictureFormat> PictureFormatOf(const std::filesystem::path& path) {
  const std::string ending = EndingOf(path);
  const auto* const codec =
      std::find_if(std::begin(kCodecs), std::end(kCodecs), [&](const Codec& c) { return ending == c.ending; });
  if (codec == std::end(kCodecs)) return std::nullopt;
  return codec->format;
}

std::string PictureEndings() {
  std::string endings;
  for (const Codec& codec : kCodecs) endings += (endings.empty() ? "" : ", ") + std::string(codec.ending);
  return endings;
}

bool HoldsWords(PictureFormat format) { return CodecOf(format).holdsWords; }

bool IsGrayOnly(PictureFormat format) { return CodecOf(format).isGrayOnly; }

void CheckEnding(const std::string& argument, const std::filesystem::path& path) {
  const std::string ending = EndingOf(path);
  if (std::find(std::begin(kOtherPictures), std::end(kOtherPictures), ending) == std::end(kOtherPictures)) return;
  throw ToolError(argument, "'" + path.string() + "' ends in " + ending +
                                ", which is neither a picture of a known kind nor a raw frame; allowed: " +
                                PictureEndings() + " for pictures, another ending such as .raw for raw frames");
}

Bytes EncodePicture(PictureFormat format, const Picture& picture) { return CodecOf(format).encode(picture); }

Picture ReadPicture(const std::string& argument, const std::filesystem::path& path) {
  const Codec& codec = CodecOf(*PictureFormatOf(path));
  const auto refuse = [&](const std::string& reason) {
    throw ToolError(argument, "cannot read '" + path.string() + "' as a " + codec.name + " picture: " + reason);
  };
  const Bytes file = FileReader(argument, path).ReadUpTo(kMostFileBytes + 1);
  if (file.size() > kMostFileBytes) refuse("it has more than " + std::to_string(kMostFileBytes) + " bytes");
  try {
    return codec.decode(file);
  } catch (const std::runtime_error& error) {
    refuse(error.what());
    throw;
  }
}

}  // namespace LmTool
