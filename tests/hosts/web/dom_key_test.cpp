// Key presses of the page: names of keys, texts of all lengths, and what is no key of the app's.
// The names are the DOM's.
#include "hosts/web/dom_key.h"

#include <gtest/gtest.h>

TEST(DOMKey, NamesKeysAndTakesSingleCharactersAsText) {
    const std::tuple<const char*, HostKey, const char*> cases[] = {
        {"Escape", HostKey::escape, ""},
        {"Enter", HostKey::returnKey, ""},
        {" ", HostKey::space, ""},
        {"ArrowLeft", HostKey::left, ""},
        {"ArrowDown", HostKey::down, ""},
        {"F11", HostKey::f11, ""},
        {"F1", HostKey::f1, ""},
        {"c", HostKey::character, "c"},
        {"C", HostKey::character, "c"},
        {"?", HostKey::character, "?"},
        {"\xc3\xa4", HostKey::character, "\xc3\xa4"},
        {"\xf0\x9f\x8c\x80", HostKey::character, "\xf0\x9f\x8c\x80"}};
    for (const char* none : {"", "F2", "Dead", "escape", "ab", "\xc3", "\xc3\xa4\xc3"})
        EXPECT_FALSE(keyPressFromDOM(none, true, true, 2.5)) << none;
    for (const auto& [name, key, text] : cases) {
        SCOPED_TRACE(name);
        const auto press = keyPressFromDOM(name, true, true, 2.5);
        ASSERT_TRUE(press);
        EXPECT_EQ(press->key, key);
        EXPECT_EQ(press->text, text);
        EXPECT_TRUE(press->repeated && press->control);
        EXPECT_EQ(press->time, 2.5);
    }
}
