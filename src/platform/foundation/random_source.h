// The one source of random numbers: unpredictable by default, and the same on every machine once seeded.
// Whoever needs chance is handed a source, so that a flight can be flown again.
#pragma once

#include <cstdint>
#include <random>

class RandomSource {
  public:
    /// Seeded from the machine's randomness.
    RandomSource();
    explicit RandomSource(uint64_t seed) : _engine(seed) {}

    /// The app's own.
    static RandomSource& shared();

    /// Starts the sequence that belongs to the seed.
    void seed(uint64_t seed) { _engine.seed(seed); }
    /// Each of 0 to upperBound - 1 with equal chance; 0 for an upperBound below 2.
    uint32_t arc4random_uniform(uint32_t upperBound);

  private:
    /// Its numbers are fixed by the language's standard; the library's distributions are not.
    std::mt19937_64 _engine;
};
