// The recording library: as many entry points as the fractal's program uses.
// Uniform locations are handed out in the order in which they are asked for, from 10 on.
#include "tests/gl_calls/recording_gl.h"

#include <GLES2/gl2.h>
#include <algorithm>
#include <cstring>
#include <sstream>

RecordingGL& RecordingGL::shared() {
    static RecordingGL gl;
    return gl;
}

std::string RecordingGL::last(const std::string& beginning) const {
    const auto found = std::find_if(calls.rbegin(), calls.rend(),
                                    [&](const std::string& call) { return call.starts_with(beginning); });
    return found == calls.rend() ? "" : *found;
}

namespace {

GLint nextLocation = 10;
GLuint nextName = 1;

template <typename... Arguments>
void record(const char* name, const Arguments&... arguments) {
    std::ostringstream line;
    line << name;
    ((line << ' ' << arguments), ...);
    RecordingGL::shared().calls.push_back(line.str());
}

void answer(const std::string& text, GLsizei size, GLchar* buffer) {
    std::strncpy(buffer, text.c_str(), static_cast<std::size_t>(size) - 1);
    buffer[size - 1] = '\0';
}

}  // namespace

extern "C" {

GLenum glGetError() {
    RecordingGL& gl = RecordingGL::shared();
    if (!gl.errors.empty()) {
        const GLenum error = gl.errors.front();
        gl.errors.pop_front();
        return error;
    }
    if (!gl.calls.empty()) gl.calls.back() += '?';
    return GL_NO_ERROR;
}

GLuint glCreateShader(GLenum type) {
    record("glCreateShader", type == GL_VERTEX_SHADER     ? "vertex"
                             : type == GL_FRAGMENT_SHADER ? "fragment"
                                                          : "other");
    return nextName++;
}
void glShaderSource(GLuint shader, GLsizei, const GLchar* const* text, const GLint*) {
    RecordingGL::shared().sources[shader] = *text;
}
void glCompileShader(GLuint) {
    record("glCompileShader");
}
void glGetShaderiv(GLuint, GLenum, GLint* value) {
    *value = RecordingGL::shared().compiles ? GL_TRUE : GL_FALSE;
}
void glGetShaderInfoLog(GLuint, GLsizei size, GLsizei*, GLchar* text) {
    answer(RecordingGL::shared().shaderLog, size, text);
}
void glEnable(GLenum) {}
void glDisable(GLenum) {}
void glScissor(GLint x, GLint y, GLsizei width, GLsizei height) {
    record("glScissor", x, y, width, height);
}
GLuint glCreateProgram() {
    return RecordingGL::shared().nextProgram++;
}
void glAttachShader(GLuint program, GLuint) {
    record("glAttachShader", program);
}
void glLinkProgram(GLuint program) {
    record("glLinkProgram", program);
}
void glGetProgramiv(GLuint, GLenum, GLint* value) {
    *value = RecordingGL::shared().links ? GL_TRUE : GL_FALSE;
}
void glGetProgramInfoLog(GLuint, GLsizei size, GLsizei*, GLchar* text) {
    answer(RecordingGL::shared().programLog, size, text);
}
void glDeleteShader(GLuint) {
    record("glDeleteShader");
}
GLint glGetAttribLocation(GLuint, const GLchar*) {
    return 3;
}
GLint glGetUniformLocation(GLuint, const GLchar*) {
    return nextLocation++;
}
void glUseProgram(GLuint program) {
    record("glUseProgram", program);
}
void glEnableVertexAttribArray(GLuint index) {
    record("glEnableVertexAttribArray", index);
}
void glVertexAttribPointer(GLuint index, GLint size, GLenum type, GLboolean normalised, GLsizei stride,
                           const void* data) {
    const auto* corners = static_cast<const GLfloat*>(data);
    record("glVertexAttribPointer", index, size, type == GL_FLOAT ? "float" : "other", int{normalised},
           stride, corners[0], corners[1], corners[2], corners[3], corners[4], corners[5], corners[6],
           corners[7]);
}
void glGenTextures(GLsizei, GLuint* names) {
    *names = 55;
}
void glActiveTexture(GLenum) {}
void glBindTexture(GLenum target, GLuint name) {
    record("glBindTexture", target == GL_TEXTURE_2D ? "2d" : "other", name);
}
void glTexParameteri(GLenum, GLenum, GLint) {}
void glPixelStorei(GLenum name, GLint value) {
    record("glPixelStorei", name == GL_PACK_ALIGNMENT ? "pack" : "other", value);
}
void glClear(GLbitfield mask) {
    record("glClear", std::hex, mask);
}
void glUniform1f(GLint location, GLfloat x) {
    record("glUniform1f", location, x);
}
void glUniform1i(GLint location, GLint x) {
    record("glUniform1i", location, x);
}
void glUniform2f(GLint location, GLfloat x, GLfloat y) {
    record("glUniform2f", location, x, y);
}
void glUniform4f(GLint location, GLfloat x, GLfloat y, GLfloat z, GLfloat w) {
    record("glUniform4f", location, x, y, z, w);
}
void glDrawArrays(GLenum mode, GLint first, GLsizei count) {
    record("glDrawArrays", mode == GL_TRIANGLE_STRIP ? "strip" : "other", first, count);
}
void glFinish() {
    record("glFinish");
}
}
