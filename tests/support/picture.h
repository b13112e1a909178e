// Picture files and screens as plain pixels, read by a program that has nothing to do with ours.
// So a mistake of ours in writing pictures cannot hide in reading them.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <set>
#include <string>
#include <vector>

#include "tests/support/child_process.h"

using Rgb = std::array<uint8_t, 3>;

/// Empty where a picture could not be read.
struct Picture {
    int width = 0;
    int height = 0;
    std::vector<uint8_t> bytes;  ///< R, G, B, rows from the top

    Rgb at(int x, int y) const {
        const auto i =
            3 * (static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x));
        return i + 2 < bytes.size() ? Rgb{bytes[i], bytes[i + 1], bytes[i + 2]} : Rgb{1, 2, 3};
    }
    std::size_t count(Rgb color) const {
        std::size_t found = 0;
        for (std::size_t i = 0; i + 2 < bytes.size(); i += 3) {
            if (bytes[i] == color[0] && bytes[i + 1] == color[1] && bytes[i + 2] == color[2]) ++found;
        }
        return found;
    }
    std::size_t countColors() const {
        std::set<Rgb> colors;
        for (std::size_t i = 0; i + 2 < bytes.size(); i += 3) {
            colors.insert({bytes[i], bytes[i + 1], bytes[i + 2]});
        }
        return colors.size();
    }
};

/// The portable pixmap that a command prints.
inline Picture pictureFromCommand(const std::vector<std::string>& command,
                                  const std::vector<ChildProcess::Variable>& environment = {}) {
    ChildProcess program(command, environment);
    program.wait(60);
    const std::string& text = program.out();
    Picture picture;
    int largest = 0;
    int offset = 0;
    if (std::sscanf(text.c_str(), "P6 %d %d %d%n", &picture.width, &picture.height, &largest, &offset) != 3 ||
        largest != 255) {
        return {};
    }
    picture.bytes.assign(text.begin() + offset + 1, text.end());
    return picture;
}

inline Picture readPicture(const std::string& file) {
    return pictureFromCommand({"convert", file, "-depth", "8", "ppm:-"});
}

/// Levels from 0 to 255; 255 for pictures of different sizes.
inline double meanDifference(const Picture& a, const Picture& b) {
    if (a.bytes.size() != b.bytes.size() || a.width != b.width || a.bytes.empty()) return 255;
    double sum = 0;
    for (std::size_t i = 0; i < a.bytes.size(); ++i)
        sum += std::abs(a.bytes[i] - b.bytes[i]);
    return sum / static_cast<double>(a.bytes.size());
}

/// How many of the rows from `first` to `end` differ anywhere.
inline std::size_t differingRows(const Picture& a, const Picture& b, int first, int end) {
    if (a.width != b.width || a.height != b.height) return static_cast<std::size_t>(end - first);
    const auto row = static_cast<std::ptrdiff_t>(a.width) * 3;
    std::size_t found = 0;
    for (int y = first; y < end; ++y) {
        if (!std::equal(a.bytes.begin() + y * row, a.bytes.begin() + (y + 1) * row,
                        b.bytes.begin() + y * row))
            ++found;
    }
    return found;
}

/// Four pixels become one of their mean.
inline Picture halved(const Picture& picture) {
    Picture half{picture.width / 2, picture.height / 2, {}};
    for (int y = 0; y < half.height; ++y) {
        for (int x = 0; x < half.width; ++x) {
            for (std::size_t c = 0; c < 3; ++c) {
                const int sum = picture.at(2 * x, 2 * y)[c] + picture.at(2 * x + 1, 2 * y)[c] +
                                picture.at(2 * x, 2 * y + 1)[c] + picture.at(2 * x + 1, 2 * y + 1)[c];
                half.bytes.push_back(static_cast<uint8_t>((sum + 2) / 4));
            }
        }
    }
    return half;
}
