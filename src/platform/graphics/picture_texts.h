// Words that travel inside a picture's file, as text chunks of PNG or as the comment of JPEG.
// Writing frames them where no library does; reading believes nothing that a file says.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// One word or line of words. Key and text are printable ASCII, the key 1 to 79 characters without ": " in
/// it; what is not is left out when written.
struct PictureText {
    std::string key;
    std::string text;
    friend bool operator==(const PictureText&, const PictureText&) = default;
};

using PictureTexts = std::vector<PictureText>;

/// The content of one text chunk of PNG (type tEXt); empty for a text that cannot be written.
std::vector<uint8_t> pngTextContent(const PictureText& text);

/// The content of the one comment of JPEG (marker COM): a line for each text; empty for no texts.
std::string jpegCommentContent(const PictureTexts& texts);

/// Puts the texts into a file as an encoder made it. NO, and the file stays as it was, if it is neither PNG
/// nor JPEG.
bool insertPictureTexts(std::vector<uint8_t>& file, const PictureTexts& texts);

/// Copies what the file holds from an offset on, at most as many bytes as there is room for; answers how
/// many.
using PictureFileBytes = std::function<std::size_t(uint64_t offset, std::span<uint8_t> room)>;

/// The texts of a PNG or JPEG file, in their order; nothing for another kind of file. Of a damaged file those
/// that are whole. Reads the frames of the file's parts and the texts, not the picture.
std::optional<PictureTexts> readPictureTexts(const PictureFileBytes& file);
