#include "picture_file.h"

#include <algorithm>
#include <cctype>
#include <iterator>

#include "bmp.h"
#include "error.h"
#include "file_io.h"
#include "png_image.h"

namespace LmTool {

namespace {

struct Codec {
  PictureFormat format;
  const char* ending;
  const char* name;
  Bytes (*encode)(const Picture& picture);
  Picture (*decode)(const Bytes& file);
};
constexpr Codec kCodecs[] = {{PictureFormat::kBmp, ".bmp", "BMP", EncodeBmp, DecodeBmp},
                             {PictureFormat::kPng, ".png", "PNG", EncodePng, DecodePng}};

const Codec& CodecOf(PictureFormat format) {
  return *std::find_if(std::begin(kCodecs), std::end(kCodecs), [=](const Codec& c) { return c.format == format; });
}

constexpr std::size_t kMostFileBytes = kMostPixels * 4 + (std::size_t{1} << 20);  // the largest picture and its headers

}  // namespace

std::optional<PictureFormat> PictureFormatOf(const std::filesystem::path& path) {
  std::string ending = path.extension().string();
  std::transform(ending.begin(), ending.end(), ending.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  const auto* const codec =
      std::find_if(std::begin(kCodecs), std::end(kCodecs), [&](const Codec& c) { return ending == c.ending; });
  if (codec == std::end(kCodecs)) return std::nullopt;
  return codec->format;
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
