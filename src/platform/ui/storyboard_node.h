// A storyboard's file as it is read: values that know where they stand, and what is made of them.
// Whatever is wrong is thrown as one line with its place, and caught by the storyboard.
#pragma once

#include <initializer_list>
#include <nlohmann/json.hpp>
#include <string>

#include "platform/graphics/ui_color.h"
#include "platform/graphics/ui_image.h"

/// A value with its place in the file, for messages.
struct StoryboardNode {
    const nlohmann::json& value;
    std::string path;

    [[noreturn]] void fail(const std::string& what) const;
    bool has(const char* key) const { return value.contains(key); }
    StoryboardNode at(const char* key) const;
    StoryboardNode at(std::size_t index) const;
    void expectObject(std::initializer_list<const char*> keys) const;
    std::size_t listSize() const;
    std::string text() const;
    double number() const;
    int64_t integer() const;
    bool flag() const;

    CGRect rect() const;
    UIColor color() const;
    uint32_t autoresizing() const;
    UIImageRef icon() const;
};
