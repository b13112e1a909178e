// Languages and country from the environment's variables.
// Each case is a user's whole environment.
#include "hosts/native/environment_locale.h"

#include <gmock/gmock.h>
#include <list>
#include <map>

#include "tests/support/environment_variable.h"

TEST(EnvironmentLocale, OfVariables) {
    const std::tuple<std::map<std::string, std::string>, std::vector<std::string>, const char*> cases[] = {
        {{}, {}, ""},
        {{{"LANG", "C.UTF-8"}}, {}, ""},
        {{{"LANG", "POSIX"}, {"LANGUAGE", "de"}}, {}, ""},
        {{{"LANG", "de_DE.UTF-8"}}, {"de-DE"}, "DE"},
        {{{"LANG", "de_DE"}, {"LC_MESSAGES", "sr_RS@latin"}}, {"sr-RS"}, "RS"},
        {{{"LANG", "de_DE"}, {"LC_MESSAGES", "fr_FR"}, {"LC_ALL", "ja_JP.UTF-8"}}, {"ja-JP"}, "JP"},
        {{{"LANG", "pt_BR.UTF-8"}, {"LANGUAGE", "pt_BR:C:en_US"}}, {"pt-BR", "en-US", "pt-BR"}, "BR"},
        {{{"LANG", "de"}, {"LANGUAGE", "en_GB"}}, {"en-GB", "de"}, ""},
        {{{"LC_ALL", ""}, {"LANG", "es_419"}}, {"es-419"}, "419"},
        {{{"LANG", "../../etc"}}, {}, ""},
    };
    const char* const names[] = {"LANGUAGE", "LC_ALL", "LC_MESSAGES", "LANG"};
    for (const auto& [variables, languages, country] : cases) {
        std::list<EnvironmentVariable> set;
        for (const char* name : names) {
            const auto found = variables.find(name);
            set.emplace_back(name, found == variables.end() ? std::nullopt : std::optional(found->second));
        }
        const NSLocale locale = localeOfEnvironment();
        EXPECT_EQ(locale.preferredLanguages, languages);
        EXPECT_EQ(locale.countryCode, country);
    }
    EXPECT_EQ(localeOfLanguages("zh-Hant\nsl-rozaj\nen-US").countryCode, "US") << "the page's list";
}
