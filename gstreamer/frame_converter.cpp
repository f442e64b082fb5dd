// The way of a frame: white balance, conversion or development, and YUV where that is wanted.
#include "frame_converter.h"

#include <cstring>
#include <iostream>

#include "conversion.h"

namespace LmGst {

using namespace LmImagingLib;

namespace {

// Words R G B A become A R G B.
void TurnAlphaFirst(std::uint8_t* line, std::size_t pixels) {
  for (std::size_t x = 0; x < pixels; ++x) {
    std::uint64_t pixel = 0;
    std::memcpy(&pixel, line + x * sizeof pixel, sizeof pixel);
    pixel = pixel << 16 | pixel >> 48;
    std::memcpy(line + x * sizeof pixel, &pixel, sizeof pixel);
  }
}

std::uint8_t* PlaneOf(const GstVideoFrame& picture, unsigned plane) {
  return static_cast<std::uint8_t*>(picture.data[plane]);
}

std::size_t LineSizeOf(const GstVideoFrame& picture, unsigned plane) {
  return static_cast<std::size_t>(picture.info.stride[plane]);
}

unsigned long WidthOf(const GstVideoFrame& picture) { return static_cast<unsigned long>(picture.info.width); }
unsigned long HeightOf(const GstVideoFrame& picture) { return static_cast<unsigned long>(picture.info.height); }

// The first plane of a picture, to the last byte of its memory.
ImageView ViewOf(const GstVideoFrame& picture, PixelTypeID type) {
  const auto offset = static_cast<std::size_t>(PlaneOf(picture, 0) - picture.map[0].data);
  return {type,
          PlaneOf(picture, 0),
          picture.map[0].size - offset,
          WidthOf(picture),
          HeightOf(picture),
          LineSizeOf(picture, 0)};
}

}  // namespace

void FrameConverter::SetFormats(const SourceFormat& source, const TargetFormat& target, const YuvCode& code) {
  mSource = source;
  mTarget = target;
  mCode = code;
  mMade.reset();
}

void FrameConverter::SetSettings(const Settings& settings) {
  if (settings.balance != mBalance) mFollower.Restart();
  mColors = settings.Colors();
  mDepth = settings.Depth();
  mMethod = settings.Method();
  mThreads = settings.threads;
  mBalance = settings.balance;
  mMade.reset();
}

bool FrameConverter::ChangesNothing() const {
  return mSource.type == mTarget.type && (mSource.IsGray() || (!mColors.Change() && mBalance == Balance::kOff));
}

const LmTool::Triple& FrameConverter::Gains() const {
  return mBalance != Balance::kOff && mFollower.IsFound() ? mFollower.Gains() : mColors.gain;
}

void FrameConverter::FollowLight(const ConstImageView& frame) {
  if (mBalance == Balance::kOff || mSource.IsGray()) return;
  if (mFollower.Follow(frame, mSource.flags, mColors.black, mBalance)) mMade.reset();
}

void FrameConverter::MakeColors() {
  LmTool::ColorArguments colors = mSource.IsGray() ? LmTool::ColorArguments{} : mColors;
  if (!mSource.IsGray()) colors.gain = Gains();
  // From a type to itself a conversion is a copy, which changes no colour, and makes no channel opaque.
  if (mSource.type == mTarget.type && !mSource.IsGray()) colors.develops = true;
  if (!mSource.IsMosaic()) colors.defects.reset();
  const unsigned long method = mSource.IsMosaic() ? mMethod | ConversionFlags::kFilterFirst : 0;
  mMade.emplace(colors, mDepth, LmTool::RawFrame{mSource.type, {}, mSource.flags | method, {}}, "", std::cerr);
}

ConversionResult FrameConverter::Write(const ConstImageView& frame, const ImageView& picture) const {
  const LmTool::Treatment treatment = mMade->AsTreatment();
  if (treatment.development != nullptr) {
    DevelopOptions options;
    options.flags = mSource.flags | ConversionFlags::kOpaque;
    options.threads = mThreads;
    return Develop(*treatment.development, frame, picture, options);
  }
  ConvertOptions options;
  options.filter = treatment.filter;
  options.flags = mSource.flags | ConversionFlags::kOpaque;
  if (mSource.IsMosaic()) options.flags |= mMethod | ConversionFlags::kFilterFirst;
  options.depth = mDepth;
  options.threads = mThreads;
  return ConvertImage(frame, picture, options);
}

ConversionResult FrameConverter::Convert(const ConstImageView& frame, GstVideoFrame& picture) {
  FollowLight(frame);
  if (!mMade) MakeColors();
  if (!mTarget.IsYuv()) {
    ConversionResult result = Write(frame, ViewOf(picture, mTarget.type));
    if (result.IsOK() && mTarget.kind == TargetKind::kAlphaFirst) {
      for (std::size_t y = 0; y < HeightOf(picture); ++y) {
        TurnAlphaFirst(PlaneOf(picture, 0) + y * LineSizeOf(picture, 0), WidthOf(picture));
      }
    }
    return result;
  }
  mPlanes.resize(3 * WidthOf(picture) * HeightOf(picture));
  ConversionResult result =
      Write(frame, {mTarget.type, mPlanes.data(), mPlanes.size(), WidthOf(picture), HeightOf(picture)});
  if (result.IsOK()) EncodePlanes(picture);
  return result;
}

void FrameConverter::EncodePlanes(GstVideoFrame& picture) {
  const std::size_t size = WidthOf(picture) * HeightOf(picture);
  YuvPlanes planes{};
  planes.layout = mTarget.kind == TargetKind::kI420   ? YuvLayout::kI420
                  : mTarget.kind == TargetKind::kNV12 ? YuvLayout::kNV12
                                                      : YuvLayout::kYUY2;
  for (unsigned k = 0; k < GST_VIDEO_FRAME_N_PLANES(&picture); ++k) {
    planes.plane[k] = PlaneOf(picture, k);
    planes.lineSize[k] = LineSizeOf(picture, k);
  }
  EncodeYuv({mPlanes.data(), mPlanes.data() + size, mPlanes.data() + 2 * size, WidthOf(picture)}, WidthOf(picture),
            HeightOf(picture), mCode, planes, mRoom);
}

}  // namespace LmGst
