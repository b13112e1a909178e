// How fast the page is in headless Chromium without a GPU: its weight, its start, the script's share of a frame, and
// the fractal against the plain shader. `node bench/page_bench.mjs [--site build/web/site] [--runs N] [SECTION...]`
import {readFileSync} from 'node:fs';
import {createRequire} from 'node:module';
import {join} from 'node:path';
import {fileURLToPath} from 'node:url';
import {parseArgs} from 'node:util';
import {brotliCompressSync, gzipSync} from 'node:zlib';

const root = fileURLToPath(new URL('..', import.meta.url));
const {chromium} = createRequire(join(root, 'web/package.json'))('playwright-core');
const {serve} = await import('../web/serve.mjs');

const patience = 60000;  // ms
const desktop = {viewport: {width: 1280, height: 720}, deviceScaleFactor: 1};
const flags = ['--no-sandbox', '--use-angle=swiftshader', '--enable-unsafe-swiftshader', '--disable-quic',
    '--disable-background-networking', '--disable-component-update', '--disable-sync'];

// As in fractal_bench.cpp, with the ratios that are wanted here.
const views = [
    {name: 'top', bounds: [-3.6666667, -1.5, 1.6666667, 1.5], type: 1, wanted: 4.6},
    {name: 'filament', bounds: [-0.7463, 0.1102, -0.7413, 0.1130], type: 1, wanted: 4.1},
    {name: 'inside the cardioid', bounds: [-0.3, -0.1, 0.05, 0.1], type: 1, wanted: 35},
    {name: 'period-3 bulb', bounds: [-0.13, 0.70, -0.11, 0.72], type: 1, wanted: 4.6},
    {name: 'far out', bounds: [-8, -4.5, 8, 4.5], type: 1, wanted: 0.8},  // at most 1.25 times the plain one's time
    {name: 'Julia, whole', bounds: [-2.6666667, -1.5, 2.6666667, 1.5], type: 2, wanted: 2.8},
];

const median = (values) => [...values].sort((a, b) => a - b)[Math.floor(values.length / 2)];
const fixed = (value, digits = 1) => value.toFixed(digits);
const kilobytes = (bytes) => `${fixed(bytes / 1000)} kB`;
const text = (path) => readFileSync(join(root, path), 'utf8');

/** A page of its own in a fresh profile, so that nothing is in a cache; its user has seen the tour. */
async function withPage(bench, work) {
    const world = await bench.browser.newContext({...desktop, serviceWorkers: 'block'});
    await world.addInitScript(() => { localStorage['zentaro.settings'] ??= '{"MPCoachMarksShown": true}'; });
    try {
        return await work(await world.newPage());
    } finally {
        await world.close();
    }
}

const open = async (bench, page) => {
    await page.goto(bench.url);
    await page.waitForSelector('html.started', {timeout: patience});
};

/** Everything that is asked for before the first frame, as a server with compression sends it. */
async function weight(bench) {
    const paths = await withPage(bench, async (page) => {
        const asked = new Set();
        page.on('request', (request) => asked.add(new URL(request.url()).pathname));
        await open(bench, page);
        return [...asked];
    });
    const packed = {gzip: (bytes) => gzipSync(bytes, {level: 9}), brotli: brotliCompressSync};
    for (const [name, pack] of Object.entries(packed)) {
        const size = (path) => pack(readFileSync(join(bench.site, path === '/' ? 'index.html' : path))).length;
        const all = paths.reduce((sum, path) => sum + size(path), 0);
        const program = size('/zentaro.wasm') + size('/zentaro.js');
        console.log(`${name}: WebAssembly and its script ${kilobytes(program)} of 300, ` +
            `all ${paths.length} files to the first frame ${kilobytes(all)} of 400`);
    }
}

/** From navigation to the moment at which the first frame's commands are given, and to the paint that shows it. */
async function start(bench) {
    const given = [], shown = [];
    for (let run = 0; run < bench.runs; ++run) {
        await withPage(bench, async (page) => {
            await open(bench, page);
            const times = await page.evaluate(() => new Promise((resolve) => {
                requestAnimationFrame(() => requestAnimationFrame(() => resolve({
                    given: performance.getEntriesByName('first frame')[0].startTime,
                    shown: performance.getEntriesByName('first-contentful-paint')[0]?.startTime ?? NaN,
                })));
            }));
            given.push(times.given);
            shown.push(times.shown);
        });
    }
    console.log(`from navigation to the first frame ${fixed(median(given), 0)} ms, ` +
        `painted ${fixed(median(shown), 0)} ms (medians of ${bench.runs})`);
}

/**
 * In the page, before its scripts: notes how long each callback of a frame takes, and the frame's whole interval.
 * waits: whether each frame is then waited for until it is drawn, and that time noted apart.
 */
function noteFrames(waits) {
    const real = window.requestAnimationFrame.bind(window);
    const pixel = new Uint8Array(4);
    const finish = () => {
        const gl = document.getElementById('screen').getContext('webgl');
        gl.readPixels(0, 0, 1, 1, gl.RGBA, gl.UNSIGNED_BYTE, pixel);
    };
    window.noted = {script: [], draw: [], interval: [], last: 0};
    window.requestAnimationFrame = (callback) => real((time) => {
        const begin = performance.now();
        callback(time);
        const given = performance.now();
        window.noted.script.push(given - begin);
        if (waits) finish();
        window.noted.draw.push(performance.now() - given);
        if (window.noted.last) window.noted.interval.push(begin - window.noted.last);
        window.noted.last = begin;
    });
}

async function noted(page, work) {
    await page.evaluate(() => Object.assign(window.noted, {script: [], draw: [], interval: [], last: 0}));
    await work();
    return page.evaluate(() => window.noted);
}

async function drag(page) {
    await page.mouse.move(640, 360);
    await page.mouse.down();
    for (let step = 1; step <= 60; ++step) {
        await page.mouse.move(640 + 120 * Math.sin(step / 5), 360 + 40 * Math.sin(step / 9));
        await page.waitForTimeout(16);
    }
    await page.mouse.up();
}

const works = {
    'idle': (page) => page.waitForTimeout(3000),
    'dragging': drag,
    // Developers' figures are painted anew in each frame.
    'overlay of the whole screen changing': async (page) => {
        await page.keyboard.press('F1');
        await page.waitForTimeout(3000);
    },
};

async function notedWorks(bench, waits) {
    return withPage(bench, async (page) => {
        await page.addInitScript(noteFrames, waits);
        await open(bench, page);
        await page.waitForTimeout(2000);
        const all = {};
        for (const [name, work] of Object.entries(works)) all[name] = await noted(page, () => work(page));
        return all;
    });
}

/** Script and overlay of a frame as it goes; the draw in a second page, which waits for each. */
async function frames(bench) {
    const running = await notedWorks(bench, false);
    const waiting = await notedWorks(bench, true);
    for (const [name, {script, interval}] of Object.entries(running)) {
        const worst = [...script].sort((a, b) => a - b)[Math.floor(0.95 * script.length)];
        console.log(`${name}: script and overlay ${fixed(median(script), 2)} ms a frame ` +
            `(95 % below ${fixed(worst, 2)}), the draw itself ${fixed(median(waiting[name].draw))}, ` +
            `a frame every ${fixed(median(interval))} ms, ${script.length} frames`);
    }
}

/** In the page: draws each view by each of the programs in turn. Answers milliseconds, [view][program][run]. */
function timeShaders({vertex, fragments, drawn, runs}) {
    const canvas = document.createElement('canvas');
    [canvas.width, canvas.height] = [1280, 720];
    const gl = canvas.getContext('webgl', {alpha: false, depth: false, antialias: false});
    const compile = (type, source) => {
        const shader = gl.createShader(type);
        gl.shaderSource(shader, source);
        gl.compileShader(shader);
        return shader;
    };
    const programs = fragments.map((fragment) => {
        const program = gl.createProgram();
        gl.attachShader(program, compile(gl.VERTEX_SHADER, vertex));
        gl.attachShader(program, compile(gl.FRAGMENT_SHADER, fragment));
        gl.bindAttribLocation(program, 0, 'aPosition');
        gl.linkProgram(program);
        if (!gl.getProgramParameter(program, gl.LINK_STATUS)) throw new Error(gl.getProgramInfoLog(program));
        return program;
    });
    gl.bindBuffer(gl.ARRAY_BUFFER, gl.createBuffer());
    gl.bufferData(gl.ARRAY_BUFFER, new Float32Array([-1, -1, -1, 1, 1, -1, 1, 1]), gl.STATIC_DRAW);
    gl.enableVertexAttribArray(0);
    gl.vertexAttribPointer(0, 2, gl.FLOAT, false, 0, 0);
    gl.viewport(0, 0, 1280, 720);

    const time = (program, view) => {
        const place = (name) => gl.getUniformLocation(program, name);
        gl.useProgram(program);
        gl.uniform2f(place('uResolution'), 1280, 720);
        gl.uniform1f(place('uDeviceScale'), 1);
        gl.uniform4fv(place('uFractalBounds'), view.bounds);
        gl.uniform1i(place('uFractalType'), view.type);
        gl.uniform1f(place('uDwell'), 256);
        const pixel = new Uint8Array(4);
        const finish = () => gl.readPixels(0, 0, 1, 1, gl.RGBA, gl.UNSIGNED_BYTE, pixel);
        finish();
        const begin = performance.now();
        gl.drawArrays(gl.TRIANGLE_STRIP, 0, 4);
        finish();
        return performance.now() - begin;
    };
    const times = drawn.map(() => programs.map(() => []));
    // The first run pays for pages and caches.
    for (let run = 0; run <= runs; ++run) {
        drawn.forEach((view, v) => programs.forEach((program, p) => {
            const milliseconds = time(program, view);
            if (run > 0) times[v][p].push(milliseconds);
        }));
    }
    return times;
}

async function fractal(bench) {
    const times = await withPage(bench, (page) => page.evaluate(timeShaders, {
        vertex: text('resources/Shader.vsh'),
        fragments: [text('resources/Shader.fsh'), text('bench/fractal_naive.fsh')],
        drawn: views.map(({bounds, type}) => ({bounds, type})),
        runs: bench.runs,
    }));
    console.log('view                  shader ms  plain ms   faster (wanted)');
    views.forEach((view, v) => {
        const [shader, plain] = times[v].map(median);
        const faster = plain / shader;
        console.log(`${view.name.padEnd(20)} ${fixed(shader).padStart(10)} ${fixed(plain).padStart(9)} ` +
            `${fixed(faster).padStart(8)} (${view.wanted})  ${faster >= view.wanted ? 'met' : 'missed'}`);
    });
}

async function main() {
    const sections = {weight, start, frames, fractal};
    const {values, positionals} = parseArgs({
        allowPositionals: true,
        options: {site: {type: 'string', default: join(root, 'build/web/site')}, runs: {type: 'string', default: '7'}},
    });
    const wanted = positionals.length ? positionals : Object.keys(sections);
    const server = await serve(values.site);
    const browser = await chromium.launch({executablePath: '/usr/bin/chromium', args: flags});
    try {
        const url = `http://localhost:${server.address().port}/`;
        for (const name of wanted) await sections[name]({browser, url, site: values.site, runs: Number(values.runs)});
    } finally {
        await browser.close();
        server.closeAllConnections();
        server.close();
    }
}

await main();
