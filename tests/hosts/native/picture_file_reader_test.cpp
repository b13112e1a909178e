// Picture files from the disk: their texts, whatever the size, and one line for what cannot be read.
// A pipe must not keep the app waiting.
#include "hosts/native/picture_file_reader.h"

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <sys/stat.h>

#include "hosts/native/picture_file_writer.h"
#include "tests/support/temporary_folder.h"

namespace {

namespace fs = std::filesystem;

TEST(PictureFileReader, ReadsTheTextsThatWereWritten) {
    const TemporaryFolder folder;
    const PictureTexts texts{{"Type", "julia"}, {"Palette", "3"}};
    for (const char* name : {"a.png", "a.jpg"}) {
        PictureFileWriter writer;
        ASSERT_TRUE(writer.open(folder.file(name), 1, 1, texts) &&
                    writer.writeRows(std::vector<uint8_t>{1, 2, 3}) && writer.finish());
        fs::resize_file(folder.file(name), 5'000'000'000);
        const auto read = readPictureFile(folder.file(name));
        ASSERT_TRUE(std::holds_alternative<HostOpenPicture>(read)) << std::get<std::string>(read);
        EXPECT_EQ(std::get<HostOpenPicture>(read).name, folder.file(name));
        EXPECT_EQ(std::get<HostOpenPicture>(read).texts, texts);
    }
    std::ofstream(folder.file("b.png")) << "no picture";
    EXPECT_EQ(std::get<HostOpenPicture>(readPictureFile(folder.file("b.png"))).texts, std::nullopt);
}

TEST(PictureFileReader, SaysInOneLineWhatItCannotRead) {
    const TemporaryFolder folder;
    fs::create_directory(folder.file("folder.png"));
    ASSERT_EQ(mkfifo(folder.file("pipe.png").c_str(), 0600), 0);
    fs::create_symlink("loop.png", folder.file("loop.png"));
    const std::pair<std::string, const char*> rows[] = {
        {folder.file("absent.png"), "No such file or directory"},
        {folder.file("folder.png"), "it is a folder"},
        {folder.file("pipe.png"), "it is no file"},
        {folder.file("loop.png"), "Too many levels of symbolic links"},
        {"/dev/zero", "it is no file"},
    };
    for (const auto& [path, why] : rows)
        EXPECT_EQ(std::get<std::string>(readPictureFile(path)), "cannot read '" + path + "': " + why);
}

}  // namespace
