// A variable of this process's environment with another value, or none, until the end of the scope.
// For the tests of what is found through the environment.
#pragma once

#include <cstdlib>
#include <optional>
#include <string>
#include <utility>

class EnvironmentVariable {
  public:
    EnvironmentVariable(std::string key, const std::optional<std::string>& value) : _key(std::move(key)) {
        if (const char* const former = std::getenv(_key.c_str())) _former = former;
        set(value);
    }
    ~EnvironmentVariable() { set(_former); }
    EnvironmentVariable(const EnvironmentVariable&) = delete;
    EnvironmentVariable& operator=(const EnvironmentVariable&) = delete;

  private:
    void set(const std::optional<std::string>& value) const {
        value ? setenv(_key.c_str(), value->c_str(), 1) : unsetenv(_key.c_str());
    }

    std::string _key;
    std::optional<std::string> _former;
};
