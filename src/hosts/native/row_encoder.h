// Picture files written row by row, so that the largest picture never lies in memory as a whole.
// One encoder per file format, over a sink for the bytes.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>

#include "platform/graphics/picture_texts.h"

class ByteSink {
  public:
    virtual ~ByteSink() = default;
    /// NO stops the encoder. Called from C code: must not throw.
    virtual bool write(std::span<const uint8_t> bytes) noexcept = 0;
};

enum class PixelLayout { gray = 1, rgb = 3, rgba = 4 };  ///< the value is the bytes of a pixel

class RowEncoder {
  public:
    virtual ~RowEncoder() = default;
    virtual bool begin(int32_t width, int32_t height, PixelLayout layout, const PictureTexts& texts) = 0;
    /// One row of the size begun with.
    virtual bool writeRow(const uint8_t* row) = 0;
    /// After as many rows as the picture is high.
    virtual bool finish() = 0;
    /// The library's words after a NO; empty if the sink was the one to refuse.
    virtual std::string error() const = 0;
};

/// Up to 1,000,000 pixels a side; every layout. The sink must outlive the encoder.
std::unique_ptr<RowEncoder> makePngEncoder(ByteSink& sink);
/// Up to 65,500 pixels a side; gray and rgb. Quality 0 to 1.
std::unique_ptr<RowEncoder> makeJpegEncoder(ByteSink& sink, double quality);
