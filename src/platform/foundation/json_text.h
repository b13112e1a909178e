// JSON that comes from elsewhere: settings, answers of servers.
// A text may not be nested so deep that whoever walks through it runs out of stack.
#pragma once

#include <nlohmann/json.hpp>
#include <string>

/// Discarded for text that is not JSON, or has arrays and objects within one another more than that many
/// times.
nlohmann::json parsedJSON(const std::string& text, int deepestNesting);
