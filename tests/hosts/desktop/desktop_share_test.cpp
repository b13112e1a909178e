// What a desktop does with a shared find: files that nothing overwrites, programs with their real arguments,
// the clipboard as other programs read it.
#include "hosts/desktop/desktop_share.h"

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <gmock/gmock.h>
#include <map>
#include <sys/stat.h>
#include <thread>

#include "hosts/headless/scripted_window.h"
#include "hosts/native/native_services.h"
#include "hosts/native/user_folders.h"
#include "platform/foundation/dispatch_queue.h"
#include "tests/support/child_process.h"
#include "tests/support/environment_variable.h"
#include "tests/support/full_disk.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/virtual_display.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using Words = std::vector<std::string>;

constexpr const char* link = "http://zentaro.example/julia/-1.000000/-1.000000/1.000000/1.000000";
constexpr const char* name = "Zentaro julia -1.000000 -1.000000 1.000000 1.000000";
constexpr double kPatience = 20;

/// Noise, so that the file is as large as the pixels.
UIImageRef picture(int32_t side) {
    std::vector<uint8_t> pixels(static_cast<std::size_t>(side) * static_cast<std::size_t>(side) * 4);
    uint32_t state = 1;
    for (uint8_t& byte : pixels)
        byte = static_cast<uint8_t>((state = state * 1664525 + 1013904223) >> 24);
    return UIImage::imageWithCGImage(
        std::make_shared<const CGImage>(side, side, CGImageFormat::rgba8888, std::move(pixels)),
        {{"Link", link}});
}

class DesktopShareTest : public testing::Test {
  protected:
    void SetUp() override { std::filesystem::create_directory(_folder.file("bin")); }

    /// A program that writes its arguments down, a line each, and ends with that status.
    void install(const std::string& program, const std::string& more) const {
        const std::string file = _folder.file("bin/" + program);
        writeFile(file, "#!/bin/sh\nprintf '%s\\n' \"$@\" > '" + _folder.file(program) + "'\n" + more + "\n");
        chmod(file.c_str(), S_IRWXU);
    }
    Words argumentsOf(const std::string& program) const {
        Words words;
        std::string text = contentOf(_folder.file(program));
        for (std::size_t end = 0; (end = text.find('\n')) != std::string::npos; text.erase(0, end + 1))
            words.push_back(text.substr(0, end));
        return words;
    }
    Words names() {
        Words found;
        for (const ShareDestination& one : share.destinations())
            found.push_back(one.name);
        return found;
    }
    ShareOutcome send(const std::string& destination, const SharedContent& what) {
        return send(share, destination, what);
    }
    static ShareOutcome send(DesktopShare& through, const std::string& destination,
                             const SharedContent& what) {
        std::optional<ShareOutcome> outcome;
        ShareDestination named;
        named.name = destination;
        through.share(named, what, [&outcome](const ShareOutcome& answer) { outcome = answer; });
        const auto end = std::chrono::steady_clock::now() + std::chrono::duration<double>(kPatience);
        while (!outcome && std::chrono::steady_clock::now() < end) {
            DispatchQueue::mainQueue().drain();
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
        }
        return outcome.value_or(ShareOutcome{false, "no answer"});
    }

    TemporaryFolder _folder;
    NativeServices _services{nullptr};
    EnvironmentVariable _path{"PATH", _folder.file("bin") + ":/bin"};
    EnvironmentVariable _home{"HOME", _folder.file("home")};
    EnvironmentVariable _config{"XDG_CONFIG_HOME", _folder.file("config")};
    EnvironmentVariable _cache{"XDG_CACHE_HOME", _folder.file("cache")};
    ScriptedWindow window;
    DesktopShare share{window, nullptr};
    SharedContent content{"Discovered in Zentaro", "Discovered in Zentaro: ", link, picture(8)};
};

TEST_F(DesktopShareTest, OnlyWhatTheMachineHasIsOffered) {
    const EnvironmentVariable nowhere("PATH", _folder.file("bin"));
    EXPECT_THAT(names(), ElementsAre("copy", "png", "jpeg"));
    install("xdg-open", "");
    EXPECT_THAT(names(), ElementsAre("copy", "png", "jpeg", "facebook", "twitter", "whatsapp", "browser"));
    install("xdg-email", "");
    const EnvironmentVariable homeless("HOME", "");
    EXPECT_THAT(names(), ElementsAre("copy", "mail", "facebook", "twitter", "whatsapp", "browser"));
}

TEST_F(DesktopShareTest, PicturesAreSavedUnderNewNamesWithTheirPlaceInThem) {
    struct Case {
        const char* destination;
        std::string file;
    };
    const Case cases[] = {{"png", std::string(name) + ".png"},
                          {"png", std::string(name) + " (2).png"},
                          {"jpeg", std::string(name) + ".jpg"}};
    for (const Case& c : cases) {
        const ShareOutcome outcome = send(c.destination, content);
        EXPECT_TRUE(outcome.isDone) << outcome.message;
        EXPECT_EQ(outcome.message, "Saved in Pictures");
        const std::string file = contentOf(_folder.file("home/Pictures/" + c.file));
        EXPECT_THAT(file, HasSubstr(link)) << c.file;
    }
    const std::string first = contentOf(_folder.file("home/Pictures/" + cases[0].file));
    EXPECT_EQ(first, contentOf(_folder.file("home/Pictures/" + cases[1].file)));

    std::filesystem::create_directories(_folder.file("config"));
    writeFile(_folder.file("config/user-dirs.dirs"),
              "# chosen\nXDG_MUSIC_DIR=\"$HOME/Lieder\"\nXDG_PICTURES_DIR=\"$HOME/Meine \\\"Bilder\\\"\"\n");
    EXPECT_EQ(send("png", content).message, "Saved in Meine \"Bilder\"");
    EXPECT_TRUE(std::filesystem::exists(_folder.file("home/Meine \"Bilder\"/" + cases[0].file)));

    writeFile(_folder.file("blocked"), "");
    writeFile(_folder.file("config/user-dirs.dirs"),
              "XDG_PICTURES_DIR=\"" + _folder.file("blocked") + "\"\n");
    const ShareOutcome refused = send("png", content);
    EXPECT_FALSE(refused.isDone);
    EXPECT_THAT(refused.message, testing::StartsWith("Cannot save: "));
    SharedContent without = content;
    without.image = nullptr;
    EXPECT_EQ(send("png", without).message, "There is no picture to save.");
}

TEST_F(DesktopShareTest, AFullDiskLeavesNothingBehind) {
    NewFile file;
    {
        const FullDisk disk(1 << 16);
        file = writeNewFile(_folder.file("full"), "a", ".png", std::vector<uint8_t>(1 << 20, 7));
    }
    EXPECT_EQ(file.path, "");
    EXPECT_NE(file.error, "");
    EXPECT_TRUE(std::filesystem::is_empty(_folder.file("full")));
}

TEST_F(DesktopShareTest, MailGetsSubjectTextLinkAndThePicture) {
    install("xdg-email", "");
    std::filesystem::create_directories(_folder.file("cache/zentaro/shared"));
    const std::string old = _folder.file("cache/zentaro/shared/old.png");
    writeFile(old, "");
    std::filesystem::last_write_time(old,
                                     std::filesystem::file_time_type::clock::now() - std::chrono::hours(200));
    EXPECT_TRUE(send("mail", content).isDone);
    const std::string attached = _folder.file("cache/zentaro/shared/") + name + ".png";
    EXPECT_THAT(argumentsOf("xdg-email"),
                ElementsAre("--utf8", "--subject", "Discovered in Zentaro", "--body",
                            std::string("Discovered in Zentaro: ") + link, "--attach", attached));
    EXPECT_THAT(contentOf(attached), HasSubstr(link));
    EXPECT_FALSE(std::filesystem::exists(old));

    EXPECT_TRUE(send("mail", {"Recorded in Zentaro", "", "", nullptr, "/films/a b.mp4"}).isDone);
    EXPECT_THAT(argumentsOf("xdg-email"), ElementsAre("--utf8", "--subject", "Recorded in Zentaro", "--body",
                                                      "", "--attach", "/films/a b.mp4"));

    install("xdg-email", "exit 4");
    const ShareOutcome failed = send("mail", content);
    EXPECT_FALSE(failed.isDone);
    EXPECT_EQ(failed.message, "The mail program could not be started.");
}

TEST_F(DesktopShareTest, TheBrowserGetsTheLinkOrThePageOfThePost) {
    const std::string encoded =
        "http%3A%2F%2Fzentaro.example%2Fjulia%2F-1.000000%2F-1.000000%2F1.000000%2F1.000000";
    const std::map<std::string, std::string> expected{
        {"browser", link},
        {"facebook",
         "https://www.facebook.com/sharer/sharer.php?quote=Discovered%20in%20Zentaro%3A%20&u=" + encoded},
        {"twitter", "https://twitter.com/intent/tweet?text=Discovered%20in%20Zentaro%3A%20&url=" + encoded},
        {"whatsapp", "https://api.whatsapp.com/send?text=Discovered%20in%20Zentaro%3A%20" + encoded}};
    for (const auto& [destination, address] : expected) {
        install("xdg-open", "");
        EXPECT_TRUE(send(destination, content).isDone);
        EXPECT_THAT(argumentsOf("xdg-open"), ElementsAre(address));
    }
    content.text += content.link;
    content.link.clear();
    EXPECT_TRUE(send("facebook", content).isDone);
    EXPECT_THAT(argumentsOf("xdg-open").at(0), testing::EndsWith(encoded + "&u=" + encoded))
        << "the link in the text";
    install("xdg-open", "exit 3");
    EXPECT_EQ(send("browser", content).message, "The browser could not be started.");
}

TEST_F(DesktopShareTest, AProgramThatStaysHoldsUpNobody) {
    install("xdg-open", "echo $$ > '" + _folder.file("pid") + "'; exec sleep 60");
    const auto begun = std::chrono::steady_clock::now();
    {
        DesktopShare leaving(window, nullptr);
        ShareDestination browser;
        browser.name = "browser";
        leaving.share(browser, content, [](const ShareOutcome&) {});
        while (contentOf(_folder.file("pid")).empty() &&
               std::chrono::steady_clock::now() < begun + std::chrono::seconds(20))
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    DispatchQueue::mainQueue().drain();
    const pid_t pid = std::stoi("0" + contentOf(_folder.file("pid")));
    ASSERT_GT(pid, 0);
    EXPECT_EQ(kill(pid, 0), 0) << "it outlives the app";
    kill(pid, SIGKILL);
    waitpid(pid, nullptr, 0);
    EXPECT_LT(std::chrono::steady_clock::now() - begun, std::chrono::seconds(30));
}

TEST_F(DesktopShareTest, WithoutAClipboardForPicturesTheTextGoesToTheWindows) {
    EXPECT_EQ(send("copy", content).message, "Text and link copied");
    EXPECT_EQ(window.clipboardText(), std::string("Discovered in Zentaro: ") + link);
}

class X11ClipboardTest : public DesktopShareTest {
  protected:
    void SetUp() override {
        DesktopShareTest::SetUp();
        if (!_display.isAvailable() || !findXclip()) GTEST_SKIP() << "Xvfb or xclip is not installed";
        const EnvironmentVariable here("DISPLAY", _display.name());
        _x11 = std::make_unique<DesktopShare>(window, X11Clipboard::connect());
    }
    static bool findXclip() { return std::filesystem::exists("/usr/bin/xclip"); }
    std::string paste(const std::string& target) const {
        ChildProcess xclip({"/usr/bin/xclip", "-selection", "clipboard", "-o", "-t", target},
                           {{"DISPLAY", _display.name()}});
        EXPECT_TRUE(xclip.wait(kPatience));
        return xclip.out();
    }
    std::string copy(int32_t side) {
        content.image = side > 0 ? picture(side) : nullptr;
        return send(*_x11, "copy", content).message;
    }

    VirtualDisplay _display;
    std::unique_ptr<DesktopShare> _x11;
};

TEST_F(X11ClipboardTest, OtherProgramsPasteTextLinkAndPicture) {
    // The second picture is larger than what goes to the server at once.
    for (const int32_t side : {16, 700}) {
        EXPECT_EQ(copy(side), "Copied");
        EXPECT_EQ(paste("UTF8_STRING"), std::string("Discovered in Zentaro: ") + link);
        const auto file = UIImagePNGRepresentation(content.image);
        EXPECT_TRUE(paste("image/png") == std::string(file->begin(), file->end())) << side;
        EXPECT_THAT(paste("TARGETS"), HasSubstr("image/png"));
        EXPECT_EQ(paste("image/jpeg"), "");
    }
    const std::string other = _folder.file("other");
    writeFile(other, "else");
    ChildProcess xclip({"/usr/bin/xclip", "-selection", "clipboard", "-quiet", "-i", other},
                       {{"DISPLAY", _display.name()}});
    for (int i = 0; i < 200 && paste("UTF8_STRING") != "else"; ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    EXPECT_EQ(paste("UTF8_STRING"), "else");
    EXPECT_EQ(copy(16), "Copied") << "taken over again";
    EXPECT_EQ(paste("UTF8_STRING"), std::string("Discovered in Zentaro: ") + link);
    content = {"", "", "", nullptr, "/films/a b.mp4"};
    EXPECT_EQ(copy(0), "Copied");
    EXPECT_EQ(paste("text/uri-list"), "file:///films/a%20b.mp4\r\n");
    EXPECT_EQ(paste("x-special/gnome-copied-files"), "copy\nfile:///films/a%20b.mp4");
    EXPECT_EQ(paste("UTF8_STRING"), "/films/a b.mp4");
}

}  // namespace
