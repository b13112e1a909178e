// The table itself.
// What has several keys stands together: rows of one title share a line in the list.
#include "main_screen/commands.h"

#include <algorithm>

namespace {

constexpr Command commands[] = {
    {"resetScreen:", "Back to the top", "0", HostKey::character, "0", true},
    {"resetScreen:", "Back to the top", "Home", HostKey::home, "", true},
    {"shareScreen:", "Share this view", "S", HostKey::character, "s"},
    {"toggleFractal:", "Mandelbrot or Julia", "F", HostKey::character, "f"},
    {"toggleColoring:", "Next palette", "C", HostKey::character, "c"},
    {"toggleColorCycling:", "Colour cycling", "A", HostKey::character, "a"},
    {"toggleRecording:", "Record", "R", HostKey::character, "r"},
    {"togglePilot:", "Hide or show the buttons", "Space", HostKey::space, ""},
    {"showAbout:", "About", "I", HostKey::character, "i"},
    {"moveLeft:", "Move", "← ↑ ↓ →", HostKey::left, "", true, true},
    {"moveUp:", "Move", "", HostKey::up, "", true, true},
    {"moveDown:", "Move", "", HostKey::down, "", true, true},
    {"moveRight:", "Move", "", HostKey::right, "", true, true},
    {"zoomIn:", "Zoom", "+ −", HostKey::character, "+", true, true},
    {"zoomIn:", "Zoom", "", HostKey::character, "=", true, true},
    {"zoomOut:", "Zoom", "", HostKey::character, "-", true, true},
    {"copyLink:", "Copy this view's link", "Ctrl+C", HostKey::character, "c", false, false, true},
    {"pasteLink:", "Open a copied link", "Ctrl+V", HostKey::character, "v", false, false, true},
    {"toggleFullscreen:", "Full screen", "F11", HostKey::f11, "", false, false, false, true},
    {"toggleKeyHelp:", "This list", "?", HostKey::character, "?"},
    {"toggleDeveloperOverlay:", "Figures for developers", "F1", HostKey::f1, "", false, false, false, true},
    {"leave:", "Leave full screen, then quit", "Esc", HostKey::escape, ""},
};

}  // namespace

std::span<const Command> mainScreenCommands() {
    return commands;
}

const Command* commandForKey(const HostKeyPress& press) {
    const auto* const found =
        std::find_if(std::begin(commands), std::end(commands), [&](const Command& command) {
            return command.key == press.key && command.control == press.control &&
                   (press.key != HostKey::character || press.text == command.text);
        });
    const bool counts = found != std::end(commands) && (!press.repeated || found->repeats);
    return counts ? found : nullptr;
}
