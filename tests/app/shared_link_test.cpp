// Which texts are links of ours, and what is said of the others.
// The web host is the build's default.
#include "app/shared_link.h"

#include <gmock/gmock.h>

#include "main_screen/link_host.h"

namespace {

using testing::HasSubstr;

TEST(SharedLink, OursAreTaken) {
    const std::pair<const char*, const char*> cases[] = {
        {"http://zentaro.example/julia/0/0/1/1", "http://zentaro.example/julia/0/0/1/1"},
        {"HTTPS://Zentaro.Example/julia/0/0/1/1?x#y", "HTTPS://Zentaro.Example/julia/0/0/1/1?x#y"},
        {"http://me@zentaro.example:8080/julia/0/0/1/1", "http://me@zentaro.example:8080/julia/0/0/1/1"},
        {"zentaro.example/julia/0/0/1/1", "http://zentaro.example/julia/0/0/1/1"},
        {"//zentaro.example/julia/0/0/1/1", "//zentaro.example/julia/0/0/1/1"},
        {"zentaro://julia/0/0/1/1", "zentaro://julia/0/0/1/1"},
        {"Zentaro:/julia/0/0/1/1", "Zentaro:/julia/0/0/1/1"},
        {" \r\n</julia/0/0/1/1>\r\n", "/julia/0/0/1/1"},
        {"julia/0/0/1/1", "julia/0/0/1/1"},
        {"Discovered in Zentaro: http://zentaro.example/julia/0/0/1/1",
         "http://zentaro.example/julia/0/0/1/1"},
        {"http://other.example/a\nor (Zentaro.example/julia/0/0/1/1).",
         "http://Zentaro.example/julia/0/0/1/1"},
        {"<a href=\"zentaro://julia/0/0/1/1\">", "zentaro://julia/0/0/1/1"},
        // Where it leads is not asked here.
        {"/", "/"},
    };
    for (const auto& [text, url] : cases) {
        const auto link = readSharedLink(text);
        ASSERT_TRUE(std::holds_alternative<NSURL>(link)) << text;
        EXPECT_EQ(std::get<NSURL>(link).absoluteString(), url);
    }
}

TEST(SharedLink, OthersAreRefusedInOneLine) {
    const std::pair<const char*, std::vector<std::string>> cases[] = {
        {"another site",
         {"http://other.example/julia/0/0/1/1", "http://zentaro.example.org/julia/0/0/1/1",
          "http://zentaro.example@other.example/julia/0/0/1/1", "//other.example/julia/0/0/1/1",
          "http:/julia/0/0/1/1"}},
        {"another program", {"ftp://zentaro.example/julia/0/0/1/1", "file:///etc/passwd"}},
        {"no link",
         {"see http://other.example/julia/0/0/1/1 and /julia/0/0/1/1", "", "<>", "julia", "/julia/0 0/1/1",
          "/julia/%zz/0/1/1", std::string("/julia/0/0/1/1\0/", 16), "/a\n/b\r/c",
          "/" + std::string(1000000, '\xFF')}}};
    for (const auto& [why, texts] : cases) {
        for (const std::string& text : texts) {
            const auto link = readSharedLink(text);
            ASSERT_TRUE(std::holds_alternative<LinkMistake>(link)) << text.substr(0, 60);
            const std::string& line = std::get<LinkMistake>(link).line;
            EXPECT_THAT(line, testing::AllOf(HasSubstr(why), HasSubstr("zentaro.example/"),
                                             testing::Not(HasSubstr("\n"))));
            EXPECT_LT(line.size(), 200U);
        }
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
