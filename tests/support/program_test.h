// The program itself, started without a display in a folder of its own.
// For the tests of what it draws, flies, prints and refuses.
#pragma once

#include <gmock/gmock.h>
#include <sstream>
#include <string>
#include <vector>

#include "tests/support/child_process.h"
#include "tests/support/picture.h"
#include "tests/support/temporary_folder.h"

class ProgramTest : public testing::Test {
  protected:
    struct Ended {
        int status = -1;
        std::string out;
        std::string err;
    };
    static constexpr double kPatience = 120;

    std::vector<ChildProcess::Variable> environment() const {
        return {{"DISPLAY", std::nullopt},
                {"WAYLAND_DISPLAY", std::nullopt},
                {"XDG_RUNTIME_DIR", std::nullopt},
                {"SDL_VIDEODRIVER", std::nullopt},
                {"XDG_CONFIG_HOME", _folder.file("config")},
                // What is freed counts as freed at once: a sanitized build would keep it aside for a while.
                {"ASAN_OPTIONS", "quarantine_size_mb=0:thread_local_quarantine_size_kb=0"}};
    }
    /// With the words of a line.
    Ended zentaro(const std::string& line) const {
        std::istringstream words(line);
        std::vector<std::string> arguments = {ZENTARO_EXECUTABLE};
        for (std::string word; words >> word;)
            arguments.push_back(word);
        ChildProcess program(arguments, environment(), _folder.file(""));
        const int status = program.wait(kPatience).value_or(-1);
        return {status, program.out(), program.err()};
    }
    Picture draw(const std::string& file, const std::string& options) const {
        const Ended ended = zentaro("--snapshot " + file + " " + options);
        EXPECT_EQ(ended.status, 0) << ended.err;
        return readPicture(_folder.file(file));
    }
    /// One line about a mistake, and nothing done.
    void expectMistake(const std::string& line, const std::string& says,
                       const std::vector<std::string>& files) const {
        const Ended ended = zentaro(line);
        EXPECT_EQ(ended.status, 2) << line;
        EXPECT_EQ(ended.out, "") << line;
        EXPECT_THAT(ended.err, testing::MatchesRegex("zentaro: [^\n]+\n"));
        EXPECT_THAT(ended.err, testing::HasSubstr(says));
        EXPECT_EQ(_folder.names(), files) << line;
    }

    TemporaryFolder _folder;
};
