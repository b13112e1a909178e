// Why something failed, in words for the log and for people.
// Held by pointer: an empty one is success.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <utility>

class NSError {
  public:
    NSError(std::string domain, int64_t code, std::string localizedDescription)
        : _domain(std::move(domain)), _code(code), _localizedDescription(std::move(localizedDescription)) {}

    const std::string& domain() const { return _domain; }
    int64_t code() const { return _code; }
    const std::string& localizedDescription() const { return _localizedDescription; }
    /// For logs.
    std::string description() const {
        return "Error Domain=" + _domain + " Code=" + std::to_string(_code) + " \"" + _localizedDescription +
               "\"";
    }

  private:
    std::string _domain;
    int64_t _code;
    std::string _localizedDescription;
};

using NSErrorRef = std::shared_ptr<const NSError>;
