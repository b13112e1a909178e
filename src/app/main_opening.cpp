// A link is the text itself, a picture a file that is read here.
// To another process goes the file's place: it reads the picture as one that is dropped on it.
#include "app/main_opening.h"

#include <filesystem>
#include <utility>
#include <variant>

#include "app/shared_picture.h"
#include "hosts/native/picture_file_reader.h"
#include "platform/foundation/file_url.h"

OrMistake<std::optional<HostEvent>> openingOf(const CommandLineOptions& options) {
    if (!options.link.empty()) return {HostOpenLink{options.link}, {}};
    if (options.picture.empty()) return {};
    auto read = readPictureFile(options.picture);
    if (const auto* unreadable = std::get_if<std::string>(&read)) return {{}, *unreadable};
    auto& picture = std::get<HostOpenPicture>(read);
    const auto place = readSharedPicture(picture.name, picture.texts);
    if (const auto* mistake = std::get_if<LinkMistake>(&place)) return {{}, mistake->line};
    return {std::move(picture), {}};
}

std::string handedOverText(const CommandLineOptions& options) {
    if (options.picture.empty()) return options.link;
    std::error_code error;
    const auto path = std::filesystem::absolute(options.picture, error);
    return error ? std::string() : fileURLOfPath(path.string());
}
