// Reads picture files back with the libraries' own simplest readers.
// Apart from the code under test, which only writes.
#pragma once

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <jpeglib.h>
#include <optional>
#include <png.h>
#include <span>
#include <string>
#include <vector>

#include "platform/graphics/picture_texts.h"

struct DecodedPicture {
    uint32_t width = 0;
    uint32_t height = 0;
    uint32_t channels = 0;
    std::vector<uint8_t> pixels;
};

/// With the file's own channels; nothing for a file that is damaged or cut short.
inline std::optional<DecodedPicture> decodePng(std::span<const uint8_t> file) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    if (png_image_begin_read_from_memory(&image, file.data(), file.size()) == 0) return std::nullopt;
    DecodedPicture picture{image.width, image.height, PNG_IMAGE_SAMPLE_CHANNELS(image.format), {}};
    picture.pixels.resize(PNG_IMAGE_SIZE(image));
    if (png_image_finish_read(&image, nullptr, picture.pixels.data(), 0, nullptr) == 0) return std::nullopt;
    return picture;
}

/// Only for files that are whole: damage ends the test program, as libjpeg does by default.
inline DecodedPicture decodeJpeg(std::span<const uint8_t> file) {
    jpeg_decompress_struct jpeg{};
    jpeg_error_mgr errors{};
    jpeg.err = jpeg_std_error(&errors);
    jpeg_create_decompress(&jpeg);
    jpeg_mem_src(&jpeg, file.data(), file.size());
    jpeg_read_header(&jpeg, TRUE);
    jpeg_start_decompress(&jpeg);
    DecodedPicture picture{
        jpeg.output_width, jpeg.output_height, static_cast<uint32_t>(jpeg.output_components), {}};
    const std::size_t rowBytes = std::size_t{picture.width} * picture.channels;
    picture.pixels.resize(rowBytes * picture.height);
    while (jpeg.output_scanline < jpeg.output_height) {
        JSAMPROW rows[] = {picture.pixels.data() + jpeg.output_scanline * rowBytes};
        jpeg_read_scanlines(&jpeg, rows, 1);
    }
    jpeg_finish_decompress(&jpeg);
    jpeg_destroy_decompress(&jpeg);
    return picture;
}

/// Only for files that are whole: damage ends the test program.
inline PictureTexts pngTexts(std::span<const uint8_t> file) {
    png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    png_set_read_fn(png, &file, [](png_structp reader, png_bytep room, std::size_t count) {
        auto& left = *static_cast<std::span<const uint8_t>*>(png_get_io_ptr(reader));
        if (left.size() < count) png_error(reader, "too short");
        std::memcpy(room, left.data(), count);
        left = left.subspan(count);
    });
    png_read_info(png, info);
    png_textp found = nullptr;
    int count = 0;
    png_get_text(png, info, &found, &count);
    PictureTexts texts;
    for (int i = 0; i < count; ++i)
        texts.push_back({found[i].key, std::string(found[i].text, found[i].text_length)});
    png_destroy_read_struct(&png, &info, nullptr);
    return texts;
}

/// All comments, one after another. As decodeJpeg.
inline std::string jpegComments(std::span<const uint8_t> file) {
    jpeg_decompress_struct jpeg{};
    jpeg_error_mgr errors{};
    jpeg.err = jpeg_std_error(&errors);
    jpeg_create_decompress(&jpeg);
    jpeg_mem_src(&jpeg, file.data(), file.size());
    jpeg_save_markers(&jpeg, JPEG_COM, 0xFFFF);
    jpeg_read_header(&jpeg, TRUE);
    std::string text;
    for (auto* marker = jpeg.marker_list; marker != nullptr; marker = marker->next)
        text.append(reinterpret_cast<const char*>(marker->data), marker->data_length);
    jpeg_destroy_decompress(&jpeg);
    return text;
}
