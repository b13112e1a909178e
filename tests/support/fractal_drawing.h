// Draws the fractal's shaders into an off-screen target, without the app around them.
// The picture tests and the benchmark share it, so that both look at the shaders in the same way.
#pragma once

#include <GLES2/gl2.h>
#include <array>
#include <cstddef>
#include <cstdint>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "render/rwt_base_shader.h"

struct FractalView {
    float x1 = 0.0F;
    float y1 = 0.0F;
    float x2 = 0.0F;
    float y2 = 0.0F;
    int type = 1;
    int palette = 0;
    float limit = 256.0F;
    float clock = 0.0F;
    bool cycling = false;
};

// RGBA, 8 bits per channel, top row first.
struct FractalPicture {
    int width = 0;
    int height = 0;
    std::vector<uint8_t> bytes;

    const uint8_t* at(int x, int y) const {
        return &bytes[(static_cast<size_t>(y) * static_cast<size_t>(width) + static_cast<size_t>(x)) * 4];
    }
};

inline std::string textOfFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        throw std::runtime_error("cannot read " + path);
    }
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

// A framebuffer with one colour buffer, of the app's RGB565 or of 8 bits per channel. Needs a current
// context.
class FractalTarget {
  public:
    FractalTarget(int width, int height, bool rgb565) : _width(width), _height(height) {
        glGenTextures(1, &_texture);
        glBindTexture(GL_TEXTURE_2D, _texture);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
        const GLenum layout = rgb565 ? GL_RGB : GL_RGBA;
        glTexImage2D(GL_TEXTURE_2D, 0, static_cast<GLint>(layout), width, height, 0, layout,
                     rgb565 ? GL_UNSIGNED_SHORT_5_6_5 : GL_UNSIGNED_BYTE, nullptr);
        glGenFramebuffers(1, &_framebuffer);
        glBindFramebuffer(GL_FRAMEBUFFER, _framebuffer);
        glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, _texture, 0);
        if (glCheckFramebufferStatus(GL_FRAMEBUFFER) != GL_FRAMEBUFFER_COMPLETE) {
            throw std::runtime_error("incomplete framebuffer");
        }
    }
    ~FractalTarget() {
        glDeleteFramebuffers(1, &_framebuffer);
        glDeleteTextures(1, &_texture);
    }
    FractalTarget(const FractalTarget&) = delete;
    FractalTarget& operator=(const FractalTarget&) = delete;

    int width() const { return _width; }
    int height() const { return _height; }

    void bind() const {
        glBindFramebuffer(GL_FRAMEBUFFER, _framebuffer);
        glViewport(0, 0, _width, _height);
    }

    FractalPicture read() const {
        bind();
        const size_t row = static_cast<size_t>(_width) * 4;
        std::vector<uint8_t> upward(row * static_cast<size_t>(_height));
        glPixelStorei(GL_PACK_ALIGNMENT, 1);
        glReadPixels(0, 0, _width, _height, GL_RGBA, GL_UNSIGNED_BYTE, upward.data());
        FractalPicture picture{_width, _height, {}};
        picture.bytes.reserve(upward.size());
        for (int y = _height - 1; y >= 0; --y) {
            const auto line = upward.begin() + static_cast<std::ptrdiff_t>(row) * y;
            picture.bytes.insert(picture.bytes.end(), line, line + static_cast<std::ptrdiff_t>(row));
        }
        return picture;
    }

  private:
    int _width;
    int _height;
    GLuint _texture = 0;
    GLuint _framebuffer = 0;
};

// A linked pair of shaders and the calls that draw a view with it. Needs a current context.
class FractalProgram {
  public:
    FractalProgram(const std::string& vertexSource, const std::string& fragmentSource,
                   const std::string& prologue = "") {
        const GLuint vertex = compile(GL_VERTEX_SHADER, prologue + vertexSource);
        const GLuint fragment = compile(GL_FRAGMENT_SHADER, prologue + fragmentSource);
        _program = glCreateProgram();
        glAttachShader(_program, vertex);
        glAttachShader(_program, fragment);
        glLinkProgram(_program);
        glDeleteShader(vertex);
        glDeleteShader(fragment);
        GLint linked = GL_FALSE;
        glGetProgramiv(_program, GL_LINK_STATUS, &linked);
        if (linked == GL_FALSE) {
            std::array<char, 2048> log{};
            glGetProgramInfoLog(_program, static_cast<GLsizei>(log.size()), nullptr, log.data());
            throw std::runtime_error(std::string("link: ") + log.data());
        }
    }
    ~FractalProgram() { glDeleteProgram(_program); }
    FractalProgram(const FractalProgram&) = delete;
    FractalProgram& operator=(const FractalProgram&) = delete;

    void draw(const FractalTarget& target, const FractalView& view) const {
        static const std::array<float, 8> corners = {-1, -1, -1, 1, 1, -1, 1, 1};
        target.bind();
        glUseProgram(_program);
        const auto position = static_cast<GLuint>(glGetAttribLocation(_program, "aPosition"));
        glEnableVertexAttribArray(position);
        glVertexAttribPointer(position, 2, GL_FLOAT, GL_FALSE, 0, corners.data());
        glUniform2f(uniform("uResolution"), static_cast<float>(target.width()) / 2.0F,
                    static_cast<float>(target.height()) / 2.0F);
        glUniform1f(uniform("uDeviceScale"), 2.0F);
        glUniform1f(uniform("uTime"), view.clock);
        glUniform1i(uniform("uFractalType"), view.type);
        glUniform1i(uniform("uFractalColoring"), view.palette);
        glUniform1f(uniform("uFractalColorCycling"), view.cycling ? 1.0F : 0.0F);
        glUniform4f(uniform("uFractalBounds"), view.x1, view.y1, view.x2, view.y2);
        glUniform1f(uniform("uDwell"), view.limit);
        glClear(GL_COLOR_BUFFER_BIT);
        glDrawArrays(GL_TRIANGLE_STRIP, 0, 4);
        glFinish();
    }

    GLint uniform(const char* name) const { return glGetUniformLocation(_program, name); }

  private:
    static GLuint compile(GLenum type, const std::string& source) {
        const GLuint shader = glCreateShader(type);
        const char* text = source.c_str();
        glShaderSource(shader, 1, &text, nullptr);
        glCompileShader(shader);
        GLint compiled = GL_FALSE;
        glGetShaderiv(shader, GL_COMPILE_STATUS, &compiled);
        if (compiled == GL_FALSE) {
            std::array<char, 2048> log{};
            glGetShaderInfoLog(shader, static_cast<GLsizei>(log.size()), nullptr, log.data());
            throw std::runtime_error(std::string("compile: ") + log.data());
        }
        return shader;
    }

    GLuint _program = 0;
};

// Shader.vsh and Shader.fsh as the app uses them: by plain or by split arithmetic, as the view asks.
class FractalShader {
  public:
    FractalShader()
        : FractalShader(textOfFile(ZENTARO_RESOURCES_DIR "/Shader.vsh"),
                        textOfFile(ZENTARO_RESOURCES_DIR "/Shader.fsh")) {}

    void draw(const FractalTarget& target, const FractalView& view) const {
        const CGRect bounds = CGRectMake(view.x1, view.y1, static_cast<double>(view.x2) - view.x1,
                                         static_cast<double>(view.y2) - view.y1);
        const bool deep = needsSplitArithmetic(
            bounds, CGSizeMake(static_cast<double>(target.width()), static_cast<double>(target.height())));
        (deep ? _split : _plain).draw(target, view);
    }
    // The plain arithmetic, however deep the view.
    const FractalProgram& plain() const { return _plain; }

  private:
    FractalShader(const std::string& vertex, const std::string& fragment)
        : _plain(vertex, fragment), _split(vertex, fragment, splitArithmeticPrologue) {}

    FractalProgram _plain;
    FractalProgram _split;
};
