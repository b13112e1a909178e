// How finely the GPU's shaders calculate.
// The autopilot turns round where their floats end.
#pragma once

#include <cstdint>

/// Bits of the mantissa of high-precision floats in vertex shaders, as the driver of the current context
/// reports them: 23 nearly everywhere. 0 without a context.
int32_t vertexHighFloatPrecisionBits();
