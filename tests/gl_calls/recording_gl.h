// A GL library that draws nothing and remembers every call, linked in the place of the real one.
// One call a line: its name, then its arguments; errors asked for are marked behind the call before.
#pragma once

#include <deque>
#include <map>
#include <string>
#include <vector>

struct RecordingGL {
    /// Calls so far. A glGetError adds "?" to the line before it instead of a line of its own.
    std::vector<std::string> calls;
    /// What glGetError answers, one after another, before it answers GL_NO_ERROR.
    std::deque<unsigned> errors;
    bool compiles = true;
    bool links = true;
    std::string shaderLog;
    std::string programLog;
    unsigned nextProgram = 77;
    /// Sources by shader name.
    std::map<unsigned, std::string> sources;

    static RecordingGL& shared();
    /// The last call that begins with the text, or "".
    std::string last(const std::string& beginning) const;
};
