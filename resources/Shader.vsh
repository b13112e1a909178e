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
uniform vec2 uReducedSize; // pixels, where fewer are drawn than the screen has; else 0

varying vec4 vPlane;  // the view's middle is xy + zw: a point of the lattice of 2^-11, and the small rest
varying vec2 vCorner; // pixels from the picture's bottom left, wherever the viewport lies
varying vec4 vPixel;  // xy: the middle in these pixels; zw: plane units per pixel, with y upwards
varying float vLimit; // iterations; negative for Julia
varying vec4 vBase;   // palette: red, green, blue without waves; w: its phase in turns
varying vec3 vEven;   // palette: share of the even wave
varying vec3 vOdd;    // palette: share of the odd wave

// Turns of the palette per unit of the clock: a power of two, so that the product is exact, and small, so
// that a clock of a hundred thousand still moves the palette evenly.
const float kTurnsPerUnit = 0.0625;

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

// A palette is the square of three square roots of colours: at its dark end, at its bright end half a turn
// later, and the tilt (around 128) between the way up and the way down. Packed, since a choice of three
// numbers compiles in a fraction of the time that one of nine takes. The waves of Shader.fsh reach 1/16 and
// about 1/20.8.
void choosePalette(int palette) {
    vec3 codes = vec3(0x051F54, 0xFFF5DB, 0xC0852E); // deep blue and gold
    codes = palette == 1 ? vec3(0x290514, 0xFFEB99, 0x61719F) : codes; // fire
    codes = palette == 2 ? vec3(0x0A2E6B, 0xF5FFFF, 0x9A615A) : codes; // ice
    codes = palette == 3 ? vec3(0x7A298C, 0x8CFFA8, 0x2480D7) : codes; // rainbow
    codes = palette == 4 ? vec3(0x051F24, 0xF7FFB8, 0x9C5280) : codes; // emerald
    codes = palette == 5 ? vec3(0x330D59, 0xFFE0B8, 0xA9923E) : codes; // violet and copper
    codes = palette == 6 ? vec3(0x1F212B, 0xFFFFFF, 0x858078) : codes; // silver
    codes = palette == 7 ? vec3(0x1A1A6B, 0xFFCC6B, 0x48946C) : codes; // sunset
    codes = palette == 8 ? vec3(0x0D4757, 0xFFE69E, 0xA46C43) : codes; // lagoon
    codes = palette == 9 ? vec3(0x1A053D, 0x59FFF2, 0x15A466) : codes; // neon
    codes = palette == 10 ? vec3(0x571433, 0xFFF2E6, 0x57A48A) : codes; // rose
    vec3 dark = unpack(codes.x);
    vBase.rgb = dark;
    vEven = (unpack(codes.y) - dark) * 16.0;
    vOdd = (unpack(codes.z) - 128.0 / 255.0) * 20.8;
}

void main() {
    vec2 low = vec2(reachable(uFractalBounds.x), reachable(uFractalBounds.y));
    vec2 size = vec2(reachable(uFractalBounds.z), reachable(uFractalBounds.w)) - low;
    vec2 middle = low + 0.5 * size;
    vec2 base = vec2(onLattice(middle.x), onLattice(middle.y));
    vPlane = vec4(base, (low - base) + 0.5 * size);

    vec2 pixels = uReducedSize.x > 0.0 ? uReducedSize : uResolution * uDeviceScale;
    vec2 stepSize = size / pixels;
    vCorner = (0.5 * aPosition + 0.5) * pixels;
    vPixel = vec4(0.5 * pixels, stepSize.x, -stepSize.y);
    vLimit = uFractalType == 2 ? -floor(uDwell) : floor(uDwell);

    // Points far out are just above the dark end.
    vBase.w = 0.56 + (uFractalColorCycling > 0.0 ? fract(uTime * kTurnsPerUnit) : 0.0);
    choosePalette(uFractalColoring);
    gl_Position = vec4(aPosition, 0.0, 1.0);
}
