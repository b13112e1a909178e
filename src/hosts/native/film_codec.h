// Films as files: H.264 in MP4, written, read and cut.
// Behind an interface, because the library that does it is large: it is loaded with the first film, not with
// the app.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/foundation/geometry.h"
#include "platform/host/screen_capture.h"

/// One film under way, not shared between threads. After a failure it takes no more.
class FilmWriter {
  public:
    virtual ~FilmWriter() = default;
    /// tick: the frame's time in ticks of the format, above the last one's. Frames of another size than the
    /// film's are fitted into it.
    virtual bool write(const CapturedFrame& frame, int64_t tick) = 0;
    virtual bool finish() = 0;
    /// In a line.
    virtual const std::string& error() const = 0;
};

struct FilmPicture {
    int32_t width = 0;
    int32_t height = 0;
    std::vector<uint8_t> rgba;  ///< top row first
};

class FilmReader {
  public:
    virtual ~FilmReader() = default;
    /// Seconds.
    virtual double duration() const = 0;
    /// What is seen at a time, scaled to fit that many pixels; the same object while it is the same picture.
    /// Null where the file cannot be read.
    virtual std::shared_ptr<const FilmPicture> pictureAt(double time, CGSize fit) = 0;
};

struct FilmFormat {
    int32_t width = 0;  ///< pixels, even
    int32_t height = 0;
    int32_t ticksPerSecond = 90000;
    /// Of frames, about; what there is in truth is in their ticks.
    int32_t rate = 60;
    /// Written while it happens: cheap to encode, and on the disk within half a second.
    bool live = true;
};

/// Descriptors stay the caller's.
class FilmCodec {
  public:
    virtual ~FilmCodec() = default;
    /// A film that can be played to the last half second whatever happens to the process. Null with an error.
    virtual std::unique_ptr<FilmWriter> makeWriter(int descriptor, const FilmFormat& format,
                                                   std::string& error) = 0;
    virtual std::unique_ptr<FilmReader> makeReader(const std::string& path, std::string& error) = 0;
    /// The part between two times as a film with its table of contents, for every player. Nothing is encoded
    /// anew.
    virtual bool copyPart(const std::string& path, double from, double to, int descriptor,
                          std::string& error) = 0;
};

/// Loads the codec once, from any thread. Null with an error where it cannot be.
FilmCodec* loadFilmCodec(std::string& error);
/// FilmCodec::copyPart, onto the disk itself.
bool copyFilm(const std::string& path, double from, double to, int descriptor, std::string& error);
/// Whether there is one to load.
bool hasFilmCodec();
