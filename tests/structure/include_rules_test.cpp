// Holds the real tree against the house rules, after proving on planted violations that the rules bite.
// Layers stay apart only while somebody looks: a wrong include compiles as well as a right one.
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <unistd.h>

#include "tests/structure/source_tree.h"

namespace {

namespace fs = std::filesystem;

// A tree in a temporary folder of this process, with one header in each layer that the cases include.
class PlantedTree : public testing::Test {
  protected:
    void SetUp() override {
        for (const char* layer : {"app/delegate.h", "main_screen/game_view_controller.h", "render/shader.h",
                                  "tween/tween.h", "routing/routes.h", "screens/about.h", "rating/rate.h",
                                  "coach_marks/marks.h", "platform/ui/view.h", "platform/foundation/rect.h",
                                  "platform/gl/context.h", "hosts/desktop/window.h"}) {
            write(std::string("src/") + layer, "");
        }
    }
    void TearDown() override { fs::remove_all(_root); }

    void write(const std::string& name, const std::string& body,
               const std::string& head = "// What it is.\n// Why it is.\n") {
        fs::create_directories((_root / name).parent_path());
        std::ofstream(_root / name) << head << body;
    }

    fs::path _root = fs::temp_directory_path() / ("zentaro-structure-" + std::to_string(getpid()));
};

struct IncludeCase {
    const char* file;
    const char* line;
};

TEST_F(PlantedTree, findEveryPlantedInclude) {
    const std::vector<IncludeCase> wrong = {
        {"src/platform/ui/label.cpp", "#include \"app/delegate.h\""},
        {"src/platform/ui/label.cpp", "#include <screens/about.h>"},
        {"src/platform/ui/label.cpp", "  #  include \"tween/tween.h\"  // eased"},
        {"src/platform/ui/label.h", "#include \"hosts/desktop/window.h\""},
        {"src/hosts/desktop/input.cpp", "#include \"main_screen/game_view_controller.h\""},
        {"src/app/start.cpp", "#include \"hosts/desktop/window.h\""},
        {"src/app/main.cpp", "#include <SDL2/SDL.h>"},
        {"src/platform/ui/a.cpp", "#include <SDL.h>"},
        {"src/platform/graphics/a.cpp", "#include <cairo/cairo.h>"},
        {"src/platform/graphics/a.cpp", "#include <pango/pangocairo.h>"},
        {"src/platform/graphics/a.cpp", "#include <png.h>"},
        {"src/platform/graphics/a.cpp", "#include <jpeglib.h>"},
        {"src/platform/gl/a.cpp", "#include <EGL/egl.h>"},
        {"src/platform/media/a.cpp", "#include <libavcodec/avcodec.h>"},
        {"src/platform/foundation/a.cpp", "#include <curl/curl.h>"},
        {"src/render/a.cpp", "#include <emscripten/html5.h>"},
        {"src/main_screen/a.cpp", "#include <GLES2/gl2.h>"},
        {"src/platform/ui/a.h", "#include <GLES2/gl2ext.h>"},
        {"src/tween/a.cpp", "#include \"platform/ui/view.h\""},
        {"src/tween/a.cpp", "#include \"routing/routes.h\""},
        {"src/routing/a.cpp", "#include <nlohmann/json.hpp>"},
        {"src/rating/irate_policy.cpp", "#include \"platform/ui/view.h\""},
        {"src/main_screen/a.cpp", "#include \"game_view_controller.h\""},
        {"src/main_screen/a.cpp", "#include HOST_HEADER"},
        {"src/main_screen/a.cpp", "#ifdef __linux__"},
        {"src/platform/ui/a.cpp", "# if defined(_WIN32)"},
        {"src/platform/ui/a.h", "#ifndef A_H"},
    };
    for (const IncludeCase& planted : wrong) {
        SCOPED_TRACE(std::string(planted.file) + " " + planted.line);
        write(planted.file, std::string("\n") + planted.line + "\n");
        const auto found = structure::violationsIn(_root);
        ASSERT_EQ(found.size(), 1U);
        EXPECT_EQ(found[0].file, planted.file);
        EXPECT_EQ(found[0].line, 4);
        fs::remove(_root / planted.file);
    }
}

TEST_F(PlantedTree, leaveRightIncludesAlone) {
    const std::vector<IncludeCase> right = {
        {"src/app/main.cpp", "#include \"hosts/desktop/window.h\""},
        {"src/app/main_web.cpp", "#include \"hosts/desktop/window.h\""},
        {"src/hosts/desktop/input.cpp", "#include \"hosts/desktop/window.h\"\n#include <SDL2/SDL.h>"},
        {"src/hosts/desktop/input.h", "#ifdef __linux__\n#include <X11/Xlib.h>\n#endif"},
        {"src/hosts/native/codec.cpp", "#include <png.h>\n#include \"platform/ui/view.h\""},
        {"src/render/a.cpp", "#include <GLES2/gl2.h>\n#include \"platform/gl/context.h\""},
        {"src/platform/gl/a.cpp", "#include <GLES2/gl2.h>"},
        {"src/main_screen/a.cpp", "#include \"tween/tween.h\"\n#include <nlohmann/json.hpp>"},
        {"src/tween/a.cpp",
         "#include <cmath>\n#include \"tween/tween.h\"\n#include \"platform/foundation/rect.h\""},
        {"src/platform/ui/a.h", "#pragma once\n// #include \"app/delegate.h\"\n#define TWICE(x) (2 * (x))"},
        {"tests/screen_test.cpp", "#include \"hosts/desktop/window.h\"\n#include <GLES2/gl2.h>"},
    };
    for (const IncludeCase& planted : right) {
        write(planted.file, std::string(planted.line) + "\n");
    }
    EXPECT_EQ(structure::violationsIn(_root), std::vector<structure::Violation>{});
    EXPECT_GT(structure::sourceFileCount(_root), right.size());
}

TEST_F(PlantedTree, findAFileWithoutItsTwoLinesOrTooLong) {
    const std::string twoLines = "// What it is.\n// Why it is.\n";
    std::string full = twoLines;
    for (int i = 2; i < 449; ++i) {
        full += "\n";
    }
    write("src/render/bare.cpp", "#include <cmath>\n", "");
    write("src/render/full.cpp", "", full);
    write("bench/long_bench.cpp", "\n", full);
    write("resources/One.fsh", "\nvoid main() {}\n", "// What it is, without a reason.\n");
    write("tests/empty_test.cpp", "", "");
    const std::string opening = "a file opens with two comment lines";
    EXPECT_EQ(structure::violationsIn(_root), (std::vector<structure::Violation>{
                                                  {"bench/long_bench.cpp", 0, "a file stays under 450 lines"},
                                                  {"resources/One.fsh", 1, opening},
                                                  {"src/render/bare.cpp", 1, opening},
                                                  {"tests/empty_test.cpp", 1, opening},
                                              }));
}

TEST(SourceTree, keepsTheRules) {
    ASSERT_GT(structure::sourceFileCount(ZENTARO_SOURCE_DIR), 50U);
    for (const structure::Violation& violation : structure::violationsIn(ZENTARO_SOURCE_DIR)) {
        ADD_FAILURE() << violation;
    }
}

}  // namespace
