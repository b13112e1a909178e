// The plain fractal: an escape test and its logarithm in every step. Shader.vsh and the palettes are the real ones.
// The benchmark measures Shader.fsh against it, and a test holds their pictures together.
precision highp float;
precision highp int;

varying vec4 vPlane;
varying vec4 vFrame;
varying vec4 vMean;
varying vec3 vCos1;
varying vec3 vSin1;
varying vec3 vCos2;
varying vec3 vSin2;

vec3 palette(float iterations) {
    float t = fract(iterations * vMean.w + vFrame.w) * 6.28318531;
    float s = sin(t);
    float c = cos(t);
    vec3 colour = vMean.rgb + vCos1 * c + vSin1 * s + vCos2 * (2.0 * c * c - 1.0) + vSin2 * (2.0 * s * c);
    return clamp(colour, vec3(0.02, 0.02, 0.05), vec3(1.0));
}

void main() {
    vec2 z = vPlane.xy + vPlane.zw;
    vec2 c = vFrame.x > 0.0 ? z : vec2(-0.8, 0.156);
    float limit = max(vFrame.y, vFrame.z);
    vec3 colour = vec3(0.0);
    float count = 0.0;
    bool escaped = false;
    for (int i = 0; i <= 256; ++i) {
        if (float(i) > limit) {
            break;
        }
        float m = dot(z, z);
        if (m > 64.0) {
            count = float(i) + 2.5849625 - log2(log2(min(m, 1.0e30)));
            escaped = true;
            break;
        }
        z = vec2((c.x + z.x * z.x) - z.y * z.y, (z.x + z.x) * z.y + c.y);
    }
    if (escaped) {
        colour = palette(count);
    }
    gl_FragColor = vec4(colour, 1.0);
}
