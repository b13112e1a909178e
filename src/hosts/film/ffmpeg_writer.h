// H.264 in MP4 that is cut into fragments while it is written.
// So the file is a film at any moment, whatever happens to the process.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "hosts/film/ffmpeg_objects.h"
#include "hosts/native/film_codec.h"

class FfmpegWriter : public FilmWriter {
  public:
    FfmpegWriter(int descriptor, const FilmFormat& format) : _output(descriptor), _format(format) {}

    bool open();
    bool write(const CapturedFrame& frame, int64_t tick) override;
    bool finish() override;
    const std::string& error() const override { return _error; }

  private:
    bool openCodec();
    bool openFile();
    bool convert(const CapturedFrame& frame);
    bool encode(AVFrame* frame);
    bool passOn(AVPacket* next);
    bool check(int code);

    FfmpegOutput _output;
    FilmFormat _format;
    std::string _error;
    FfmpegPointer<AVCodecContext> _codec;
    FfmpegPointer<AVFrame> _picture;
    FfmpegPointer<AVPacket> _packet;
    /// The packet before, which waits for the next one to know how long it is seen.
    FfmpegPointer<AVPacket> _held;
    FfmpegPointer<SwsContext> _scaler;
    /// Of the scaler.
    int32_t _fromWidth = 0;
    int32_t _fromHeight = 0;
    PixelOrder _fromOrder = PixelOrder::rgba;
    int64_t _lastKey = 0;
    bool _begun = false;
    bool _failed = false;
};
