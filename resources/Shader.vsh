// The corner of the full-screen quad, and everything of a frame that is the same for all its pixels.
// What the fragments need once per frame is worked out here four times instead of a million times.
attribute vec2 aPosition;

uniform vec2 uResolution;
uniform float uDeviceScale;
uniform vec4 uFractalBounds;
uniform float uTime;
uniform int uFractalType;
uniform int uFractalColoring;
uniform float uFractalColorCycling;
uniform float uDwell;

varying vec4 vPlane;  // the middle of the view is xy + zw: a point of the lattice of 2^-11, and the small rest
varying vec4 vPixel;  // xy: the middle in pixels; zw: plane units per pixel, with y upwards as in gl_FragCoord
varying vec2 vLimit;  // iterations by plain and by split arithmetic, one of them 0; negative for Julia
varying vec4 vBase;   // palette: red, green, blue without waves; w: its phase in turns
varying vec3 vEven;   // palette: share of the even wave
varying vec3 vOdd;    // palette: share of the odd wave

// Steps per pixel below this need more than a float holds.
const float kDeepStep = 1.0e-6;
// Turns of the palette per unit of the clock: a power of two, so that the product is exact, and small, so that a
// clock of a hundred thousand still moves the palette evenly.
const float kTurnsPerUnit = 0.0625;

// NaN and what is out of all reach become points far out.
float reachable(float v) {
    return v > -1.0e9 ? min(v, 1.0e9) : -1.0e9;
}

float onLattice(float v) {
    return abs(v) < 8.0 ? floor(v * 2048.0 + 0.5) / 2048.0 : v;
}

// A palette is the square of three square roots of colours: at its dark end, at its bright end half a turn later,
// and the tilt between the way up and the way down. The waves of Shader.fsh reach 1/16 and about 1/20.8.
void colours(vec3 dark, vec3 bright, vec3 tilt) {
    vBase.rgb = dark;
    vEven = (bright - dark) * 16.0;
    vOdd = tilt * 20.8;
}

void choosePalette(int palette) {
    if (palette == 1) { // fire
        colours(vec3(0.16, 0.02, 0.08), vec3(1.0, 0.92, 0.60), vec3(-0.12, -0.06, 0.12));
    } else if (palette == 2) { // ice
        colours(vec3(0.04, 0.18, 0.42), vec3(0.96, 1.0, 1.0), vec3(0.10, -0.12, -0.15));
    } else if (palette == 3) { // rainbow
        colours(vec3(0.48, 0.16, 0.55), vec3(0.55, 1.0, 0.66), vec3(-0.36, 0.0, 0.34));
    } else if (palette == 4) { // emerald
        colours(vec3(0.02, 0.12, 0.14), vec3(0.97, 1.0, 0.72), vec3(0.11, -0.18, 0.0));
    } else if (palette == 5) { // violet and copper
        colours(vec3(0.20, 0.05, 0.35), vec3(1.0, 0.88, 0.72), vec3(0.16, 0.07, -0.26));
    } else if (palette == 6) { // silver
        colours(vec3(0.12, 0.13, 0.17), vec3(1.0, 1.0, 1.0), vec3(0.02, 0.0, -0.03));
    } else if (palette == 7) { // sunset
        colours(vec3(0.10, 0.10, 0.42), vec3(1.0, 0.80, 0.42), vec3(-0.22, 0.08, -0.08));
    } else if (palette == 8) { // lagoon
        colours(vec3(0.05, 0.28, 0.34), vec3(1.0, 0.90, 0.62), vec3(0.14, -0.08, -0.24));
    } else if (palette == 9) { // neon
        colours(vec3(0.10, 0.02, 0.24), vec3(0.35, 1.0, 0.95), vec3(-0.42, 0.14, -0.10));
    } else if (palette == 10) { // rose
        colours(vec3(0.34, 0.08, 0.20), vec3(1.0, 0.95, 0.90), vec3(-0.16, 0.14, 0.04));
    } else { // deep blue and gold
        colours(vec3(0.02, 0.12, 0.33), vec3(1.0, 0.96, 0.86), vec3(0.25, 0.02, -0.32));
    }
}

void main() {
    vec2 low = vec2(reachable(uFractalBounds.x), reachable(uFractalBounds.y));
    vec2 size = vec2(reachable(uFractalBounds.z), reachable(uFractalBounds.w)) - low;
    vec2 middle = low + 0.5 * size;
    vec2 base = vec2(onLattice(middle.x), onLattice(middle.y));
    vPlane = vec4(base, (low - base) + 0.5 * size);

    vec2 pixels = uResolution * uDeviceScale;
    vec2 stepSize = size / pixels;
    vPixel = vec4(0.5 * pixels, stepSize.x, -stepSize.y);
    bool deep = min(abs(stepSize.x), abs(stepSize.y)) < kDeepStep;
    float limit = uFractalType == 2 ? -floor(uDwell) : floor(uDwell);
    vLimit = deep ? vec2(0.0, limit) : vec2(limit, 0.0);

    // Points far out are just above the dark end.
    vBase.w = 0.56 + (uFractalColorCycling > 0.0 ? fract(uTime * kTurnsPerUnit) : 0.0);
    choosePalette(uFractalColoring);
    gl_Position = vec4(aPosition, 0.0, 1.0);
}
