// The plain fractal: an escape test and its logarithm in every step. Shader.vsh and the palettes are the real ones.
// The benchmark measures Shader.fsh against it, and a test holds their pictures together.
precision highp float;
precision highp int;

varying vec4 vPlane;
varying vec4 vPixel;
varying vec2 vLimit;
varying vec4 vBase;
varying vec3 vEven;
varying vec3 vOdd;

vec3 palette(float count) {
    float turn = count * 0.03125 + vBase.w;
    float u = turn - floor(turn + 0.5);
    float g = 0.25 - u * u;
    vec3 root = (vBase.rgb + vOdd * (u * g)) + vEven * (g * g);
    return max(root * root, vec3(0.02, 0.02, 0.05));
}

void main() {
    vec2 z = vPlane.xy + (vPlane.zw + (gl_FragCoord.xy - vPixel.xy) * vPixel.zw);
    float limit = vLimit.x + vLimit.y;
    vec2 c = limit > 0.0 ? z : vec2(-0.8, 0.156);
    limit = abs(limit);
    float count = 0.0;
    bool escaped = false;
    for (int i = 0; i <= 256; ++i) {
        if (float(i) > limit) {
            break;
        }
        float m = dot(z, z);
        if (m > 64.0) {
            count = float(i) + 2.5849625 - log2(log2(m));
            escaped = true;
            break;
        }
        z = vec2((c.x + z.x * z.x) - z.y * z.y, (z.x + z.x) * z.y + c.y);
    }
    gl_FragColor = vec4(escaped ? palette(count) : vec3(0.0), 1.0);
}
