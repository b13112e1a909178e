// The host that the app's links name, and that web links must name to be its own.
// The build's, unless the program is served from somewhere: then it is there that its links lead back to.
#pragma once

#include <string>

/// With its port where it needs one: "zentaro.example", "localhost:8080".
const std::string& linkHost();

/// Before the app starts. Empty for the build's own.
void setLinkHost(std::string host);
