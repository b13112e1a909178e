// Events in words.
// A log of them reads like the script that would play them again.
#include "platform/host/host_event.h"

#include "platform/foundation/decimal_text.h"
#include "platform/foundation/quoted_text.h"

namespace {

const char* name(UITouchPhase phase) {
    switch (phase) {
        case UITouchPhase::began:
            return "began";
        case UITouchPhase::moved:
            return "moved";
        case UITouchPhase::ended:
            return "ended";
        case UITouchPhase::cancelled:
            return "cancelled";
    }
    return "?";
}

const char* name(HostKey key) {
    static constexpr const char* names[] = {"character", "escape",  "return",    "space", "home", "left",
                                            "right",     "up",      "down",      "f1",    "f11",  "tab",
                                            "backspace", "page up", "page down", "end",   "back"};
    return names[static_cast<std::size_t>(key)];
}

const char* name(UIDeviceOrientation orientation) {
    static constexpr const char* names[] = {"unknown", "portrait", "portraitUpsideDown", "landscapeLeft",
                                            "landscapeRight"};
    return names[static_cast<std::size_t>(orientation)];
}

const char* name(HostLifecycle change) {
    switch (change) {
        case HostLifecycle::didBecomeActive:
            return "didBecomeActive";
        case HostLifecycle::willResignActive:
            return "willResignActive";
        case HostLifecycle::memoryWarning:
            return "memoryWarning";
        case HostLifecycle::willTerminate:
            return "willTerminate";
    }
    return "?";
}

struct Describer {
    std::string operator()(const HostTouch& touch) const {
        return std::string("touch ") + name(touch.phase) + " " + std::to_string(touch.id) + " " +
               NSStringFromCGPoint(touch.location) + " " + decimalText(touch.time);
    }
    std::string operator()(const HostKeyPress& press) const {
        std::string text = "key ";
        if (press.control) text += "control+";
        text += press.key == HostKey::character ? "\"" + press.text + "\"" : std::string(name(press.key));
        if (press.repeated) text += " repeated";
        return text + " " + decimalText(press.time);
    }
    std::string operator()(const HostWheel& wheel) const {
        return "wheel " + decimalText(wheel.steps) + " " + NSStringFromCGPoint(wheel.location) + " " +
               decimalText(wheel.time);
    }
    std::string operator()(const HostMagnify& magnify) const {
        return "magnify " + decimalText(magnify.factor) + " " + NSStringFromCGPoint(magnify.location) + " " +
               decimalText(magnify.time);
    }
    std::string operator()(const HostResize& resize) const {
        return "resize " + NSStringFromCGSize(resize.size) + " scale " + decimalText(resize.scale);
    }
    std::string operator()(const HostSafeArea& area) const {
        const UIEdgeInsets& insets = area.insets;
        return "safe area " + decimalText(insets.top) + " " + decimalText(insets.right) + " " +
               decimalText(insets.bottom) + " " + decimalText(insets.left);
    }
    std::string operator()(const HostReduceMotion& wish) const {
        return wish.reduced ? "less motion" : "usual motion";
    }
    std::string operator()(const HostVisibility& visibility) const {
        return visibility.visible ? "visible" : "hidden";
    }
    std::string operator()(const HostOrientation& held) const {
        return std::string("orientation ") + name(held.orientation);
    }
    std::string operator()(const HostOpenLink& link) const { return "link " + link.text.substr(0, 200); }
    std::string operator()(const HostOpenPicture& picture) const { return "picture " + quoted(picture.name); }
    std::string operator()(HostLifecycle change) const { return std::string("lifecycle ") + name(change); }
    std::string operator()(HostContextLost) const { return "context lost"; }
    std::string operator()(HostClose) const { return "close"; }
};

}  // namespace

std::string describe(const HostEvent& event) {
    return std::visit(Describer{}, event);
}
