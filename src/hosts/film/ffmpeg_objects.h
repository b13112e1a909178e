// FFmpeg's objects with their ends, and its errors in words.
// Everything it allocates is freed by one of these.
#pragma once

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/imgutils.h>
#include <libavutil/opt.h>
#include <libswscale/swscale.h>
}

#include <memory>
#include <string>

struct FfmpegFree {
    void operator()(AVCodecContext* codec) const { avcodec_free_context(&codec); }
    void operator()(AVFrame* frame) const { av_frame_free(&frame); }
    void operator()(AVPacket* packet) const { av_packet_free(&packet); }
    void operator()(SwsContext* scaler) const { sws_freeContext(scaler); }
};

template <typename Object>
using FfmpegPointer = std::unique_ptr<Object, FfmpegFree>;

/// A file of the caller's that a film is written to.
class FfmpegOutput {
  public:
    explicit FfmpegOutput(int descriptor) : _descriptor(descriptor) {}
    ~FfmpegOutput();
    FfmpegOutput(const FfmpegOutput&) = delete;
    FfmpegOutput& operator=(const FfmpegOutput&) = delete;

    bool open();
    AVFormatContext* format() const { return _format; }
    /// Adds the one stream. Null without memory.
    AVStream* addStream() { return avformat_new_stream(_format, nullptr); }
    /// NO, with the reason in error(), for a code below 0: what the disk said goes before what FFmpeg did.
    bool check(int code);
    const std::string& error() const { return _error; }

  private:
    static int writeBytes(void* output, uint8_t* bytes, int count);
    static int64_t seekTo(void* output, int64_t offset, int whence);

    int _descriptor;
    AVFormatContext* _format = nullptr;
    int _diskError = 0;
    std::string _error;
};

/// A film that is read.
class FfmpegInput {
  public:
    FfmpegInput() = default;
    ~FfmpegInput() { avformat_close_input(&_format); }
    FfmpegInput(const FfmpegInput&) = delete;
    FfmpegInput& operator=(const FfmpegInput&) = delete;

    /// NO, with an error, for a file without pictures.
    bool open(const std::string& path, std::string& error);
    AVFormatContext* format() const { return _format; }
    AVStream* stream() const { return _format->streams[_stream]; }
    /// The next packet of the pictures; NO at the end.
    bool read(AVPacket* packet);

  private:
    AVFormatContext* _format = nullptr;
    int _stream = -1;
};

std::string ffmpegError(int code);
/// Scaler between RGB and the colours of the film's: BT.709 in video range.
FfmpegPointer<SwsContext> makeScaler(int fromWidth, int fromHeight, AVPixelFormat from, int toWidth,
                                     int toHeight, AVPixelFormat to);
