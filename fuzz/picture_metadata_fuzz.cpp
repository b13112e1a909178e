// Any bytes as a picture file that somebody hands over, all the way to the view that it names.
// What is read can be written into either kind of file and reads back; a view that is named fits every
// screen.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "fuzz/fuzz_check.h"
#include "main_screen/pictured_place.h"
#include "platform/graphics/picture_texts.h"

namespace {

using Bytes = std::vector<uint8_t>;

std::optional<PictureTexts> textsIn(const Bytes& file) {
    return readPictureTexts([&](uint64_t offset, std::span<uint8_t> room) {
        const std::size_t from = std::min<uint64_t>(offset, file.size());
        const std::size_t count = std::min(room.size(), file.size() - from);
        std::copy_n(file.begin() + static_cast<std::ptrdiff_t>(from), count, room.begin());
        return count;
    });
}

Bytes emptyPng() {
    Bytes file{0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n', 0, 0, 0, 13, 'I', 'H', 'D', 'R'};
    file.resize(33);
    return file;
}

void checkWritten(Bytes file, const PictureTexts& texts) {
    FUZZ_CHECK(insertPictureTexts(file, texts));
    FUZZ_CHECK(textsIn(file) == texts);
}

void checkPlace(const PicturedPlace& place) {
    const auto again = placeOfTexts(textsOfPlace(place, "a link"));
    FUZZ_CHECK(again && again->bounds == place.bounds && again->fractalType == place.fractalType &&
               again->palette == place.palette);
    for (const auto& [width, height] : {std::pair(16384, 1), std::pair(1280, 720), std::pair(1, 1)}) {
        const CGRect shown = fitToAspect(place.bounds, width, height);
        FUZZ_CHECK(isFinite(shown) && shown.size.width > 0 && shown.size.height > 0);
    }
}

void checkFile(const Bytes& file) {
    const auto texts = textsIn(file);
    Bytes changed = file;
    FUZZ_CHECK(texts || !insertPictureTexts(changed, {}));
    if (!texts) return;
    FUZZ_CHECK(texts->size() <= 64);
    checkWritten(emptyPng(), *texts);
    if (jpegCommentContent(*texts).size() < 60000) checkWritten({0xFF, 0xD8, 0xFF, 0xD9}, *texts);
    if (const auto place = placeOfTexts(*texts)) checkPlace(*place);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    checkFile({data, data + size});
    // The checksums of PNG keep most changes from being read: the same bytes where there are none.
    Bytes comment{0xFF, 0xD8, 0xFF, 0xFE};
    const std::size_t length = std::min<std::size_t>(size, 65533) + 2;
    comment.push_back(static_cast<uint8_t>(length >> 8));
    comment.push_back(static_cast<uint8_t>(length));
    comment.insert(comment.end(), data, data + length - 2);
    checkFile(comment);
    return 0;
}
