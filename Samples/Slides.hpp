#pragma once
#include <filesystem>

namespace vant::samples {

/// Writes the slide folders of a medium: "GTA" and "GTA_Default" with one folder for each language, each with its
/// "image.png" (copied from the two pictures) and its "string.xml".
void writeSlides(const std::filesystem::path &media, const std::filesystem::path &picture,
                 const std::filesystem::path &defaultPicture);

} // namespace vant::samples
