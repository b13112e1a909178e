// Places of pictures as texts and back: to the last bit, and nothing from texts that say no place.
// The texts come from files that anybody may have made.
#include "main_screen/pictured_place.h"

#include <gmock/gmock.h>

namespace {

TEST(PicturedPlace, IsReadBackToTheLastBit) {
    const CGRect bounds[] = {topView,
                             {{-0.74364388703715877, 0.13182590420531198}, {1e-15, 0.5625e-15}},
                             {{0.1 + 0.2, -1.0 / 3}, {1e6, 5e5}}};
    for (const CGRect& view : bounds) {
        for (const int32_t type : {FractalType::mandelbrot, FractalType::julia}) {
            const auto place = placeOfTexts(textsOfPlace({type, view, 10}, "http://zentaro.example/"));
            ASSERT_TRUE(place.has_value());
            EXPECT_EQ(place->bounds, view);
            EXPECT_EQ(place->fractalType, type);
            EXPECT_EQ(place->palette, 10);
        }
    }
    const PictureTexts texts = textsOfPlace({0, {{-2, -1.5}, {3, 3}}, 4}, "the link");
    EXPECT_EQ(texts, (PictureTexts{{"Software", "Zentaro"},
                                   {"Link", "the link"},
                                   {"Type", "mandelbrot"},
                                   {"Bounds", "{{-2, -1.5}, {3, 3}}"},
                                   {"Palette", "4"}}));
}

TEST(PicturedPlace, HasItsTypeFromTheLinkWhereAProgramDroppedIt) {
    for (const int32_t type : {FractalType::mandelbrot, FractalType::julia}) {
        PictureTexts texts = textsOfPlace(
            {type, topView, 1}, "http://a.example/" + std::string(fractalTypeWord(type)) + "/0/0/1/1");
        std::erase_if(texts, [](const PictureText& one) { return one.key == "Type"; });
        ASSERT_TRUE(placeOfTexts(texts).has_value());
        EXPECT_EQ(placeOfTexts(texts)->fractalType, type);
    }
}

TEST(PicturedPlace, IsNotInTextsThatSayNone) {
    const struct {
        const char* key;
        std::vector<const char*> texts;
    } rows[] = {
        {"Type", {"", "Julia", "julia ", "sierpinski"}},
        {"Palette", {"", "-1", "11", "4x", " 4", "99999999999"}},
        {"Bounds",
         {"", "{{0, 0}, {0, 1}}", "{{0, 0}, {-1, 1}}", "{{nan, 0}, {1, 1}}", "{{0, 0}, {nan, 1}}",
          "{{0, inf}, {1, 1}}", "{{0, 0}, {inf, inf}}", "{{1e30, 0}, {1, 1}}", "{{0, 0}, {1, 1001}}",
          "{{0, 0}, {1e-300, 1}}", "{{0, 0}, {1000001, 1000001}}", "{{1, 1}, {1e-17, 1e-17}}", "0, 0, 1, 1",
          "{{0, 0}, {1, 1}}x"}},
    };
    const PictureTexts good = textsOfPlace({FractalType::julia, topView, 3}, "");
    ASSERT_TRUE(placeOfTexts(good).has_value());
    EXPECT_FALSE(placeOfTexts({}).has_value());
    for (const auto& [key, values] : rows) {
        for (const char* value : values) {
            PictureTexts texts = good;
            for (PictureText& one : texts) {
                if (one.key == key) one.text = value;
            }
            EXPECT_FALSE(placeOfTexts(texts).has_value()) << key << ": " << value;
        }
    }
}

}  // namespace
