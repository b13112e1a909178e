// How fast Shader.fsh is: against the plain shader on the same rasteriser, and against the processor's own
// limit. Medians of interleaved runs in one process, so that a busy machine slows all three alike.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "bench/fractal_limit.h"
#include "hosts/headless/egl_context.h"
#include "tests/support/fractal_drawing.h"

namespace {

struct Case {
    const char* name;
    FractalView view;
    double fasterThanNaive;  // target, 0 for none
    double timesLimit;       // target, 0 for none
};

const std::vector<Case> kCases = {
    {"top", {-3.6666667F, -1.5F, 1.6666667F, 1.5F}, 7.0, 2.8},
    {"filament", {-0.7463F, 0.1102F, -0.7413F, 0.1130F}, 7.0, 4.1},
    {"inside the cardioid", {-0.3F, -0.1F, 0.05F, 0.1F}, 60.0, 5.0},
    {"period-3 bulb", {-0.13F, 0.70F, -0.11F, 0.72F}, 12.0, 3.3},
    {"far out", {-8.0F, -4.5F, 8.0F, 4.5F}, 1.0, 4.7},
    {"further out", {-40.0F, -22.5F, 40.0F, 22.5F}, 1.0, 4.7},
    {"julia, whole", {-2.6666667F, -1.5F, 2.6666667F, 1.5F, 2}, 4.0, 2.9},
    {"deep", {-0.74364F, 0.13182F, -0.743625F, 0.131828F}, 0.0, 0.0},
};

struct Options {
    int width = 1920;
    int height = 1080;
    int runs = 7;
    bool rgb565 = true;
};

double milliseconds(const std::function<void()>& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

std::string resource(const char* name) {
    return textOfFile(std::string(ZENTARO_RESOURCES_DIR "/") + name);
}

std::string naiveSource() {
    return textOfFile(ZENTARO_BENCH_DIR "/fractal_naive.fsh");
}

struct Timing {
    double shader;
    double naive;
    double limit;
};

Timing measure(const Case& c, const FractalTarget& target, const FractalShader& shader,
               const FractalProgram& naive, int runs) {
    const unsigned threads = std::max(1U, std::thread::hardware_concurrency());
    std::vector<double> times[3];
    std::vector<uint16_t> pixels;
    for (int run = 0; run <= runs; ++run) {
        const double a = milliseconds([&] { shader.draw(target, c.view); });
        const double b = milliseconds([&] { naive.draw(target, c.view); });
        double l = 0.0;
        if (fractalLimitAvailable()) {
            l = milliseconds(
                [&] { drawFractalLimit(c.view, target.width(), target.height(), threads, &pixels); });
        }
        if (run > 0) {  // the first run pays for pages and caches
            times[0].push_back(a);
            times[1].push_back(b);
            times[2].push_back(l);
        }
    }
    return {median(times[0]), median(times[1]), median(times[2])};
}

const char* verdict(const Case& c, const Timing& t) {
    if (c.fasterThanNaive <= 0.0) {
        return "-";
    }
    const bool fast = t.naive / t.shader >= c.fasterThanNaive;
    const bool near = t.limit <= 0.0 || t.shader / t.limit <= c.timesLimit;
    return fast && near ? "met" : "missed";
}

void printSpeed(const FractalTarget& target, const FractalShader& shader, const FractalProgram& naive,
                int runs) {
    std::printf("%-20s %9s %9s %9s  %16s  %16s\n", "view", "shader ms", "naive ms", "limit ms",
                "faster (target)", "x limit (target)");
    for (const Case& c : kCases) {
        const Timing t = measure(c, target, shader, naive, runs);
        const double times = t.limit > 0.0 ? t.shader / t.limit : 0.0;
        std::printf("%-20s %9.1f %9.1f %9.1f  %7.1f (%6.1f)  %7.1f (%6.1f)  %s\n", c.name, t.shader, t.naive,
                    t.limit, t.naive / t.shader, c.fasterThanNaive, times, c.timesLimit, verdict(c, t));
    }
    if (!fractalLimitAvailable()) {
        std::printf("no limit measured: this processor has no AVX2 and FMA\n");
    }
}

// The naive shader has plain floats only, so the deep view is left out.
void printDifferences(const FractalShader& shader, const FractalProgram& naive, const Options& options) {
    const FractalTarget target(options.width, options.height, false);
    std::printf("\ndifference to the naive picture, 8 bits per channel\n");
    for (const Case& c : kCases) {
        if (std::strcmp(c.name, "deep") == 0) {
            continue;
        }
        shader.draw(target, c.view);
        const FractalPicture a = target.read();
        naive.draw(target, c.view);
        const FractalPicture b = target.read();
        int largest = 0;
        size_t beyond = 0;
        for (size_t i = 0; i < a.bytes.size(); i += 4) {
            int here = 0;
            for (size_t k = 0; k < 3; ++k) {
                here = std::max(here, std::abs(a.bytes[i + k] - b.bytes[i + k]));
            }
            largest = std::max(largest, here);
            beyond += here > 2 ? 1U : 0U;
        }
        std::printf("%-20s largest %3d levels, more than 2 in %.4f %% of the pixels\n", c.name, largest,
                    400.0 * static_cast<double>(beyond) / static_cast<double>(a.bytes.size()));
    }
}

// From source to the first finished frame, in a fresh context each time.
double startTime(const std::string& fragment, int runs) {
    std::vector<double> times;
    for (int run = 0; run < runs; ++run) {
        auto context = EglContext::create(nullptr);
        if (!context || !context->makeCurrent()) {
            return 0.0;
        }
        const FractalTarget target(64, 64, true);
        times.push_back(milliseconds([&] {
            const FractalProgram program(resource("Shader.vsh"), fragment);
            program.draw(target, kCases[0].view);
        }));
    }
    return median(times);
}

bool parse(int argc, char** argv, Options* options) {
    for (int i = 1; i < argc; ++i) {
        const std::string argument = argv[i];
        const bool hasValue = i + 1 < argc;
        if (argument == "--rgba8") {
            options->rgb565 = false;
        } else if (argument == "--runs" && hasValue) {
            options->runs = std::atoi(argv[++i]);
        } else if (argument == "--size" && hasValue) {
            if (std::sscanf(argv[++i], "%dx%d", &options->width, &options->height) != 2) {
                return false;
            }
        } else {
            return false;
        }
    }
    return options->runs > 0 && options->width > 0 && options->height > 0;
}

int run(const Options& options) {
    std::string error;
    auto context = EglContext::create(&error);
    if (!context || !context->makeCurrent()) {
        std::fprintf(stderr, "fractal_bench: %s\n", error.c_str());
        return 1;
    }
    std::printf("%s, %dx%d, %s, limit 256, medians of %d interleaved runs\n\n",
                reinterpret_cast<const char*>(glGetString(GL_RENDERER)), options.width, options.height,
                options.rgb565 ? "RGB565" : "RGBA8", options.runs);
    {
        const FractalShader shader;
        const FractalProgram naive(resource("Shader.vsh"), naiveSource());
        printSpeed(FractalTarget(options.width, options.height, options.rgb565), shader, naive, options.runs);
        printDifferences(shader, naive, options);
    }
    context->clearCurrent();
    // MESA_SHADER_CACHE_DISABLE=true shows what a first start on a machine costs.
    std::printf("\ncompile, link and first frame: shader %.1f ms, naive %.1f ms\n",
                startTime(resource("Shader.fsh"), options.runs), startTime(naiveSource(), options.runs));
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    Options options;
    if (!parse(argc, argv, &options)) {
        std::fprintf(stderr, "usage: fractal_bench [--size WxH] [--runs N] [--rgba8]\n");
        return 2;
    }
    try {
        return run(options);
    } catch (const std::exception& problem) {
        std::fprintf(stderr, "fractal_bench: %s\n", problem.what());
        return 1;
    }
}
