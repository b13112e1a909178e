// The plain fractal: everything worked out for each pixel from the uniforms, an escape test and its logarithm in every
// step. Mapping and palettes are those of the real shaders, so that the pictures can be held against one another.
precision highp float;
precision highp int;

uniform vec2 uResolution;
uniform float uDeviceScale;
uniform vec4 uFractalBounds;
uniform float uTime;
uniform int uFractalType;
uniform int uFractalColoring;
uniform float uFractalColorCycling;
uniform float uDwell;

// NaN and what is out of all reach become points far out.
float reachable(float v) {
    return v > -1.0e9 ? min(v, 1.0e9) : -1.0e9;
}

float onLattice(float v) {
    return abs(v) < 8.0 ? floor(v * 2048.0 + 0.5) / 2048.0 : v;
}

// Three channels of a byte each.
vec3 unpack(float v) {
    return vec3(floor(v / 65536.0), floor(mod(v, 65536.0) / 256.0), mod(v, 256.0)) / 255.0;
}

vec3 palette(float count, float phase) {
    vec3 codes = vec3(0x051F54, 0xFFF5DB, 0xC0852E); // deep blue and gold
    codes = uFractalColoring == 1 ? vec3(0x290514, 0xFFEB99, 0x61719F) : codes; // fire
    codes = uFractalColoring == 2 ? vec3(0x0A2E6B, 0xF5FFFF, 0x9A615A) : codes; // ice
    codes = uFractalColoring == 3 ? vec3(0x7A298C, 0x8CFFA8, 0x2480D7) : codes; // rainbow
    codes = uFractalColoring == 4 ? vec3(0x051F24, 0xF7FFB8, 0x9C5280) : codes; // emerald
    codes = uFractalColoring == 5 ? vec3(0x330D59, 0xFFE0B8, 0xA9923E) : codes; // violet and copper
    codes = uFractalColoring == 6 ? vec3(0x1F212B, 0xFFFFFF, 0x858078) : codes; // silver
    codes = uFractalColoring == 7 ? vec3(0x1A1A6B, 0xFFCC6B, 0x48946C) : codes; // sunset
    codes = uFractalColoring == 8 ? vec3(0x0D4757, 0xFFE69E, 0xA46C43) : codes; // lagoon
    codes = uFractalColoring == 9 ? vec3(0x1A053D, 0x59FFF2, 0x15A466) : codes; // neon
    codes = uFractalColoring == 10 ? vec3(0x571433, 0xFFF2E6, 0x57A48A) : codes; // rose
    vec3 dark = unpack(codes.x);
    vec3 even = (unpack(codes.y) - dark) * 16.0;
    vec3 odd = (unpack(codes.z) - 128.0 / 255.0) * 20.8;
    float turn = count * 0.03125 + phase;
    float u = turn - floor(turn + 0.5);
    float g = 0.25 - u * u;
    vec3 root = (dark + odd * (u * g)) + even * (g * g);
    return max(root * root, vec3(0.02, 0.02, 0.05));
}

void main() {
    vec2 low = vec2(reachable(uFractalBounds.x), reachable(uFractalBounds.y));
    vec2 size = vec2(reachable(uFractalBounds.z), reachable(uFractalBounds.w)) - low;
    vec2 middle = low + 0.5 * size;
    vec2 base = vec2(onLattice(middle.x), onLattice(middle.y));
    vec2 pixels = uResolution * uDeviceScale;
    vec2 stepSize = vec2(size.x / pixels.x, -size.y / pixels.y);
    vec2 rest = ((low - base) + 0.5 * size) + (gl_FragCoord.xy - 0.5 * pixels) * stepSize;

    vec2 z = base + rest;
    vec2 c = uFractalType == 2 ? vec2(-0.8, 0.156) : z;
    float count = 0.0;
    bool escaped = false;
    for (int i = 0; i <= 256; ++i) {
        if (float(i) > uDwell) {
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
    float phase = 0.56 + (uFractalColorCycling > 0.0 ? fract(uTime * 0.0625) : 0.0);
    gl_FragColor = vec4(escaped ? palette(count, phase) : vec3(0.0), 1.0);
}
