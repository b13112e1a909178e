// The fractal: escape time of z -> z^2 + c with a continuous count, coloured by a smooth palette.
//
// How it is fast. The loop tests for escape once in eight steps, not in each: a point that has left radius 8 only
// moves further out, and the continuous count from |z|^2 at step 4 or 8 of the block is the same as at the step it
// left (to 1/100 of an iteration), so nothing is replayed. From inside radius 8 four steps stay far below float
// overflow; what the last four steps of a block make of a point that left in its first four is never looked at.
// The steps stand written out, since some compilers leave inner loops as they are. Points of the cardioid and of
// the disc of period 2 need no loop; other interiors end it when z takes a value it has had before, bit for bit.
//
// How it is deep. Where a pixel's step is too fine for floats, z is Z + d and c is C + e: Z on a lattice of 2^-10 and
// C on one of 2^-20, coarse enough that Z^2 + C is exact in 24 bits, and d and e small, so that 2 Z d + d^2 + e has its
// rounding error some 2^-34 down. Each step moves what d has outgrown back into Z.
precision highp float;
precision highp int;

varying vec4 vPlane;
varying vec4 vFrame;
varying vec4 vMean;
varying vec3 vCos1;
varying vec3 vSin1;
varying vec3 vCos2;
varying vec3 vSin2;

const vec2 kJulia = vec2(-0.8, 0.156);
// -0.8 + 0.156 i as a point of the lattice and the rest.
const vec2 kJuliaHigh = vec2(-838861.0, 163578.0) / 1048576.0;
const vec2 kJuliaLow = vec2(0.2, -0.144) / 1048576.0;
const float kEscape = 64.0; // |z|^2

vec3 palette(float iterations) {
    float turn = fract(iterations * vMean.w + vFrame.w);
    float t = turn * 6.28318531;
    float s = sin(t);
    float c = cos(t);
    vec3 colour = vMean.rgb + vCos1 * c + vSin1 * s + vCos2 * (2.0 * c * c - 1.0) + vSin2 * (2.0 * s * c);
    // Never black, not even in 5 bits of blue: black is for points that do not escape.
    return clamp(colour, vec3(0.02, 0.02, 0.05), vec3(1.0));
}

bool insideLargeParts(vec2 c) {
    float x = c.x - 0.25;
    float yy = c.y * c.y;
    float q = x * x + yy;
    float u = c.x + 1.0;
    return q * (q + x) < 0.25 * yy || u * u + yy < 0.0625;
}

#define STEP t = (c.x + x * x) - y * y; y = (x + x) * y + c.y; x = t;

// One step of (Z + d)^2 + (C + e).
void deepStep(inout vec2 Z, inout vec2 d, vec2 C, vec2 e) {
    vec2 twice = Z + Z;
    vec2 a = vec2((C.x + Z.x * Z.x) - Z.y * Z.y, twice.x * Z.y + C.y);
    vec2 b = e + vec2((twice.x + d.x) * d.x - (twice.y + d.y) * d.y, (twice.x + d.x + d.x) * d.y + twice.y * d.x);
    Z = floor((a + b) * 1024.0 + 0.5) * 0.0009765625;
    d = (a - Z) + b;
}

void main() {
    vec2 p = vPlane.xy + vPlane.zw;
    bool mandelbrot = vFrame.x > 0.0;
    vec2 c = mandelbrot ? p : kJulia;
    float m0 = dot(p, p);
    bool far = m0 > kEscape;
    bool done = far || (mandelbrot && insideLargeParts(p));

    float x = far ? 0.0 : p.x;
    float y = far ? 0.0 : p.y;
    if (far) { c = vec2(0.0); }
    float limit = done ? 0.0 : vFrame.y;
    float n = 0.0;
    float m4 = 0.0;
    float m8 = 0.0;
    float t;
    vec2 seen = vec2(9.0);
    float renew = 16.0;
    for (int i = 0; i < 32; ++i) {
        STEP STEP STEP STEP
        m4 = x * x + y * y;
        STEP STEP STEP STEP
        m8 = x * x + y * y;
        n += 8.0;
        if (m4 > kEscape || m8 > kEscape || n >= limit || (x == seen.x && y == seen.y)) { break; }
        if (n == renew) { seen = vec2(x, y); renew += renew; }
    }

    float limitDeep = done ? 0.0 : vFrame.z;
    if (limitDeep > 0.0) {
        vec2 lattice = floor(vPlane.xy * 1048576.0 + 0.5) * 0.00000095367431640625;
        vec2 C = mandelbrot ? lattice : kJuliaHigh;
        vec2 e = mandelbrot ? vPlane.zw : kJuliaLow;
        vec2 Z = floor(p * 1024.0 + 0.5) * 0.0009765625;
        vec2 d = (lattice - Z) + vPlane.zw;
        n = 0.0;
        for (int i = 0; i < 32; ++i) {
            deepStep(Z, d, C, e); deepStep(Z, d, C, e); deepStep(Z, d, C, e); deepStep(Z, d, C, e);
            m4 = dot(Z, Z);
            deepStep(Z, d, C, e); deepStep(Z, d, C, e); deepStep(Z, d, C, e); deepStep(Z, d, C, e);
            m8 = dot(Z, Z);
            n += 8.0;
            if (m4 > kEscape || m8 > kEscape || n >= limitDeep) { break; }
        }
        limit = limitDeep;
    }

    float late = m4 > kEscape ? 4.0 : 0.0;
    float m = m4 > kEscape ? m4 : m8;
    m = far ? m0 : m;
    n = far ? 0.0 : n - late;
    float loops = log2(log2(min(m, 1.0e30))) - 2.5849625;
    float count = n - loops;
    bool escaped = m > kEscape;
    gl_FragColor = vec4(escaped ? palette(count) : vec3(0.0), 1.0);
}
