// What the user can make the main screen do from the keyboard.
// One table feeds the keys and the list of them; buttons share the actions' names with it.
#pragma once

#include <span>
#include <string>

#include "platform/host/host_event.h"

struct Command {
    /// The name that buttons and keys call it by ("toggleFractal:").
    const char* action;
    /// What it does, for the list of keys.
    const char* title;
    /// The key as the list shows it.
    const char* keyName;
    HostKey key;
    /// For HostKey::character.
    const char* text;
};

/// In the order of the toolbar, then what has no button.
std::span<const Command> mainScreenCommands();

/// The command of a key press; null for a key without one. Repeated presses of a held key and presses with
/// the control key count as none.
const Command* commandForKey(const HostKeyPress& press);
