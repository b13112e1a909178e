// The least that shows a picture: an SDL2 window with OpenGL ES 2.0 and a shader of one colour.
// What the system itself costs; the explorer's start and frames are measured against it.
#include <GLES2/gl2.h>
#include <SDL.h>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string_view>
#include <vector>

namespace {

constexpr int kWidth = 1280;
constexpr int kHeight = 720;
constexpr GLfloat kQuad[] = {-1, -1, -1, 1, 1, -1, 1, 1};
constexpr const char* kVertexShader =
    "attribute vec2 place; void main() { gl_Position = vec4(place, 0.0, 1.0); }";
constexpr const char* kFragmentShader =
    "precision mediump float; void main() { gl_FragColor = vec4(0.2, 0.4, 0.8, 1.0); }";

int fail(const char* what) {
    std::fprintf(stderr, "%s: %s\n", what, SDL_GetError());
    return 1;
}

void attachShader(GLuint program, GLenum type, const char* source) {
    const GLuint shader = glCreateShader(type);
    glShaderSource(shader, 1, &source, nullptr);
    glCompileShader(shader);
    glAttachShader(program, shader);
}

void prepareDrawing() {
    const GLuint program = glCreateProgram();
    attachShader(program, GL_VERTEX_SHADER, kVertexShader);
    attachShader(program, GL_FRAGMENT_SHADER, kFragmentShader);
    glLinkProgram(program);
    glUseProgram(program);
    const auto place = static_cast<GLuint>(glGetAttribLocation(program, "place"));
    glEnableVertexAttribArray(place);
    glVertexAttribPointer(place, 2, GL_FLOAT, GL_FALSE, 0, kQuad);
}

void draw() {
    glDrawArrays(GL_TRIANGLE_STRIP, 0, 4);
    glFinish();
}

/// Median milliseconds of a swap whose picture is complete.
double measureSwaps(SDL_Window* window, int count) {
    using Clock = std::chrono::steady_clock;
    std::vector<double> swaps;
    for (int i = 0; i < count; ++i) {
        draw();
        const auto begun = Clock::now();
        SDL_GL_SwapWindow(window);
        swaps.push_back(std::chrono::duration<double, std::milli>(Clock::now() - begun).count());
    }
    std::ranges::sort(swaps);
    return swaps[swaps.size() / 2];
}

}  // namespace

/// "minimal_window" says when it shows its frame, and waits to be ended; "minimal_window swaps N" measures N
/// swaps.
int main(int argc, char** argv) {
    if (SDL_InitSubSystem(SDL_INIT_VIDEO) != 0) return fail("no display");
    SDL_GL_SetAttribute(SDL_GL_CONTEXT_PROFILE_MASK, SDL_GL_CONTEXT_PROFILE_ES);
    SDL_GL_SetAttribute(SDL_GL_CONTEXT_MAJOR_VERSION, 2);
    SDL_GL_SetAttribute(SDL_GL_CONTEXT_MINOR_VERSION, 0);
    SDL_GL_SetAttribute(SDL_GL_DEPTH_SIZE, 0);
    SDL_Window* window =
        SDL_CreateWindow("Minimal", SDL_WINDOWPOS_UNDEFINED, SDL_WINDOWPOS_UNDEFINED, kWidth, kHeight,
                         SDL_WINDOW_OPENGL | SDL_WINDOW_RESIZABLE | SDL_WINDOW_ALLOW_HIGHDPI);
    if (window == nullptr || SDL_GL_CreateContext(window) == nullptr) return fail("no OpenGL ES 2.0");
    prepareDrawing();
    draw();
    SDL_GL_SwapWindow(window);
    std::fputs("first frame\n", stderr);
    if (argc == 3 && std::string_view(argv[1]) == "swaps") {
        std::printf("%.4f\n", measureSwaps(window, std::max(1, std::atoi(argv[2]))));
        return 0;
    }
    SDL_Event event;
    while (SDL_WaitEvent(&event) != 0 && event.type != SDL_QUIT) {
    }
    return 0;
}
