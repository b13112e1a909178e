// JPEG files through libjpeg.
// The library's error exit is a longjmp: the functions that call it hold nothing that needs destruction.
#include <algorithm>
#include <array>
#include <cmath>
#include <csetjmp>
#include <cstdio>
#include <jpeglib.h>

#include "hosts/native/row_encoder.h"

namespace {

class JpegEncoder : public RowEncoder {
  public:
    JpegEncoder(ByteSink& sink, int quality) : _sink(sink), _quality(quality) {
        _jpeg.err = jpeg_std_error(&_errors);
        _jpeg.client_data = this;
        _errors.error_exit = onError;
        _errors.emit_message = onMessage;
        _destination.init_destination = onStart;
        _destination.empty_output_buffer = onFull;
        _destination.term_destination = onEnd;
    }
    ~JpegEncoder() override { jpeg_destroy_compress(&_jpeg); }
    JpegEncoder(const JpegEncoder&) = delete;
    JpegEncoder& operator=(const JpegEncoder&) = delete;

    bool begin(int32_t width, int32_t height, PixelLayout layout, const PictureTexts& texts) override {
        _comment = jpegCommentContent(texts);
        if (setjmp(_jump) != 0) return false;
        jpeg_create_compress(&_jpeg);
        _jpeg.client_data = this;
        _jpeg.dest = &_destination;
        _jpeg.image_width = static_cast<JDIMENSION>(width);
        _jpeg.image_height = static_cast<JDIMENSION>(height);
        _jpeg.input_components = static_cast<int>(layout);
        _jpeg.in_color_space = layout == PixelLayout::gray ? JCS_GRAYSCALE : JCS_RGB;
        jpeg_set_defaults(&_jpeg);
        jpeg_set_quality(&_jpeg, _quality, TRUE);
        // Filaments one pixel wide lose their colours when these are kept at half the resolution.
        if (_quality >= 90) _jpeg.comp_info[0].h_samp_factor = _jpeg.comp_info[0].v_samp_factor = 1;
        jpeg_start_compress(&_jpeg, TRUE);
        if (!_comment.empty()) {
            jpeg_write_marker(&_jpeg, JPEG_COM, reinterpret_cast<const JOCTET*>(_comment.data()),
                              static_cast<unsigned>(_comment.size()));
        }
        return true;
    }

    bool writeRow(const uint8_t* row) override {
        if (setjmp(_jump) != 0) return false;
        // The library only reads it.
        JSAMPROW rows[] = {const_cast<JSAMPROW>(row)};
        return jpeg_write_scanlines(&_jpeg, rows, 1) == 1;
    }

    bool finish() override {
        if (setjmp(_jump) != 0) return false;
        jpeg_finish_compress(&_jpeg);
        return true;
    }

    std::string error() const override { return _message.data(); }

  private:
    static JpegEncoder& self(j_common_ptr jpeg) { return *static_cast<JpegEncoder*>(jpeg->client_data); }
    static JpegEncoder& self(j_compress_ptr jpeg) { return *static_cast<JpegEncoder*>(jpeg->client_data); }

    [[noreturn]] static void onError(j_common_ptr jpeg) {
        JpegEncoder& encoder = self(jpeg);
        if (!encoder._sinkRefused) jpeg->err->format_message(jpeg, encoder._message.data());
        std::longjmp(encoder._jump, 1);
    }

    static void onMessage(j_common_ptr, int) {}

    static void onStart(j_compress_ptr jpeg) { self(jpeg).resetBuffer(); }

    static boolean onFull(j_compress_ptr jpeg) {
        self(jpeg).flush(jpeg, self(jpeg)._buffer.size());
        return TRUE;
    }

    static void onEnd(j_compress_ptr jpeg) {
        self(jpeg).flush(jpeg, self(jpeg)._buffer.size() - jpeg->dest->free_in_buffer);
    }

    void flush(j_compress_ptr jpeg, std::size_t count) {
        if (!_sink.write({_buffer.data(), count})) {
            _sinkRefused = true;
            onError(reinterpret_cast<j_common_ptr>(jpeg));
        }
        resetBuffer();
    }

    void resetBuffer() {
        _destination.next_output_byte = _buffer.data();
        _destination.free_in_buffer = _buffer.size();
    }

    ByteSink& _sink;
    int _quality;
    std::string _comment;
    jpeg_compress_struct _jpeg{};
    jpeg_error_mgr _errors{};
    jpeg_destination_mgr _destination{};
    std::jmp_buf _jump;
    std::array<JOCTET, 65536> _buffer{};
    std::array<char, JMSG_LENGTH_MAX> _message{};
    bool _sinkRefused = false;
};

}  // namespace

std::unique_ptr<RowEncoder> makeJpegEncoder(ByteSink& sink, double quality) {
    const double percent = std::isfinite(quality) ? std::clamp(quality, 0.0, 1.0) * 100 : 100;
    return std::make_unique<JpegEncoder>(sink, static_cast<int>(std::lround(percent)));
}
