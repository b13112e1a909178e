// Texts in picture files: what is put in by either way is read by ourselves and by the pictures' own
// libraries. Files from outside are damaged in every way that a part of them can be.
#include "platform/graphics/picture_texts.h"

#include <algorithm>
#include <gmock/gmock.h>

#include "hosts/native/native_image_codec.h"
#include "tests/support/picture_reader.h"

namespace {

using Bytes = std::vector<uint8_t>;

const CGImage kPicture(40, 30, CGImageFormat::gray8, Bytes(1200, 77));
const PictureTexts kTexts{{"Software", "Zentaro"}, {"Bounds", "{{-2, 0.1}, {4, 3}}"}};

std::optional<PictureTexts> textsIn(const Bytes& file) {
    return readPictureTexts([&](uint64_t offset, std::span<uint8_t> room) {
        const std::size_t from = std::min<uint64_t>(offset, file.size());
        const std::size_t count = std::min(room.size(), file.size() - from);
        std::copy_n(file.begin() + static_cast<std::ptrdiff_t>(from), count, room.begin());
        return count;
    });
}

Bytes encoded(bool png, const PictureTexts& texts) {
    NativeImageCodec codec;
    return png ? codec.encodePNG(kPicture, texts).value() : codec.encodeJPEG(kPicture, 0.9, texts).value();
}

Bytes inserted(bool png, const PictureTexts& texts) {
    Bytes file = encoded(png, {});
    EXPECT_TRUE(insertPictureTexts(file, texts));
    return file;
}

Bytes joined(const Bytes& file, std::size_t place, const Bytes& part) {
    Bytes all = file;
    all.insert(all.begin() + static_cast<std::ptrdiff_t>(place), part.begin(), part.end());
    return all;
}

TEST(PictureTexts, AreReadBackByOurselvesAndByTheLibraries) {
    for (const bool png : {true, false}) {
        const Bytes plain = encoded(png, {});
        EXPECT_EQ(textsIn(plain), PictureTexts{});
        EXPECT_EQ(inserted(png, {}), plain);
        for (const Bytes& file : {encoded(png, kTexts), inserted(png, kTexts)}) {
            EXPECT_EQ(textsIn(file), kTexts);
            if (png) {
                EXPECT_EQ(pngTexts(file), kTexts);
                EXPECT_EQ(decodePng(file)->pixels, decodePng(plain)->pixels);
            } else {
                EXPECT_EQ(jpegComments(file), "Software: Zentaro\nBounds: {{-2, 0.1}, {4, 3}}\n");
                EXPECT_EQ(decodeJpeg(file).pixels, decodeJpeg(plain).pixels);
            }
        }
    }
}

/// As graphics programs write what they read as tEXt.
Bytes internationalChunk(const std::string& content) {
    Bytes chunk{0, 0, 0, static_cast<uint8_t>(content.size())};
    const std::string summed = "iTXt" + content;
    chunk.insert(chunk.end(), summed.begin(), summed.end());
    uint32_t sum = 0xFFFFFFFF;
    for (const char c : summed) {
        sum ^= static_cast<uint8_t>(c);
        for (int bit = 0; bit < 8; ++bit)
            sum = sum >> 1 ^ (sum & 1) * 0xEDB88320;
    }
    for (const int shift : {24, 16, 8, 0})
        chunk.push_back(static_cast<uint8_t>(~sum >> shift));
    return chunk;
}

TEST(PictureTexts, InternationalOnesAreReadAsWell) {
    const struct {
        const char* what;
        std::string content;
        PictureTexts texts;
    } rows[] = {
        {"with a language", std::string("Type\0\0\0de\0Art\0julia", 19), {{"Type", "julia"}}},
        {"compressed", std::string("Type\0\1\0\0\0julia", 14), {}},
        {"not ASCII", std::string("Type\0\0\0\0\0\xC3\xA9", 11), {}},
        {"cut in the flags", std::string("Type\0\0", 6), {}},
    };
    for (const auto& [what, content, texts] : rows)
        EXPECT_EQ(textsIn(joined(encoded(true, {}), 33, internationalChunk(content))), texts) << what;
}

TEST(PictureTexts, WhatAFileCannotHoldIsLeftOutOfIt) {
    const PictureTexts texts{{"", "no key"},
                             {std::string(80, 'k'), "long key"},
                             {"two: keys", "x"},
                             {"Line", "one\ntwo"},
                             {"Long", std::string(65001, 'x')},
                             {"Left", std::string(65000, 'x')},
                             {"Last", std::string(600, 'x')}};
    const PictureTexts left(texts.end() - 2, texts.end());
    EXPECT_EQ(textsIn(encoded(true, texts)), left);
    EXPECT_EQ(textsIn(inserted(true, texts)), left);
    EXPECT_EQ(textsIn(encoded(false, texts)), PictureTexts{left[0]}) << "one segment";
    EXPECT_EQ(textsIn(inserted(false, texts)), PictureTexts{left[0]});
}

TEST(PictureTexts, OfOtherFilesThereAreNone) {
    const Bytes png = encoded(true, kTexts);
    const Bytes others[] = {
        {}, {0xFF, 0xD8}, Bytes(5000, 0xFF), {png.begin(), png.begin() + 7}, {png.begin() + 1, png.end()}};
    for (Bytes file : others) {
        EXPECT_EQ(textsIn(file), std::nullopt) << file.size();
        const Bytes before = file;
        EXPECT_FALSE(insertPictureTexts(file, kTexts));
        EXPECT_EQ(file, before);
    }
    Bytes headless(png.begin(), png.begin() + 20);
    EXPECT_FALSE(insertPictureTexts(headless, kTexts)) << "cut within its header";
}

TEST(PictureTexts, OfADamagedFileAreThoseThatAreWhole) {
    const PictureTexts none;
    const PictureTexts first{kTexts[0]};
    const Bytes png = inserted(true, kTexts);
    const Bytes jpeg = inserted(false, kTexts);
    // Behind PNG's header the first text has 16 bytes and a frame of 12.
    const std::size_t text = 33;
    const std::size_t second = text + 16 + 12;
    const std::size_t comment = 20;  // behind JPEG's start and APP0
    const auto changed = [](Bytes file, std::size_t place, uint8_t byte) {
        file.at(place) = byte;
        return file;
    };
    const auto cut = [](const Bytes& file, std::size_t size) {
        return Bytes(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(size));
    };
    const struct {
        const char* what;
        Bytes file;
        PictureTexts texts;
    } rows[] = {
        {"a wrong checksum", changed(png, text + 12, 'x'), {kTexts[1]}},
        {"a length beyond the end", changed(png, second + 1, 1), first},
        {"more than the largest length", changed(png, text, 0xFF), none},
        {"cut in a text", cut(png, second + 20), first},
        {"a text behind the end",
         joined(cut(png, text), text,
                [&] {
                    Bytes rest{0, 0, 0, 0, 'I', 'E', 'N', 'D', 0xAE, 0x42, 0x60, 0x82};
                    rest.insert(rest.end(), png.begin() + static_cast<std::ptrdiff_t>(text), png.end());
                    return rest;
                }()),
         none},
        {"a comment cut short", cut(jpeg, comment + 30), none},
        {"a comment of no length", changed(changed(jpeg, comment + 2, 0), comment + 3, 1), none},
        {"a comment behind the first scan", joined(jpeg, comment, {0xFF, 0xDA, 0, 2}), none},
        {"a comment of others", joined(jpeg, comment, {0xFF, 0xFE, 0, 6, 'H', 'i', '\n', ':'}), kTexts},
    };
    for (const auto& [what, file, texts] : rows)
        EXPECT_EQ(textsIn(file), texts) << what;
}

TEST(PictureTexts, AFileOfNothingButPartsIsLeftInTime) {
    const auto readsOf = [](const Bytes& start, const Bytes& endless) {
        std::size_t reads = 0;
        const auto texts = readPictureTexts([&](uint64_t offset, std::span<uint8_t> room) {
            ++reads;
            for (uint8_t& byte : room) {
                byte =
                    offset < start.size() ? start[offset] : endless[(offset - start.size()) % endless.size()];
                ++offset;
            }
            return room.size();
        });
        EXPECT_THAT(texts, testing::Optional(testing::IsEmpty()));
        return reads;
    };
    EXPECT_LT(readsOf({0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'}, {0}), 300000U);
    EXPECT_LT(readsOf({0xFF, 0xD8}, {0xFF, 0xE0, 0, 2}), 5000U);
}

}  // namespace
