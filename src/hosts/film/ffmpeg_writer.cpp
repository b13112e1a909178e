// Pictures in, packets out.
// No picture refers to a later one, so that a film can be cut at any picture without encoding it anew.
#include "hosts/film/ffmpeg_writer.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr const char* kFragmentMicroseconds = "250000";

/// The largest place of the frame's shape within the film, at even pixels: colours lie on every other one.
struct Place {
    int x, y, width, height;
};

Place placeOf(const CapturedFrame& frame, const FilmFormat& film) {
    // A side that is odd by one pixel loses it.
    if (frame.width / 2 == film.width / 2 && frame.height / 2 == film.height / 2)
        return {0, 0, film.width, film.height};
    const double scale = std::min(static_cast<double>(film.width) / frame.width,
                                  static_cast<double>(film.height) / frame.height);
    const auto even = [scale](int side, int most) {
        return std::clamp(static_cast<int>(std::lround(side * scale / 2)) * 2, 2, most);
    };
    const int width = even(frame.width, film.width);
    const int height = even(frame.height, film.height);
    return {(film.width - width) / 4 * 2, (film.height - height) / 4 * 2, width, height};
}

void paintBlack(AVFrame& picture) {
    const ptrdiff_t strides[4] = {picture.linesize[0], picture.linesize[1], picture.linesize[2], 0};
    av_image_fill_black(picture.data, strides, AV_PIX_FMT_YUV420P, AVCOL_RANGE_MPEG, picture.width,
                        picture.height);
}

}  // namespace

bool FfmpegWriter::check(int code) {
    if (code >= 0 && _output.check(0)) return true;
    _output.check(code);
    _error = _output.error();
    _failed = true;
    return false;
}

bool FfmpegWriter::open() {
    return check(_output.open() ? 0 : AVERROR(ENOMEM)) && openCodec() && openFile();
}

bool FfmpegWriter::openCodec() {
    const AVCodec* encoder = avcodec_find_encoder_by_name("libx264");
    if (!encoder) {
        _error = "there is no encoder for H.264";
        return false;
    }
    _codec.reset(avcodec_alloc_context3(encoder));
    _picture.reset(av_frame_alloc());
    _packet.reset(av_packet_alloc());
    _held.reset(av_packet_alloc());
    if (!_codec || !_picture || !_packet || !_held) return check(AVERROR(ENOMEM));
    _codec->width = _format.width;
    _codec->height = _format.height;
    _codec->pix_fmt = AV_PIX_FMT_YUV420P;
    _codec->time_base = {1, _format.ticksPerSecond};
    _codec->framerate = {_format.rate, 1};
    _codec->gop_size = 10 * _format.rate;
    _codec->max_b_frames = 0;
    _codec->color_range = AVCOL_RANGE_MPEG;
    _codec->colorspace = AVCOL_SPC_BT709;
    _codec->color_primaries = AVCOL_PRI_BT709;
    _codec->color_trc = AVCOL_TRC_BT709;
    _codec->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
    av_opt_set(_codec->priv_data, "preset", _format.live ? "ultrafast" : "veryfast", 0);
    if (_format.live) av_opt_set(_codec->priv_data, "tune", "zerolatency", 0);
    av_opt_set(_codec->priv_data, "crf", "20", 0);
    av_opt_set(_codec->priv_data, "forced-idr", "1", 0);
    _picture->format = AV_PIX_FMT_YUV420P;
    _picture->width = _format.width;
    _picture->height = _format.height;
    return check(avcodec_open2(_codec.get(), encoder, nullptr)) &&
           check(av_frame_get_buffer(_picture.get(), 0));
}

bool FfmpegWriter::openFile() {
    AVStream* stream = _output.addStream();
    if (!stream) return check(AVERROR(ENOMEM));
    stream->time_base = _codec->time_base;
    stream->avg_frame_rate = _codec->framerate;
    if (!check(avcodec_parameters_from_context(stream->codecpar, _codec.get()))) return false;
    _output.format()->flags |= AVFMT_FLAG_FLUSH_PACKETS;
    AVDictionary* options = nullptr;
    av_dict_set(&options, "movflags", "empty_moov+default_base_moof", 0);
    av_dict_set(&options, "frag_duration", kFragmentMicroseconds, 0);
    const int code = avformat_write_header(_output.format(), &options);
    av_dict_free(&options);
    _begun = code >= 0;
    return check(code);
}

bool FfmpegWriter::convert(const CapturedFrame& frame) {
    if (!check(av_frame_make_writable(_picture.get()))) return false;
    const Place place = placeOf(frame, _format);
    // Of a side that is odd by one, the scaler sees the even part, pixel by pixel.
    const bool isPlain = place.width == _format.width && place.height == _format.height;
    const int width = isPlain ? std::min(frame.width, place.width) : frame.width;
    const int height = isPlain ? std::min(frame.height, place.height) : frame.height;
    if (!_scaler || width != _fromWidth || height != _fromHeight || frame.order != _fromOrder) {
        _scaler =
            makeScaler(width, height, frame.order == PixelOrder::bgra ? AV_PIX_FMT_BGR0 : AV_PIX_FMT_RGB0,
                       place.width, place.height, AV_PIX_FMT_YUV420P);
        if (!_scaler) return check(AVERROR(EINVAL));
        _fromWidth = width;
        _fromHeight = height;
        _fromOrder = frame.order;
        paintBlack(*_picture);
    }
    const int stride = 4 * frame.width;
    const uint8_t* const topRow =
        frame.pixels.data() + static_cast<std::size_t>(stride) * static_cast<std::size_t>(frame.height - 1);
    const uint8_t* const source[4] = {topRow, nullptr, nullptr, nullptr};
    const int sourceStride[4] = {-stride, 0, 0, 0};
    uint8_t* planes[4] = {};
    for (int plane = 0; plane < 3; ++plane) {
        const int shift = plane == 0 ? 0 : 1;
        planes[plane] = _picture->data[plane] +
                        static_cast<ptrdiff_t>(place.y >> shift) * _picture->linesize[plane] +
                        (place.x >> shift);
    }
    return check(sws_scale(_scaler.get(), source, sourceStride, 0, height, planes, _picture->linesize));
}

bool FfmpegWriter::write(const CapturedFrame& frame, int64_t tick) {
    if (_failed || !convert(frame)) return false;
    // Twice a second a picture that stands alone: what scrubbing in the preview starts from.
    const bool isKey = tick == 0 || tick - _lastKey >= _format.ticksPerSecond / 2;
    if (isKey) _lastKey = tick;
    _picture->pict_type = isKey ? AV_PICTURE_TYPE_I : AV_PICTURE_TYPE_NONE;
    _picture->pts = tick;
    return encode(_picture.get());
}

/// Null for the end.
bool FfmpegWriter::encode(AVFrame* frame) {
    if (!check(avcodec_send_frame(_codec.get(), frame))) return false;
    for (;;) {
        const int code = avcodec_receive_packet(_codec.get(), _packet.get());
        if (code == AVERROR(EAGAIN) || code == AVERROR_EOF) return true;
        if (!check(code) || !passOn(_packet.get())) return false;
    }
}

/// Writes the packet that waits and keeps the next one, which is null at the end.
bool FfmpegWriter::passOn(AVPacket* next) {
    bool written = true;
    if (_held->data != nullptr) {
        _held->duration = next ? next->pts - _held->pts : std::max(_format.ticksPerSecond / _format.rate, 1);
        _held->stream_index = 0;
        av_packet_rescale_ts(_held.get(), _codec->time_base, _output.format()->streams[0]->time_base);
        written = check(av_write_frame(_output.format(), _held.get()));
        av_packet_unref(_held.get());
    }
    if (next) av_packet_move_ref(_held.get(), next);
    return written;
}

bool FfmpegWriter::finish() {
    if (!_begun) return false;
    const bool whole = !_failed && encode(nullptr) && passOn(nullptr);
    _begun = false;
    // Releases what the file holds, even where it failed.
    return check(av_write_trailer(_output.format())) && whole;
}
