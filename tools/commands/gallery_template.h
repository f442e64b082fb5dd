#pragma once

// The parts of the gallery's page that do not depend on types.
namespace LmTool {

/// The beginning, with the styles.
inline constexpr const char* kGalleryHead = R"(<!DOCTYPE html>
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
nav { position: sticky; top: 0; padding: 10px 0; background: var(--page); }
nav a { margin-right: 16px; color: inherit; }
input { width: 38ch; max-width: 100%; padding: 5px 8px; font: inherit; border: 1px solid var(--line);
        border-radius: 6px; background: var(--card); color: inherit; }
.cells { display: grid; grid-template-columns: repeat(auto-fill, minmax(240px, 1fr)); gap: 14px; margin-top: 14px; }
figure { margin: 0; background: var(--card); border: 1px solid var(--line); border-radius: 6px; overflow: hidden; }
img { display: block; width: 100%; height: auto; image-rendering: auto; }
figcaption { padding: 8px 10px 10px; }
h3 { font-size: 14px; margin: 0; overflow-wrap: anywhere; }
code { font-size: 12px; color: var(--soft); }
dl { display: grid; grid-template-columns: 44px 1fr; gap: 1px 8px; margin: 6px 0 0; font-size: 12.5px; }
dt { color: var(--soft); }
dd { margin: 0; }
h4 { font-size: 13px; font-weight: normal; margin: 2px 0; overflow-wrap: anywhere; }
summary { margin-top: 6px; cursor: pointer; }
details .cells { grid-template-columns: 1fr; }
[hidden] { display: none; }
</style>
</head>
<body>
)";

/// The script of the search. It shows the cards that have all words, and opens those with a variant that has them.
inline constexpr const char* kGalleryScript = R"(<script>
const search = document.getElementById("search"), found = document.getElementById("found");
function has(element, words) {
  const text = (element.textContent + " " + (element.dataset.names ?? "")).toLowerCase();
  return words.every(word => text.includes(word));
}
function filter() {
  const words = search.value.toLowerCase().split(" ").filter(word => word);
  let types = 0;
  for (const section of document.querySelectorAll("section")) {
    let cards = 0;
    for (const card of section.querySelectorAll(":scope > .cells > figure")) {
      const variants = [...card.querySelectorAll("figure")];
      const matching = variants.filter(variant => has(variant, words));
      const isOwn = has(card.querySelector("figcaption > div"), words);
      card.hidden = !isOwn && matching.length === 0;
      for (const variant of variants) variant.hidden = !isOwn && !matching.includes(variant);
      if (variants.length) card.querySelector("details").open = words.length > 0 && !isOwn;
      cards += !card.hidden;
      types += isOwn + matching.length;
    }
    section.hidden = cards === 0;
  }
  found.textContent = `${types} types`;
}
search.addEventListener("input", filter);
filter();
</script>
)";

}  // namespace LmTool
