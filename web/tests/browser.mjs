// What the tests of the page share: a browser, a server, pages on made-up devices, fingers and pictures.
// Every page that a test opens fails it if the console shows an error or a file comes from elsewhere.
import assert from 'node:assert/strict';
import {mkdirSync, writeFileSync} from 'node:fs';
import {dirname, join} from 'node:path';
import {fileURLToPath} from 'node:url';
import {after, before} from 'node:test';
import {chromium} from 'playwright-core';
import {PNG} from 'pngjs';
import {serve} from '../serve.mjs';

const root = dirname(dirname(dirname(fileURLToPath(import.meta.url))));
export const site = process.env.ZENTARO_SITE ?? join(root, 'build/web/site');
const pictures = join(root, 'build/web/pictures');

const flags = [
    '--no-sandbox', '--use-angle=swiftshader', '--enable-unsafe-swiftshader', '--disable-quic', '--no-first-run',
    '--disable-background-networking', '--disable-component-update', '--disable-sync',
];

export const launch = (...more) =>
    chromium.launch({executablePath: '/usr/bin/chromium', headless: true, args: [...flags, ...more]});

const touchDevice = (width, height) =>
    ({viewport: {width, height}, deviceScaleFactor: 1, hasTouch: true, isMobile: true});

export const phone = touchDevice(844, 390);
export const upright = touchDevice(390, 844);
export const tablet = touchDevice(1180, 820);

/** With the pixels of a real one, which a rasteriser without a GPU takes long to fill: where they matter. */
export const sharp = (device) => ({...device, deviceScaleFactor: device === tablet ? 2 : 3});

export const desktop = {viewport: {width: 1280, height: 720}, deviceScaleFactor: 1};

export const patience = 60000;  // ms; a rasteriser without a GPU, on a busy machine

/** The file's own browser and server. */
export const shared = {browser: null, server: null, url: ''};

before(async () => {
    shared.server = await serve(site);
    shared.url = `http://localhost:${shared.server.address().port}`;
    shared.browser = await launch();
});

after(async () => {
    await shared.browser?.close();
    shared.server?.closeAllConnections();
    shared.server?.close();
});

/** In the page: whoever has no settings yet has seen the tour. */
function countTourAsSeen() {
    try {
        localStorage['zentaro.settings'] ??= '{"MPCoachMarksShown": true}';
    } catch { /* There are browsers without. */ }
}

/** A page whose errors end up as the test's. `expected` takes those that the test itself provokes, `init` runs before
 * the page's scripts. On a first run the app shows its tour. */
export async function newPage(t, options = {}) {
    const {device = phone, context = {}, browser = shared.browser, expected = () => false, firstRun = false, init} =
        options;
    const world = await browser.newContext({...device, ...context});
    if (!firstRun) await world.addInitScript(countTourAsSeen);
    world.setDefaultTimeout(patience);
    if (init) await world.addInitScript(init);
    const page = await world.newPage();
    watch(page, page.errors = [], expected);
    t.after(async () => {
        await world.close();
        assert.deepEqual(page.errors, [], 'the console is clean');
    });
    return page;
}

function watch(page, errors, expected) {
    const add = (text) => expected(text) || errors.push(text);
    page.on('console', (message) => message.type() === 'error' && add(`${message.text()} ${message.location().url}`));
    page.on('pageerror', (error) => add(String(error)));
    page.on('crash', () => add('the page crashed'));
    page.on('request', (request) => {
        const url = new URL(request.url());
        if (!['localhost', ''].includes(url.hostname)) add(`a request to ${url.host}`);
    });
}

export const untilStarted = (page) => page.waitForSelector('html.started', {timeout: patience});

/** The app, started at a path of the site. */
export async function openApp(t, path = '/', options = {}) {
    const page = await newPage(t, options);
    await page.goto((options.url ?? shared.url) + path);
    await untilStarted(page);
    return page;
}

export const button = (page, name) => page.getByRole('button', {name, exact: true});

/** With the finger, at the place where the app shows it. */
export async function tap(page, locator) {
    const box = await locator.boundingBox();
    await page.touchscreen.tap(box.x + box.width / 2, box.y + box.height / 2);
}

/** The way of a screen reader and of the keyboard: by name, without any place. */
export async function press(page, name) {
    await button(page, name).focus();
    await page.keyboard.press('Enter');
}

const viewPattern = /^\/(mandelbrot|julia)((?:\/-?\d+\.\d{6}){4})$/;

/** The view that an address names; null for any other address. */
export function viewOf(address) {
    const url = new URL(address);
    const [, type, edges] = url.pathname.match(viewPattern) ?? [];
    if (!type || url.search || url.hash) return null;
    const [x1, y1, x2, y2] = edges.slice(1).split('/').map(Number);
    return {type, x1, y1, x2, y2, width: x2 - x1, height: y2 - y1, x: (x1 + x2) / 2, y: (y1 + y2) / 2};
}

/** Waits until the address names a view for which `holds`, and answers it. */
export async function untilView(page, holds = () => true, what = 'a view in the address') {
    const end = Date.now() + patience;
    for (;;) {
        const view = viewOf(page.url());
        if (view && holds(view)) return view;
        if (Date.now() > end) assert.fail(`${what}: the address is ${page.url()}`);
        await page.waitForTimeout(50);
    }
}

/** Lets the app draw so many frames, however slow they are. */
export const frames = (page, count) => page.evaluate((wanted) => new Promise((resolve) => {
    const next = () => (wanted-- > 0 ? requestAnimationFrame(next) : resolve());
    next();
}), count);

/** The same, once it has stayed for longer than the next one would take to come: slow frames make rests of their
 * own. */
export async function untilRests(page, holds, what) {
    for (;;) {
        const view = await untilView(page, holds, what);
        const address = page.url();
        await page.waitForTimeout(1600);
        await frames(page, 10);
        if (page.url() === address) return view;
    }
}

export const close = (a, b, tolerance) => Math.abs(a - b) <= tolerance;

export function assertClose(actual, expected, tolerance, what) {
    assert.ok(close(actual, expected, tolerance), `${what}: ${actual}, not ${expected} within ${tolerance}`);
}

/** Fingers through the browser's own touch input. */
export async function fingers(page) {
    const devtools = await page.context().newCDPSession(page);
    const points = (places) => places.map(([x, y], id) => ({x, y, id}));
    const send = (type, places, time = {}) =>
        devtools.send('Input.dispatchTouchEvent', {type, touchPoints: points(places), ...time});
    return {
        down: (...places) => send('touchStart', places),
        move: (...places) => send('touchMove', places),
        up: () => send('touchEnd', []),
        cancel: () => send('touchCancel', []),
        /** One finger lands and leaves at full speed, by its own clock: slow frames do not slow it down. */
        async fling([x1, y1], [x2, y2]) {
            const steps = 12, interval = 0.012;  // s
            const from = Date.now() / 1000 - steps * interval;
            const sent = [send('touchStart', [[x1, y1]], {timestamp: from})];
            for (let step = 1; step <= steps; ++step) {
                const place = [x1 + (x2 - x1) * step / steps, y1 + (y2 - y1) * step / steps];
                sent.push(send('touchMove', [place], {timestamp: from + step * interval}));
            }
            sent.push(send('touchEnd', [], {timestamp: from + (steps + 0.5) * interval}));
            await Promise.all(sent);
        },
        /** All of them from their first places to their last. The app has time to recognise the first part of
         * the way, which tells it what they are up to and does not count, and to draw each of the rest. */
        async glide(from, to, {steps = 12, first = 12} = {}) {
            const at = (share) => from.map(([x, y], i) => [x + (to[i][0] - x) * share, y + (to[i][1] - y) * share]);
            const begun = first / Math.hypot(to[0][0] - from[0][0], to[0][1] - from[0][1]);
            await send('touchStart', from);
            await send('touchMove', at(begun));
            await frames(page, 3);
            for (let step = 1; step <= steps; ++step) {
                await send('touchMove', at(begun + (1 - begun) * step / steps));
                await frames(page, 1);
            }
        },
    };
}

/** From now on the app's calls of these names are kept as window.told, and still made. */
export const listen = (page, ...names) => page.evaluate((wanted) => {
    window.told = [];
    for (const name of wanted) {
        let call = Module['_' + name];
        const listener = (...values) => {
            window.told.push([name, ...values]);
            return call(...values);
        };
        // The first call of an exported function puts another in its place.
        Object.defineProperty(Module, '_' + name, {get: () => listener, set: (next) => { call = next; }});
    }
}, names);

export const told = (page) => page.evaluate(() => window.told);

/** What is on the screen, a pixel a point. Answers functions of places in points. */
export async function look(page, options = {}) {
    const png = PNG.sync.read(await page.screenshot({scale: 'css', ...options}));
    const at = (x, y) => [...png.data.subarray(4 * (Math.round(y) * png.width + Math.round(x)))].slice(0, 3);
    return {png, at, isBlack: (x, y) => at(x, y).every((part) => part === 0)};
}

/** How many pixels of the two differ by more than a rounding. */
export function differences(a, b) {
    let count = 0;
    for (let i = 0; i < a.png.data.length; i += 4) {
        if ([0, 1, 2].some((part) => Math.abs(a.png.data[i + part] - b.png.data[i + part]) > 8)) ++count;
    }
    return count;
}

/** Looks now; what it answers waits until so large a share of the pixels has changed. */
export async function untilLooks(page, share, what) {
    const before = await look(page);
    return async () => {
        const end = Date.now() + patience;
        for (;;) {
            const changed = differences(before, await look(page)) * 4 / before.png.data.length;
            if (changed > share) return;
            if (Date.now() > end) assert.fail(`${what}: ${changed} of the pixels have changed, not ${share}`);
        }
    };
}

/** Kept for people, in all of the device's pixels. */
export async function keepPicture(page, name) {
    mkdirSync(pictures, {recursive: true});
    writeFileSync(join(pictures, `${name}.png`), await page.screenshot());
}
