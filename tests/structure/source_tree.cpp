// Reads sources line by line and holds them against the rules; no preprocessor runs, because a rule about an
// include holds whether or not the compiler of the day would reach it.
#include "tests/structure/source_tree.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <optional>
#include <ostream>
#include <regex>
#include <string_view>

namespace structure {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t longestFile = 449;

// The layers that make up the app; platform/ and hosts/ carry them and know none of them.
const std::regex appLayer("(app|main_screen|render|tween|routing|screens|coach_marks|rating)/.*");
const std::regex pureLayer("(tween|routing)/.*|rating/irate_policy.*");
const std::regex mainSource(R"(app/main[^/]*\.(cpp|h))");
const std::regex standardHeader("[a-z_0-9]+");

// Headers of the libraries that a host is made of, and those of OpenGL ES, which also the drawing layers use.
const std::regex hostLibrary(
    R"((SDL2?/.*|SDL[^/]*\.h|(cairo|pango)[^/]*(/.*|\.h)|EGL/.*|gbm\.h|libpng.*/.*|png[^/]*\.h|j(peglib|error|)"
    R"(config|morecfg)\.h|turbojpeg\.h|lib(av|sw|postproc)[^/]*/.*|curl/.*|emscripten(/.*|\.h)|X11/.*))");
const std::regex glLibrary(R"((GLES[23]?|GL|KHR)/.*)");
const std::regex glUser("(render|platform/gl|hosts)/.*");

const std::regex includeLine(R"(\s*#\s*include\b\s*(.*))");
const std::regex includeName(R"(([<"])([^">]+)[">].*)");
const std::regex conditionalLine(R"(\s*#\s*(if|ifdef|ifndef|elif|elifdef|elifndef)\b.*)");

bool isIn(std::string_view path, std::string_view folder) {
    return path.starts_with(folder) && path.substr(folder.size()).starts_with('/');
}

bool matches(const std::string& text, const std::regex& pattern) {
    return std::regex_match(text, pattern);
}

// The rule that `includer` (a path under src/) breaks by naming `target`, if any.
std::optional<std::string> brokenIncludeRule(const std::string& includer, const std::string& target,
                                             bool existsInSrc, bool quoted) {
    if (quoted && !existsInSrc) {
        return "a quoted include names a file from src/ on";
    }
    const bool pure = matches(includer, pureLayer);
    const std::string ownLayer = includer.substr(0, includer.find('/'));
    if (isIn(includer, "platform") && (matches(target, appLayer) || isIn(target, "hosts"))) {
        return "platform/ includes neither the app nor a host";
    }
    if (isIn(includer, "hosts") && matches(target, appLayer)) {
        return "hosts/ do not include the app";
    }
    if (isIn(target, "hosts") && !isIn(includer, "hosts") && !matches(includer, mainSource)) {
        return "hosts/ are included by main alone";
    }
    if (matches(target, hostLibrary) && !isIn(includer, "hosts")) {
        return "headers of a host's libraries appear under src/hosts/ alone";
    }
    if (matches(target, glLibrary) && !matches(includer, glUser)) {
        return "OpenGL ES headers appear in render/, platform/gl/ and hosts/ alone";
    }
    const bool allowedInPure = isIn(target, ownLayer) || isIn(target, "platform/foundation") ||
                               (!quoted && matches(target, standardHeader));
    if (pure && !allowedInPure) {
        return "tween/, routing/ and the rating policy include themselves, platform/foundation and the "
               "standard library";
    }
    return std::nullopt;
}

std::optional<std::string> brokenLineRule(const fs::path& root, const std::string& includer,
                                          const std::string& line) {
    std::smatch found;
    if (matches(line, conditionalLine) && !isIn(includer, "hosts")) {
        return "no conditional compilation outside src/hosts/";
    }
    if (!std::regex_match(line, found, includeLine)) {
        return std::nullopt;
    }
    const std::string rest = found[1];
    if (!std::regex_match(rest, found, includeName)) {
        return "an include names its file outright";
    }
    const std::string target = found[2];
    return brokenIncludeRule(includer, target, fs::exists(root / "src" / target), found[1] == "\"");
}

std::vector<std::string> linesOf(const fs::path& file) {
    std::ifstream in(file);
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);) {
        lines.push_back(line);
    }
    return lines;
}

bool isSource(const fs::path& file) {
    static constexpr std::array<std::string_view, 8> endings = {".h",   ".hpp", ".inc", ".c",
                                                                ".cpp", ".cc",  ".vsh", ".fsh"};
    return std::ranges::find(endings, file.extension().string()) != endings.end();
}

std::vector<fs::path> sourceFiles(const fs::path& root) {
    std::vector<fs::path> files;
    for (const char* folder : {"src", "tests", "bench", "fuzz", "resources"}) {
        if (!fs::is_directory(root / folder)) {
            continue;
        }
        for (const auto& entry : fs::recursive_directory_iterator(root / folder)) {
            if (entry.is_regular_file() && isSource(entry.path())) {
                files.push_back(entry.path());
            }
        }
    }
    std::ranges::sort(files);
    return files;
}

void judgeForm(const std::string& name, const std::vector<std::string>& lines, std::vector<Violation>& out) {
    if (lines.size() < 2 || !lines[0].starts_with("// ") || !lines[1].starts_with("//")) {
        out.push_back({name, 1, "a file opens with two comment lines"});
    }
    if (lines.size() > longestFile) {
        out.push_back({name, 0, "a file stays under " + std::to_string(longestFile + 1) + " lines"});
    }
}

}  // namespace

std::ostream& operator<<(std::ostream& out, const Violation& violation) {
    return out << violation.file << ":" << violation.line << ": " << violation.rule;
}

std::vector<Violation> violationsIn(const fs::path& root) {
    std::vector<Violation> violations;
    for (const fs::path& file : sourceFiles(root)) {
        const std::string name = fs::relative(file, root).generic_string();
        const std::vector<std::string> lines = linesOf(file);
        judgeForm(name, lines, violations);
        if (!isIn(name, "src")) {
            continue;
        }
        int number = 0;
        for (const std::string& line : lines) {
            ++number;
            if (const auto rule = brokenLineRule(root, name.substr(4), line)) {
                violations.push_back({name, number, *rule});
            }
        }
    }
    return violations;
}

std::size_t sourceFileCount(const fs::path& root) {
    return sourceFiles(root).size();
}

}  // namespace structure
