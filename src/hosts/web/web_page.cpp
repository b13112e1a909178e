// Calls of the page's object, Module.page.
// Texts cross as UTF-8 in the program's memory.
#include "hosts/web/web_page.h"

#include <emscripten/emscripten.h>

// clang-format off
EM_JS(double, zentaroPageWidth, (), { return Module.page.width(); });
EM_JS(double, zentaroPageHeight, (), { return Module.page.height(); });
EM_JS(double, zentaroPageScale, (), { return Module.page.scale(); });
EM_JS(void, zentaroPageStarted, (), { Module.page.started(); });
EM_JS(void, zentaroPageFailed, (const char* reason, int length), {
    Module.page.failed(UTF8ToString(reason, length));
});
EM_JS(void, zentaroPageReportCrashes, (), {
    const tell = function(what) { Module.page.failed("The program stopped: " + what); };
    addEventListener("error", function(event) {
        const thrown = event.error;
        if (thrown instanceof WebAssembly.RuntimeError) tell(thrown.message);
        // What C++ throws arrives as a number.
        if (typeof thrown === "number") tell("exception " + thrown);
    });
});
EM_JS(void, zentaroPageViewSettled, (const char* path), { Module.page.viewSettled(UTF8ToString(path)); });
EM_JS(void, zentaroPageMirror, (const char* json), { Module.page.mirror(UTF8ToString(json)); });
EM_JS(void, zentaroPageStepsBack, (int count), { Module.page.stepsBack(count); });
EM_JS(void, zentaroPageSetClipboardText, (const char* text), {
    Module.page.setClipboardText(UTF8ToString(text));
});
EM_JS(int, zentaroPageHasShareSheet, (), { return Module.page.hasShareSheet() ? 1 : 0; });
EM_JS(void, zentaroPageShare, (int number, const char* way, const char* subject, const char* text,
                               const char* link, const char* textWithLink, const char* name,
                               const uint8_t* picture, int size), {
    Module.page.share(number, UTF8ToString(way), {
        subject: UTF8ToString(subject),
        text: UTF8ToString(text),
        link: UTF8ToString(link),
        textWithLink: UTF8ToString(textWithLink),
        name: UTF8ToString(name),
        picture: size > 0 ? HEAPU8.slice(picture, picture + size) : null,
    });
});
EM_JS(int, zentaroPageOpenURL, (const char* url), { return Module.page.openURL(UTF8ToString(url)) ? 1 : 0; });
EM_JS(int, zentaroPageLanguages, (char* to, int capacity), {
    const languages = Module.page.languages();
    stringToUTF8(languages, to, capacity);
    return lengthBytesUTF8(languages);
});
EM_JS(void, zentaroPageFetch, (int number, const char* url, double timeout, double largest), {
    Module.page.fetchDocument(number, UTF8ToString(url), timeout, largest);
});
EM_JS(void, zentaroPageFetchedBytes, (int number, char* to), { HEAPU8.set(Module.page.fetchedBytes(number), to); });
EM_JS(void, zentaroPageSetFullscreen, (int fullscreen), { Module.page.setFullscreen(fullscreen !== 0); });
EM_JS(int, zentaroPageIsFullscreen, (), { return Module.page.isFullscreen() ? 1 : 0; });
EM_JS(void, zentaroPageKeepAwake, (int awake), { Module.page.keepAwake(awake !== 0); });
EM_JS(int, zentaroPageHost, (char* to, int capacity), {
    const host = Module.page.host();
    stringToUTF8(host, to, capacity);
    return lengthBytesUTF8(host);
});
EM_JS(double, zentaroPagePictureBytes, (double offset, uint8_t* to, double count), {
    const bytes = Module.page.pictureBytes(offset, count);
    HEAPU8.set(bytes, to);
    return bytes.length;
});
EM_JS(int, zentaroPageCanRecord, (), { return Module.page.canRecord() ? 1 : 0; });
EM_JS(void, zentaroPageStartRecording, (char* to, int capacity), {
    stringToUTF8(Module.page.startRecording(), to, capacity);
});
EM_JS(int, zentaroPageStopRecording, (), { return Module.page.stopRecording() ? 1 : 0; });
EM_JS(void, zentaroPageShowPreview, (), { Module.page.showPreview(); });
EM_JS(void, zentaroPageHidePreview, (), { Module.page.hidePreview(); });
EM_JS(void, zentaroPageLog, (const char* line, int length), { console.log(UTF8ToString(line, length)); });
// clang-format on

namespace {

/// A text that the page writes and gives the length of; empty for one that is longer than any sensible one.
std::string textOfPage(int (*write)(char* to, int capacity)) {
    char text[512];
    const int length = write(text, sizeof text);
    return length < static_cast<int>(sizeof text) ? std::string(text) : std::string();
}

}  // namespace

namespace WebPage {

CGSize size() {
    return {zentaroPageWidth(), zentaroPageHeight()};
}

double scale() {
    return zentaroPageScale();
}

void started() {
    zentaroPageStarted();
}

void failed(std::string_view reason) {
    zentaroPageFailed(reason.data(), static_cast<int>(reason.size()));
}

void reportCrashes() {
    zentaroPageReportCrashes();
}

void viewSettled(const std::string& path) {
    zentaroPageViewSettled(path.c_str());
}

void mirror(const std::string& json) {
    zentaroPageMirror(json.c_str());
}

void stepsBack(int count) {
    zentaroPageStepsBack(count);
}

void setClipboardText(const std::string& text) {
    zentaroPageSetClipboardText(text.c_str());
}

bool hasShareSheet() {
    return zentaroPageHasShareSheet() != 0;
}

void share(int number, const std::string& way, const SharedContent& content, const NSData& picture) {
    const std::string name = content.fileName() + ".png";
    zentaroPageShare(number, way.c_str(), content.subject.c_str(), content.text.c_str(), content.link.c_str(),
                     content.textWithLink().c_str(), name.c_str(), picture.data(),
                     static_cast<int>(picture.size()));
}

bool openURL(const std::string& url) {
    return zentaroPageOpenURL(url.c_str()) != 0;
}

std::string languages() {
    return textOfPage(zentaroPageLanguages);
}

void fetchDocument(int number, const std::string& url, double timeout, std::size_t largest) {
    zentaroPageFetch(number, url.c_str(), timeout, static_cast<double>(largest));
}

void fetchedBytes(int number, std::span<char> room) {
    zentaroPageFetchedBytes(number, room.data());
}

void setFullscreen(bool fullscreen) {
    zentaroPageSetFullscreen(fullscreen ? 1 : 0);
}

bool isFullscreen() {
    return zentaroPageIsFullscreen() != 0;
}

void keepAwake(bool awake) {
    zentaroPageKeepAwake(awake ? 1 : 0);
}

std::string host() {
    return textOfPage(zentaroPageHost);
}

std::size_t pictureBytes(uint64_t offset, std::span<uint8_t> room) {
    return static_cast<std::size_t>(
        zentaroPagePictureBytes(static_cast<double>(offset), room.data(), static_cast<double>(room.size())));
}

bool canRecord() {
    return zentaroPageCanRecord() != 0;
}

std::string startRecording() {
    char failure[256] = {};
    zentaroPageStartRecording(failure, sizeof failure);
    return failure;
}

bool stopRecording() {
    return zentaroPageStopRecording() != 0;
}

void showPreview() {
    zentaroPageShowPreview();
}

void hidePreview() {
    zentaroPageHidePreview();
}

void log(std::string_view line) {
    zentaroPageLog(line.data(), static_cast<int>(line.size()));
}

}  // namespace WebPage
