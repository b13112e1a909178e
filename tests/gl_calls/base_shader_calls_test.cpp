// The fractal's program against a recorded GL: the calls of creation and of a frame in their order, the
// values they carry, the palette clock, the iteration limit and what is logged.
#include <cmath>
#include <gmock/gmock.h>

#include "platform/foundation/cf_time.h"
#include "platform/foundation/ns_bundle.h"
#include "platform/foundation/ns_log.h"
#include "platform/host/gl_surface.h"
#include "platform/ui/ui_screen.h"
#include "render/rwt_base_shader.h"
#include "tests/gl_calls/recording_gl.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class BaseShaderCalls : public testing::Test {
  protected:
    BaseShaderCalls() {
        gl() = {};
        NSLogSetSink([this](std::string_view line) { log.emplace_back(line); });
        NSBundle::mainBundle().setReader(
            [](const std::string& file) -> std::optional<std::string> { return "text of " + file; });
        CFAbsoluteTimeSetClock([this] {
            const double now = clock;
            clock += frameSeconds;
            return now;
        });
        UIScreen::mainScreen().setSizeAndScale(CGSizeMake(640, 360), 2);
    }
    ~BaseShaderCalls() override {
        NSLogSetSink({});
        CFAbsoluteTimeSetClock({});
        NSBundle::mainBundle().setReader({});
    }

    static RecordingGL& gl() { return RecordingGL::shared(); }
    static std::shared_ptr<RWTBaseShader> makeShader() {
        return RWTBaseShader::initWithVertexShader("Shader", "Shader", nullptr, CGSizeMake(640, 360));
    }
    /// Draws a frame that costs so much and answers the iteration limit that it leaves.
    float dwellAfter(RWTBaseShader& shader, double milliseconds) {
        frameSeconds = milliseconds / 1000;
        clock = 0;
        shader.renderInRect(screen, 0);
        return shader.dwell();
    }
    static std::string line(const std::string& call, GLint location, const std::string& values) {
        return call + " " + std::to_string(location) + " " + values + "?";
    }

    const CGRect screen = CGRectMake(0, 0, 640, 360);
    std::vector<std::string> log;
    double clock = 0;
    double frameSeconds = 0.001;
};

}  // namespace

TEST_F(BaseShaderCalls, CreationLoadsLinksAndBindsInOrder) {
    const auto shader = makeShader();
    EXPECT_THAT(gl().calls, ElementsAre("glCreateShader vertex", "glCompileShader", "glCreateShader fragment",
                                        "glCompileShader", "glAttachShader 77", "glAttachShader 77",
                                        "glLinkProgram 77", "glDeleteShader", "glDeleteShader",
                                        "glUseProgram 77?", "glEnableVertexAttribArray 3?",
                                        "glVertexAttribPointer 3 2 float 0 0 -1 -1 -1 1 1 -1 1 1????",
                                        "glBindTexture 2d 55?????", "glPixelStorei pack 1??"));
    std::vector<std::string> sources;
    for (const auto& [name, text] : gl().sources)
        sources.push_back(text);
    EXPECT_THAT(sources, ElementsAre("text of Shader.vsh", "text of Shader.fsh"));
    EXPECT_THAT(log, IsEmpty());
}

TEST_F(BaseShaderCalls, AFrameSendsItsUniformsDrawsAndWaitsInOrder) {
    const auto shader = makeShader();
    shader->setFractalBounds(CGRectMake(-2, -1.5, 3, 3));
    shader->setFractalType(2);
    shader->setFractalColoring(5);
    gl().calls.clear();
    shader->renderInRect(screen, 12);
    EXPECT_THAT(
        gl().calls,
        ElementsAre("glClear  4500", line("glUniform2f", shader->uResolution(), "640 360"),
                    line("glUniform1f", shader->uTime(), "0"),
                    line("glUniform1i", shader->uFractalType(), "2"),
                    line("glUniform1i", shader->uFractalColoring(), "5"),
                    line("glUniform1f", shader->uFractalColorCycling(), "0"),
                    line("glUniform4f", shader->uFractalBounds(), "-2 -1.5 1 1.5"),
                    line("glUniform1f", shader->uDeviceScale(), "2"),
                    line("glUniform1f", shader->uDwell(), "256"), "glDrawArrays strip 0 4?", "glFinish"));
}

TEST_F(BaseShaderCalls, DeepViewsHaveAProgramOfTheirOwn) {
    const auto shader = makeShader();
    shader->setFractalBounds(CGRectMake(-1.75, 0, 0.0064, 0.0036));
    gl().calls.clear();
    shader->prepareForDeepViews(screen);
    EXPECT_EQ(gl().last("glLinkProgram"), "glLinkProgram 78");
    EXPECT_EQ(gl().sources.rbegin()->second, "#define DEEP\ntext of Shader.fsh");
    EXPECT_EQ(gl().last("glScissor"), "glScissor 0 0 1 1");
    EXPECT_EQ(gl().last("glUseProgram"), "glUseProgram 77?");
    gl().calls.clear();
    shader->prepareForDeepViews(screen);
    EXPECT_THAT(gl().calls, IsEmpty());

    // 1280 x 720 pixels; a view without extent, or one that is none, is not a deep one.
    constexpr std::pair<double, GLuint> cases[] = {
        {0.00129, 77}, {0.00127, 78}, {-0.00127, 78}, {0, 77}, {NAN, 77}};
    for (const auto& [width, program] : cases) {
        shader->setFractalBounds(CGRectMake(-1.75, 0, width, width * 9 / 16));
        shader->renderInRect(screen, 0);
        EXPECT_EQ(shader->program(), program) << width;
        EXPECT_EQ(gl().last("glUniform4f").substr(0, 14),
                  "glUniform4f " + std::to_string(shader->uFractalBounds()))
            << width;
    }
}

TEST_F(BaseShaderCalls, TheIterationLimitFollowsTheCostOfFrames) {
    const auto shader = makeShader();
    EXPECT_EQ(dwellAfter(*shader, 49), 256.0F);
    EXPECT_EQ(dwellAfter(*shader, 50), 256.0F);
    EXPECT_EQ(dwellAfter(*shader, 81), 252.0F);
    EXPECT_EQ(dwellAfter(*shader, 80), 252.0F);
    EXPECT_EQ(dwellAfter(*shader, 65), 252.0F);
    EXPECT_EQ(gl().last("glUniform1f " + std::to_string(shader->uDwell())),
              line("glUniform1f", shader->uDwell(), "252"));
    for (int frame = 0; frame < 46; ++frame)
        dwellAfter(*shader, 500);
    EXPECT_EQ(shader->dwell(), 68.0F);
    EXPECT_EQ(dwellAfter(*shader, 500), 64.0F);
    EXPECT_EQ(dwellAfter(*shader, 500), 64.0F);
    EXPECT_EQ(dwellAfter(*shader, 1), 80.0F);
    for (int frame = 0; frame < 11; ++frame)
        dwellAfter(*shader, 1);
    EXPECT_EQ(shader->dwell(), 256.0F);
}

TEST_F(BaseShaderCalls, TheLimitFollowsTheHostWhereFinishingDoesNotWait) {
    struct LazySurface : GLSurface {
        bool createContext() override { return true; }
        void destroyContext() override {}
        bool makeCurrent() override { return true; }
        void clearCurrent() override {}
        std::string lastError() const override { return {}; }
        uint32_t screenFramebuffer() override { return 0; }
        int32_t pixelWidth() const override { return 1280; }
        int32_t pixelHeight() const override { return 720; }
        void present() override {}
        bool tellsFrameCost() const override { return true; }
        std::optional<double> frameCost() const override { return cost; }
        std::optional<double> cost = 90;
    } surface;
    const auto shader = makeShader();
    setSharedGLSurface(&surface);
    EXPECT_EQ(dwellAfter(*shader, 1), 252.0F);
    surface.cost.reset();
    EXPECT_EQ(dwellAfter(*shader, 1), 252.0F) << "nobody knows yet";
    surface.cost = 1;
    EXPECT_EQ(dwellAfter(*shader, 90), 256.0F);
    setSharedGLSurface(nullptr);
}

TEST_F(BaseShaderCalls, ThePaletteClockRunsAtTheSpeedOfTheCycling) {
    const auto shader = makeShader();
    struct Step {
        int32_t cycling;
        double time;
        double clock;
        const char* cyclingSent;
    };
    // Speeds apply to the time after them; off and on again starts from zero; backwards runs but is not
    // shown.
    constexpr Step steps[] = {{1, 100, 0, "1"},        {1, 101.5, 1.5, "1"}, {4, 102, 3.5, "1"},
                              {4, 7302, 28803.5, "1"}, {0, 7303, 0, "0"},    {0, 8000, 0, "0"},
                              {1, 9000, 0, "1"},       {1, 9001, 1, "1"},    {-2, 9002, -1, "0"}};
    for (const Step& step : steps) {
        shader->setFractalColorCycling(step.cycling);
        shader->renderInRect(screen, step.time);
        EXPECT_EQ(shader->paletteClock(), step.clock) << "at " << step.time;
        EXPECT_EQ(gl().last("glUniform1f " + std::to_string(shader->uFractalColorCycling())),
                  line("glUniform1f", shader->uFractalColorCycling(), step.cyclingSent))
            << "at " << step.time;
    }
}

TEST_F(BaseShaderCalls, GLErrorsAreDrainedAndNamed) {
    const auto shader = makeShader();
    gl().errors = {0x0500, 0x0501, 0x0502, 0x0503, 0x0504, 0x0505, 0x0506, 0x1234};
    shader->logGLError();
    EXPECT_THAT(log, ElementsAre("OpenGL error 1280: invalid enum", "OpenGL error 1281: invalid value",
                                 "OpenGL error 1282: invalid operation", "OpenGL error 1283: unknown error?",
                                 "OpenGL error 1284: unknown error?", "OpenGL error 1285: out of memory",
                                 "OpenGL error 1286: invalid framebuffer operation",
                                 "OpenGL error 4660: unknown error?", "pause here"));
    log.clear();
    shader->logGLError();
    EXPECT_THAT(log, IsEmpty());
}

TEST_F(BaseShaderCalls, WhatCompilerAndLinkerSayIsLoggedAndTheProgramUsedAsItIs) {
    const std::string shaderError = "RWTBaseShader:- GLSL Shader Error: of the shader";
    const std::string program = "RWTBaseShader:- GLSL Program ";
    const struct {
        bool compiles;
        bool links;
        const char* programLog;
        std::vector<std::string> lines;
    } cases[] = {
        {false, false, "no main", {shaderError, shaderError, program + "Link Error: no main"}},
        {false, true, "", {shaderError, shaderError}},
        {true, true, "odd", {program + "Compiled With Messages: odd"}},
        {true, true, "", {}},
    };
    for (const auto& [compiles, links, programLog, lines] : cases) {
        gl() = {};
        gl().compiles = compiles;
        gl().links = links;
        gl().shaderLog = "of the shader";
        gl().programLog = programLog;
        log.clear();
        const auto shader = makeShader();
        EXPECT_EQ(log, lines);
        EXPECT_EQ(shader->program(), 77U);
        shader->renderInRect(screen, 0);
        EXPECT_EQ(gl().last("glDrawArrays"), "glDrawArrays strip 0 4?");
    }
}

TEST_F(BaseShaderCalls, AfterALostContextTheViewAndThePaletteGoOn) {
    const auto shader = makeShader();
    shader->setFractalColorCycling(4);
    shader->renderInRect(screen, 1);
    shader->renderInRect(screen, 2);
    shader->setFractalBounds(CGRectMake(0, 0, 1, 1));
    shader->rebuild();
    EXPECT_EQ(gl().last("glPixelStorei"), "glPixelStorei pack 1??");
    shader->renderInRect(screen, 3);
    EXPECT_EQ(shader->paletteClock(), 8);
    EXPECT_EQ(gl().last("glUniform4f"), line("glUniform4f", shader->uFractalBounds(), "0 0 1 1"));
}
