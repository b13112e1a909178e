// The first seconds: the picture, its weight on the wire, the policy, and browsers that cannot run the app.
// Pictures of each device are kept in build/web/pictures, for people to look at.
import assert from 'node:assert/strict';
import {existsSync, readdirSync, readFileSync} from 'node:fs';
import {join} from 'node:path';
import {test} from 'node:test';
import {brotliCompressSync, gzipSync} from 'node:zlib';
import {desktop, keepPicture, launch, look, newPage, openApp, phone, sharp, shared, site, tablet, untilStarted,
    untilView, upright} from './browser.mjs';

/** Places of the plane, and whether the set has them; the picture is 3 high with -1 in its middle. */
const knownPoints = [
    {x: 0, y: 0, inside: true},
    {x: -1, y: 0, inside: true},
    {x: -0.2, y: 0.5, inside: true},
    {x: -0.2, y: -0.5, inside: true},
    {x: 0.6, y: 0, inside: false},
    {x: -2.2, y: 0.4, inside: false},
    {x: -0.8, y: 0.9, inside: false},
    {x: 0.1, y: -1.2, inside: false},
];

const devices = {phone: sharp(phone), upright: sharp(upright), tablet: sharp(tablet), desktop};

for (const [name, device] of Object.entries(devices)) {
    test(`${name}: the first view is the whole set, upright for who holds it`, async (t) => {
        const page = await openApp(t, '/', {device});
        await untilView(page);
        await page.waitForTimeout(500);
        await keepPicture(page, `${name}-start`);
        const {width, height} = device.viewport;
        const pixels = Math.max(width, height) * device.deviceScaleFactor;
        assert.equal(await page.evaluate(() => document.getElementById('screen').width), pixels, 'it is sharp');
        const turned = name === 'upright';
        const [w, h] = turned ? [height, width] : [width, height];
        const picture = await look(page);
        for (const {x, y, inside} of knownPoints) {
            const [px, py] = [w / 2 + (x + 1) * h / 3, h / 2 + y * h / 3];
            const [cx, cy] = turned ? [width - py, px] : [px, py];
            const colour = picture.at(cx, cy);
            assert.equal(picture.isBlack(cx, cy), inside, `${x}, ${y} is ${colour}`);
            assert.notDeepEqual(colour, [255, 0, 255], `${x}, ${y} is magenta`);
        }
    });
}

test('another size of the window is filled at once, and at its scale', async (t) => {
    const page = await openApp(t, '/', {device: sharp(phone)});
    await page.setViewportSize({width: 600, height: 300});
    await page.waitForFunction(() => document.getElementById('screen').width === 1800);
    await page.waitForTimeout(500);
    const before = await look(page);
    assert.ok(before.isBlack(300 + 100, 150), 'the set is where the new size has it');
    await page.setViewportSize({width: 300, height: 600});
    await page.waitForFunction(() => document.documentElement.style.getPropertyValue('--turn').includes('rotate'));
    await page.waitForTimeout(500);
    const after = await look(page);
    assert.ok(after.isBlack(150, 300 + 100), 'and turned where the screen is upright');
});

test('what is loaded until the first frame is light, and named once', async (t) => {
    const page = await newPage(t);
    const loaded = [];
    page.on('request', (request) => loaded.push(new URL(request.url()).pathname));
    await page.goto(shared.url);
    await untilStarted(page);
    // The browser may ask for the page's icon once more, for the manifest.
    const again = loaded.filter((path, i) => loaded.indexOf(path) !== i && !path.startsWith('/icons/'));
    assert.deepEqual(again, [], 'these were loaded twice');
    const preloaded = readFileSync(join(site, 'index.html'), 'utf8');
    const others = ['/page.js', '/zentaro.js', '/sw.js'];
    const modules = loaded.filter((path) => path.endsWith('.js') && !others.includes(path));
    assert.deepEqual(modules.filter((path) => !preloaded.includes(`"modulepreload" href="${path}"`)), [],
        'these wait for the script that names them');
    const weigh = (compress) => {
        const file = (path) => readFileSync(join(site, path === '/' ? 'index.html' : path));
        const weights = [...new Set(loaded)].map((path) => [path, compress(file(path))]);
        const sum = (of) => of.reduce((bytes, [, data]) => bytes + data.length, 0);
        return {program: sum(weights.filter(([path]) => /\.(js|wasm)$/.test(path))), all: sum(weights)};
    };
    const weight = {gzip: weigh((data) => gzipSync(data, {level: 9})), brotli: weigh(brotliCompressSync)};
    t.diagnostic(`bytes: ${JSON.stringify(weight)}`);
    for (const {program, all} of Object.values(weight)) {
        assert.ok(program < 300e3, `WebAssembly and script weigh ${program} bytes`);
        assert.ok(all < 400e3, `everything for the first frame weighs ${all} bytes`);
    }
});

test('the policy holds: no script and no style but the site\'s own files, no evaluation, no frames', async (t) => {
    const page = await openApp(t, '/', {expected: (text) => text.includes('Content Security Policy')});
    const ran = await page.evaluate(async () => {
        const script = document.createElement('script');
        script.textContent = 'window.inlineRan = true';
        document.head.append(script);
        const button = document.createElement('button');
        button.setAttribute('onclick', 'window.handlerRan = true');
        document.body.append(button);
        button.click();
        const style = document.createElement('style');
        style.textContent = '#stage { opacity: 0.5 }';
        document.head.append(style);
        // Not in this page's own world, where the tests may evaluate.
        const evaluated = document.createElement('script');
        evaluated.src = 'data:text/javascript,window.dataRan=true';
        document.head.append(evaluated);
        await new Promise((resolve) => setTimeout(resolve, 300));
        return [window.inlineRan, window.handlerRan, window.dataRan, getComputedStyle(stage).opacity];
    });
    assert.deepEqual(ran, [undefined, undefined, undefined, '1']);
    const response = await page.request.get(shared.url);
    const header = response.headers()['content-security-policy'];
    const meta = await page.locator('meta[http-equiv=Content-Security-Policy]').getAttribute('content');
    assert.equal(header, `${meta}; frame-ancestors 'none'`);
    const advised = readFileSync(join(site, '../../../docs/hosts.md'), 'utf8').replace(/\s+/g, ' ');
    assert.ok(advised.includes(header), 'docs/hosts.md asks other servers for the same');
    assert.ok(!/unsafe-(inline|eval')/.test(meta.replace("'wasm-unsafe-eval'", '')), meta);
});

test('it can be installed: full screen, in landscape, with icons of the sizes that it names', async (t) => {
    const page = await openApp(t);
    const manifest = JSON.parse(readFileSync(join(site, 'manifest.webmanifest'), 'utf8'));
    assert.deepEqual([manifest.display, manifest.orientation, manifest.start_url, manifest.scope],
        ['fullscreen', 'landscape', '/', '/']);
    assert.deepEqual(manifest.icons.map(({purpose}) => purpose).sort(), ['any', 'any', 'maskable']);
    for (const {src, sizes} of manifest.icons) {
        const png = readFileSync(join(site, src));
        assert.equal(`${png.readUInt32BE(16)}x${png.readUInt32BE(20)}`, sizes, src);
    }
    const devtools = await page.context().newCDPSession(page);
    const {errors} = await devtools.send('Page.getAppManifest');
    assert.deepEqual(errors, []);
});

test('the service worker keeps all that the page needs, and nothing that there is not', () => {
    const text = readFileSync(join(site, 'sw.js'), 'utf8');
    const kept = [...text.match(/const shell = \[([^\]]+)\]/)[1].matchAll(/'([^']+)'/g)].map(([, path]) => path);
    for (const path of kept) assert.ok(path === '/' || existsSync(join(site, path)), path);
    const needed = readdirSync(site).filter((name) => /\.(js|css|wasm|webmanifest)$/.test(name) && name !== 'sw.js');
    assert.deepEqual(needed.filter((name) => !kept.includes(`/${name}`)), [], 'these are missing offline');
    assert.doesNotMatch(text, /@ZENTARO/);
});

for (const {lack, flags, prepare} of [
    {lack: 'WebGL', flags: ['--disable-3d-apis'], prepare: () => {}},
    {lack: 'WebAssembly', flags: [], prepare: () => delete globalThis.WebAssembly},
]) {
    test(`without ${lack} there is a friendly sentence and a picture of the set`, async (t) => {
        const browser = await launch(...flags);
        t.after(() => browser.close());
        const page = await newPage(t, {browser});
        await page.addInitScript(prepare);
        await page.goto(shared.url);
        const sentence = page.locator('#sorry p');
        await sentence.waitFor({state: 'visible'});
        assert.match(await sentence.textContent(), /WebGL and WebAssembly/);
        await page.waitForFunction(() => document.querySelector('#sorry img').naturalWidth > 0);
        assert.ok(await page.locator('#screen').isHidden());
        await keepPicture(page, `without-${lack.toLowerCase()}`);
    });
}

test('without scripts there is a sentence too', async (t) => {
    const page = await newPage(t, {context: {javaScriptEnabled: false}});
    await page.goto(shared.url);
    const box = await page.locator('noscript .sorry p').boundingBox();
    assert.ok(box?.height > 0, 'the sentence is on the screen');
});

test('a program that cannot be loaded, or breaks, says so in words', async (t) => {
    const expected = (text) => /status of 503|RuntimeError|unreachable/.test(text);
    const page = await newPage(t, {expected});
    await page.route('**/zentaro.wasm', (route) => route.fulfill({status: 503, body: ''}));
    await page.goto(shared.url);
    await page.getByText('could not be loaded').waitFor({state: 'visible'});

    const broken = await openApp(t, '/', {expected});
    await broken.evaluate(() => {
        Module._zentaroResize = () => {
            throw new WebAssembly.RuntimeError('unreachable');
        };
    });
    await broken.setViewportSize({width: 700, height: 350});
    await broken.getByText('a fault of its own').waitFor({state: 'visible'});
});
