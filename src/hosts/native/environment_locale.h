// The user's languages and country as the environment has them.
// POSIX says which variable counts: LANGUAGE before LC_ALL before LC_MESSAGES before LANG.
#pragma once

#include <string>

#include "platform/foundation/ns_locale.h"

/// "pt-BR" of "pt_BR.UTF-8@latin"; empty for "C", "POSIX" and what names no language.
std::string languageTag(const std::string& localeName);

NSLocale localeOfEnvironment();
