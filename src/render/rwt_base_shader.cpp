// Creation of the program and the work of each frame.
// The order of the GL calls is fixed; a test records it.
#include "render/rwt_base_shader.h"

#include <algorithm>
#include <cmath>

#include "platform/foundation/cf_time.h"
#include "platform/foundation/ns_bundle.h"
#include "platform/foundation/ns_log.h"
#include "platform/host/gl_surface.h"
#include "platform/ui/ui_screen.h"

namespace {

constexpr const char* className = "RWTBaseShader";
constexpr GLfloat quad[8] = {-1, -1, -1, 1, 1, -1, 1, 1};
constexpr GLsizei infoLogSize = 1024;

/// Plane units from pixel to pixel. Below, floats show blocks.
constexpr double finestPlainStep = 1.0e-6;

constexpr double fastFrame = 50;  // milliseconds
constexpr double slowFrame = 80;  // milliseconds
constexpr double dwellStepUp = 16;
constexpr double dwellStepDown = 4;

const char* textOfGLError(GLenum code) {
    switch (code) {
        case GL_INVALID_ENUM:
            return "invalid enum";
        case GL_INVALID_VALUE:
            return "invalid value";
        case GL_INVALID_OPERATION:
            return "invalid operation";
        case GL_OUT_OF_MEMORY:
            return "out of memory";
        case GL_INVALID_FRAMEBUFFER_OPERATION:
            return "invalid framebuffer operation";
        default:
            return "unknown error?";
    }
}

}  // namespace

bool needsSplitArithmetic(CGRect fractalBounds, CGSize size) {
    const double step = std::min(std::abs(fractalBounds.size.width) / size.width,
                                 std::abs(fractalBounds.size.height) / size.height);
    return step > 0 && step < finestPlainStep;
}

std::shared_ptr<RWTBaseShader> RWTBaseShader::initWithVertexShader(const std::string& vertexShader,
                                                                   const std::string& fragmentShader,
                                                                   uint8_t* depthBuffer, CGSize viewPort) {
    return std::shared_ptr<RWTBaseShader>(
        new RWTBaseShader(vertexShader, fragmentShader, depthBuffer, viewPort));
}

RWTBaseShader::RWTBaseShader(std::string vertexShader, std::string fragmentShader, uint8_t* depthBuffer,
                             CGSize viewPort)
    : _depthBuffer(depthBuffer),
      _size(viewPort),
      _dwell(static_cast<float>(dwellCeiling)),
      _vertexShaderName(std::move(vertexShader)),
      _fragmentShaderName(std::move(fragmentShader)) {
    rebuild();
}

void RWTBaseShader::rebuild() {
    _arithmetic = plain;
    _program = programWithVertexShader(_vertexShaderName, _fragmentShaderName);
    _programs = {_program, 0};
    _sentReducedSizes = {};
    lookUpLocations();
    configureOpenGLES();
    logGLError();
    createTexture();
}

void RWTBaseShader::lookUpLocations() {
    _aPosition = glGetAttribLocation(_program, "aPosition");
    _uResolution = glGetUniformLocation(_program, "uResolution");
    _uFractalBounds = glGetUniformLocation(_program, "uFractalBounds");
    _uTime = glGetUniformLocation(_program, "uTime");
    _uDeviceScale = glGetUniformLocation(_program, "uDeviceScale");
    _uFractalType = glGetUniformLocation(_program, "uFractalType");
    _uFractalColoring = glGetUniformLocation(_program, "uFractalColoring");
    _uFractalColorCycling = glGetUniformLocation(_program, "uFractalColorCycling");
    _uDwell = glGetUniformLocation(_program, "uDwell");
}

void RWTBaseShader::createTexture() {
    glGenTextures(1, &_depthTextureName);
    logGLError();
    glActiveTexture(GL_TEXTURE0);
    logGLError();
    glBindTexture(GL_TEXTURE_2D, _depthTextureName);
    logGLError();
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    logGLError();
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    logGLError();
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    logGLError();
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    logGLError();
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    logGLError();
    logGLError();
}

void RWTBaseShader::configureOpenGLES() {
    glUseProgram(_program);
    logGLError();
    glEnableVertexAttribArray(static_cast<GLuint>(_aPosition));
    logGLError();
    glVertexAttribPointer(static_cast<GLuint>(_aPosition), 2, GL_FLOAT, GL_FALSE, 0, quad);
    logGLError();
}

void RWTBaseShader::useArithmetic(Arithmetic arithmetic) {
    if (arithmetic == _arithmetic) return;
    GLuint& program = _programs[arithmetic];
    if (program == 0) program = programFromResources(_vertexShaderName, _fragmentShaderName, arithmetic);
    _arithmetic = arithmetic;
    _program = program;
    lookUpLocations();
    configureOpenGLES();
}

GLuint RWTBaseShader::shaderWithName(const std::string& name, GLenum type) {
    return shaderFromResource(name, type, plain);
}

GLuint RWTBaseShader::shaderFromResource(const std::string& name, GLenum type, Arithmetic arithmetic) {
    std::optional<std::string> source;
    if (type == GL_VERTEX_SHADER) source = NSBundle::mainBundle().stringForResource(name, "vsh");
    if (type == GL_FRAGMENT_SHADER) source = NSBundle::mainBundle().stringForResource(name, "fsh");

    if (source && arithmetic == split) source->insert(0, splitArithmeticPrologue);

    const GLuint shader = glCreateShader(type);
    // An absent file leaves the shader without a source, and the compiler reports that.
    if (const char* text = source ? source->c_str() : nullptr) glShaderSource(shader, 1, &text, nullptr);
    glCompileShader(shader);
    GLint compiled = GL_FALSE;
    glGetShaderiv(shader, GL_COMPILE_STATUS, &compiled);
    if (compiled == GL_FALSE) {
        GLchar messages[infoLogSize] = {};
        glGetShaderInfoLog(shader, infoLogSize, nullptr, messages);
        NSLog("%s:- GLSL Shader Error: %s", className, messages);
    }
    return shader;
}

GLuint RWTBaseShader::programWithVertexShader(const std::string& vertexShader,
                                              const std::string& fragmentShader) {
    return programFromResources(vertexShader, fragmentShader, plain);
}

GLuint RWTBaseShader::programFromResources(const std::string& vertexShader, const std::string& fragmentShader,
                                           Arithmetic arithmetic) {
    const GLuint vertex = shaderFromResource(vertexShader, GL_VERTEX_SHADER, arithmetic);
    const GLuint fragment = shaderFromResource(fragmentShader, GL_FRAGMENT_SHADER, arithmetic);

    const GLuint program = glCreateProgram();
    glAttachShader(program, vertex);
    glAttachShader(program, fragment);
    glLinkProgram(program);
    GLint linked = GL_FALSE;
    glGetProgramiv(program, GL_LINK_STATUS, &linked);
    GLchar messages[infoLogSize] = {};
    glGetProgramInfoLog(program, infoLogSize, nullptr, messages);
    if (linked == GL_FALSE) {
        NSLog("%s:- GLSL Program Link Error: %s", className, messages);
    } else if (messages[0] != '\0') {
        NSLog("%s:- GLSL Program Compiled With Messages: %s", className, messages);
    }
    glDeleteShader(vertex);
    glDeleteShader(fragment);
    return program;
}

bool RWTBaseShader::isUsable() const {
    GLint linked = GL_FALSE;
    glGetProgramiv(_program, GL_LINK_STATUS, &linked);
    return linked == GL_TRUE;
}

void RWTBaseShader::setFractalColorCycling(int32_t fractalColorCycling) {
    _fractalColorCycling = fractalColorCycling;
    if (_fractalColorCycling == 0) {
        timeUnlessPaused = 0;
        previousTime = 0;
        timeSet = false;
    }
}

KeyValueTable RWTBaseShader::makeKeyValueTable() {
    return {{"fractalBounds", KeyValueAccess<CGRect>{[this] { return _fractalBounds; },
                                                     [this](const CGRect& r) { _fractalBounds = r; }}}};
}

void RWTBaseShader::prepareForDeepViews(CGRect rect) {
    if (_programs[split] != 0) return;
    const Arithmetic before = _arithmetic;
    useArithmetic(split);
    setUniforms(rect);
    glEnable(GL_SCISSOR_TEST);
    glScissor(0, 0, 1, 1);
    glDrawArrays(GL_TRIANGLE_STRIP, 0, 4);
    glDisable(GL_SCISSOR_TEST);
    logGLError();
    useArithmetic(before);
}

void RWTBaseShader::renderInRect(CGRect rect, double time) {
    const double scale = UIScreen::mainScreen().scale();
    useArithmetic(needsSplitArithmetic(_fractalBounds, {rect.size.width * scale, rect.size.height * scale})
                      ? split
                      : plain);
    advancePaletteClock(time);
    const CFAbsoluteTime start = CFAbsoluteTimeGetCurrent();
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT | GL_STENCIL_BUFFER_BIT);
    setUniforms(rect);
    glDrawArrays(GL_TRIANGLE_STRIP, 0, 4);
    logGLError();
    glFinish();
    std::optional<double> cost = (CFAbsoluteTimeGetCurrent() - start) * 1000;
    const GLSurface* surface = sharedGLSurface();
    if (surface && surface->tellsFrameCost()) cost = surface->frameCost();
    // After a rest it is not known for a while: the limit stays.
    if (!cost) return;
    _frameCost = static_cast<float>(*cost);
    adaptDwell();
}

void RWTBaseShader::advancePaletteClock(double time) {
    if (_fractalColorCycling == 0) return;
    if (timeSet) {
        timeUnlessPaused += (time - previousTime) * _fractalColorCycling;
        previousTime = time;
    } else {
        previousTime = time;
        timeUnlessPaused = 0;
        timeSet = true;
    }
}

void RWTBaseShader::setUniforms(CGRect rect) {
    glUniform2f(_uResolution, static_cast<GLfloat>(rect.size.width), static_cast<GLfloat>(rect.size.height));
    logGLError();
    glUniform1f(_uTime, static_cast<GLfloat>(timeUnlessPaused));
    logGLError();
    glUniform1i(_uFractalType, _fractalType);
    logGLError();
    glUniform1i(_uFractalColoring, _fractalColoring);
    logGLError();
    glUniform1f(_uFractalColorCycling, _fractalColorCycling > 0 ? 1.0F : 0.0F);
    logGLError();
    glUniform4f(_uFractalBounds, static_cast<GLfloat>(_fractalBounds.origin.x),
                static_cast<GLfloat>(_fractalBounds.origin.y),
                static_cast<GLfloat>(_fractalBounds.origin.x + _fractalBounds.size.width),
                static_cast<GLfloat>(_fractalBounds.origin.y + _fractalBounds.size.height));
    logGLError();
    glUniform1f(_uDeviceScale, static_cast<GLfloat>(UIScreen::mainScreen().scale()));
    logGLError();
    glUniform1f(_uDwell, _dwell);
    logGLError();
    sendReducedSize();
}

/// Frames at full scale send nothing: a program begins with zero.
void RWTBaseShader::sendReducedSize() {
    CGSize& sent = _sentReducedSizes[_arithmetic];
    if (sent == _reducedSize) return;
    sent = _reducedSize;
    glUniform2f(glGetUniformLocation(_program, "uReducedSize"), static_cast<GLfloat>(sent.width),
                static_cast<GLfloat>(sent.height));
    logGLError();
}

void RWTBaseShader::adaptDwell() {
    const double cost = static_cast<double>(_frameCost);
    const double dwell = static_cast<double>(_dwell);
    if (cost < fastFrame) {
        _dwell = static_cast<float>(std::min(dwell + dwellStepUp, dwellCeiling));
    } else if (cost > slowFrame) {
        _dwell = static_cast<float>(std::max(dwell - dwellStepDown, dwellFloor));
    }
}

void RWTBaseShader::logGLError() {
    bool logged = false;
    for (GLenum code = glGetError(); code != GL_NO_ERROR; code = glGetError()) {
        NSLog("OpenGL error %d: %s", static_cast<int>(code), textOfGLError(code));
        logged = true;
    }
    if (logged) NSLog("pause here");
}
