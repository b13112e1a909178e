// Resources through the bundle, from a folder.
// A missing or misnamed one answers nothing; nothing outside the folder is ever read.
#include "hosts/native/resource_reader.h"

#include <gtest/gtest.h>

#include "tests/support/temporary_folder.h"

namespace {

TEST(ResourceReader, ReadsPlainNamesOfItsFolderOnly) {
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder.file("inner"));
    writeFile(folder.file("outside.txt"), "x");
    writeFile(folder.file("inner/Shader.fsh"), std::string("a\0b\n", 4));
    writeFile(folder.file("inner/plain"), "");
    NSBundle bundle;
    EXPECT_EQ(bundle.stringForResource("Shader", "fsh"), std::nullopt);
    bundle.setReader(makeFileResourceReader(folder.file("inner")));
    EXPECT_EQ(bundle.stringForResource("Shader", "fsh"), std::string("a\0b\n", 4));
    EXPECT_EQ(bundle.stringForResource("plain", ""), "");
    EXPECT_EQ(bundle.stringForResource("absent", "fsh"), std::nullopt);
    EXPECT_EQ(bundle.stringForResource("../outside", "txt"), std::nullopt);
    EXPECT_EQ(bundle.stringForResource("..", ""), std::nullopt);
    EXPECT_EQ(bundle.stringForResource("", ""), std::nullopt);
}

}  // namespace
