// Parts of the program that are loaded when they are first needed, with the libraries that they bring along.
// Those would make every start of the app slower.
#pragma once

#include <string>

/// The module of that file name beside the program, else where it was built.
std::string programModulePath(const std::string& file);
bool hasProgramModule(const std::string& file);

/// The address of an entry in a module, which then stays loaded; null, with a line in `error`, without one.
/// Safe from any thread.
void* programModuleEntry(const std::string& file, const char* entry, std::string& error);
