// Keeps every library loaded until the process ends, in the sanitizers' build alone.
// Mesa unloads its drivers when a display closes; a leak inside them then has no module left that
// scripts/lsan.supp could name, and would count as ours. The definition in the program comes before the C
// library's.
extern "C" int dlclose(void* handle) noexcept;

extern "C" int dlclose(void* /*handle*/) noexcept {
    return 0;
}
