// The fixture of the tests that look at the fractal's pictures: a context without a display and the app's
// shaders. Pictures are drawn at any size, with 8 bits per channel or in the app's 16-bit colour.
#pragma once

#include <gtest/gtest.h>
#include <memory>
#include <string>

#include "hosts/headless/egl_context.h"
#include "tests/support/fractal_drawing.h"

class FractalTest : public testing::Test {
  protected:
    void SetUp() override {
        std::string error;
        context = EglContext::create(&error);
        ASSERT_TRUE(context) << error;
        ASSERT_TRUE(context->makeCurrent());
        shader = std::make_unique<FractalShader>();
    }
    void TearDown() override {
        shader.reset();
        EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
    }

    /// Program: a FractalShader or a FractalProgram.
    template <typename Program>
    static FractalPicture draw(const Program& program, const FractalView& view, int width, int height,
                               bool rgb565 = false) {
        const FractalTarget target(width, height, rgb565);
        program.draw(target, view);
        return target.read();
    }
    FractalPicture draw(const FractalView& view, int width, int height, bool rgb565 = false) const {
        return draw(*shader, view, width, height, rgb565);
    }

    std::unique_ptr<EglContext> context;
    std::unique_ptr<FractalShader> shader;
};
