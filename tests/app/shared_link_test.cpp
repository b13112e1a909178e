// Which texts are links of ours, and what is said of the others.
// The web host is the build's default.
#include "app/shared_link.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

#include "main_screen/link_host.h"

namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

TEST(SharedLink, OursAreTaken) {
    struct Case {
        const char* text;
        const char* url;
    };
    const Case cases[] = {
        {"http://zentaro.example/julia/0/0/1/1", "http://zentaro.example/julia/0/0/1/1"},
        {"HTTPS://Zentaro.Example/julia/0/0/1/1?x#y", "HTTPS://Zentaro.Example/julia/0/0/1/1?x#y"},
        {"http://me@zentaro.example:8080/julia/0/0/1/1", "http://me@zentaro.example:8080/julia/0/0/1/1"},
        {"zentaro.example/julia/0/0/1/1", "http://zentaro.example/julia/0/0/1/1"},
        {"//zentaro.example/julia/0/0/1/1", "//zentaro.example/julia/0/0/1/1"},
        {"zentaro://julia/0/0/1/1", "zentaro://julia/0/0/1/1"},
        {"Zentaro:/julia/0/0/1/1", "Zentaro:/julia/0/0/1/1"},
        {" \r\n</julia/0/0/1/1>\r\n", "/julia/0/0/1/1"},
        {"julia/0/0/1/1", "julia/0/0/1/1"},
        // Where it leads is not asked here.
        {"/", "/"},
    };
    for (const Case& c : cases) {
        const auto link = readSharedLink(c.text);
        ASSERT_TRUE(std::holds_alternative<NSURL>(link)) << c.text;
        EXPECT_EQ(std::get<NSURL>(link).absoluteString(), c.url);
    }
}

TEST(SharedLink, OthersAreRefusedInOneLine) {
    struct Case {
        std::string text;
        const char* why;
    };
    const Case cases[] = {
        {"http://other.example/julia/0/0/1/1", "another site"},
        {"http://zentaro.example.org/julia/0/0/1/1", "another site"},
        {"http://zentaro.example@other.example/julia/0/0/1/1", "another site"},
        {"//other.example/julia/0/0/1/1", "another site"},
        {"http:/julia/0/0/1/1", "another site"},
        {"ftp://zentaro.example/julia/0/0/1/1", "another program"},
        {"file:///etc/passwd", "another program"},
        {"", "no link"},
        {"<>", "no link"},
        {"julia", "no link"},
        {"/julia/0 0/1/1", "no link"},
        {"/julia/%zz/0/1/1", "no link"},
        {std::string("/julia/0/0/1/1\0/", 16), "no link"},
        {"/a\n/b\r/c", "no link"},
        {"/" + std::string(1000000, '\xFF'), "no link"},
    };
    for (const Case& c : cases) {
        const auto link = readSharedLink(c.text);
        ASSERT_TRUE(std::holds_alternative<LinkMistake>(link)) << c.text.substr(0, 60);
        const std::string& line = std::get<LinkMistake>(link).line;
        EXPECT_THAT(line, AllOf(HasSubstr(c.why), HasSubstr("zentaro.example/"), Not(HasSubstr("\n"))));
        EXPECT_LT(line.size(), 200U);
    }
}

TEST(SharedLink, AProgramServedElsewhereHasItsOwnHost) {
    setLinkHost("localhost:8080");
    const auto isTaken = [](const char* text) { return std::holds_alternative<NSURL>(readSharedLink(text)); };
    EXPECT_TRUE(isTaken("http://LocalHost:8080/julia/0/0/1/1"));
    EXPECT_TRUE(isTaken("localhost:8080/julia/0/0/1/1"));
    EXPECT_FALSE(isTaken("http://localhost:8081/julia/0/0/1/1"));
    EXPECT_FALSE(isTaken("http://zentaro.example/julia/0/0/1/1"));
    setLinkHost("");
    EXPECT_TRUE(isTaken("http://zentaro.example/julia/0/0/1/1"));
}

}  // namespace
