// Decodes a film for the preview, one picture at a time.
// Going forward decodes on; going back, or far, starts at the picture before that stands alone.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "hosts/film/ffmpeg_objects.h"
#include "hosts/native/film_codec.h"

class FfmpegReader : public FilmReader {
  public:
    bool open(const std::string& path, std::string& error);
    double duration() const override { return _duration; }
    std::shared_ptr<const FilmPicture> pictureAt(double time, CGSize fit) override;

  private:
    bool openDecoder(std::string& error);
    bool seek(int64_t pts);
    bool decodeNext();
    std::shared_ptr<const FilmPicture> convert(CGSize fit);

    FfmpegInput _input;
    FfmpegPointer<AVCodecContext> _decoder;
    FfmpegPointer<AVPacket> _packet;
    /// What is seen, and what follows it; without data before the first and after the last one.
    FfmpegPointer<AVFrame> _frame;
    FfmpegPointer<AVFrame> _next;
    FfmpegPointer<SwsContext> _scaler;
    std::shared_ptr<const FilmPicture> _picture;
    int64_t _pictureTime = -1;
    CGSize _fit;
    double _duration = 0;
    bool _atEnd = false;
};
