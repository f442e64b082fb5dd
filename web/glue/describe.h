#pragma once

#include <string>

#include "develop.h"
#include "guess.h"

// Texts for the page: a line for each thing, fields between tabs.
namespace LmPage {

/// Every format that a frame may have: type, flags, kind (gray, mosaic, rgb or yuv), bits of a sample, the name for a
/// person, and the arguments that name it on the command line. Cameras' own names come first.
std::string ListFormats();

/// The bytes of a group, each from bit 7 to bit 0: "p1.3" is bit 3 of the second pixel's sample, "-" is unused. An
/// empty line begins a plane; the first line is the layout in words.
std::string ListBits(LmImagingLib::PixelTypeID type);

/// Guesses: type, flags, width, height and the bits of code for a byte.
std::string List(const std::vector<Guess>& guesses);

/// The samples of pixel (x, y) in the counts of the camera: name, count and largest count of each.
/// @throws std::runtime_error if the frame has padded lines, or its width is no multiple of a group
std::string ListSamples(const RawFrame& frame, std::size_t x, std::size_t y);

/// How often counts occur: for each channel its name and, between spaces, the numbers of samples in 256 equal parts of
/// the range. Of large frames some rows are counted.
/// @throws std::runtime_error as `ListSamples`
std::string ListHistogram(const RawFrame& frame);

}  // namespace LmPage
