// What a page goes through: settings, reloads without a network, new versions, lost contexts, hiding, calm.
// Versions are tried on a copy of the site that changes while pages run.
import assert from 'node:assert/strict';
import {cpSync, mkdtempSync, readFileSync, rmSync, writeFileSync} from 'node:fs';
import {tmpdir} from 'node:os';
import {join} from 'node:path';
import {test} from 'node:test';
import {serve} from '../serve.mjs';
import {button, differences, keepPicture, look, openApp, press, sharp, shared, site, tablet, untilStarted,
    untilView} from './browser.mjs';

test('settings come back with the next start', async (t) => {
    const page = await openApp(t);
    await untilView(page);
    await press(page, 'Mandelbrot or Julia');
    await press(page, 'Next palette');
    await press(page, 'Next palette');
    const julia = await untilView(page, (view) => view.type === 'julia');
    await page.waitForTimeout(500);
    const before = await look(page);
    await page.goto(shared.url);
    await untilStarted(page);
    const view = await untilView(page);
    assert.equal(view.type, 'julia');
    assert.equal(view.height, julia.height);
    await page.waitForTimeout(800);
    // The iteration limit follows the machine's speed, and with it the finest filaments.
    const changed = differences(before, await look(page));
    assert.ok(changed < 844 * 390 / 10, `type and palette look as before: ${changed} pixels differ`);
});

test('a browser that refuses to store anything runs the app all the same', async (t) => {
    const page = await openApp(t, '/', {init: () => Object.defineProperty(window, 'localStorage', {
        get() {
            throw new DOMException('refused', 'SecurityError');
        },
    })});
    // Nothing says that the user knows it.
    await press(page, 'Skip');
    await button(page, 'Skip').waitFor({state: 'detached'});
    const before = await look(page);
    await press(page, 'Next palette');
    await page.waitForTimeout(700);
    assert.ok(differences(before, await look(page)) > 844 * 390 / 20);
});

test('damaged settings are none', async (t) => {
    const page = await openApp(t, '/', {init: () => localStorage.setItem('zentaro.settings', '{"fractalType": [1')});
    assert.equal((await untilView(page)).type, 'mandelbrot');
});

/** A site of its own, whose server can be stopped and whose files can change. */
async function ownSite(t) {
    const folder = mkdtempSync(join(tmpdir(), 'zentaro-site-'));
    cpSync(site, folder, {recursive: true});
    const server = await serve(folder);
    const stop = () => {
        server.closeAllConnections();
        server.close();
    };
    t.after(() => {
        stop();
        rmSync(folder, {recursive: true});
    });
    const publish = (version) => {
        const rename = (name, from, to) => {
            const path = join(folder, name);
            const text = readFileSync(path, 'utf8');
            assert.match(text, from);
            writeFileSync(path, text.replace(from, to));
        };
        rename('index.html', /<title>[^<]*/, `<title>Zentaro ${version}`);
        rename('page.js', /^(document\.documentElement\.dataset\.version = .*\n)?/,
            `document.documentElement.dataset.version = '${version}';\n`);
        rename('sw.js', /const version = '[^']*'/, `const version = '${version}'`);
    };
    return {url: `http://localhost:${server.address().port}`, stop, publish};
}

const untilKept = (page) => page.evaluate(async () => {
    const {active} = await navigator.serviceWorker.ready;
    while (active.state !== 'activated') await new Promise((resolve) => setTimeout(resolve, 50));
});

test('without a network it starts again, at any view', async (t) => {
    const own = await ownSite(t);
    const page = await openApp(t, '/mandelbrot/-0.8/0.0/-0.6/0.2', {url: own.url});
    await untilKept(page);
    own.stop();
    await page.reload();
    await untilStarted(page);
    await page.goto(`${own.url}/julia/-0.1/-0.1/0.1/0.1`);
    await untilStarted(page);
    await untilView(page, (view) => view.type === 'julia');
    await button(page, 'Next palette').waitFor({state: 'attached'});
});

const versionOf = (page) => page.evaluate(() => [document.title, document.documentElement.dataset.version]);

/** The browser has found the new version, which waits. */
const untilWaiting = (page) => page.evaluate(async () => {
    const registration = await navigator.serviceWorker.ready;
    await registration.update();
    while (!registration.waiting) await new Promise((resolve) => setTimeout(resolve, 50));
});

test('a new version comes with the next start, whole, and leaves running pages alone', async (t) => {
    const own = await ownSite(t);
    own.publish('one');
    const page = await openApp(t, '/', {url: own.url});
    await untilKept(page);
    await page.reload();
    await untilStarted(page);

    own.publish('two');
    await untilWaiting(page);
    assert.deepEqual(await versionOf(page), ['Zentaro one', 'one'], 'the running page stays');

    const second = await page.context().newPage();
    await second.goto(own.url);
    await untilStarted(second);
    assert.deepEqual(await versionOf(second), ['Zentaro one', 'one'], 'while another runs, the old one starts');
    await second.close();

    await page.reload();
    await page.waitForFunction(() => document.title === 'Zentaro two');
    await untilStarted(page);
    assert.deepEqual(await versionOf(page), ['Zentaro two', 'two'], 'alone, the next start is the new one');
    own.stop();
    await page.reload();
    await untilStarted(page);
    assert.deepEqual(await versionOf(page), ['Zentaro two', 'two']);
    assert.equal((await page.evaluate(() => caches.keys())).length, 1, 'nothing of the old one is kept');
});

test('an update that cannot be loaded whole changes nothing', async (t) => {
    const own = await ownSite(t);
    own.publish('one');
    const page = await openApp(t, '/', {url: own.url, expected: (text) => /404|Failed to/.test(text)});
    await untilKept(page);
    await page.context().route('**/links.js', (route) => route.fulfill({status: 404, body: ''}));
    own.publish('two');
    await page.evaluate(async () => {
        const registration = await navigator.serviceWorker.ready;
        await registration.update().catch(() => {});
        const worker = registration.installing;
        while (worker && worker.state === 'installing') await new Promise((resolve) => setTimeout(resolve, 50));
    });
    own.stop();
    await page.reload();
    await untilStarted(page);
    assert.deepEqual(await versionOf(page), ['Zentaro one', 'one']);
});

test('a lost context is rebuilt: the same view, the same toolbar', async (t) => {
    const page = await openApp(t, '/mandelbrot/-0.8/0.0/-0.6/0.2', {device: sharp(tablet)});
    await untilView(page);
    await page.waitForTimeout(800);
    const before = await look(page);
    const address = page.url();
    await page.evaluate(async () => {
        const screen = document.getElementById('screen');
        const happens = (type) => new Promise((resolve) => screen.addEventListener(type, resolve, {once: true}));
        const loses = screen.getContext('webgl').getExtension('WEBGL_lose_context');
        const lost = happens('webglcontextlost');
        loses.loseContext();
        await lost;
        await new Promise((resolve) => setTimeout(resolve, 300));
        const restored = happens('webglcontextrestored');
        loses.restoreContext();
        await restored;
    });
    await page.waitForTimeout(1500);
    const after = await look(page);
    await keepPicture(page, 'tablet-restored');
    assert.ok(differences(before, after) < 1180 * 820 / 50, `${differences(before, after)} pixels differ`);
    await press(page, 'Next palette');
    await page.waitForTimeout(800);
    assert.ok(differences(after, await look(page)) > 1180 * 820 / 20, 'and it goes on');
    assert.equal(page.url(), address);
});

test('hidden, it asks for no frames; shown again, it goes on', async (t) => {
    const page = await openApp(t, '/', {init: () => {
        window.frames_ = 0;
        const request = requestAnimationFrame;
        window.requestAnimationFrame = (then) => {
            ++window.frames_;
            return request.call(window, then);
        };
    }});
    const framesIn = (time, hidden) => page.evaluate(async ([wait, isHidden]) => {
        Object.defineProperty(document, 'hidden', {get: () => isHidden, configurable: true});
        document.dispatchEvent(new Event('visibilitychange'));
        await new Promise((resolve) => setTimeout(resolve, 300));
        const before = window.frames_;
        await new Promise((resolve) => setTimeout(resolve, wait));
        return window.frames_ - before;
    }, [time, hidden]);
    assert.equal(await framesIn(1000, true), 0);
    assert.ok(await framesIn(1000, false) > 0);
});

test('the screen stays awake while the page is seen, and is asked to stay in landscape', async (t) => {
    const page = await openApp(t, '/', {init: () => {
        window.asked = {locks: [], awake: 0};
        screen.orientation.lock = async (type) => { window.asked.locks.push(type); };
        Object.defineProperty(navigator, 'wakeLock', {value: {
            request: async () => {
                ++window.asked.awake;
                return window.lock = {released: false, release: async () => {}};
            },
        }});
    }});
    const awake = () => page.evaluate(() => window.asked.awake);
    const seen = (state, isLost) => page.evaluate(([visibility, lost]) => {
        // The browser takes the lock back while nobody sees the page.
        window.lock.released ||= lost;
        Object.defineProperty(document, 'visibilityState', {get: () => visibility, configurable: true});
        document.dispatchEvent(new Event('visibilitychange'));
    }, [state, isLost]);
    assert.equal(await awake(), 1);
    await seen('hidden', true);
    assert.equal(await awake(), 1);
    await seen('visible', false);
    assert.equal(await awake(), 2);
    await seen('visible', false);
    assert.equal(await awake(), 2, 'one lock is enough');
    await page.evaluate(() => document.dispatchEvent(new Event('fullscreenchange')));
    assert.deepEqual(await page.evaluate(() => window.asked.locks), ['landscape', 'landscape']);
});

test('who wants less motion gets still colours at the start', async (t) => {
    for (const [reducedMotion, moves] of [['reduce', false], ['no-preference', true]]) {
        const page = await openApp(t, '/', {context: {reducedMotion}, init: () => localStorage.setItem('zentaro.settings',
            JSON.stringify({fractalColorCycling: 4, fractalColoring: 0, fractalType: 1, MPCoachMarksShown: true}))});
        await page.waitForTimeout(1500);
        const before = await look(page);
        await page.waitForTimeout(1500);
        const share = differences(before, await look(page)) / (844 * 390);
        assert.ok(moves ? share > 0.05 : share < 0.001, `${reducedMotion}: ${share} of the pixels changed`);
        await page.close();
    }
});
