// The GL program that draws the fractal: loads and links it, feeds it the view at every frame, and adapts its
// iteration limit to what a frame costs. Where floats end, a second program of the same sources takes its
// place.
#pragma once

#include <GLES2/gl2.h>
#include <array>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>

#include "platform/foundation/geometry.h"
#include "platform/foundation/key_value.h"

/// What stands before both sources in the program for deep views.
inline constexpr const char* splitArithmeticPrologue = "#define DEEP\n";
/// Whether the step from one pixel to the next is too fine for the plain arithmetic of floats.
/// size: the picture in pixels.
bool needsSplitArithmetic(CGRect fractalBounds, CGSize size);

/// All operations need the app's GL context to be current, and come on the main thread. Tweens move
/// "fractalBounds".
class RWTBaseShader : public KeyValueCoding {
  public:
    /// Loads, compiles and links the two resources (names without extension), binds the quad and makes the
    /// texture object. A broken shader is logged and used as it is. depthBuffer (not owned) and viewPort
    /// (points) are kept, and not used.
    static std::shared_ptr<RWTBaseShader> initWithVertexShader(const std::string& vertexShader,
                                                               const std::string& fragmentShader,
                                                               uint8_t* depthBuffer, CGSize viewPort);

    int32_t fractalColorCycling() const { return _fractalColorCycling; }
    /// Palette clock seconds per second; 0 stops the clock and sets it back.
    void setFractalColorCycling(int32_t fractalColorCycling);
    int32_t fractalType() const { return _fractalType; }
    void setFractalType(int32_t fractalType) { _fractalType = fractalType; }
    int32_t fractalColoring() const { return _fractalColoring; }
    void setFractalColoring(int32_t fractalColoring) { _fractalColoring = fractalColoring; }
    CGRect fractalBounds() const { return _fractalBounds; }
    void setFractalBounds(CGRect fractalBounds) { _fractalBounds = fractalBounds; }

    static constexpr double dwellFloor = 64;
    static constexpr double dwellCeiling = 256;
    /// The iteration limit of the next frame, from floor to ceiling.
    float dwell() const { return _dwell; }
    /// Milliseconds that the last frame took, the GPU's work included.
    float frameCost() const { return _frameCost; }
    /// Seconds that the palette has moved on, at the speed of the cycling.
    double paletteClock() const { return timeUnlessPaused; }
    /// The program in use; the locations are its own.
    GLuint program() const { return _program; }
    GLint aPosition() const { return _aPosition; }
    GLint uResolution() const { return _uResolution; }
    GLint uTime() const { return _uTime; }
    GLint uDeviceScale() const { return _uDeviceScale; }
    GLint uFractalBounds() const { return _uFractalBounds; }
    GLint uFractalType() const { return _uFractalType; }
    GLint uFractalColoring() const { return _uFractalColoring; }
    GLint uFractalColorCycling() const { return _uFractalColorCycling; }
    GLint uDwell() const { return _uDwell; }

    /// The bound framebuffer's pixels if they are fewer than uResolution * uDeviceScale; zero if they are
    /// not.
    void setReducedSize(CGSize pixels) { _reducedSize = pixels; }

    /// Whether the program is linked. A broken one is drawn with all the same, and leaves the clear colour.
    bool isUsable() const;
    /// Has the program for deep views compiled and used once, on a pixel of the bound framebuffer, so that no
    /// later frame waits for that. Before a frame that is drawn anyway.
    void prepareForDeepViews(CGRect rect);
    /// Draws one frame into the bound framebuffer. rect: the view in points; time: seconds, growing.
    void renderInRect(CGRect rect, double time);
    /// Drains the GL error queue into the log.
    void logGLError();
    /// Makes the program current and points aPosition at the quad.
    void configureOpenGLES();
    /// Answers the program's name whether linking succeeded or not.
    GLuint programWithVertexShader(const std::string& vertexShader, const std::string& fragmentShader);
    /// Answers the shader's name whether compilation succeeded or not.
    GLuint shaderWithName(const std::string& name, GLenum type);

    /// Makes the GL objects anew in the context that took the place of a lost one. View and palette clock go
    /// on.
    void rebuild();

    /// Guards a jump of the view against whoever else moves it.
    std::recursive_mutex& lock() { return _lock; }

  protected:
    KeyValueTable makeKeyValueTable() override;

  private:
    RWTBaseShader(std::string vertexShader, std::string fragmentShader, uint8_t* depthBuffer,
                  CGSize viewPort);

    /// The two ways to compute, by which the sources are compiled.
    enum Arithmetic { plain, split };

    GLuint shaderFromResource(const std::string& name, GLenum type, Arithmetic arithmetic);
    GLuint programFromResources(const std::string& vertexShader, const std::string& fragmentShader,
                                Arithmetic arithmetic);
    void useArithmetic(Arithmetic arithmetic);
    void lookUpLocations();
    void createTexture();
    void advancePaletteClock(double time);
    void setUniforms(CGRect rect);
    void sendReducedSize();
    void adaptDwell();

    [[maybe_unused]] uint8_t* _depthBuffer;
    [[maybe_unused]] CGSize _size;
    GLuint _depthTextureName = 0;
    [[maybe_unused]] GLuint _colorTextureName = 0;
    int32_t _fractalColorCycling = 0;
    float _dwell = 0;
    double timeUnlessPaused = 0;
    double previousTime = 0;
    bool timeSet = false;
    int32_t _fractalType = 0;
    int32_t _fractalColoring = 0;
    GLuint _program = 0;
    GLint _aPosition = 0;
    GLint _uResolution = 0;
    GLint _uTime = 0;
    GLint _uDeviceScale = 0;
    GLint _uFractalBounds = 0;
    GLint _uFractalType = 0;
    GLint _uFractalColoring = 0;
    GLint _uFractalColorCycling = 0;
    GLint _uDwell = 0;
    CGRect _fractalBounds;

    /// One for each arithmetic; 0 for what is not made yet.
    std::array<GLuint, 2> _programs{};
    Arithmetic _arithmetic = plain;
    CGSize _reducedSize;
    /// What each program was sent last.
    std::array<CGSize, 2> _sentReducedSizes{};
    float _frameCost = 0;
    std::string _vertexShaderName;
    std::string _fragmentShaderName;
    std::recursive_mutex _lock;
};
