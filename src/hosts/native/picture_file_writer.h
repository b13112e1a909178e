// Picture files written in rows from the top, as tiles of a large snapshot become complete.
// The file appears when it is finished and not before; without that, nothing is left of it.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>

#include "platform/graphics/picture_texts.h"

class ByteSink;
class RowEncoder;

class PictureFileWriter {
  public:
    PictureFileWriter();
    ~PictureFileWriter();
    PictureFileWriter(const PictureFileWriter&) = delete;
    PictureFileWriter& operator=(const PictureFileWriter&) = delete;

    /// True for the endings .png, .jpg and .jpeg in any case, which say what is written.
    static bool knowsEnding(const std::string& path);

    /// JPEG files get quality 0.9 and hold up to 65,500 pixels a side, PNG files 1,000,000; the texts go into
    /// either. This and the next two answer NO with the reason in error(); nothing but open works after that.
    bool open(const std::string& path, int32_t width, int32_t height, const PictureTexts& texts = {});
    /// Any number of whole rows: bytes R, G, B, 3 * width each.
    bool writeRows(std::span<const uint8_t> rgb);
    /// After exactly height rows.
    bool finish();

    /// One line that names the file: "cannot write a.png: the disk is full".
    const std::string& error() const { return _error; }

  private:
    class FileSink;
    bool fail(const std::string& reason);
    bool failEncoding();

    std::string _path;
    std::unique_ptr<FileSink> _file;
    std::unique_ptr<RowEncoder> _encoder;
    std::size_t _rowBytes = 0;
    int32_t _rowsLeft = 0;
    std::string _error;
};
