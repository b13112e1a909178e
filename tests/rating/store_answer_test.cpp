// The record in a store's answer, read by the parser and by the scanner.
// What the scanner makes of escapes, and of texts that are no JSON.
#include "rating/store_answer.h"

#include <gtest/gtest.h>

TEST(StoreAnswer, BothReadersFindTheSameValues) {
    const std::string data =
        "{\"resultCount\": 1, \"results\": [\n{ \"bundleId\" :\t\"a.b\" ,\"trackId\": 12345678901,"
        "\"version\":\"1.10\",\"name\": \"caf\\u00e9 \\\"q\\\" \\\\ \\/ \\n\\t \\ud83d\\ude00\"} ]}";
    for (const bool hasParser : {true, false}) {
        const StoreAnswer answer = storeAnswerFromData(data, hasParser);
        ASSERT_FALSE(answer.error);
        EXPECT_EQ(valueForKey("bundleId", answer.json), "a.b");
        EXPECT_EQ(valueForKey("trackId", answer.json), "12345678901");
        EXPECT_EQ(valueForKey("version", answer.json), "1.10");
        EXPECT_EQ(valueForKey("name", answer.json), "café \"q\" \\ / \n\t 😀");
        EXPECT_EQ(valueForKey("price", answer.json), std::nullopt);
    }
}

TEST(StoreAnswer, ScannerAtTheEdges) {
    const std::pair<const char*, std::optional<std::string>> cases[] = {
        {"", std::nullopt},
        {"\"k\"", std::nullopt},
        {"\"k\":", ""},
        {"\"k\":}", ""},
        {"\"k\": \" }", ""},
        {"\"k\":\"\"", ""},
        {"\"k\":\"\\\"", "\\"},
        {"\"k\":\"\\u12\"", "\\u12"},
        {"\"k\":\"\\u00zz\"", "\\u00zz"},
        {"\"k\":\"\\u\\n\\é\"", "\\u\n\\é"},
        {"\"k\":\"\\ud83d\"", "\xEF\xBF\xBD"},
        {"\"k\":\"\\ude00x\"", "\xEF\xBF\xBDx"},
        {"\"k\":\"\\x\"", "\\x"},
        {"\"k\" \"j\": 3, 4", "3"},
        {"k: 1, \"k\" : true\r\n}", "true"},
    };
    for (const auto& [text, expected] : cases)
        EXPECT_EQ(valueForKey("k", StoreJSON(std::string(text))), expected) << text;
}

TEST(StoreAnswer, EndlessNestingIsNoJSON) {
    for (const std::size_t depth : {std::size_t{100}, std::size_t{200000}})
        EXPECT_TRUE(storeAnswerFromData(std::string(depth, '[') + std::string(depth, ']'), true).error);
    EXPECT_FALSE(
        storeAnswerFromData("{\"results\": [" + std::string(60, '[') + std::string(60, ']') + "]}", true)
            .error);
}
