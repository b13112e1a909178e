// The fractal: escape time of z -> z^2 + c from z = the pixel's point, counted continuously, in a smooth
// palette.
//
// How it is fast. The loop tests for escape once in four steps, not in each: a point that has left radius 8
// only moves further out, and the continuous count from |z|^2 at the end of the four is that of the step it
// left (to 1/100 of an iteration), so nothing is replayed. Four steps from inside radius 8 stay below float
// overflow. The steps stand written out, since some compilers leave inner loops as they are. Points of the
// cardioid and of the disc of period 2 need no loop; other interiors end it when z takes a value it has had
// before, bit for bit. What is the same for all pixels comes in varyings, and the logarithm is taken once,
// after the loop.
//
// How it is deep. Where a pixel's step is too fine for floats, the app draws with the program made of this
// file with DEEP defined: z is Z + d and c is C + e, Z and C on a lattice of 2^-11, so coarse that Z^2 + C is
// exact in 24 bits, d and e small, so that 2 Z d + d^2 + e is rounded some 2^-34 down. Each step moves what d
// has outgrown into Z.
precision highp float;
precision highp int;

varying vec4 vPlane;
varying vec2 vCorner;
varying vec4 vPixel;
varying float vLimit;
varying vec4 vBase;
varying vec3 vEven;
varying vec3 vOdd;

const float kEscape = 64.0; // |z|^2
// -0.8 + 0.156 i, plain, and as a point of the lattice and the rest.
const vec2 kJulia = vec2(-0.8, 0.156);
const vec2 kJuliaHigh = vec2(-1638.0, 319.0) / 2048.0;
const vec2 kJuliaLow = vec2(-0.4, 0.488) / 2048.0;

// The palette's waves over a turn are polynomials, much like a cosine and a sine.
vec3 palette(float count) {
    float turn = count * 0.03125 + vBase.w;
    float u = turn - floor(turn + 0.5);
    float g = 0.25 - u * u;
    vec3 root = (vBase.rgb + vOdd * (u * g)) + vEven * (g * g);
    // Never black, not even in 5 bits of blue: black is for points that do not escape.
    return max(root * root, vec3(0.02, 0.02, 0.05));
}

bool insideLargeParts(vec2 c) {
    float x = c.x - 0.25;
    float yy = c.y * c.y;
    float q = x * x + yy;
    float u = c.x + 1.0;
    return q * (q + x) < 0.25 * yy || u * u + yy < 0.0625;
}

// Both loops leave the steps taken in k and |z|^2 after them in r.
#ifdef DEEP

void iterate(vec2 rest, bool mandelbrot, float limit, inout float k, inout float r) {
    vec2 Z = floor(vPlane.xy * 2048.0 + 0.5) / 2048.0;
    vec2 d = rest;
    vec2 C = mandelbrot ? Z : kJuliaHigh;
    vec2 e = mandelbrot ? d : kJuliaLow;
    for (int i = 0; i < 256; ++i) {
        vec2 twice = Z + Z;
        vec2 a = vec2((C.x + Z.x * Z.x) - Z.y * Z.y, twice.x * Z.y + C.y);
        vec2 q = twice + d;
        vec2 b = vec2(q.x * d.x - q.y * d.y, (q.x + d.x) * d.y + twice.y * d.x) + e;
        Z = floor((a + b) * 2048.0 + 0.5) / 2048.0;
        d = (a - Z) + b;
        k += 1.0;
        r = dot(Z, Z);
        if (r > kEscape || k >= limit) { break; }
    }
}

#else

// Every compiler shall round alike, so the order of the sums is spelt out.
#define STEP t = (c.x + x * x) - y * y; y = (x + x) * y + c.y; x = t;

void iterate(vec2 p, bool mandelbrot, float limit, inout float k, inout float r) {
    vec2 c = mandelbrot ? p : kJulia;
    float x = p.x;
    float y = p.y;
    float t;
    vec2 seen = vec2(9.0);
    float renew = 16.0;
    for (int i = 0; i < 32; ++i) {
        STEP STEP STEP STEP
        k += 4.0;
        r = x * x + y * y;
        if (r > kEscape || k >= limit) { break; }
        STEP STEP STEP STEP
        k += 4.0;
        r = x * x + y * y;
        if (r > kEscape || k >= limit || (x == seen.x && y == seen.y)) { break; }
        if (k == renew) { seen = vec2(x, y); renew += renew; }
    }
}

#endif

void main() {
    // Whole pixels from the middle outwards, so that what is symmetric stays so to the last bit, and a tile
    // of a larger picture has the very pixels of the whole.
    vec2 rest = vPlane.zw + ((floor(vCorner) + 0.5) - vPixel.xy) * vPixel.zw;
    vec2 p = vPlane.xy + rest;
    bool mandelbrot = vLimit > 0.0;
    float limit = abs(vLimit);
    float k = 0.0;
    float r = 0.0;
    float m = dot(p, p);
    bool far = m > kEscape;
    bool done = far || (mandelbrot && insideLargeParts(p));
#ifdef DEEP
    iterate(rest, mandelbrot, done ? 0.0 : limit, k, r);
#else
    iterate(far ? vec2(0.0) : p, mandelbrot, done ? 0.0 : limit, k, r);
#endif
    if (far) { r = m; k = 0.0; }
    float count = (k + 2.5849625) - log2(log2(r));
    bool escaped = r > kEscape && (k <= limit || count < limit - 0.011);
    gl_FragColor = vec4(escaped ? palette(count) : vec3(0.0), 1.0);
}
