#include "raw_file.h"

#include <algorithm>
#include <iterator>
#include <vector>

#include "LmImagingLib/Image.h"
#include "error.h"
#include "frame.h"
#include "pixel_type_names.h"

namespace LmTool {

using LmImagingLib::PixelTypeID;
using LmImagingLib::RequiredSize;

namespace {

// Sizes that sensors and cameras commonly have.
constexpr ImageSize kCommonSizes[] = {
    {320, 240},   {640, 480},   {656, 492},   {752, 480},   {800, 600},   {1024, 768},  {1280, 720},
    {1280, 800},  {1280, 960},  {1280, 1024}, {1392, 1040}, {1440, 1080}, {1600, 1200}, {1624, 1234},
    {1920, 1080}, {1920, 1200}, {2048, 1088}, {2048, 1536}, {2048, 2048}, {2448, 2048}, {2592, 1944},
    {3072, 2048}, {3840, 2160}, {4096, 2160}, {4096, 3000}, {4112, 3008}, {5120, 5120}, {5472, 3648}};

// The sizes of a frame of `bytes` bytes, as far as they suggest themselves: the width asked for with another height,
// and common ones. "640x1920 or 1280x960"; empty if there is none.
std::string FittingSizes(const PixelTypeID& type, std::size_t width, std::size_t bytes) {
  std::vector<ImageSize> fitting;
  const std::size_t lineBytes = SourceLayout(type, {width, 1}).Bytes();
  if (lineBytes != 0 && bytes != 0 && bytes % lineBytes == 0) fitting.push_back({width, bytes / lineBytes});
  std::copy_if(std::begin(kCommonSizes), std::end(kCommonSizes), std::back_inserter(fitting),
               [&](const ImageSize& size) {
                 return size.width != width && RequiredSize(type, size.width, size.height) == bytes;
               });
  std::string text;
  for (const ImageSize& size : fitting) text += (text.empty() ? "" : " or ") + size.Text();
  return text;
}

}  // namespace

std::size_t RawFormat::FrameBytes() const {
  return lineSize == 0 ? LeastFrameBytes() : lineSize * SourceLayout(type, size).lines;
}

std::size_t RawFormat::LeastFrameBytes() const { return RequiredSize(type, size.width, size.height, lineSize).value(); }

std::string FrameRange::Text() const {
  if (last == kEnd) return "all";
  return std::to_string(first) + (last == first ? "" : "-" + std::to_string(last));
}

RawFile::RawFile(const std::filesystem::path& path, const RawFormat& format, const std::optional<FrameRange>& range)
    : mPath(path), mFormat(format), mRange(range), mReader("SOURCE", path) {
  if (mReader.Size()) mRange ? CheckFrames(*mReader.Size()) : CheckOnlyFrame(*mReader.Size());
  if (!mRange) {
    mCount = 1;
    return;
  }
  mNext = mRange->first;
}

std::optional<RawFrame> RawFile::Next() {
  const std::size_t frameBytes = mFormat.FrameBytes();
  const std::size_t least = mFormat.LeastFrameBytes();
  if (mRange ? mNext > mRange->last : mNext == 1) return std::nullopt;
  if (mRange && mNext == mRange->first) mReader.Skip(mNext * frameBytes);
  // A file that has one byte more than its only frame is too long.
  Bytes bytes(frameBytes + (mRange ? 0 : 1));
  bytes.resize(mReader.Read(bytes.data(), bytes.size()));
  if (!mRange) {
    CheckOnlyFrame(bytes.size());
  } else if (bytes.size() < least) {
    if (!bytes.empty()) Refuse("ends within frame " + std::to_string(mNext));
    if (mRange->last != FrameRange::kEnd || mNext == 0) {
      throw ToolError("--frames", "'" + mRange->Text() + "' asks for more frames than '" + mPath.string() +
                                      "' has; it ends before frame " + std::to_string(mNext));
    }
    return std::nullopt;
  }
  ++mNext;
  return RawFrame{mFormat.type, mFormat.size, mFormat.flags, std::move(bytes), mFormat.lineSize};
}

std::string RawFile::HoldsText(std::size_t bytes) const {
  return "has " + std::to_string(bytes) + " bytes, but a " + mFormat.size.Text() + " frame of " + Label(mFormat.type) +
         (mFormat.lineSize != 0 ? " in lines of " + std::to_string(mFormat.lineSize) + " bytes" : "") + " takes " +
         std::to_string(mFormat.FrameBytes());
}

void RawFile::CheckOnlyFrame(std::size_t bytes) const {
  const std::size_t frameBytes = mFormat.FrameBytes();
  if (bytes == frameBytes || bytes == mFormat.LeastFrameBytes()) return;
  std::string hint;
  if (mFormat.lineSize == 0) {
    const std::string fitting = FittingSizes(mFormat.type, mFormat.size.width, mReader.Size().value_or(0));
    if (!fitting.empty()) hint = "; the file would fit --size " + fitting;
  }
  if (mReader.Size() && bytes % frameBytes == 0 && bytes != 0) {
    hint += "; it may be " + std::to_string(bytes / frameBytes) + " frames, see --frames";
  }
  Refuse(HoldsText(bytes) + (mReader.Size() || bytes < frameBytes ? "" : " and more follow") + hint);
}

void RawFile::CheckFrames(std::size_t bytes) {
  const std::size_t frameBytes = mFormat.FrameBytes();
  const std::size_t rest = bytes % frameBytes;
  const std::size_t frames = bytes / frameBytes + (rest != 0 && rest == mFormat.LeastFrameBytes() ? 1 : 0);
  if (frames == 0 || (rest != 0 && frames == bytes / frameBytes)) {
    Refuse(HoldsText(bytes) + "; it must hold whole frames, and has " + std::to_string(frames) + " and " +
           std::to_string(rest) + " bytes");
  }
  const std::size_t last = mRange->last == FrameRange::kEnd ? frames - 1 : mRange->last;
  if (mRange->first >= frames || last >= frames) {
    throw ToolError("--frames", "'" + mRange->Text() + "' asks for more frames than '" + mPath.string() +
                                    "' has; allowed: 0 to " + std::to_string(frames - 1));
  }
  mCount = last - mRange->first + 1;
}

void RawFile::Refuse(const std::string& reason) const {
  throw ToolError("SOURCE", "'" + mPath.string() + "' " + reason);
}

}  // namespace LmTool
