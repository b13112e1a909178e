// Seeding, and draws below a bound without bias.
// A draw multiplies 32 random bits by the bound: the product's upper half is the number, and the few products
// whose lower half would favour some numbers are thrown away (D. Lemire, "Fast random integer generation in
// an interval", 2019).
#include "platform/foundation/random_source.h"

RandomSource::RandomSource() {
    std::random_device device;
    _engine.seed(uint64_t{device()} << 32 | device());
}

RandomSource& RandomSource::shared() {
    static RandomSource source;
    return source;
}

uint32_t RandomSource::arc4random_uniform(uint32_t upperBound) {
    if (upperBound < 2) return 0;
    const uint32_t unfair = (0U - upperBound) % upperBound;
    uint64_t product = 0;
    do {
        product = (_engine() >> 32) * upperBound;
    } while (static_cast<uint32_t>(product) < unfair);
    return static_cast<uint32_t>(product >> 32);
}
