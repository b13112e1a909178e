// Loads the codec's module with the first film.
// One codec serves all films.
#include "hosts/native/film_codec.h"

#include <cerrno>
#include <mutex>

#include "hosts/native/atomic_file.h"
#include "hosts/native/program_module.h"

namespace {

constexpr const char* moduleFile = "zentaro_film.so";

}  // namespace

bool hasFilmCodec() {
    return hasProgramModule(moduleFile);
}

FilmCodec* loadFilmCodec(std::string& error) {
    static std::mutex mutex;
    static FilmCodec* codec = nullptr;
    const std::lock_guard lock(mutex);
    if (codec) return codec;
    void* entry = programModuleEntry(moduleFile, "zentaroFilmCodec", error);
    if (entry) {
        codec = reinterpret_cast<FilmCodec* (*)()>(entry)();
    } else {
        error = "the film codec cannot be loaded: " + error;
    }
    return codec;
}

bool copyFilm(const std::string& path, double from, double to, int descriptor, std::string& error) {
    FilmCodec* codec = loadFilmCodec(error);
    if (!codec || !codec->copyPart(path, from, to, descriptor, error)) return false;
    if (::fsync(descriptor) == 0) return true;
    error = describeSystemError(errno);
    return false;
}
