#include "commands/gallery_page.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <sstream>
#include <tuple>

#include "LmImagingLib/PixelType.h"
#include "LmImagingLib/PixelTypeFactory.h"
#include "pixel_type_names.h"
#include "png_image.h"

namespace LmTool {

using namespace LmImagingLib;

namespace {

constexpr const char* kHead = R"(<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<title>Pixel types</title>
<style>
:root { color-scheme: light dark; --page: #f6f6f4; --card: #fff; --text: #1d1d1b; --soft: #66665f; --line: #deded8; }
@media (prefers-color-scheme: dark) {
  :root { --page: #161615; --card: #21211f; --text: #ecece8; --soft: #a2a29a; --line: #383834; }
}
body { margin: 0 auto; max-width: 1340px; padding: 24px; background: var(--page); color: var(--text);
       font: 14px/1.45 system-ui, sans-serif; }
h1 { font-size: 26px; margin: 0 0 8px; }
h2 { font-size: 19px; margin: 36px 0 4px; }
p { max-width: 76ch; margin: 0 0 12px; color: var(--soft); }
nav a { margin-right: 16px; color: inherit; }
.cells { display: grid; grid-template-columns: repeat(auto-fill, minmax(240px, 1fr)); gap: 14px; margin-top: 14px; }
figure { margin: 0; background: var(--card); border: 1px solid var(--line); border-radius: 6px; overflow: hidden; }
img { display: block; width: 100%; height: auto; image-rendering: auto; }
figcaption { padding: 8px 10px 10px; }
h3 { font-size: 14px; margin: 0; overflow-wrap: anywhere; }
code { font-size: 12px; color: var(--soft); }
dl { display: grid; grid-template-columns: 44px 1fr; gap: 1px 8px; margin: 6px 0 0; font-size: 12.5px; }
dt { color: var(--soft); }
dd { margin: 0; }
</style>
</head>
<body>
)";

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

void PutCell(std::ostream& html, const GalleryCell& cell) {
  const std::string name = PixelTypeFactory::GetPixelTypeName(cell.type);
  html << "<figure>\n"
       << Image(cell.picture, name) << "<figcaption><h3>" << name << "</h3>\n<code>" << HexID(cell.type) << " "
       << ClassName(cell.type) << "</code>\n<dl><dt>PSNR</dt><dd>" << PsnrText(cell.psnr) << "</dd><dt>Layout</dt><dd>"
       << cell.layout << "</dd><dt>Buffer</dt><dd>" << Grouped(cell.bufferBytes) << " bytes";
  if (cell.frameBytes != cell.bufferBytes) html << ", pixels take " << Grouped(cell.frameBytes);
  html << "</dd></dl></figcaption>\n</figure>\n";
}

void PutIntroduction(std::ostream& html, std::size_t count, const Picture& colorScene, const Picture& grayScene) {
  html << "<h1>" << count << " pixel types</h1>\n<p>Each picture was drawn in the bytes of its type, "
       << colorScene.size.Text()
       << " pixels, and converted back to 24-bit BGR. PSNR is the distance from the scene: the more decibels the "
          "closer, and exact if not a byte differs. Buffer is what an application allocates for such an image.</p>\n"
       << "<nav>";
  for (const Family& family : kFamilies) html << "<a href=\"#" << family.anchor << "\">" << family.title << "</a>";
  html << "</nav>\n<div class=\"cells\">\n<figure>" << Image(colorScene, "the scene in colour")
       << "<figcaption><h3>The scene</h3></figcaption></figure>\n<figure>" << Image(grayScene, "the scene in gray")
       << "<figcaption><h3>The scene in gray</h3></figcaption></figure>\n</div>\n";
}

}  // namespace

std::string GalleryPage(const std::vector<GalleryCell>& cells, const Picture& colorScene, const Picture& grayScene) {
  // A format beside its variants.
  std::vector<const GalleryCell*> sorted;
  sorted.reserve(cells.size());
  for (const GalleryCell& cell : cells) sorted.push_back(&cell);
  const auto key = [](const GalleryCell* cell) {
    return std::make_tuple(cell->type & (kColorSpaceMask | kFormatNumberMask), cell->type);
  };
  std::sort(sorted.begin(), sorted.end(), [&](const GalleryCell* a, const GalleryCell* b) { return key(a) < key(b); });

  std::ostringstream html;
  html << kHead;
  PutIntroduction(html, cells.size(), colorScene, grayScene);
  for (std::size_t family = 0; family < std::size(kFamilies); ++family) {
    html << "<h2 id=\"" << kFamilies[family].anchor << "\">" << kFamilies[family].title << "</h2>\n<p>"
         << kFamilies[family].text << "</p>\n<div class=\"cells\">\n";
    for (const GalleryCell* cell : sorted) {
      if (FamilyOf(cell->type) == family) PutCell(html, *cell);
    }
    html << "</div>\n";
  }
  html << "</body>\n</html>\n";
  return html.str();
}

}  // namespace LmTool
