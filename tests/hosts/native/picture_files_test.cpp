// Picture files: what is read back from them, and what a failed or abandoned one leaves behind.
// Nothing half-written may ever carry a picture's name.
#include <cstdlib>
#include <gmock/gmock.h>

#include "hosts/native/native_image_codec.h"
#include "hosts/native/picture_file_writer.h"
#include "tests/support/full_disk.h"
#include "tests/support/picture_reader.h"
#include "tests/support/temporary_folder.h"

namespace {

using ::testing::ElementsAre;

/// Smooth, so that JPEG keeps it nearly.
std::vector<uint8_t> gradient(int32_t width, int32_t height, int32_t channels) {
    std::vector<uint8_t> pixels;
    for (int32_t y = 0; y < height; ++y) {
        for (int32_t x = 0; x < width; ++x) {
            for (int32_t c = 0; c < channels; ++c) {
                pixels.push_back(static_cast<uint8_t>(c == 3 ? 200 : (x * 2 + y + c * 60) % 256));
            }
        }
    }
    return pixels;
}

int largestDifference(const std::vector<uint8_t>& a, const std::vector<uint8_t>& b) {
    if (a.size() != b.size()) return 256;
    int largest = 0;
    for (std::size_t i = 0; i < a.size(); ++i)
        largest = std::max(largest, std::abs(a[i] - b[i]));
    return largest;
}

std::vector<uint8_t> bytesOf(const std::string& path) {
    const std::string text = contentOf(path);
    return {text.begin(), text.end()};
}

TEST(NativeImageCodec, PngKeepsEveryPixelInTheFewestChannels) {
    NativeImageCodec codec;
    struct Case {
        CGImage image;
        uint32_t channels;
        std::vector<uint8_t> pixels;
    };
    const Case cases[] = {
        {{13, 7, CGImageFormat::gray8, gradient(13, 7, 1)}, 1, gradient(13, 7, 1)},
        {{13, 7, CGImageFormat::rgba8888, gradient(13, 7, 4)}, 4, gradient(13, 7, 4)},
        {{1, 2, CGImageFormat::rgba8888, {1, 2, 3, 255, 4, 5, 6, 255}}, 3, {1, 2, 3, 4, 5, 6}},
        // Little end first: pure red, and one step of each component.
        {{2, 1, CGImageFormat::rgb565, {0x00, 0xf8, 0x21, 0x08}}, 3, {255, 0, 0, 8, 4, 8}},
    };
    for (const auto& [image, channels, pixels] : cases) {
        const auto picture = decodePng(codec.encodePNG(image, {}).value());
        ASSERT_TRUE(picture.has_value());
        EXPECT_EQ(picture->channels, channels);
        EXPECT_EQ(picture->pixels, pixels);
    }
}

TEST(PictureFileWriter, WritesRowsAsTheyCome) {
    const TemporaryFolder folder;
    const auto pixels = gradient(50, 30, 3);
    for (const char* name : {"a.png", "a.PNG", "a.jpg", "a.Jpeg"}) {
        PictureFileWriter writer;
        ASSERT_TRUE(writer.open(folder.file(name), 50, 30)) << writer.error();
        ASSERT_TRUE(writer.writeRows(std::span(pixels).first(150 * 7)));
        ASSERT_TRUE(writer.writeRows({}));
        ASSERT_TRUE(writer.writeRows(std::span(pixels).subspan(150 * 7)));
        EXPECT_FALSE(std::filesystem::exists(folder.file(name))) << "there before it was finished";
        ASSERT_TRUE(writer.finish()) << writer.error();
    }
    EXPECT_EQ(decodePng(bytesOf(folder.file("a.PNG")))->pixels, pixels);
    EXPECT_LE(largestDifference(decodeJpeg(bytesOf(folder.file("a.Jpeg"))).pixels, pixels), 12);
    EXPECT_THAT(folder.names(), ElementsAre("a.Jpeg", "a.PNG", "a.jpg", "a.png"));
}

TEST(PictureFileWriter, LeavesNothingHalfWritten) {
    const TemporaryFolder folder;
    const std::string path = folder.file("a.png");
    const auto pixels = gradient(50, 30, 3);
    writeFile(path, "the former picture");
    {
        PictureFileWriter abandoned;
        ASSERT_TRUE(abandoned.open(path, 50, 30));
        ASSERT_TRUE(abandoned.writeRows(pixels));
    }
    PictureFileWriter tooFew;
    ASSERT_TRUE(tooFew.open(path, 50, 31));
    ASSERT_TRUE(tooFew.writeRows(pixels));
    EXPECT_FALSE(tooFew.finish());
    EXPECT_EQ(tooFew.error(), "cannot write " + path + ": rows are missing");
    EXPECT_FALSE(tooFew.finish());
    EXPECT_FALSE(tooFew.writeRows(pixels));
    PictureFileWriter tooMany;
    ASSERT_TRUE(tooMany.open(path, 50, 29));
    EXPECT_FALSE(tooMany.writeRows(pixels));
    PictureFileWriter crooked;
    ASSERT_TRUE(crooked.open(path, 50, 30));
    EXPECT_FALSE(crooked.writeRows(std::span(pixels).first(151)));
    EXPECT_EQ(contentOf(path), "the former picture");
    EXPECT_THAT(folder.names(), ElementsAre("a.png"));
}

TEST(PictureFileWriter, AFullDiskEndsInOneLine) {
    const TemporaryFolder folder;
    std::vector<uint8_t> noise(300 * 300 * 3);
    for (auto& byte : noise)
        byte = static_cast<uint8_t>(std::rand());
    for (const char* name : {"a.png", "a.jpg"}) {
        const FullDisk disk(100000);
        PictureFileWriter writer;
        EXPECT_TRUE(writer.open(folder.file(name), 300, 300));
        EXPECT_FALSE(writer.writeRows(noise) && writer.finish());
        EXPECT_THAT(writer.error(), testing::HasSubstr("File too large"));
    }
    EXPECT_THAT(folder.names(), testing::IsEmpty());
}

TEST(PictureFileWriter, SaysWhatIsWrong) {
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder.file("folder.png"));
    struct Case {
        std::string path;
        int32_t width;
        int32_t height;
        std::string reason;
    };
    const Case cases[] = {
        {folder.file("a.gif"), 1, 1, "the name must end in .png, .jpg or .jpeg"},
        {folder.file("png"), 1, 1, "the name must end in .png, .jpg or .jpeg"},
        {folder.file("absent/a.png"), 1, 1, "the folder " + folder.file("absent") + " does not exist"},
        {folder.file("folder.png"), 1, 1, "it is a folder"},
        {folder.file("a.png"), 0, 5, "its sides must be 1 to 1000000 pixels"},
        {folder.file("a.jpg"), 65501, 1, "its sides must be 1 to 65500 pixels"},
        {"", 1, 1, "the name must end in .png, .jpg or .jpeg"},
    };
    for (const Case& c : cases) {
        PictureFileWriter writer;
        EXPECT_FALSE(writer.open(c.path, c.width, c.height));
        EXPECT_EQ(writer.error(), "cannot write " + c.path + ": " + c.reason);
        EXPECT_FALSE(writer.finish());
    }
    EXPECT_THAT(folder.names(), ElementsAre("folder.png"));
}

}  // namespace
