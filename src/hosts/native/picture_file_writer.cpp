// An encoder over a file that appears only at the end.
// Every way to fail ends in one line and an untouched folder.
#include "hosts/native/picture_file_writer.h"

#include <algorithm>
#include <filesystem>

#include "hosts/native/atomic_file.h"
#include "hosts/native/row_encoder.h"

namespace {

constexpr double jpegQuality = 0.9;
constexpr int32_t largestJpegSide = 65500;
constexpr int32_t largestPngSide = 1000000;

/// With the point, in lower case.
std::string endingOf(const std::string& path) {
    std::string ending = std::filesystem::path(path).extension().string();
    std::transform(ending.begin(), ending.end(), ending.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return ending;
}

bool isJpeg(const std::string& path) {
    const std::string ending = endingOf(path);
    return ending == ".jpg" || ending == ".jpeg";
}

}  // namespace

class PictureFileWriter::FileSink : public ByteSink {
  public:
    bool write(std::span<const uint8_t> bytes) noexcept override { return file.write(bytes); }
    AtomicFile file;
};

PictureFileWriter::PictureFileWriter() = default;
PictureFileWriter::~PictureFileWriter() = default;

bool PictureFileWriter::knowsEnding(const std::string& path) {
    return isJpeg(path) || endingOf(path) == ".png";
}

bool PictureFileWriter::open(const std::string& path, int32_t width, int32_t height,
                             const PictureTexts& texts) {
    _path = path;
    _error.clear();
    _encoder.reset();
    _file.reset();
    if (!knowsEnding(path)) return fail("the name must end in .png, .jpg or .jpeg");
    const int32_t largest = isJpeg(path) ? largestJpegSide : largestPngSide;
    if (width <= 0 || height <= 0 || width > largest || height > largest) {
        return fail("its sides must be 1 to " + std::to_string(largest) + " pixels");
    }
    _file = std::make_unique<FileSink>();
    if (!_file->file.open(path, 0666)) return fail(_file->file.error());
    _encoder = isJpeg(path) ? makeJpegEncoder(*_file, jpegQuality) : makePngEncoder(*_file);
    _rowBytes = static_cast<std::size_t>(width) * 3;
    _rowsLeft = height;
    return _encoder->begin(width, height, PixelLayout::rgb, texts) || failEncoding();
}

bool PictureFileWriter::writeRows(std::span<const uint8_t> rgb) {
    if (!_encoder) return false;
    if (rgb.size() % _rowBytes != 0 || rgb.size() / _rowBytes > static_cast<std::size_t>(_rowsLeft)) {
        return fail("its rows do not fit its size");
    }
    for (; !rgb.empty(); rgb = rgb.subspan(_rowBytes), --_rowsLeft) {
        if (!_encoder->writeRow(rgb.data())) return failEncoding();
    }
    return true;
}

bool PictureFileWriter::finish() {
    if (!_encoder) return false;
    if (_rowsLeft != 0) return fail("rows are missing");
    if (!_encoder->finish() || !_file->file.commit()) return failEncoding();
    _encoder.reset();
    _file.reset();
    return true;
}

bool PictureFileWriter::fail(const std::string& reason) {
    _error = "cannot write " + _path + ": " + reason;
    _encoder.reset();
    _file.reset();
    return false;
}

bool PictureFileWriter::failEncoding() {
    const std::string fileError = _file->file.error();
    return fail(fileError.empty() ? _encoder->error() : fileError);
}
