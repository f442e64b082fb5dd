#include "convert_files.h"

#include <iomanip>
#include <sstream>
#include <utility>

#include "LmImagingLib/PixelTypeFactory.h"
#include "camera_names.h"
#include "encode/layout.h"
#include "error.h"
#include "picture_file.h"
#include "pixel_type_names.h"

namespace LmTool {

using namespace LmImagingLib;

namespace {

namespace fs = std::filesystem;

constexpr PixelTypeID kGray = 0x10001;

fs::path Numbered(const fs::path& path, std::size_t number) {
  std::ostringstream name;
  name << path.stem().string() << '-' << std::setw(4) << std::setfill('0') << number << path.extension().string();
  return path.parent_path() / name.str();
}

// Says which file cannot be converted as asked.
template <class Convert>
auto Named(const fs::path& source, const Convert& convert) {
  try {
    return convert();
  } catch (const std::runtime_error& error) {
    throw ToolError("SOURCE", "'" + source.string() + "': " + error.what());
  }
}

// Writes what frames become, as they come.
class Output {
 public:
  Output(FilePair files, const Conversion& conversion, bool numbered, std::ostream& notes)
      : mFiles(std::move(files)),
        mConversion(conversion),
        mNumbered(numbered),
        mNotes(notes),
        mPicture(PictureFormatOf(mFiles.destination)) {}

  void Add(const RawFrame& frame, std::size_t number) {
    const bool isGray = mPicture && IsGrayOnly(*mPicture);
    const PixelTypeID to = mConversion.to.value_or(isGray ? kGray : PictureTypeOf(frame.type));
    if (!PixelTypeFactory::HasConverter(frame.type, to)) {
      throw ToolError("--to", "there is no converter from " + Label(frame.type) + " to " + Label(to) + "; allowed: " +
                                  DestinationsInWords(frame.type, "lmimaging converters --from " + HexID(frame.type)));
    }
    if (!mColors) mColors.emplace(mConversion.colors, mConversion.depth, frame, mFiles.source.string(), mNotes);
    Treatment treatment = mColors->AsTreatment();
    treatment.threads = mConversion.threads;
    if (mPicture) {
      const unsigned bits = BitsOfPicture(frame.type);
      const Bytes file =
          Named(mFiles.source, [&] { return EncodePicture(*mPicture, ConvertToPicture(frame, to, bits, treatment)); });
      WriteFile("DESTINATION", mNumbered ? Numbered(mFiles.destination, number) : mFiles.destination, file);
      return;
    }
    const Bytes converted = Named(mFiles.source, [&] { return ConvertFrame(frame, to, treatment); });
    if (!mRaw) mRaw.emplace("DESTINATION", mFiles.destination);
    mRaw->Write(converted);
  }

  void Commit() {
    if (mRaw) mRaw->Commit();
  }

 private:
  // What the source and the type that is asked for have more than 8 bits of needs 16.
  unsigned BitsOfPicture(const PixelTypeID& from) const {
    const bool isDeep = LayoutOf(from).bits > 8 && (!mConversion.to || LayoutOf(*mConversion.to).bits > 8);
    return isDeep && HoldsWords(*mPicture) && mConversion.depth == ConversionDepth::kFull ? 16 : 8;
  }

  FilePair mFiles;
  const Conversion& mConversion;
  bool mNumbered;
  std::ostream& mNotes;
  std::optional<PictureFormat> mPicture;
  std::optional<Colors> mColors;
  std::optional<FileWriter> mRaw;
};

}  // namespace

void ConvertFile(const FilePair& files, const Conversion& conversion, Progress& progress, std::ostream& notes) {
  const bool single = !conversion.frames || conversion.frames->first == conversion.frames->last;
  Output output(files, conversion, !single, notes);
  const std::string name = files.source.filename().string();
  if (PictureFormatOf(files.source)) {
    output.Add(FrameOf(ReadPicture("SOURCE", files.source)), 0);
    progress.Step(name);
  } else {
    RawFile source(files.source, conversion.from, conversion.frames);
    while (const std::optional<RawFrame> frame = source.Next()) {
      output.Add(*frame, source.Number());
      progress.Step(name);
    }
  }
  output.Commit();
}

std::size_t CountFrames(const fs::path& source, const Conversion& conversion) {
  if (PictureFormatOf(source)) return 1;
  std::error_code ignored;
  if (IsStandardStream(source) || !fs::is_regular_file(source, ignored)) return 0;  // what is taken from a pipe is gone
  try {
    return RawFile(source, conversion.from, conversion.frames).Count();
  } catch (const ToolError&) {  // reported when it is this file's turn
    return 0;
  }
}

}  // namespace LmTool
