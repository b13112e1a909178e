// URLs cut into their parts and decoded: published examples of RFC 3986, and texts that are no URLs.
// "-" in a table stands for a component that is absent.
#include "platform/foundation/ns_url_components.h"

#include <gmock/gmock.h>

#include "platform/foundation/ns_percent_encoding.h"
#include "platform/foundation/ns_url.h"

namespace {

using testing::ElementsAre;
using testing::Optional;

std::string shown(const std::optional<std::string_view>& part) {
    return std::string(part.value_or("-"));
}

/// Scheme, host, path, query and fragment.
std::string partsOf(const NSURLComponents& url) {
    return shown(url.scheme()) + " " + shown(url.percentEncodedHost()) + " " +
           std::string(url.percentEncodedPath()) + " " + shown(url.percentEncodedQuery()) + " " +
           shown(url.percentEncodedFragment());
}

TEST(NSURLComponents, CutAtTheDelimiters) {
    const struct {
        const char* url;
        const char* parts;
    } cases[] = {
        // Sections 1.1.2 and 3.
        {"ldap://[2001:db8::7]/c=GB?objectClass?one", "ldap [2001:db8::7] /c=GB objectClass?one -"},
        {"mailto:John.Doe@example.com", "mailto - John.Doe@example.com - -"},
        {"foo://example.com:8042/over/there?name=ferret#nose",
         "foo example.com /over/there name=ferret nose"},
        {"file:///etc/hosts", "file  /etc/hosts - -"},
        // Section 7.6: the host is behind the "@", whatever stands before it.
        {"ftp://cnn.example.com&story=breaking_news@10.0.0.1:21/top", "ftp 10.0.0.1 /top - -"},
        // Section 5.4: references of every form.
        {"//g", "- g  - -"},
        {"../../../g", "- - ../../../g - -"},
        {"g#s/../x", "- - g - s/../x"},
        {"g;x=1?y#s", "- - g;x=1 y s"},
        {"./g:h", "- - ./g:h - -"},
        {"", "- -  - -"},
        // Sections 6.2.2 and 6.2.3: nothing is normalised, and what is empty is there.
        {"eXAMPLE://a/./b/../b/%63/%7bfoo%7d", "eXAMPLE a /./b/../b/%63/%7bfoo%7d - -"},
        {"http://example.com?#?/", "http example.com   ?/"},
    };
    for (const auto& each : cases) {
        const auto components = NSURLComponents::componentsWithString(each.url);
        ASSERT_TRUE(components) << each.url;
        EXPECT_EQ(partsOf(*components), each.parts) << each.url;
    }
}

TEST(NSURLComponents, RefuseMalformedTexts) {
    for (const char* tail : {"h/a b", "h/\xC3\xA9", "h/%4", "h/%G1", "h/[", "h/?a|b", "h/#a#b", "h/#\"",
                             "h:8a/", "h:80:80/", "[::1", "[::1]x/", "a@b@c/", "h^/", "h%/"})
        EXPECT_FALSE(NSURL::URLWithString(std::string("http://") + tail)) << tail;
    for (const char* text : {" http://h", ":a", "1a:b", "a_b:c", "%61:b", "{a}", "a/`"})
        EXPECT_FALSE(NSURL::URLWithString(text)) << text;
    EXPECT_FALSE(NSURL::URLWithString(std::string("http://h/\0a", 11)));
}

TEST(NSURLComponents, Decode) {
    const auto decoded =
        NSURLComponents::componentsWithString("a://%C3%A9.x/%7Euser%2f%e2%82%ac+?%26=%3d#%20%23");
    ASSERT_TRUE(decoded);
    EXPECT_THAT(decoded->host(), Optional(std::string("\u00e9.x")));
    EXPECT_THAT(decoded->path(), Optional(std::string("/~user/\u20ac+")));
    EXPECT_THAT(decoded->query(), Optional(std::string("&==")));
    EXPECT_THAT(decoded->fragment(), Optional(std::string(" #")));
    EXPECT_THAT(decoded->queryItems(), Optional(ElementsAre(NSURLQueryItem{"&", "="})));

    const auto undecodable = NSURLComponents::componentsWithString("a://%FF/%C0%80?k=%ED%A0%80&%80=v");
    ASSERT_TRUE(undecodable);
    EXPECT_EQ(undecodable->host(), std::nullopt);
    EXPECT_EQ(undecodable->path(), std::nullopt);
    EXPECT_THAT(undecodable->queryItems(),
                Optional(ElementsAre(NSURLQueryItem{"k", std::nullopt}, NSURLQueryItem{"%80", "v"})));
}

TEST(NSURLComponents, SplitQueries) {
    const auto items = [](const char* url) {
        return NSURLComponents::componentsWithString(url)->queryItems();
    };
    EXPECT_EQ(items("/a"), std::nullopt);
    EXPECT_THAT(items("/a?"), Optional(testing::IsEmpty()));
    EXPECT_THAT(items("/a?k=1&k&=2&&k=a=b+c&"),
                Optional(ElementsAre(NSURLQueryItem{"k", "1"}, NSURLQueryItem{"k", std::nullopt},
                                     NSURLQueryItem{"", "2"}, NSURLQueryItem{"", std::nullopt},
                                     NSURLQueryItem{"k", "a=b+c"}, NSURLQueryItem{"", std::nullopt})));
}

TEST(PercentEncoding, DecodesUTF8AndNothingElse) {
    EXPECT_THAT(stringByRemovingPercentEncoding("a%00b"), Optional(std::string("a\0b", 3)));
    EXPECT_THAT(stringByRemovingPercentEncoding("%2541"), Optional(std::string("%41")));
    EXPECT_THAT(stringByRemovingPercentEncoding("%F4%8F%BF%BF"), Optional(std::string("\U0010FFFF")));
    // Overlong forms, surrogates, beyond the last code point, cut short, continuations alone, broken escapes.
    for (const char* text : {"%C1%BF", "%E0%9F%BF", "%F0%8F%BF%BF", "%ED%BF%BF", "%F4%90%80%80", "%E2%82",
                             "%F8%88", "%80", "%C3a", "%", "%a", "%-1", "a%4"})
        EXPECT_EQ(stringByRemovingPercentEncoding(text), std::nullopt) << text;
}

}  // namespace
