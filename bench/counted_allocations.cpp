// The counting operators. They come into a program only with the counter, from their library.
// The others of the standard library end here as well.
#include "bench/counted_allocations.h"

#include <cstddef>
#include <cstdlib>
#include <new>

std::atomic<int64_t> allocations{0};

void* operator new(std::size_t size) {
    ++allocations;
    if (void* memory = std::malloc(size == 0 ? 1 : size)) return memory;
    throw std::bad_alloc();
}
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}
