// A film in the app's folder as the preview wants it: pictures at times, a part saved, or all of it
// discarded.
#pragma once

#include <memory>
#include <string>

#include "hosts/native/clip_file.h"
#include "hosts/native/film_codec.h"

class FilmClip : public CapturedClip {
  public:
    /// Null with an error for a file that is no film or cannot be read. folder: where films are saved.
    static std::shared_ptr<FilmClip> open(std::shared_ptr<ClipFile> file, std::string folder,
                                          std::string& error);

    double duration() const override { return _duration; }
    CGImageRef pictureAt(double time, CGSize fit) override;
    Outcome save(double from, double to) override;
    bool canShare() const override;
    Outcome fileToShare(double from, double to) override;
    /// No picture comes any more.
    void discard() override;

  private:
    Outcome copyTo(const std::string& folder, double from, double to);
    FilmClip(std::shared_ptr<ClipFile> file, std::unique_ptr<FilmReader> reader, std::string folder)
        : _file(std::move(file)),
          _reader(std::move(reader)),
          _duration(_reader->duration()),
          _folder(std::move(folder)) {}

    std::shared_ptr<ClipFile> _file;
    std::unique_ptr<FilmReader> _reader;
    double _duration;
    std::string _folder;
    std::shared_ptr<const FilmPicture> _picture;
    CGImageRef _image;
};
