// The settings file: kills, damage, and everything that can stand in its place.
// A setting is worth little if the machine's worst moment loses it.
#include "hosts/native/file_preferences_store.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <nlohmann/json.hpp>
#include <random>
#include <set>
#include <signal.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "hosts/native/atomic_file.h"
#include "platform/foundation/ns_user_defaults.h"
#include "tests/support/environment_variable.h"
#include "tests/support/full_disk.h"
#include "tests/support/log_capture.h"
#include "tests/support/temporary_folder.h"

namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

constexpr uid_t nobody = 65534;

mode_t modeOf(const std::string& path) {
    struct stat status {};
    EXPECT_EQ(::stat(path.c_str(), &status), 0) << path;
    return status.st_mode & 07777;
}

/// Permissions mean nothing to the superuser, so such tests give that up for a while.
class OrdinaryUser {
  public:
    OrdinaryUser() {
        if (::geteuid() == 0) _changed = ::seteuid(nobody) == 0;
    }
    ~OrdinaryUser() {
        if (!_changed) return;
        EXPECT_EQ(::seteuid(0), 0);
    }
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;

  private:
    bool _changed = false;
};

/// Settings texts of several kilobytes, so that a write takes its time; made before any fork, so that the
/// writers do nothing but write.
std::vector<std::string> differentTexts() {
    std::vector<std::string> texts;
    for (int number = 0; number < 50; ++number) {
        nlohmann::json settings;
        for (int i = 0; i < 400; ++i)
            settings["setting " + std::to_string(i)] = number;
        texts.push_back(settings.dump(2));
    }
    return texts;
}

using Save = std::function<bool(const std::string& path, const std::string& text)>;

bool saveThroughStore(const std::string& path, const std::string& text) {
    return FilePreferencesStore(path).save(text);
}

/// As on a file system that cannot hold files without names.
bool saveUnderTemporaryName(const std::string& path, const std::string& text) {
    AtomicFile file(AtomicFile::Unfinished::named);
    return file.open(path, 0600) &&
           file.write({reinterpret_cast<const uint8_t*>(text.data()), text.size()}) && file.commit();
}

[[noreturn]] void writeForever(const Save& save, const std::string& path,
                               const std::vector<std::string>& texts, std::size_t next) {
    while (true)
        save(path, texts[next++ % texts.size()]);
}

void killWritersAtRandomMoments(const Save& save, int trials) {
    const TemporaryFolder folder;
    const std::string path = folder.file("settings.json");
    const auto texts = differentTexts();
    std::set<std::string> seen;
    std::mt19937 random(3);
    ASSERT_TRUE(save(path, texts[0]));
    for (int trial = 0; trial < trials; ++trial) {
        const pid_t writer = ::fork();
        if (writer == 0) writeForever(save, path, texts, static_cast<std::size_t>(trial));
        ASSERT_GT(writer, 0);
        ::usleep(200 + static_cast<useconds_t>(random() % 8000));
        ASSERT_EQ(::kill(writer, SIGKILL), 0);
        ASSERT_EQ(::waitpid(writer, nullptr, 0), writer);
        const auto text = FilePreferencesStore(path).load();
        ASSERT_TRUE(text.has_value());
        ASSERT_NE(std::find(texts.begin(), texts.end(), *text), texts.end()) << "half a text: " << *text;
        seen.insert(*text);
        EXPECT_LE(folder.names().size(), 2U) << "what killed writers left is not removed";
    }
    EXPECT_GT(seen.size(), 10U) << "the writers came to nothing before they were killed";
    ASSERT_TRUE(save(path, texts[1]));
    EXPECT_THAT(folder.names(), ElementsAre("settings.json"));
}

TEST(FilePreferencesStore, SurvivesAKillAtAnyMoment) {
    killWritersAtRandomMoments(saveThroughStore, 100);
    killWritersAtRandomMoments(saveUnderTemporaryName, 100);
}

TEST(FilePreferencesStore, RemovesOnlyAbandonedTemporaryFiles) {
    const TemporaryFolder folder;
    const std::string path = folder.file("settings.json");
    writeFile(folder.file(".settings.json.0000abcd.tmp"), "left by a killed process");
    writeFile(folder.file(".settings.json.11112222.tmp"), "being written");
    writeFile(folder.file(".settings.json.mine.tmp"), "the user's");
    writeFile(folder.file(".other.json.0000abcd.tmp"), "of another program");
    const int living = ::open(folder.file(".settings.json.11112222.tmp").c_str(), O_RDONLY | O_CLOEXEC);
    ASSERT_EQ(::flock(living, LOCK_EX), 0);
    ASSERT_TRUE(FilePreferencesStore(path).save("{}"));
    EXPECT_THAT(folder.names(), ElementsAre(".other.json.0000abcd.tmp", ".settings.json.11112222.tmp",
                                            ".settings.json.mine.tmp", "settings.json"));
    ::close(living);
}

TEST(FilePreferencesStore, MakesFoldersForTheUserAlone) {
    const TemporaryFolder folder;
    const std::string path = folder.file("config/zentaro/settings.json");
    FilePreferencesStore store(path);
    EXPECT_FALSE(store.load().has_value());
    EXPECT_EQ(store.lastError(), "") << "a first start is no error";
    ASSERT_TRUE(store.save("{\"a\": 1}")) << store.lastError();
    EXPECT_EQ(store.load(), "{\"a\": 1}");
    EXPECT_EQ(modeOf(folder.file("config")), 0700U);
    EXPECT_EQ(modeOf(folder.file("config/zentaro")), 0700U);
    EXPECT_EQ(modeOf(path), 0600U);
}

TEST(FilePreferencesStore, KeepsALinkALink) {
    const TemporaryFolder folder;
    writeFile(folder.file("real.json"), "{}");
    std::filesystem::create_symlink("real.json", folder.file("settings.json"));
    ASSERT_TRUE(FilePreferencesStore(folder.file("settings.json")).save("{\"a\": 2}"));
    EXPECT_TRUE(std::filesystem::is_symlink(folder.file("settings.json")));
    EXPECT_EQ(contentOf(folder.file("real.json")), "{\"a\": 2}");
}

TEST(FilePreferencesStore, SetsDamagedFilesAsideOneAfterAnother) {
    const TemporaryFolder folder;
    const std::string path = folder.file("settings.json");
    for (const std::string text : {"{first", "{second", "{third"}) {
        writeFile(path, text);
        LogCapture log;
        NSUserDefaults defaults(std::make_shared<FilePreferencesStore>(path));
        EXPECT_THAT(log.lines, ElementsAre(HasSubstr("moved to " + path + ".damaged")));
        defaults.setInteger(1, "key");
        EXPECT_TRUE(defaults.synchronize());
    }
    EXPECT_EQ(contentOf(path + ".damaged"), "{first");
    EXPECT_EQ(contentOf(path + ".damaged-2"), "{second");
    EXPECT_EQ(contentOf(path + ".damaged-3"), "{third");
    EXPECT_EQ(NSUserDefaults(std::make_shared<FilePreferencesStore>(path)).integerForKey("key"), 1);
}

TEST(FilePreferencesStore, SetsAnUnreadableFileAsideInsteadOfReplacingIt) {
    const TemporaryFolder folder;
    const std::string path = folder.file("settings.json");
    ASSERT_EQ(::chmod(folder.file("").c_str(), 0777), 0);
    writeFile(path, "{\"key\": 5}");
    ASSERT_EQ(::chmod(path.c_str(), 0), 0);
    LogCapture log;
    {
        const OrdinaryUser user;
        NSUserDefaults defaults(std::make_shared<FilePreferencesStore>(path));
        EXPECT_FALSE(defaults.hasKey("key"));
        defaults.setInteger(1, "key");
        EXPECT_TRUE(defaults.synchronize());
    }
    EXPECT_THAT(log.lines, ElementsAre(HasSubstr("Permission denied")));
    ASSERT_EQ(::chmod((path + ".damaged").c_str(), 0600), 0);
    EXPECT_EQ(contentOf(path + ".damaged"), "{\"key\": 5}");
}

TEST(FilePreferencesStore, RefusesHugeFiles) {
    const TemporaryFolder folder;
    const std::string path = folder.file("settings.json");
    writeFile(path, std::string(FilePreferencesStore::largestFile, ' '));
    EXPECT_TRUE(FilePreferencesStore(path).load().has_value());
    writeFile(path, std::string(FilePreferencesStore::largestFile + 1, ' '));
    FilePreferencesStore store(path);
    EXPECT_FALSE(store.load().has_value());
    EXPECT_THAT(store.lastError(), testing::EndsWith("it is larger than 1 MiB"));
}

TEST(FilePreferencesStore, SaysWhyItCannotSaveAndChangesNothing) {
    const TemporaryFolder folder;
    ASSERT_EQ(::chmod(folder.file("").c_str(), 0755), 0);
    writeFile(folder.file("file"), "x");
    std::filesystem::create_directory(folder.file("folder"));
    writeFile(folder.file("readonly.json"), "{}");
    ASSERT_EQ(::chmod(folder.file("readonly.json").c_str(), 0444), 0);
    ASSERT_EQ(::mkfifo(folder.file("pipe").c_str(), 0666), 0);
    const auto before = folder.names();
    const std::pair<std::string, std::string> cases[] = {
        {folder.file("folder"), "it is a folder"},
        {folder.file("pipe"), "it is not a file"},
        {folder.file("file/settings.json"), "is not a folder"},
        {folder.file("file/deeper/settings.json"), "Not a directory"},
        {folder.file("readonly.json"), "Permission denied"},
        {folder.file("settings.json"), "Permission denied"},
        {folder.file("new/settings.json"), "Permission denied"},
        {"/proc/zentaro/settings.json", "No such file or directory"},
    };
    const OrdinaryUser user;
    for (const auto& [path, reason] : cases) {
        FilePreferencesStore store(path);
        EXPECT_FALSE(store.load() && path != folder.file("readonly.json")) << path;
        EXPECT_FALSE(store.save("{\"a\": 1}")) << path;
        EXPECT_EQ(store.lastError().find(path), 0U);
        EXPECT_THAT(store.lastError(), HasSubstr(reason));
        EXPECT_EQ(folder.names(), before) << path;
    }
    EXPECT_EQ(FilePreferencesStore(folder.file("folder")).setAside(), "it stays where it is");
    EXPECT_EQ(contentOf(folder.file("readonly.json")), "{}");
}

TEST(FilePreferencesStore, AFullDiskLeavesTheOldSettings) {
    const TemporaryFolder folder;
    const std::string path = folder.file("settings.json");
    FilePreferencesStore store(path);
    ASSERT_TRUE(store.save("{\"old\": 1}"));
    {
        const FullDisk disk(4096);
        EXPECT_FALSE(store.save(std::string(10000, ' ')));
    }
    EXPECT_THAT(store.lastError(), HasSubstr("File too large"));
    EXPECT_THAT(folder.names(), ElementsAre("settings.json"));
    EXPECT_EQ(store.load(), "{\"old\": 1}");
}

TEST(FilePreferencesStore, FindsTheUsersFolder) {
    const EnvironmentVariable home("HOME", "/h");
    const std::string underHome = "/h/.config/zentaro/settings.json";
    const std::pair<std::optional<std::string>, std::string> cases[] = {{"/c", "/c/zentaro/settings.json"},
                                                                        {"relative", underHome},
                                                                        {"", underHome},
                                                                        {std::nullopt, underHome}};
    for (const auto& [folder, path] : cases) {
        const EnvironmentVariable config("XDG_CONFIG_HOME", folder);
        EXPECT_EQ(FilePreferencesStore::defaultPath(), path);
    }
}

}  // namespace
