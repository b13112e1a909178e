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

varying vec4 vPlane;  // the pixel's point is xy + zw: a point of the lattice of 2^-20, and the small rest
varying vec4 vFrame;  // 1 for Mandelbrot and -1 for Julia, limit if shallow, limit if deep, palette phase in turns
varying vec4 vMean;   // palette: constant terms; w turns per iteration
varying vec3 vCos1;   // palette: terms of cos(t), sin(t), cos(2t), sin(2t)
varying vec3 vSin1;
varying vec3 vCos2;
varying vec3 vSin2;

// Steps per pixel below this need more than a float holds.
const float kDeepStep = 1.0e-6;
// Turns of the palette per unit of the clock: a power of two, so that the product is exact, and small, so that a
// clock of a hundred thousand still moves the palette evenly.
const float kTurnsPerSecond = 0.0625;

vec2 onLattice(vec2 v) {
    vec2 nearest = floor(v * 1048576.0 + 0.5) / 1048576.0;
    return vec2(abs(v.x) < 8.0 ? nearest.x : v.x, abs(v.y) < 8.0 ? nearest.y : v.y);
}

// Colours of one palette: mean, and the amplitude and phase (in radians) of the first two waves per channel.
void wave(vec3 amplitude1, vec3 phase1, vec3 amplitude2, vec3 phase2) {
    vCos1 = amplitude1 * cos(phase1);
    vSin1 = amplitude1 * sin(phase1);
    vCos2 = amplitude2 * cos(phase2);
    vSin2 = amplitude2 * sin(phase2);
}

void choosePalette(int palette) {
    float p = float(palette);
    vMean = vec4(0.5, 0.5, 0.5, 0.03125);
    wave(vec3(0.4), vec3(0.6, 0.9, 1.4) + p, vec3(0.1), vec3(1.0, 0.5, 0.2) * p);
}

void main() {
    vec2 size = uFractalBounds.zw - uFractalBounds.xy;
    vec2 corner = vec2(aPosition.x * 0.5 + 0.5, 0.5 - aPosition.y * 0.5);
    vec2 base = onLattice(uFractalBounds.xy);
    vPlane = vec4(base, (uFractalBounds.xy - base) + corner * size);

    vec2 stepSize = abs(size) / (uResolution * uDeviceScale);
    bool deep = min(stepSize.x, stepSize.y) < kDeepStep;
    float turns = uFractalColorCycling > 0.0 ? fract(uTime * kTurnsPerSecond) : 0.0;
    vFrame = vec4(uFractalType == 2 ? -1.0 : 1.0, deep ? 0.0 : uDwell, deep ? uDwell : 0.0, turns);

    choosePalette(uFractalColoring);
    gl_Position = vec4(aPosition, 0.0, 1.0);
}
