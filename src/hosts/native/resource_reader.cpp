// Finds and reads resource files.
// A missing one is an answer, not an error: who asked knows what it was for.
#include "hosts/native/resource_reader.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>

namespace {

std::optional<std::string> readFile(const std::string& path) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error)) return std::nullopt;
    std::ifstream file(path, std::ios::binary);
    if (!file) return std::nullopt;
    std::string text(std::istreambuf_iterator<char>(file), {});
    return file.bad() ? std::nullopt : std::optional(std::move(text));
}

}  // namespace

std::optional<std::string> findResourceFolder() {
    std::error_code error;
    const auto executable = std::filesystem::read_symlink("/proc/self/exe", error);
    const auto beside = executable.parent_path() / "resources";
    if (!error && std::filesystem::is_directory(beside, error)) return beside.string();
#ifdef ZENTARO_INSTALLED_RESOURCES
    if (std::filesystem::is_directory(ZENTARO_INSTALLED_RESOURCES, error)) return ZENTARO_INSTALLED_RESOURCES;
#endif
    return std::nullopt;
}

NSBundle::Reader makeFileResourceReader(std::string folder) {
    return [folder = std::move(folder)](const std::string& file) -> std::optional<std::string> {
        if (file.empty() || file.front() == '/' || file.find("..") != std::string::npos) return std::nullopt;
        return readFile(folder + "/" + file);
    };
}
