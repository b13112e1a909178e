// What the user can make the main screen do from the keyboard.
// One table feeds the keys and the list of them; buttons share the actions' names with it.
#pragma once

#include <span>
#include <string>

#include "platform/host/host_event.h"

struct Command {
    /// The name that buttons and keys call it by ("toggleFractal:").
    const char* action = "";
    /// What it does, for the list of keys.
    const char* title = "";
    /// The key as the list shows it; empty for one that goes without saying.
    const char* keyName = "";
    HostKey key = HostKey::character;
    /// For HostKey::character.
    const char* text = "";
    /// Whether it moves the view; such commands rest while the pilot flies, as fingers do.
    bool movesView = false;
    /// Whether a held key goes on with it.
    bool repeats = false;
    /// Whether it is pressed with the control key.
    bool control = false;
    /// Whether it works under another screen, too: it is about the window sooner than about the view.
    bool worksBelow = false;
};

/// In the order of the toolbar, then what has no button.
std::span<const Command> mainScreenCommands();

/// The command of a key press; null for a key without one. Repeated presses of a held key count as none
/// unless the command goes on with them.
const Command* commandForKey(const HostKeyPress& press);
