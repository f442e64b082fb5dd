#include <CLI/CLI.hpp>
#include <cmath>
#include <filesystem>
#include <iostream>
#include <memory>
#include <vector>

#include "LmImagingLib/PixelConverter.h"
#include "LmImagingLib/PixelType.h"
#include "LmImagingLib/PixelTypeFactory.h"
#include "commands/commands.h"
#include "commands/gallery_page.h"
#include "encode/encode_scene.h"
#include "encode/layout.h"
#include "error.h"
#include "file_io.h"
#include "frame.h"
#include "pixel_type_names.h"
#include "progress.h"
#include "terminal.h"

namespace LmTool {

using namespace LmImagingLib;

namespace {

constexpr ImageSize kSize{240, 180};  // whole groups, pairs of lines and zones of every layout
constexpr unsigned long kMosaicFlags = ConversionFlags::kBayerRG | ConversionFlags::kBilinear;
constexpr PixelTypeID kPictureType = 0x420006;

// Peak signal to noise ratio in decibels; infinite if the pictures are equal.
double Psnr(const Picture& picture, const Picture& scene) {
  double sum = 0;
  for (std::size_t i = 0; i < scene.pixels.size(); ++i) {
    const double difference = static_cast<double>(picture.pixels[i]) - scene.pixels[i];
    sum += difference * difference;
  }
  return 10 * std::log10(255.0 * 255.0 * static_cast<double>(scene.pixels.size()) / sum);
}

GalleryCell MakeCell(const PixelTypeID& id, const Picture& colorScene, const Picture& grayScene) {
  const bool gray = (id & kColorSpaceMask) == kColorSpaceGrayscale;
  const PixelType& type = *PixelTypeFactory::FindPixelType(id);
  GalleryCell cell;
  cell.type = id;
  cell.picture = ConvertToPicture(EncodeScene(id, kSize, IsMosaic(id) ? kMosaicFlags : ConversionFlags::kNone),
                                  kPictureType, 8, {});
  cell.psnr = Psnr(cell.picture, gray ? grayScene : colorScene);
  cell.layout = LayoutInWords(id);
  cell.bufferBytes = type.GetBufferSizeFor(kSize.width, kSize.height);
  cell.frameBytes = SourceLayout(id, kSize).Bytes();
  return cell;
}

void Run(const std::filesystem::path& directory) {
  std::error_code error;
  std::filesystem::create_directories(directory, error);
  if (error) throw ToolError("DIR", "cannot make the directory '" + directory.string() + "': " + error.message());

  const std::vector<PixelTypeID> types = RegisteredTypes();
  const Picture colorScene = ScenePicture(kSize, false);
  const Picture grayScene = ScenePicture(kSize, true);
  std::vector<GalleryCell> cells;
  Progress progress(types.size());
  for (const PixelTypeID id : types) {
    cells.push_back(MakeCell(id, colorScene, grayScene));
    progress.Step(Label(id));
  }
  const std::string page = GalleryPage(cells, colorScene, grayScene);
  const std::filesystem::path path = directory / "index.html";
  WriteFile("DIR", path, Bytes(page.begin(), page.end()));
  progress.Hide();
  if (ErrorStreamIsTerminal()) std::cerr << "Open " << Printable(path.string()) << " in a browser.\n";
}

}  // namespace

void AddGalleryCommand(CLI::App& app) {
  CLI::App* const command = app.add_subcommand("gallery", "Make a web page that shows the test scene in every type");
  const auto directory = std::make_shared<std::string>();
  command->add_option("DIR", *directory, "Directory for the page, index.html; made if it is missing")
      ->required()
      ->type_name("DIR");
  command->footer("The page needs no other file. Progress is shown on a terminal only.");
  command->callback([directory] { Run(*directory); });
}

}  // namespace LmTool
