// Asks the driver.
// A call of its own, since GL is spoken nowhere above this layer but in the shader.
#include "platform/gl/shader_precision.h"

#include <GLES2/gl2.h>

int32_t vertexHighFloatPrecisionBits() {
    GLint range[2] = {};
    GLint bits = 0;
    glGetShaderPrecisionFormat(GL_VERTEX_SHADER, GL_HIGH_FLOAT, range, &bits);
    return bits;
}
