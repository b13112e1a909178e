// One small program for the two kinds of textures that the compositor lays down.
// Its attribute sits at an index of its own, so the app's vertex array stays bound.
#include "platform/gl/textured_quad.h"

#include "platform/foundation/ns_log.h"

namespace {

/// ES 2.0 promises indices 0 to 7; the app's shader uses the low ones.
constexpr GLuint cornerAttribute = 7;
constexpr GLfloat corners[8] = {0, 0, 0, 1, 1, 0, 1, 1};

constexpr const char* vertexSource = R"(
attribute vec2 aCorner;
uniform vec4 uPlace;
varying vec2 vTexture;
void main() {
    vTexture = aCorner;
    gl_Position = vec4(mix(uPlace.xy, uPlace.zw, aCorner), 0.0, 1.0);
}
)";

constexpr const char* fragmentSource = R"(
precision mediump float;
uniform sampler2D uTexture;
varying highp vec2 vTexture;
void main() {
    gl_FragColor = texture2D(uTexture, vTexture);
}
)";

GLuint compile(GLenum type, const char* source) {
    const GLuint shader = glCreateShader(type);
    glShaderSource(shader, 1, &source, nullptr);
    glCompileShader(shader);
    return shader;
}

/// Puts program, texture and blending back when it goes.
class SavedState {
  public:
    SavedState() {
        glGetIntegerv(GL_CURRENT_PROGRAM, &_program);
        glGetIntegerv(GL_TEXTURE_BINDING_2D, &_texture);
    }
    ~SavedState() {
        glDisable(GL_BLEND);
        glBindTexture(GL_TEXTURE_2D, static_cast<GLuint>(_texture));
        glUseProgram(static_cast<GLuint>(_program));
    }
    SavedState(const SavedState&) = delete;
    SavedState& operator=(const SavedState&) = delete;

  private:
    GLint _program = 0;
    GLint _texture = 0;
};

}  // namespace

bool TexturedQuad::ensureProgram() {
    if (_program || _failed) return !_failed;
    _program = glCreateProgram();
    const GLuint vertex = compile(GL_VERTEX_SHADER, vertexSource);
    const GLuint fragment = compile(GL_FRAGMENT_SHADER, fragmentSource);
    glAttachShader(_program, vertex);
    glAttachShader(_program, fragment);
    glBindAttribLocation(_program, cornerAttribute, "aCorner");
    glLinkProgram(_program);
    glDeleteShader(vertex);
    glDeleteShader(fragment);
    GLint linked = GL_FALSE;
    glGetProgramiv(_program, GL_LINK_STATUS, &linked);
    if (linked == GL_FALSE) {
        GLchar messages[512] = {};
        glGetProgramInfoLog(_program, sizeof messages, nullptr, messages);
        NSLog("The overlay cannot be drawn: %s", messages);
        glDeleteProgram(_program);
        _program = 0;
        _failed = true;
        return false;
    }
    _uPlace = glGetUniformLocation(_program, "uPlace");
    return true;
}

void TexturedQuad::draw(GLuint texture, ClipRect place, Layer layer) {
    const SavedState saved;
    if (!ensureProgram()) return;
    glUseProgram(_program);
    glBindTexture(GL_TEXTURE_2D, texture);
    glUniform4f(_uPlace, place.left, place.firstRow, place.right, place.lastRow);
    if (layer == Layer::over) {
        glEnable(GL_BLEND);
        glBlendFunc(GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
    }
    glEnableVertexAttribArray(cornerAttribute);
    glVertexAttribPointer(cornerAttribute, 2, GL_FLOAT, GL_FALSE, 0, corners);
    glDrawArrays(GL_TRIANGLE_STRIP, 0, 4);
    glDisableVertexAttribArray(cornerAttribute);
}

void TexturedQuad::forget() {
    _program = 0;
    _failed = false;
}
