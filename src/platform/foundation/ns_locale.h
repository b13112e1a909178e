// Where the user lives and which languages they read, as the host found them.
// Set once at start; plain English of nowhere until then.
#pragma once

#include <string>
#include <vector>

struct NSLocale {
    /// "DE", by ISO 3166; empty where the machine does not say.
    std::string countryCode;
    /// Best first: "pt-BR", "en". May be empty.
    std::vector<std::string> preferredLanguages;

    static const NSLocale& currentLocale();
    static void setCurrentLocale(NSLocale locale);
};

/// Of a list of language tags (BCP 47), best first, a line each: the country is that of the first with one.
NSLocale localeOfLanguages(const std::string& lines);
