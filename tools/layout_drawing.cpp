#include "layout_drawing.h"

#include <string>
#include <vector>

namespace LmTool {

namespace {

constexpr std::size_t kCell = 4;  // characters a bit

// Neighbouring bits of one sample in a byte.
struct Run {
  StoredBit first, last;
  std::size_t bits;
};

std::vector<Run> RunsOf(const LayoutBits::Byte& byte) {
  std::vector<Run> runs;
  for (auto bit = byte.rbegin(); bit != byte.rend(); ++bit) {
    const bool goesOn =
        !runs.empty() && runs.back().last.sample == bit->sample &&
        (bit->sample == 0 || (runs.back().last.pixel == bit->pixel && runs.back().last.bit == bit->bit + 1));
    if (goesOn) {
      runs.back().last = *bit;
      ++runs.back().bits;
    } else {
      runs.push_back({*bit, *bit, 1});
    }
  }
  return runs;
}

std::string LabelOf(const LayoutBits& layout, const Run& run) {
  if (run.first.sample == 0) return "-";
  std::string label(1, run.first.sample);
  if (IsNumbered(layout, run.first)) label += std::to_string(run.first.pixel);
  // A sample of one bit has room for its name only.
  if (run.bits == 1 && run.first.bit == 0 && label.size() > 1) return label;
  label += ' ' + std::to_string(run.first.bit);
  if (run.bits > 1) label += '-' + std::to_string(run.last.bit);
  return label;
}

std::string Centered(const std::string& text, std::size_t width) {
  const std::size_t space = width > text.size() ? width - text.size() : 0;
  return std::string(space / 2, ' ') + text + std::string(space - space / 2, ' ');
}

// A line between bytes, with a mark where a run of the byte above or below begins.
std::string Ruler(const std::vector<std::vector<Run>>& neighbours) {
  std::string line(8 * kCell + 1, '-');
  line.front() = line.back() = '+';
  for (const std::vector<Run>& runs : neighbours) {
    std::size_t at = 0;
    for (const Run& run : runs) line[at += kCell * run.bits] = '+';
  }
  return "        " + line + '\n';
}

}  // namespace

bool IsNumbered(const LayoutBits& layout, const StoredBit& bit) {
  return layout.pixels > 1 && bit.sample != 'U' && bit.sample != 'V';
}

std::string Drawing(const LayoutBits& layout) {
  std::string text;
  for (std::size_t plane = 0; plane < layout.planes.size(); ++plane) {
    if (layout.planes.size() > 1) text += "plane " + std::to_string(plane) + '\n';
    text += "          7   6   5   4   3   2   1   0\n";
    std::vector<Run> above;
    for (std::size_t i = 0; i < layout.planes[plane].size(); ++i) {
      const std::vector<Run> runs = RunsOf(layout.planes[plane][i]);
      text += Ruler({above, runs});
      std::string row = "byte " + std::to_string(i);
      row.resize(8, ' ');
      for (const Run& run : runs) row += '|' + Centered(LabelOf(layout, run), kCell * run.bits - 1);
      text += row + "|\n";
      above = runs;
    }
    text += Ruler({above});
  }
  return text;
}

}  // namespace LmTool
