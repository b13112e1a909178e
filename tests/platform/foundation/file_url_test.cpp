// Paths as URLs and back: any bytes that a path can have, and what is no file of this machine.
// They come from other processes and from the desktop.
#include "platform/foundation/file_url.h"

#include <gtest/gtest.h>

namespace {

TEST(FileURL, HoldsAnyPathInOneLine) {
    EXPECT_EQ(fileURLOfPath("/home/a b/Ä%.png"), "file:///home/a%20b/%C3%84%25.png");
    std::string every = "/";
    for (int byte = 1; byte < 256; ++byte)
        every += static_cast<char>(byte);
    const std::string url = fileURLOfPath(every);
    EXPECT_EQ(pathOfFileURL(url), every);
    for (const char c : url)
        EXPECT_TRUE(c > ' ' && c <= '~') << url;
}

TEST(FileURL, IsNotEveryText) {
    for (const char* text : {"", "file:", "file:/a", "file://", "file://other/a", "file://localhostile/a",
                             "/a.png", "http:///a", "file:///a%00", "file:///a%2", "file:///a%zz"}) {
        EXPECT_EQ(pathOfFileURL(text), std::nullopt) << text;
    }
    EXPECT_EQ(pathOfFileURL("File://LOCALHOST/a%2f+b"), "/a/+b");
}

}  // namespace
