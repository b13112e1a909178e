// Seeking, decoding, and the way back from the film's colours.
// One picture is decoded ahead: only the next one's time tells how long the present one is seen.
#include "hosts/film/ffmpeg_reader.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

/// Seconds up to which decoding on is not slower than seeking.
constexpr double kNear = 0.7;

}  // namespace

bool FfmpegReader::open(const std::string& path, std::string& error) {
    if (!_input.open(path, error) || !openDecoder(error)) return false;
    const AVFormatContext* format = _input.format();
    _duration = format->duration > 0 ? static_cast<double>(format->duration) / AV_TIME_BASE : 0;
    if (decodeNext() && _duration > 0) return true;
    error = "there is no picture in it";
    return false;
}

bool FfmpegReader::openDecoder(std::string& error) {
    const AVCodecParameters* parameters = _input.stream()->codecpar;
    const AVCodec* codec = avcodec_find_decoder(parameters->codec_id);
    _decoder.reset(avcodec_alloc_context3(codec));
    _packet.reset(av_packet_alloc());
    _frame.reset(av_frame_alloc());
    _next.reset(av_frame_alloc());
    if (!_decoder || !_packet || !_frame || !_next) return false;
    _decoder->thread_count = 0;
    _decoder->thread_type = FF_THREAD_SLICE;
    int code = avcodec_parameters_to_context(_decoder.get(), parameters);
    if (code >= 0) code = avcodec_open2(_decoder.get(), codec, nullptr);
    if (code < 0) error = ffmpegError(code);
    return code >= 0;
}

bool FfmpegReader::seek(int64_t pts) {
    avcodec_flush_buffers(_decoder.get());
    av_frame_unref(_frame.get());
    av_frame_unref(_next.get());
    _atEnd = false;
    return av_seek_frame(_input.format(), _input.stream()->index, pts, AVSEEK_FLAG_BACKWARD) >= 0 &&
           decodeNext();
}

/// Fills _next; NO at the end.
bool FfmpegReader::decodeNext() {
    av_frame_unref(_next.get());
    for (;;) {
        const int code = avcodec_receive_frame(_decoder.get(), _next.get());
        if (code >= 0) return true;
        if (code != AVERROR(EAGAIN)) {
            _atEnd = true;
            return false;
        }
        if (_input.read(_packet.get())) {
            avcodec_send_packet(_decoder.get(), _packet.get());
            av_packet_unref(_packet.get());
        } else {
            avcodec_send_packet(_decoder.get(), nullptr);
        }
    }
}

std::shared_ptr<const FilmPicture> FfmpegReader::pictureAt(double time, CGSize fit) {
    const AVRational base = _input.stream()->time_base;
    const int64_t start = std::max<int64_t>(_input.stream()->start_time, 0);
    const int64_t pts = start + std::llround(std::max(time, 0.0) * base.den / base.num);
    const auto near = std::llround(kNear * base.den / base.num);
    const bool hasFrame = _frame->data[0] != nullptr;
    const int64_t at = hasFrame ? _frame->pts : _next->pts;
    if ((hasFrame && pts < at) || (!_atEnd && pts > at + near) || (_atEnd && !hasFrame)) seek(pts);
    while (!_atEnd && (_next->pts <= pts || _frame->data[0] == nullptr)) {
        std::swap(_frame, _next);
        decodeNext();
    }
    return _frame->data[0] != nullptr ? convert(fit) : nullptr;
}

std::shared_ptr<const FilmPicture> FfmpegReader::convert(CGSize fit) {
    if (_picture && _frame->pts == _pictureTime && fit == _fit) return _picture;
    const double scale = std::min({fit.width / _frame->width, fit.height / _frame->height, 1.0});
    auto picture = std::make_shared<FilmPicture>();
    picture->width = std::max(1, static_cast<int32_t>(std::lround(_frame->width * scale)));
    picture->height = std::max(1, static_cast<int32_t>(std::lround(_frame->height * scale)));
    if (!_scaler || fit != _fit)
        _scaler = makeScaler(_frame->width, _frame->height, AV_PIX_FMT_YUV420P, picture->width,
                             picture->height, AV_PIX_FMT_RGBA);
    if (!_scaler) return nullptr;
    const auto row = static_cast<std::size_t>(picture->width) * 4;
    // The scaler writes a few bytes beyond the last row.
    picture->rgba.resize(row * static_cast<std::size_t>(picture->height) + 64);
    uint8_t* const to[4] = {picture->rgba.data(), nullptr, nullptr, nullptr};
    const int strides[4] = {static_cast<int>(row), 0, 0, 0};
    sws_scale(_scaler.get(), _frame->data, _frame->linesize, 0, _frame->height, to, strides);
    picture->rgba.resize(row * static_cast<std::size_t>(picture->height));
    _fit = fit;
    _pictureTime = _frame->pts;
    _picture = std::move(picture);
    return _picture;
}
