// Finds modules beside the program, or where they were built, and loads them.
// They stay loaded: libraries of their size do not like to be thrown out.
#include "hosts/native/program_module.h"

#include <dlfcn.h>
#include <filesystem>
#include <unistd.h>

std::string programModulePath(const std::string& file) {
    std::error_code error;
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", error);
    const std::string beside = (program.parent_path() / file).string();
    return !error && ::access(beside.c_str(), R_OK) == 0 ? beside : ZENTARO_MODULE_FOLDER "/" + file;
}

bool hasProgramModule(const std::string& file) {
    return ::access(programModulePath(file).c_str(), R_OK) == 0;
}

void* programModuleEntry(const std::string& file, const char* entry, std::string& error) {
    void* module = ::dlopen(programModulePath(file).c_str(), RTLD_NOW | RTLD_LOCAL);
    void* address = module ? ::dlsym(module, entry) : nullptr;
    if (address) return address;
    const char* why = ::dlerror();
    error = why ? why : file + " is no part of this program";
    return nullptr;
}
