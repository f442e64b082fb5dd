#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "image.h"

namespace LmTool {

enum class PictureFormat { kBmp, kPng, kTiff, kPgm, kPpm };

/// The format that the ending of a file's name stands for; empty for any other ending, which means raw frames.
std::optional<PictureFormat> PictureFormatOf(const std::filesystem::path& path);

/// The endings of pictures: ".png, .tif" and so on.
std::string PictureEndings();

/// Whether pictures of the format may have 16 bits a sample.
bool HoldsWords(PictureFormat format);
/// Whether pictures of the format have no colours.
bool IsGrayOnly(PictureFormat format);

/// Refuses a file whose ending stands for pictures of a kind that the tool neither reads nor writes.
/// @throws ToolError naming `argument`
void CheckEnding(const std::string& argument, const std::filesystem::path& path);

/// The bytes of a picture file.
Bytes EncodePicture(PictureFormat format, const Picture& picture);

/// Reads a picture file of the format that its name ends in.
/// @throws ToolError naming `argument` if it cannot be read, or is no such file or a damaged one
Picture ReadPicture(const std::string& argument, const std::filesystem::path& path);

}  // namespace LmTool
