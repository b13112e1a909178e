// Films written by the recorder, looked at by another program and decoded again.
// Pictures, times and sizes are what was shown; a killed recorder leaves a film, a full disk a message.
#include "hosts/native/film_capture.h"

#include <cctype>
#include <chrono>
#include <cmath>
#include <csignal>
#include <filesystem>
#include <gtest/gtest.h>
#include <sstream>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

#include "hosts/native/film_clip.h"
#include "platform/foundation/dispatch_queue.h"
#include "tests/support/child_process.h"
#include "tests/support/full_disk.h"
#include "tests/support/temporary_folder.h"

namespace {

namespace fs = std::filesystem;

/// Grey on the left, a colour that changes with the time on the right, one white pixel row at the top.
void paint(CapturedFrame& frame, int32_t width, int32_t height, double time) {
    frame.width = width;
    frame.height = height;
    frame.time = time;
    frame.pixels.assign(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 4, 128);
    const auto level = static_cast<uint8_t>(std::lround(40 + 40 * time));
    for (int32_t y = 0; y < height; ++y) {
        for (int32_t x = width / 2; x < width; ++x) {
            uint8_t* pixel = &frame.pixels[(static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                                            static_cast<std::size_t>(x)) *
                                           4];
            // Rows go up: the screen's lower half is red, its upper half blue.
            pixel[0] = y < height / 2 ? level : 0;
            pixel[1] = 0;
            pixel[2] = y < height / 2 ? 0 : level;
        }
    }
}

struct Probe {
    std::string stream;
    double duration = 0;
    std::vector<double> times;
};

Probe probe(const std::string& path) {
    const auto ask = [&path](const std::string& what) {
        ChildProcess program({"ffprobe", "-v", "error", "-select_streams", "v:0", "-show_entries", what,
                              "-of", "csv=p=0", path});
        EXPECT_EQ(program.wait(30), 0) << program.err();
        return program.out();
    };
    Probe result{ask("stream=codec_name,width,height"), std::stod("0" + ask("format=duration")), {}};
    std::istringstream times(ask("frame=pts_time"));
    // Lines about what else lies in a frame hold no number.
    for (std::string line; std::getline(times, line);) {
        if (!line.empty() && std::isdigit(static_cast<unsigned char>(line[0])) != 0)
            result.times.push_back(std::stod(line));
    }
    return result;
}

class FilmCaptureTest : public testing::Test {
  protected:
    FilmCaptureTest() : capture(std::make_unique<FilmCapture>(folders())) {
        capture->setInterruptionHandler(
            [this](std::shared_ptr<CapturedClip> left, const std::string& failure) {
                clip = std::move(left);
                interruption = failure;
            });
    }
    FilmCapture::Folders folders() const { return {folder.file("clips"), folder.file("films")}; }

    /// Lets the worker answer.
    bool waitFor(const std::function<bool()>& done) {
        for (int i = 0; i < 1000 && !done(); ++i) {
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
            DispatchQueue::mainQueue().drain();
        }
        return done();
    }
    std::string start() {
        std::optional<std::string> failure;
        capture->start([&failure](const std::string& why) { failure = why; });
        EXPECT_TRUE(waitFor([&] { return failure.has_value(); }));
        return failure.value_or("no answer");
    }
    /// Shows a frame as soon as there is room for it.
    void show(int32_t width, int32_t height, double time) {
        std::unique_ptr<CapturedFrame> frame;
        for (int i = 0; i < 1000 && !frame; ++i) {
            frame = capture->frameToFill(time);
            if (!frame) std::this_thread::sleep_for(std::chrono::milliseconds(2));
        }
        ASSERT_TRUE(frame);
        paint(*frame, width, height, time);
        capture->takeFrame(std::move(frame));
    }
    void stop() {
        bool answered = false;
        capture->stop([&](std::shared_ptr<CapturedClip> finished, const std::string& failure) {
            clip = std::move(finished);
            EXPECT_EQ(failure, "");
            answered = true;
        });
        ASSERT_TRUE(waitFor([&] { return answered; }));
    }
    std::vector<std::string> filesIn(const std::string& name) const {
        std::vector<std::string> files;
        if (!fs::exists(folder.file(name))) return files;
        for (const auto& file : fs::directory_iterator(folder.file(name)))
            files.push_back(file.path().string());
        return files;
    }

    TemporaryFolder folder;
    std::unique_ptr<FilmCapture> capture;
    std::shared_ptr<CapturedClip> clip;
    std::string interruption;
};

}  // namespace

TEST_F(FilmCaptureTest, AFilmHasTheFramesThatWereShownAtTheTimesAtWhichTheyWere) {
    ASSERT_EQ(start(), "");
    const std::vector<double> shown{5, 5.02, 5.1, 5.5, 6.25, 6.75, 7, 7.2};
    for (const double time : shown)
        show(161, 91, time);
    stop();
    ASSERT_TRUE(clip);
    const Probe film = probe(filesIn("clips").at(0));
    EXPECT_EQ(film.stream, "h264,160,90\n");
    ASSERT_EQ(film.times.size(), shown.size());
    for (std::size_t i = 0; i < shown.size(); ++i)
        EXPECT_NEAR(film.times[i], shown[i] - 5, 1e-4);
    EXPECT_NEAR(clip->duration(), 2.2, 0.05);

    for (const double time : {0.0, 1.3, 0.3, 2.1, 9.0}) {
        const CGImageRef picture = clip->pictureAt(time, {1000, 1000});
        ASSERT_TRUE(picture);
        const double at = time < 0.5 ? (time < 0.1 ? 5 : 5.1) : time < 1.4 ? 6.25 : time < 2.15 ? 7 : 7.2;
        const int level = static_cast<int>(40 + 40 * at);
        const auto lower = picture->colorAt(140, 80);
        const auto upper = picture->colorAt(140, 10);
        EXPECT_NEAR(lower.red, level & 255, 12) << time;
        EXPECT_NEAR(lower.blue, 0, 12);
        EXPECT_NEAR(upper.blue, level & 255, 12) << time;
        EXPECT_NEAR(picture->colorAt(20, 45).green, 128, 4);
    }
    EXPECT_EQ(clip->pictureAt(0.3, {80, 80})->width(), 80);
}

TEST_F(FilmCaptureTest, AWindowThatChangesItsSizeIsFittedIntoTheFilm) {
    ASSERT_EQ(start(), "");
    show(160, 90, 0);
    show(90, 160, 0.5);
    show(320, 180, 1);
    stop();
    ASSERT_TRUE(clip);
    const auto narrow = clip->pictureAt(0.6, {1000, 1000});
    EXPECT_LT(narrow->colorAt(10, 45).green, 8) << "black beside it";
    EXPECT_NEAR(narrow->colorAt(65, 45).green, 128, 6);
    EXPECT_NEAR(clip->pictureAt(1, {1000, 1000})->colorAt(10, 45).green, 128, 6) << "no border is left";
}

TEST_F(FilmCaptureTest, AKeptPartIsAFilmOfItsOwnThatReplacesNothing) {
    ASSERT_EQ(start(), "");
    for (int i = 0; i <= 60; ++i)
        show(160, 90, i / 20.0);
    stop();
    ASSERT_TRUE(clip);
    for (const auto& [from, to, frames] : {std::tuple{0.0, 3.1, 61U}, {0.7, 1.8, 22U}}) {
        for (const auto& old : filesIn("films"))
            fs::permissions(old, fs::perms::owner_read);
        const auto before = filesIn("films").size();
        const auto [saved, line] = clip->save(from, to);
        ASSERT_TRUE(saved) << line;
        EXPECT_EQ(filesIn("films").size(), before + 1);
        const Probe film = probe(line.substr(std::string("Saved as ").size()));
        EXPECT_EQ(film.times.size(), frames);
        EXPECT_NEAR(film.duration, std::min(to, 3.05) - from, 0.06);
    }
    clip->discard();
    EXPECT_TRUE(filesIn("clips").empty());
}

TEST_F(FilmCaptureTest, AKilledRecorderLeavesAFilmThatIsOfferedAtTheNextStart) {
    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        start();
        for (int i = 0; i < 60; ++i)
            show(160, 90, i / 20.0);
        std::this_thread::sleep_for(std::chrono::milliseconds(500));
        ::kill(::getpid(), SIGKILL);
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSIGNALED(status));
    const Probe film = probe(filesIn("clips").at(0));
    EXPECT_GE(film.times.size(), 40U) << "to the last second";
    clip = capture->takeLeftClip();
    ASSERT_TRUE(clip);
    EXPECT_GE(clip->duration(), 2);
    EXPECT_TRUE(clip->pictureAt(1.5, {100, 100}));
    EXPECT_FALSE(capture->takeLeftClip()) << "once a run";
    FilmCapture another(folders());
    EXPECT_FALSE(another.takeLeftClip()) << "one that is being looked at is not left over";
    clip = nullptr;
    EXPECT_TRUE(another.takeLeftClip());
}

TEST_F(FilmCaptureTest, AFullDiskEndsTheFilmByItselfAndWhatIsThereStaysAFilm) {
    const FullDisk disk(60000);
    ASSERT_EQ(start(), "");
    for (int i = 0; i < 2000 && interruption.empty(); ++i) {
        if (auto frame = capture->frameToFill(i / 20.0)) {
            paint(*frame, 640, 360, i / 20.0);
            // What no encoder can make small.
            for (std::size_t k = 0; k < frame->pixels.size(); ++k)
                frame->pixels[k] =
                    static_cast<uint8_t>((k * 2654435761U + static_cast<std::size_t>(i)) >> 13);
            capture->takeFrame(std::move(frame));
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
        DispatchQueue::mainQueue().drain();
    }
    EXPECT_EQ(interruption, "File too large");
    EXPECT_EQ(capture->frameToFill(1000), nullptr);
    std::string answer;
    capture->stop([&](const auto&, const std::string& failure) { answer = failure; });
    DispatchQueue::mainQueue().drain();
    EXPECT_EQ(answer, "nothing is being filmed");
}

TEST_F(FilmCaptureTest, NothingToWriteToIsNoRecorder) {
    EXPECT_TRUE(capture->isAvailable());
    EXPECT_FALSE(FilmCapture({"", folder.file("films")}).isAvailable());
    EXPECT_FALSE(FilmCapture({"/proc/clips", folder.file("films")}).isAvailable());
    EXPECT_FALSE(FilmCapture({"/dev/null/clips", folder.file("films")}).isAvailable());
}
