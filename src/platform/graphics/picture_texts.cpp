// Both formats are a row of framed parts: PNG's chunks with their checksums, JPEG's segments up to the first
// scan. Numbers are big-endian in both.
#include "platform/graphics/picture_texts.h"

#include <algorithm>
#include <array>
#include <utility>

namespace {

using Bytes = std::vector<uint8_t>;

constexpr std::array<uint8_t, 8> pngSignature{0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
constexpr std::size_t pngHeaderEnd = pngSignature.size() + 25;  // the chunk IHDR has 13 bytes, framed
constexpr uint8_t jpegMarker = 0xFF;
constexpr uint8_t jpegStart = 0xD8;
constexpr uint8_t jpegComment = 0xFE;
constexpr std::string_view keyEnd = ": ";
constexpr std::size_t longestKey = 79;
constexpr std::size_t longestText = 65000;
constexpr std::size_t longestComment = 65533;  // of a segment of JPEG

// What is read of a file, however it is made up.
constexpr std::size_t mostTexts = 64;
constexpr std::size_t longestChunkRead = 65536;
constexpr int mostChunks = 1 << 18;  // a PNG of 2 GiB in chunks of 8 KiB
constexpr int mostSegments = 1 << 12;
constexpr uint32_t longestChunk = 0x7FFFFFFF;

bool isPrintable(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return c >= ' ' && c <= '~'; });
}

bool isWritable(const PictureText& text) {
    return !text.key.empty() && text.key.size() <= longestKey && text.text.size() <= longestText &&
           text.key.find(keyEnd) == std::string::npos && isPrintable(text.key) && isPrintable(text.text);
}

/// Of PNG: the polynomial of ISO 3309, reflected.
uint32_t checksum(std::span<const uint8_t> bytes) {
    uint32_t sum = 0xFFFFFFFF;
    for (const uint8_t byte : bytes) {
        sum ^= byte;
        for (int bit = 0; bit < 8; ++bit)
            sum = sum >> 1 ^ ((sum & 1) != 0 ? 0xEDB88320 : 0);
    }
    return ~sum;
}

uint32_t number32(std::span<const uint8_t> bytes) {
    return uint32_t{bytes[0]} << 24 | uint32_t{bytes[1]} << 16 | uint32_t{bytes[2]} << 8 | bytes[3];
}

void append32(Bytes& bytes, uint32_t number) {
    for (const int shift : {24, 16, 8, 0})
        bytes.push_back(static_cast<uint8_t>(number >> shift));
}

void append(Bytes& bytes, std::string_view text) {
    bytes.insert(bytes.end(), text.begin(), text.end());
}

std::string_view textOf(std::span<const uint8_t> bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

Bytes pngTextChunks(const PictureTexts& texts) {
    Bytes chunks;
    for (const PictureText& text : texts) {
        const Bytes content = pngTextContent(text);
        if (content.empty()) continue;
        append32(chunks, static_cast<uint32_t>(content.size()));
        const std::size_t type = chunks.size();
        append(chunks, "tEXt");
        chunks.insert(chunks.end(), content.begin(), content.end());
        append32(chunks, checksum(std::span(chunks).subspan(type)));
    }
    return chunks;
}

Bytes jpegCommentSegment(const PictureTexts& texts) {
    const std::string content = jpegCommentContent(texts);
    if (content.empty()) return {};
    const std::size_t length = content.size() + 2;
    Bytes segment{jpegMarker, jpegComment, static_cast<uint8_t>(length >> 8), static_cast<uint8_t>(length)};
    append(segment, content);
    return segment;
}

bool isPng(std::span<const uint8_t> file) {
    return file.size() >= pngSignature.size() &&
           std::equal(pngSignature.begin(), pngSignature.end(), file.begin());
}

bool isJpeg(std::span<const uint8_t> file) {
    return file.size() >= 3 && file[0] == jpegMarker && file[1] == jpegStart && file[2] == jpegMarker;
}

/// Behind the segments of applications, which must come first.
std::size_t jpegCommentPlace(std::span<const uint8_t> file) {
    std::size_t place = 2;
    while (place + 4 <= file.size() && file[place] == jpegMarker && (file[place + 1] & 0xF0) == 0xE0) {
        const std::size_t length = std::size_t{file[place + 2]} << 8 | file[place + 3];
        if (place + 2 + length > file.size()) break;
        place += 2 + length;
    }
    return place;
}

/// A file from its beginning on.
class FileReading {
  public:
    explicit FileReading(const PictureFileBytes& file) : _file(file) {}

    /// NO behind the end.
    bool take(std::span<uint8_t> room) {
        if (_file(_offset, room) != room.size()) return false;
        _offset += room.size();
        return true;
    }
    void skip(uint64_t count) { _offset += count; }

  private:
    const PictureFileBytes& _file;
    uint64_t _offset = 0;
};

void keep(PictureText text, PictureTexts& texts) {
    if (texts.size() < mostTexts && isWritable(text)) texts.push_back(std::move(text));
}

/// Up to the next zero byte, which is taken as well; nothing where there is none.
std::optional<std::string_view> takeWord(std::string_view& content) {
    const std::size_t end = content.find('\0');
    if (end == std::string_view::npos) return std::nullopt;
    const std::string_view word = content.substr(0, end);
    content.remove_prefix(end + 1);
    return word;
}

/// The type, the content and the checksum of a chunk. iTXt, into which other programs turn tEXt, has between
/// key and text whether and how it is compressed, the language and the key in that language.
void readTextChunk(std::span<const uint8_t> chunk, PictureTexts& texts) {
    const auto summed = chunk.first(chunk.size() - 4);
    if (checksum(summed) != number32(chunk.last(4))) return;
    const bool isInternational = textOf(summed).starts_with("iTXt");
    std::string_view content = textOf(summed.subspan(4));
    const auto key = takeWord(content);
    if (!key) return;
    if (isInternational) {
        if (content.size() < 2 || content[0] != 0) return;
        content.remove_prefix(2);
        if (!takeWord(content) || !takeWord(content)) return;
    }
    keep({std::string(*key), std::string(content)}, texts);
}

PictureTexts readPng(FileReading file) {
    PictureTexts texts;
    Bytes chunk;
    file.skip(pngSignature.size());
    for (int count = 0; count < mostChunks && texts.size() < mostTexts; ++count) {
        std::array<uint8_t, 8> frame{};
        if (!file.take(frame)) break;
        const uint32_t length = number32(frame);
        const std::string_view type = textOf(frame).substr(4);
        if (type == "IEND" || length > longestChunk) break;
        if ((type != "tEXt" && type != "iTXt") || length > longestChunkRead) {
            file.skip(uint64_t{length} + 4);
            continue;
        }
        chunk.assign(frame.begin() + 4, frame.end());
        chunk.resize(std::size_t{length} + 8);
        if (!file.take(std::span(chunk).subspan(4))) break;
        readTextChunk(chunk, texts);
    }
    return texts;
}

void readComment(std::string_view comment, PictureTexts& texts) {
    while (!comment.empty()) {
        const std::string_view line = comment.substr(0, comment.find('\n'));
        comment.remove_prefix(std::min(line.size() + 1, comment.size()));
        const std::size_t end = line.find(keyEnd);
        if (end == std::string_view::npos) continue;
        keep({std::string(line.substr(0, end)), std::string(line.substr(end + keyEnd.size()))}, texts);
    }
}

/// As all parts between the start of the picture and its first scan have one.
bool hasLength(uint8_t marker) {
    return marker >= 0xC0 && marker != 0xFF && (marker < 0xD0 || marker > 0xDA);
}

PictureTexts readJpeg(FileReading file) {
    PictureTexts texts;
    Bytes comment;
    file.skip(2);
    for (int count = 0; count < mostSegments && texts.size() < mostTexts; ++count) {
        std::array<uint8_t, 4> frame{};
        if (!file.take(frame) || frame[0] != jpegMarker || !hasLength(frame[1])) break;
        const std::size_t length = std::size_t{frame[2]} << 8 | frame[3];
        if (length < 2) break;
        if (frame[1] != jpegComment) {
            file.skip(length - 2);
            continue;
        }
        comment.resize(length - 2);
        if (!file.take(comment)) break;
        readComment(textOf(comment), texts);
    }
    return texts;
}

}  // namespace

std::vector<uint8_t> pngTextContent(const PictureText& text) {
    Bytes content;
    if (!isWritable(text)) return content;
    append(content, text.key);
    content.push_back(0);
    append(content, text.text);
    return content;
}

std::string jpegCommentContent(const PictureTexts& texts) {
    std::string content;
    for (const PictureText& text : texts) {
        const std::size_t length = text.key.size() + keyEnd.size() + text.text.size() + 1;
        if (!isWritable(text) || content.size() + length > longestComment) continue;
        content.append(text.key).append(keyEnd).append(text.text).append(1, '\n');
    }
    return content;
}

bool insertPictureTexts(std::vector<uint8_t>& file, const PictureTexts& texts) {
    const bool png = isPng(file) && file.size() >= pngHeaderEnd;
    if (!png && !isJpeg(file)) return false;
    const Bytes parts = png ? pngTextChunks(texts) : jpegCommentSegment(texts);
    const auto place = static_cast<std::ptrdiff_t>(png ? pngHeaderEnd : jpegCommentPlace(file));
    file.insert(file.begin() + place, parts.begin(), parts.end());
    return true;
}

std::optional<PictureTexts> readPictureTexts(const PictureFileBytes& file) {
    std::array<uint8_t, pngSignature.size()> start{};
    const std::span<const uint8_t> head = std::span(start).first(file(0, start));
    if (isPng(head)) return readPng(FileReading(file));
    if (isJpeg(head)) return readJpeg(FileReading(file));
    return std::nullopt;
}
