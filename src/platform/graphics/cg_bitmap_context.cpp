// Grey pictures: wrapping the caller's bytes, and scaling pictures into them.
// The autopilot does so after each flight with a whole screen, so it runs on integers and without the heap.
#include "platform/graphics/cg_bitmap_context.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <span>
#include <vector>

namespace {

/// Rec. 709 weights of red, green and blue, in 65536ths; they add up to 65536.
constexpr uint32_t redWeight = 13933;
constexpr uint32_t greenWeight = 46871;
constexpr uint32_t blueWeight = 4732;

constexpr uint8_t luminance(uint32_t red, uint32_t green, uint32_t blue) {
    return static_cast<uint8_t>((redWeight * red + greenWeight * green + blueWeight * blue + 32768) >> 16);
}

/// By the 16-bit pixel. A frame holds few colours, so the used part of it stays in the nearest cache.
/// On the heap, else some compilers put the finished table into the program, which a phone has to download.
const uint8_t* luminanceOf565() {
    static const auto table = [] {
        std::vector<uint8_t> values(65536);
        for (uint32_t pixel = 0; pixel < values.size(); ++pixel) {
            const uint32_t red = pixel >> 11;
            const uint32_t green = (pixel >> 5) & 63;
            const uint32_t blue = pixel & 31;
            values[pixel] = luminance(red << 3 | red >> 2, green << 2 | green >> 4, blue << 3 | blue >> 2);
        }
        return values;
    }();
    return table.data();
}

struct GrayReader {
    static constexpr bool hasAlpha = false;
    static constexpr std::size_t step = 1;
    uint32_t value(const uint8_t* pixel) const { return *pixel; }
    static uint32_t alpha(const uint8_t*) { return 255; }
};

struct Rgb565Reader {
    static constexpr bool hasAlpha = false;
    static constexpr std::size_t step = 2;
    const uint8_t* table = luminanceOf565();
    uint32_t value(const uint8_t* pixel) const {
        uint16_t bits = 0;
        std::memcpy(&bits, pixel, sizeof bits);
        return table[bits];
    }
    static uint32_t alpha(const uint8_t*) { return 255; }
};

struct OpaqueRgbaReader {
    static constexpr bool hasAlpha = false;
    static constexpr std::size_t step = 4;
    uint32_t value(const uint8_t* pixel) const { return luminance(pixel[0], pixel[1], pixel[2]); }
    static uint32_t alpha(const uint8_t*) { return 255; }
};

struct RgbaReader {
    static constexpr bool hasAlpha = true;
    static constexpr std::size_t step = 4;
    /// Multiplied by the pixel's opacity.
    uint32_t value(const uint8_t* pixel) const {
        return (luminance(pixel[0], pixel[1], pixel[2]) * uint32_t{pixel[3]} + 127) / 255;
    }
    static uint32_t alpha(const uint8_t* pixel) { return pixel[3]; }
};

/// The weights of one target pixel's source pixels along one axis add up to this.
constexpr uint64_t wholeWeight = 65536;

/// The source pixels behind one target pixel along one axis: a first, a last and what lies between. A single
/// one has the first weight.
struct Taps {
    int32_t first = 0;
    int32_t count = 0;
    uint64_t firstWeight = 0;
    uint64_t middleWeight = 0;
    uint64_t lastWeight = 0;

    uint64_t weight(int32_t i) const {
        return i == 0 ? firstWeight : i == count - 1 ? lastWeight : middleWeight;
    }
};

/// How one axis of the picture maps to one axis of the buffer.
class Axis {
  public:
    Axis(int32_t sourceLength, double start, double length, int32_t bufferLength)
        : _sourceLength(sourceLength), _start(start), _scale(sourceLength / length) {
        // The buffer's pixels whose centres the picture covers.
        const double limit = bufferLength;
        begin = static_cast<int32_t>(std::clamp(std::ceil(start - 0.5), 0.0, limit));
        end = static_cast<int32_t>(std::clamp(std::ceil(start + length - 0.5), 0.0, limit));
    }

    bool isIdentity() const { return _scale == 1 && _start == std::floor(_start); }
    int32_t sourceOf(int32_t target) const { return target - static_cast<int32_t>(_start); }
    Taps taps(int32_t target) const { return _scale > 1 ? averaging(target) : interpolating(target); }

    int32_t begin = 0;
    int32_t end = 0;

  private:
    /// In 256ths of a source pixel, within the picture.
    int64_t position(double target) const {
        return static_cast<int64_t>(std::clamp((target - _start) * _scale, 0.0, 1.0 * _sourceLength) * 256);
    }

    Taps averaging(int32_t target) const {
        const int64_t length = int64_t{_sourceLength} * 256;
        const int64_t from = std::min(position(target), length - 256);
        const int64_t to = std::max(position(target + 1.0), from + 1);
        const auto first = static_cast<int32_t>(from >> 8);
        const auto count = static_cast<int32_t>((to + 255) >> 8) - first;
        if (count == 1) return {first, 1, wholeWeight, 0, 0};
        const auto share = [whole = static_cast<uint64_t>(to - from)](int64_t part) {
            return static_cast<uint64_t>(part) * wholeWeight / whole;
        };
        const uint64_t firstWeight = share(256 - (from & 255));
        const uint64_t middleWeight = share(256);
        return {first, count, firstWeight, middleWeight,
                wholeWeight - firstWeight - middleWeight * static_cast<uint64_t>(count - 2)};
    }

    Taps interpolating(int32_t target) const {
        const double centre = (target + 0.5 - _start) * _scale - 0.5;
        const double limit = _sourceLength - 1.0;
        const auto at = static_cast<int64_t>(std::llround(std::clamp(centre, 0.0, limit) * wholeWeight));
        const auto fraction = static_cast<uint64_t>(at) % wholeWeight;
        const auto first = static_cast<int32_t>(at / static_cast<int64_t>(wholeWeight));
        return {first, fraction == 0 ? 1 : 2, wholeWeight - fraction, 0, fraction};
    }

    int32_t _sourceLength;
    double _start;
    double _scale;
};

/// Columns that are worked on together, so that their taps and sums fit on the stack.
constexpr int32_t stripWidth = 256;

template <class Reader>
class StripScaler {
  public:
    StripScaler(const CGImage& image, const Axis& columns, int32_t begin, int32_t end)
        : _image(image), _begin(begin), _count(static_cast<std::size_t>(end - begin)) {
        for (std::size_t i = 0; i < _count; ++i)
            _taps[i] = columns.taps(begin + static_cast<int32_t>(i));
    }

    void scaleRow(const Taps& rows, uint8_t* target) {
        std::fill_n(_values.begin(), _count, 0);
        if constexpr (Reader::hasAlpha) std::fill_n(_alphas.begin(), _count, 0);
        for (int32_t i = 0; i < rows.count; ++i) {
            addRow(_image.row(rows.first + i).data(), rows.weight(i));
        }
        for (std::size_t i = 0; i < _count; ++i) {
            uint8_t& pixel = target[static_cast<std::size_t>(_begin) + i];
            uint64_t sum = _values[i];
            if constexpr (Reader::hasAlpha) sum += (255 * whole - _alphas[i]) / 255 * pixel;
            pixel = static_cast<uint8_t>(std::min<uint64_t>((sum + whole / 2) / whole, 255));
        }
    }

  private:
    void addRow(const uint8_t* row, uint64_t rowWeight) {
        for (std::size_t i = 0; i < _count; ++i) {
            const Taps& taps = _taps[i];
            const uint8_t* pixel = row + static_cast<std::size_t>(taps.first) * Reader::step;
            _values[i] +=
                rowWeight * weighted(pixel, taps, [this](const uint8_t* p) { return _reader.value(p); });
            if constexpr (Reader::hasAlpha) _alphas[i] += rowWeight * weighted(pixel, taps, Reader::alpha);
        }
    }

    template <class Component>
    static uint64_t weighted(const uint8_t* pixel, const Taps& taps, Component component) {
        uint64_t sum = taps.firstWeight * component(pixel);
        if (taps.count == 1) return sum;
        uint64_t middle = 0;
        for (int32_t i = 2; i < taps.count; ++i) {
            pixel += Reader::step;
            middle += component(pixel);
        }
        return sum + taps.middleWeight * middle + taps.lastWeight * component(pixel + Reader::step);
    }

    /// Both axes together.
    static constexpr uint64_t whole = wholeWeight * wholeWeight;

    const CGImage& _image;
    const Reader _reader{};
    int32_t _begin;
    std::size_t _count;
    std::array<Taps, stripWidth> _taps{};
    std::array<uint64_t, stripWidth> _values{};
    std::array<uint64_t, stripWidth> _alphas{};
};

struct Target {
    uint8_t* data;
    std::size_t bytesPerRow;
    uint8_t* row(int32_t y) const { return data + static_cast<std::size_t>(y) * bytesPerRow; }
};

template <class Reader>
void copyLuminance(const CGImage& image, const Axis& columns, const Axis& rows, const Target& target) {
    const Reader reader{};
    for (int32_t y = rows.begin; y < rows.end; ++y) {
        const uint8_t* pixel = image.row(rows.sourceOf(y)).data() +
                               static_cast<std::size_t>(columns.sourceOf(columns.begin)) * Reader::step;
        uint8_t* out = target.row(y);
        for (int32_t x = columns.begin; x < columns.end; ++x, pixel += Reader::step) {
            uint32_t value = reader.value(pixel);
            if constexpr (Reader::hasAlpha) value += ((255 - Reader::alpha(pixel)) * out[x] + 127) / 255;
            out[x] = static_cast<uint8_t>(std::min(value, 255U));
        }
    }
}

template <class Reader>
void drawWith(const CGImage& image, const Axis& columns, const Axis& rows, const Target& target) {
    if (columns.isIdentity() && rows.isIdentity()) return copyLuminance<Reader>(image, columns, rows, target);
    for (int32_t x = columns.begin; x < columns.end; x += stripWidth) {
        StripScaler<Reader> strip(image, columns, x, std::min(x + stripWidth, columns.end));
        for (int32_t y = rows.begin; y < rows.end; ++y)
            strip.scaleRow(rows.taps(y), target.row(y));
    }
}

bool isOpaque(std::span<const uint8_t> rgba) {
    uint8_t all = 255;
    for (std::size_t i = 3; i < rgba.size(); i += 4)
        all &= rgba[i];
    return all == 255;
}

}  // namespace

CGDataProviderRef CGDataProviderCreateWithData(const uint8_t* data, std::size_t size) {
    return std::make_shared<CGDataProvider>(CGDataProvider{data, size});
}

CGImageRef CGImageCreate(int32_t width, int32_t height, int32_t bitsPerComponent, int32_t bitsPerPixel,
                         int32_t bytesPerRow, CGColorSpace space, const CGDataProviderRef& provider) {
    if (!provider || !provider->data || space != CGColorSpace::deviceGray) return nullptr;
    if (width <= 0 || height <= 0 || bitsPerComponent != 8 || bitsPerPixel != 8 || bytesPerRow < width)
        return nullptr;
    const auto columns = static_cast<std::size_t>(width);
    const auto stride = static_cast<std::size_t>(bytesPerRow);
    const auto rows = static_cast<std::size_t>(height);
    if (provider->size < stride * (rows - 1) + columns) return nullptr;
    std::vector<uint8_t> pixels(columns * rows);
    for (std::size_t y = 0; y < rows; ++y) {
        std::memcpy(pixels.data() + y * columns, provider->data + y * stride, columns);
    }
    return std::make_shared<CGImage>(width, height, CGImageFormat::gray8, std::move(pixels));
}

CGBitmapContext::CGBitmapContext(uint8_t* data, int32_t width, int32_t height, int32_t bytesPerRow,
                                 CGColorSpace)
    : _data(data), _width(width), _height(height), _bytesPerRow(bytesPerRow) {}

void CGBitmapContext::drawImage(CGRect rect, const CGImage& image) {
    // False for NaN too; infinite sides have no scale.
    if (!(rect.size.width > 0 && rect.size.height > 0) || !isFinite(rect)) return;
    const Axis columns(image.width(), rect.origin.x, rect.size.width, _width);
    const Axis rows(image.height(), rect.origin.y, rect.size.height, _height);
    if (columns.begin >= columns.end || rows.begin >= rows.end) return;
    const Target target{_data, static_cast<std::size_t>(_bytesPerRow)};
    switch (image.format()) {
        case CGImageFormat::gray8:
            return drawWith<GrayReader>(image, columns, rows, target);
        case CGImageFormat::rgb565:
            return drawWith<Rgb565Reader>(image, columns, rows, target);
        case CGImageFormat::rgba8888:
            if (isOpaque(image.pixels())) return drawWith<OpaqueRgbaReader>(image, columns, rows, target);
            return drawWith<RgbaReader>(image, columns, rows, target);
    }
}
