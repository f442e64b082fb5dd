#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "image.h"

namespace LmTool {

enum class PictureFormat { kBmp, kPng };

/// The format that the ending of a file's name stands for; nothing for any other ending, which means raw frames.
std::optional<PictureFormat> PictureFormatOf(const std::filesystem::path& path);

/// The bytes of a picture file.
Bytes EncodePicture(PictureFormat format, const Picture& picture);

/// Reads a picture file of the format that its name ends in.
/// @throws ToolError naming `argument` if it cannot be read, or is no such file or a damaged one
Picture ReadPicture(const std::string& argument, const std::filesystem::path& path);

}  // namespace LmTool
