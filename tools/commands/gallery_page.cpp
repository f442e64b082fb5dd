#include "commands/gallery_page.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <sstream>
#include <tuple>

#include "LmImagingLib/PixelType.h"
#include "LmImagingLib/PixelTypeFactory.h"
#include "camera_names.h"
#include "commands/gallery_template.h"
#include "named_type.h"
#include "pixel_type_names.h"
#include "png_image.h"
#include "text_columns.h"
#include "type_facts.h"
#include "type_variants.h"

namespace LmTool {

using namespace LmImagingLib;

namespace {

struct Family {
  const char* anchor;
  const char* title;
  const char* text;
};
constexpr Family kFamilies[] = {
    {"gray", "Grayscale", "PSNR is against the scene in gray, on the right at the top."},
    {"bayer", "Bayer mosaics",
     "Demosaiced bilinearly. PSNR is against the scene in colour; what it lacks are the colours that no pixel saw, at "
     "the edges and in the fine lines."},
    {"rgb", "RGB and BGR", "PSNR is against the scene in colour."},
    {"yuv", "YUV",
     "PSNR is against the scene in colour. 4:4:4 loses to rounding alone, 4:2:2 and 4:1:1 at edges of colour too, "
     "where two or four pixels share one."},
};

std::size_t FamilyOf(const PixelTypeID& type) {
  if (PixelTypeFactory::FindPixelType(type)->IsBayerPattern()) return 1;
  const PixelTypeID colorSpace = type & kColorSpaceMask;
  return colorSpace == kColorSpaceGrayscale ? 0 : colorSpace == kColorSpaceRGB ? 2 : 3;
}

std::string Base64(const Bytes& bytes) {
  constexpr const char* kDigits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string text;
  for (std::size_t i = 0; i < bytes.size(); i += 3) {
    const std::size_t count = std::min<std::size_t>(3, bytes.size() - i);
    std::uint32_t group = 0;
    for (std::size_t k = 0; k < 3; ++k) group = group << 8 | (k < count ? bytes[i + k] : 0U);
    for (std::size_t k = 0; k < 4; ++k) text += k <= count ? kDigits[group >> (18 - 6 * k) & 63] : '=';
  }
  return text;
}

std::string Image(const Picture& picture, const std::string& description) {
  std::ostringstream html;
  html << "<img width=\"" << picture.size.width << "\" height=\"" << picture.size.height << "\" alt=\"" << description
       << "\" src=\"data:image/png;base64," << Base64(EncodePng(picture)) << "\">\n";
  return html.str();
}

// 172800 as 172,800.
std::string Grouped(std::size_t number) {
  std::string text = std::to_string(number);
  for (std::size_t at = text.size(); at > 3;) text.insert(at -= 3, ",");
  return text;
}

std::string PsnrText(double psnr) {
  if (std::isinf(psnr)) return "exact";
  std::ostringstream text;
  text.precision(1);
  text << std::fixed << psnr << " dB";
  return text.str();
}

void PutFigures(std::ostream& html, const GalleryCell& cell) {
  html << "<dl><dt>PSNR</dt><dd>" << PsnrText(cell.psnr) << "</dd><dt>Layout</dt><dd>" << cell.layout
       << "</dd><dt>Buffer</dt><dd>" << Grouped(cell.bufferBytes) << " bytes";
  if (cell.frameBytes != cell.bufferBytes) html << ", pixels take " << Grouped(cell.frameBytes);
  html << "</dd></dl>";
}

std::string Identity(const GalleryCell& cell) { return HexID(cell.type) + " " + ClassName(cell.type); }

// All names that cameras have for a type, for the search; the card shortens those of mosaics.
std::string AllNames(const PixelTypeID& type) {
  std::vector<std::string> names = FourccsOf(type);
  for (const PFNCFormat* const format : FormatsOf(type)) names.emplace_back(format->name);
  return Joined(names, " ");
}

// A card with the names that cameras have for the type, its registered name, and its variants folded below.
void PutCard(std::ostream& html, const GalleryCell& cell, const std::vector<const GalleryCell*>& variants) {
  const std::string name = PixelTypeFactory::GetPixelTypeName(cell.type);
  const std::string cameras = CameraNames(cell.type);
  const std::string note = FactsOf(cell.type).note;
  html << "<figure>\n"
       << Image(cell.picture, name) << "<figcaption>\n<div data-names=\"" << AllNames(cell.type) << "\"><h3>"
       << (cameras.empty() ? name : cameras) << "</h3>\n";
  if (!cameras.empty() && cameras != name) html << "<h4>" << name << "</h4>\n";
  html << "<code>" << Identity(cell) << "</code>\n";
  PutFigures(html, cell);
  if (!note.empty()) html << "\n<p>Note: " << note << ".</p>";
  html << "</div>\n";
  if (!variants.empty()) {
    html << "<details><summary>" << variants.size() << (variants.size() == 1 ? " variant" : " variants")
         << "</summary><div class=\"cells\">\n";
    for (const GalleryCell* const variant : variants) {
      const std::string variantName = PixelTypeFactory::GetPixelTypeName(variant->type);
      html << "<figure>\n"
           << Image(variant->picture, variantName) << "<figcaption><h4>" << variantName << "</h4>\n<code>"
           << Identity(*variant) << "</code>\n";
      PutFigures(html, *variant);
      html << "</figcaption>\n</figure>\n";
    }
    html << "</div></details>\n";
  }
  html << "</figcaption>\n</figure>\n";
}

void PutIntroduction(std::ostream& html, std::size_t count, const Picture& colorScene, const Picture& grayScene) {
  html << "<h1>" << count << " pixel types</h1>\n<p>Each picture was drawn in the bytes of its type, "
       << colorScene.size.Text()
       << " pixels, and converted back to 24-bit BGR. PSNR is the distance from the scene: the more decibels the "
          "closer, and exact if not a byte differs. Buffer is what an application allocates for such an image.</p>\n"
       << "<nav>";
  for (const Family& family : kFamilies) html << "<a href=\"#" << family.anchor << "\">" << family.title << "</a>";
  html << "<input type=\"search\" id=\"search\" placeholder=\"Search, such as BayerRG10p, 0x20011 or planar\" "
          "aria-label=\"Search\"> <span id=\"found\"></span></nav>\n<div class=\"cells\">\n<figure>"
       << Image(colorScene, "the scene in colour") << "<figcaption><h3>The scene</h3></figcaption></figure>\n<figure>"
       << Image(grayScene, "the scene in gray")
       << "<figcaption><h3>The scene in gray</h3></figcaption></figure>\n</div>\n";
}

}  // namespace

std::string GalleryPage(const std::vector<GalleryCell>& cells, const Picture& colorScene, const Picture& grayScene) {
  std::vector<PixelTypeID> types;
  types.reserve(cells.size());
  for (const GalleryCell& cell : cells) types.push_back(cell.type);
  // A format beside its packed and planar relatives.
  const auto key = [](const PixelTypeID& type) {
    return std::make_tuple(type & (kColorSpaceMask | kFormatNumberMask), type);
  };
  std::sort(types.begin(), types.end(), [&](const PixelTypeID& a, const PixelTypeID& b) { return key(a) < key(b); });
  const auto cellOf = [&](const PixelTypeID& type) {
    return &*std::find_if(cells.begin(), cells.end(), [&](const GalleryCell& cell) { return cell.type == type; });
  };

  std::ostringstream html;
  html << kGalleryHead;
  PutIntroduction(html, cells.size(), colorScene, grayScene);
  for (std::size_t family = 0; family < std::size(kFamilies); ++family) {
    html << "<section>\n<h2 id=\"" << kFamilies[family].anchor << "\">" << kFamilies[family].title << "</h2>\n<p>"
         << kFamilies[family].text << "</p>\n<div class=\"cells\">\n";
    for (const TypeWithVariants& row : Folded(types)) {
      if (FamilyOf(row.type) != family) continue;
      std::vector<const GalleryCell*> variants;
      for (const PixelTypeID& variant : row.variants) variants.push_back(cellOf(variant));
      PutCard(html, *cellOf(row.type), variants);
    }
    html << "</div>\n</section>\n";
  }
  html << kGalleryScript << "</body>\n</html>\n";
  return html.str();
}

}  // namespace LmTool
