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
EM_JS(void, zentaroPageSetClipboardText, (const char* text), {
    Module.page.setClipboardText(UTF8ToString(text));
});
EM_JS(void, zentaroPageSetFullscreen, (int fullscreen), { Module.page.setFullscreen(fullscreen !== 0); });
EM_JS(int, zentaroPageIsFullscreen, (), { return Module.page.isFullscreen() ? 1 : 0; });
EM_JS(void, zentaroPageKeepAwake, (int awake), { Module.page.keepAwake(awake !== 0); });
EM_JS(int, zentaroPageHost, (char* to, int capacity), {
    const host = Module.page.host();
    stringToUTF8(host, to, capacity);
    return lengthBytesUTF8(host);
});
EM_JS(void, zentaroPageLog, (const char* line, int length), { console.log(UTF8ToString(line, length)); });
// clang-format on

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

void setClipboardText(const std::string& text) {
    zentaroPageSetClipboardText(text.c_str());
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
    // Names of servers have at most 253 characters, ports 5 digits.
    char name[264];
    const int length = zentaroPageHost(name, sizeof name);
    return length < static_cast<int>(sizeof name) ? std::string(name) : std::string();
}

void log(std::string_view line) {
    zentaroPageLog(line.data(), static_cast<int>(line.size()));
}

}  // namespace WebPage
