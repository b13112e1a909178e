// Output through a descriptor, input by name, colours between screen and film.
// Writing through a descriptor tells why the disk refused, and keeps the caller's lock on the file.
#include "hosts/film/ffmpeg_objects.h"

#include <cerrno>
#include <cstring>
#include <unistd.h>

namespace {

constexpr int kBufferBytes = 1 << 16;

}  // namespace

FfmpegOutput::~FfmpegOutput() {
    if (!_format) return;
    if (_format->pb) {
        av_freep(&_format->pb->buffer);
        avio_context_free(&_format->pb);
    }
    avformat_free_context(_format);
}

bool FfmpegOutput::open() {
    if (!check(avformat_alloc_output_context2(&_format, nullptr, "mp4", nullptr))) return false;
    auto* buffer = static_cast<unsigned char*>(av_malloc(kBufferBytes));
    _format->pb =
        buffer ? avio_alloc_context(buffer, kBufferBytes, 1, this, nullptr, &writeBytes, &seekTo) : nullptr;
    return check(_format->pb ? 0 : AVERROR(ENOMEM));
}

int FfmpegOutput::writeBytes(void* output, uint8_t* bytes, int count) {
    auto& self = *static_cast<FfmpegOutput*>(output);
    int done = 0;
    while (done < count) {
        const ssize_t step = ::write(self._descriptor, bytes + done, static_cast<std::size_t>(count - done));
        if (step < 0 && errno == EINTR) continue;
        if (step < 0) {
            self._diskError = errno;
            return AVERROR(errno);
        }
        done += static_cast<int>(step);
    }
    return count;
}

int64_t FfmpegOutput::seekTo(void* output, int64_t offset, int whence) {
    if (whence == AVSEEK_SIZE) return AVERROR(ENOSYS);
    return ::lseek(static_cast<FfmpegOutput*>(output)->_descriptor, offset, whence & ~AVSEEK_FORCE);
}

bool FfmpegOutput::check(int code) {
    if (code >= 0 && _diskError == 0) return true;
    if (_diskError == ENOSPC || _diskError == EDQUOT) {
        _error = "the disk is full";
    } else {
        _error = _diskError != 0 ? std::strerror(_diskError) : ffmpegError(code);
    }
    return false;
}

bool FfmpegInput::open(const std::string& path, std::string& error) {
    const std::string url = "file:" + path;
    int code = avformat_open_input(&_format, url.c_str(), nullptr, nullptr);
    if (code >= 0) code = avformat_find_stream_info(_format, nullptr);
    if (code >= 0) code = av_find_best_stream(_format, AVMEDIA_TYPE_VIDEO, -1, -1, nullptr, 0);
    if (code < 0) error = ffmpegError(code);
    _stream = code;
    return code >= 0;
}

bool FfmpegInput::read(AVPacket* packet) {
    while (av_read_frame(_format, packet) >= 0) {
        if (packet->stream_index == _stream) return true;
        av_packet_unref(packet);
    }
    return false;
}

std::string ffmpegError(int code) {
    char text[AV_ERROR_MAX_STRING_SIZE] = {};
    av_strerror(code, text, sizeof text);
    return text;
}

FfmpegPointer<SwsContext> makeScaler(int fromWidth, int fromHeight, AVPixelFormat from, int toWidth,
                                     int toHeight, AVPixelFormat to) {
    FfmpegPointer<SwsContext> scaler(sws_getContext(fromWidth, fromHeight, from, toWidth, toHeight, to,
                                                    SWS_BILINEAR, nullptr, nullptr, nullptr));
    if (!scaler) return nullptr;
    const int* colors = sws_getCoefficients(SWS_CS_ITU709);
    const auto isFilm = [](AVPixelFormat format) { return format == AV_PIX_FMT_YUV420P; };
    sws_setColorspaceDetails(scaler.get(), colors, isFilm(from) ? 0 : 1, colors, isFilm(to) ? 0 : 1, 0,
                             1 << 16, 1 << 16);
    return scaler;
}
