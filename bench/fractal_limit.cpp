// The hand-written loop: four independent chains of eight lanes hide the latency of one another's additions.
// Colour is included, since the shader's time includes it; logarithms are taken from the exponent and a
// polynomial.
#include "bench/fractal_limit.h"

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <thread>

#if defined(__x86_64__)
#include <immintrin.h>
#define FRACTAL_AVX2 __attribute__((target("avx2,fma")))

namespace {

constexpr int kChains = 4;
constexpr int kLanes = 8;
constexpr int kRun = kChains * kLanes;
constexpr float kEscape = 64.0F;

struct Row {
    const FractalView* view;
    int width;
    float y;
    float stepX;
};

FRACTAL_AVX2 inline __m256 splat(float v) {
    return _mm256_set1_ps(v);
}

// log2 of positive normal numbers, to about 1e-4.
FRACTAL_AVX2 inline __m256 log2Of(__m256 v) {
    const __m256i bits = _mm256_castps_si256(v);
    const __m256i exponent = _mm256_sub_epi32(_mm256_srli_epi32(bits, 23), _mm256_set1_epi32(127));
    const __m256i fraction = _mm256_and_si256(bits, _mm256_set1_epi32(0x007FFFFF));
    const __m256 m = _mm256_castsi256_ps(_mm256_or_si256(fraction, _mm256_set1_epi32(0x3F800000)));
    const __m256 u =
        _mm256_div_ps(_mm256_sub_ps(m, splat(1.41421356F)), _mm256_add_ps(m, splat(1.41421356F)));
    const __m256 uu = _mm256_mul_ps(u, u);
    const __m256 tail = _mm256_fmadd_ps(uu, splat(0.6F), splat(0.961669F));
    const __m256 series = _mm256_mul_ps(u, _mm256_fmadd_ps(uu, tail, splat(2.88539008F)));
    return _mm256_add_ps(_mm256_add_ps(_mm256_cvtepi32_ps(exponent), splat(0.5F)), series);
}

struct Channel {
    float base;
    float even;
    float odd;
    float least;
};
constexpr Channel kRed = {0.02F, 15.68F, 5.2F, 0.02F};
constexpr Channel kGreen = {0.12F, 13.44F, 0.416F, 0.02F};
constexpr Channel kBlue = {0.33F, 8.48F, -6.656F, 0.05F};

FRACTAL_AVX2 inline __m256i channel(const Channel& c, __m256 even, __m256 odd, float levels) {
    const __m256 root =
        _mm256_fmadd_ps(splat(c.even), even, _mm256_fmadd_ps(splat(c.odd), odd, splat(c.base)));
    const __m256 value = _mm256_min_ps(_mm256_max_ps(_mm256_mul_ps(root, root), splat(c.least)), splat(1.0F));
    return _mm256_cvtps_epi32(_mm256_mul_ps(value, splat(levels)));
}

FRACTAL_AVX2 inline void colour(__m256 m, __m256 n, uint16_t* out) {
    const __m256 escaped = _mm256_cmp_ps(m, splat(kEscape), _CMP_GT_OQ);
    const __m256 safe = _mm256_blendv_ps(splat(kEscape), _mm256_min_ps(m, splat(1.0e30F)), escaped);
    const __m256 count = _mm256_sub_ps(_mm256_add_ps(n, splat(2.5849625F)), log2Of(log2Of(safe)));
    const __m256 turn = _mm256_fmadd_ps(count, splat(0.03125F), splat(0.56F));
    const __m256 u =
        _mm256_sub_ps(turn, _mm256_round_ps(turn, _MM_FROUND_TO_NEAREST_INT | _MM_FROUND_NO_EXC));
    const __m256 g = _mm256_fnmadd_ps(u, u, splat(0.25F));
    const __m256 even = _mm256_mul_ps(g, g);
    const __m256 odd = _mm256_mul_ps(u, g);
    __m256i pixel = _mm256_slli_epi32(channel(kRed, even, odd, 31.0F), 11);
    pixel = _mm256_or_si256(pixel, _mm256_slli_epi32(channel(kGreen, even, odd, 63.0F), 5));
    pixel = _mm256_or_si256(pixel, channel(kBlue, even, odd, 31.0F));
    pixel = _mm256_and_si256(pixel, _mm256_castps_si256(escaped));
    const __m128i packed =
        _mm_packus_epi32(_mm256_castsi256_si128(pixel), _mm256_extracti128_si256(pixel, 1));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out), packed);
}

FRACTAL_AVX2 inline __m256 insideLargeParts(__m256 x, __m256 y) {
    const __m256 yy = _mm256_mul_ps(y, y);
    const __m256 a = _mm256_sub_ps(x, splat(0.25F));
    const __m256 q = _mm256_fmadd_ps(a, a, yy);
    const __m256 cardioid =
        _mm256_cmp_ps(_mm256_mul_ps(q, _mm256_add_ps(q, a)), _mm256_mul_ps(splat(0.25F), yy), _CMP_LT_OQ);
    const __m256 b = _mm256_add_ps(x, splat(1.0F));
    return _mm256_or_ps(cardioid, _mm256_cmp_ps(_mm256_fmadd_ps(b, b, yy), splat(0.0625F), _CMP_LT_OQ));
}

// 32 neighbouring pixels of one row.
FRACTAL_AVX2 void drawRun(const Row& row, int firstX, uint16_t* out) {
    __m256 x[kChains], y[kChains], cx[kChains], cy[kChains], m[kChains], n[kChains], going[kChains];
    const __m256 lanes = _mm256_setr_ps(0, 1, 2, 3, 4, 5, 6, 7);
    const bool julia = row.view->type == 2;
    for (int i = 0; i < kChains; ++i) {
        const __m256 column = _mm256_add_ps(lanes, splat(static_cast<float>(firstX + i * kLanes) + 0.5F));
        x[i] = _mm256_fmadd_ps(column, splat(row.stepX), splat(row.view->x1));
        y[i] = splat(row.y);
        cx[i] = julia ? splat(-0.8F) : x[i];
        cy[i] = julia ? splat(0.156F) : y[i];
        m[i] = _mm256_fmadd_ps(x[i], x[i], _mm256_mul_ps(y[i], y[i]));
        n[i] = _mm256_setzero_ps();
        going[i] = _mm256_cmp_ps(m[i], splat(kEscape), _CMP_LE_OQ);
        if (!julia) {
            going[i] = _mm256_andnot_ps(insideLargeParts(x[i], y[i]), going[i]);
        }
        // Lanes that are done stay at 0, so that nothing overflows.
        x[i] = _mm256_and_ps(x[i], going[i]);
        y[i] = _mm256_and_ps(y[i], going[i]);
        cx[i] = _mm256_and_ps(cx[i], going[i]);
        cy[i] = _mm256_and_ps(cy[i], going[i]);
    }
    for (int steps = 4; steps <= static_cast<int>(row.view->limit); steps += 4) {
        for (int four = 0; four < 4; ++four) {
            for (int i = 0; i < kChains; ++i) {
                const __m256 twice = _mm256_add_ps(x[i], x[i]);
                x[i] = _mm256_fnmadd_ps(y[i], y[i], _mm256_fmadd_ps(x[i], x[i], cx[i]));
                y[i] = _mm256_fmadd_ps(twice, y[i], cy[i]);
            }
        }
        __m256 any = _mm256_setzero_ps();
        for (int i = 0; i < kChains; ++i) {
            const __m256 now = _mm256_fmadd_ps(x[i], x[i], _mm256_mul_ps(y[i], y[i]));
            m[i] = _mm256_blendv_ps(m[i], now, going[i]);
            n[i] = _mm256_blendv_ps(n[i], splat(static_cast<float>(steps)), going[i]);
            going[i] = _mm256_and_ps(going[i], _mm256_cmp_ps(now, splat(kEscape), _CMP_LE_OQ));
            any = _mm256_or_ps(any, going[i]);
        }
        if (_mm256_testz_ps(any, any) != 0) {
            break;
        }
    }
    for (int i = 0; i < kChains; ++i) {
        colour(m[i], n[i], out + static_cast<std::ptrdiff_t>(i) * kLanes);
    }
}

FRACTAL_AVX2 void drawRow(const Row& row, uint16_t* out) {
    uint16_t rest[kRun];
    for (int x = 0; x < row.width; x += kRun) {
        if (x + kRun <= row.width) {
            drawRun(row, x, out + x);
        } else {
            drawRun(row, x, rest);
            std::copy_n(rest, row.width - x, out + x);
        }
    }
}

}  // namespace

bool fractalLimitAvailable() {
    return __builtin_cpu_supports("avx2") != 0 && __builtin_cpu_supports("fma") != 0;
}

void drawFractalLimit(const FractalView& view, int width, int height, unsigned threads,
                      std::vector<uint16_t>* pixels) {
    pixels->resize(static_cast<size_t>(width) * static_cast<size_t>(height));
    const float stepX = (view.x2 - view.x1) / static_cast<float>(width);
    const float stepY = (view.y2 - view.y1) / static_cast<float>(height);
    std::atomic<int> next{0};
    const auto work = [&] {
        for (int row = next++; row < height; row = next++) {
            const float y = view.y1 + (static_cast<float>(row) + 0.5F) * stepY;
            drawRow({&view, width, y, stepX}, pixels->data() + static_cast<ptrdiff_t>(row) * width);
        }
    };
    std::vector<std::thread> others;
    for (unsigned i = 1; i < threads; ++i) {
        others.emplace_back(work);
    }
    work();
    for (std::thread& thread : others) {
        thread.join();
    }
}

#else

bool fractalLimitAvailable() {
    return false;
}

void drawFractalLimit(const FractalView&, int, int, unsigned, std::vector<uint16_t>*) {}

#endif
