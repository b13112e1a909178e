// Links: deep links, the address that follows, back and forward, pasted and dropped ones, and hostile text.
// An address never says anything but what is on the screen.
import assert from 'node:assert/strict';
import {test} from 'node:test';
import {assertClose, desktop, look, openApp, phone, shared, untilRests, untilStarted,
    untilView} from './browser.mjs';

const near = (view, type, x, y) => view.type === type && Math.abs(view.x - x) < 0.01 && Math.abs(view.y - y) < 0.01;

test('a link opens at its view, from the first frame on', async (t) => {
    const page = await openApp(t, '/mandelbrot/-0.2/-0.1/0.0/0.1', {device: desktop, init: () => {
        window.paths = [];
        const replace = history.replaceState;
        history.replaceState = (...values) => {
            window.paths.push(values[2]);
            return replace.apply(history, values);
        };
    }});
    assert.ok((await look(page)).isBlack(640, 30), 'the view is inside of the set, the top view is not');
    await page.waitForTimeout(2000);
    const view = await untilView(page);
    assert.ok(near(view, 'mandelbrot', -0.1, 0), page.url());
    assertClose(view.height, 0.2, 1e-4, 'its height');
    const wrong = (await page.evaluate(() => window.paths)).filter((path) => !path.startsWith('/mandelbrot/-0.'));
    assert.deepEqual(wrong, []);
});

test('what is copied from the address bar opens as the same view', async (t) => {
    const page = await openApp(t, '/julia/-0.5/-0.25/0.5/0.25', {device: phone});
    await untilView(page, (view) => view.type === 'julia');
    await page.waitForTimeout(1200);
    const address = page.url();
    await page.goto(address);
    await untilStarted(page);
    await page.waitForTimeout(2500);
    assert.equal(page.url(), address);
});

test('addresses are replaced, not added, at most once a second', async (t) => {
    const page = await openApp(t, '/', {device: desktop, init: () => {
        window.times = [];
        for (const name of ['replaceState', 'pushState']) {
            const change = history[name];
            history[name] = (...values) => {
                window.times.push(performance.now());
                return change.apply(history, values);
            };
        }
    }});
    const before = await page.evaluate(() => history.length);
    for (const type of ['julia', 'mandelbrot', 'julia', 'mandelbrot']) {
        await page.keyboard.press('f');
        await untilView(page, (view) => view.type === type, type);
    }
    const {length, times} = await page.evaluate(() => ({length: history.length, times: window.times}));
    assert.equal(length, before);
    assert.ok(times.length >= 4, 'the address follows');
    const pauses = times.slice(1).map((time, i) => time - times[i]);
    assert.ok(pauses.every((pause) => pause > 990), `pauses ${pauses}`);
});

test('a pasted link opens; back and forward go from view to view', async (t) => {
    const page = await openApp(t, '/', {device: desktop});
    const top = await untilView(page);
    const paste = (text) => page.evaluate((pasted) => {
        const clipboardData = new DataTransfer();
        clipboardData.setData('text/plain', pasted);
        document.body.dispatchEvent(new ClipboardEvent('paste', {clipboardData, bubbles: true, cancelable: true}));
    }, text);
    const host = new URL(shared.url).host;
    await paste(`http://${host}/mandelbrot/-0.8/0.0/-0.6/0.2`);
    await untilView(page, (view) => near(view, 'mandelbrot', -0.7, 0.1), 'the first link');
    await paste(`http://${host}/julia/-0.1/-0.1/0.1/0.1`);
    await untilView(page, (view) => near(view, 'julia', 0, 0), 'the second link');
    await page.goBack();
    await untilView(page, (view) => near(view, 'mandelbrot', -0.7, 0.1), 'back');
    await page.waitForTimeout(1200);
    await page.goBack();
    await untilView(page, (view) => near(view, 'mandelbrot', top.x, top.y), 'back to the start');
    await page.waitForTimeout(1200);
    await page.goForward();
    await untilView(page, (view) => near(view, 'mandelbrot', -0.7, 0.1), 'forward');
    await page.waitForTimeout(800);
    const picture = await look(page);
    assert.ok(picture.at(640, 360).some((part) => part > 0) || picture.isBlack(640, 360));
    const before = await page.evaluate(() => history.length);
    await paste('http://elsewhere.example/mandelbrot/-0.1/-0.1/0.1/0.1');
    await paste('no link at all <img src=x onerror=alert(1)>');
    await untilRests(page, (view) => near(view, 'mandelbrot', -0.7, 0.1), 'what is no link of ours changes nothing');
    assert.equal(await page.evaluate(() => history.length), before);
});

test('a dropped link opens, and a dropped picture the view that it names, in its palette', async (t) => {
    const page = await openApp(t, '/', {device: desktop});
    await untilView(page);
    await page.evaluate((link) => {
        const dataTransfer = new DataTransfer();
        dataTransfer.setData('text/uri-list', `# a view\r\n${link}\r\n`);
        document.body.dispatchEvent(new DragEvent('drop', {dataTransfer, bubbles: true, cancelable: true}));
    }, `${shared.url}/mandelbrot/-0.8/0.0/-0.6/0.2`);
    await untilView(page, (view) => near(view, 'mandelbrot', -0.7, 0.1), 'the dropped link');
    await page.waitForTimeout(1200);
    const drop = (name, bytes) => page.evaluate(([fileName, content]) => {
        const dataTransfer = new DataTransfer();
        dataTransfer.items.add(new File([new Uint8Array(content)], fileName));
        dataTransfer.setData('text/uri-list', 'http://elsewhere.example/');
        document.body.dispatchEvent(new DragEvent('drop', {dataTransfer, bubbles: true, cancelable: true}));
    }, [name, bytes]);
    const comment = 'Type: julia\nBounds: {{-0.4, -0.1}, {0.4, 0.2}}\nPalette: 3\n';
    const letters = [...comment].map((letter) => letter.charCodeAt(0));
    await drop('view.jpg', [0xFF, 0xD8, 0xFF, 0xFE, 0, letters.length + 2, ...letters]);
    await untilView(page, (view) => near(view, 'julia', -0.2, 0), 'the dropped picture');
    assert.match(await page.evaluate(() => Object.values(localStorage).join()), /"fractalColoring": ?3/);
    await drop('none.png', []);
    await drop('other.jpg', [0xFF, 0xD8, 0xFF, 0xD9]);
    await page.waitForTimeout(2500);
    assert.ok(near(await untilView(page), 'julia', -0.2, 0), 'what names no view changes nothing');
    await page.goBack();
    await untilView(page, (view) => near(view, 'mandelbrot', -0.7, 0.1), 'back to what was before');
});

test('copying gives the link of what is shown, with the page\'s own host', async (t) => {
    const page = await openApp(t, '/mandelbrot/-0.8/0.0/-0.6/0.2',
        {device: desktop, context: {permissions: ['clipboard-read', 'clipboard-write']}});
    const path = new URL((await untilView(page), page.url())).pathname;
    await page.keyboard.press('Control+c');
    await page.waitForTimeout(500);
    const copied = await page.evaluate(() => navigator.clipboard.readText());
    assert.equal(copied, `${new URL(shared.url).origin}${path}`);
});

test('queries and fragments change nothing, and do not stay', async (t) => {
    const hostile = '?<script>alert(1)</script>#<img src=x onerror=alert(1)>';
    for (const rest of ['?x1=5&type=julia', '#/julia/-1/-1/1/1', hostile]) {
        const page = await openApp(t, `/mandelbrot/-0.8/0.0/-0.6/0.2${rest}`);
        const view = await untilView(page);
        assert.ok(near(view, 'mandelbrot', -0.7, 0.1), rest);
        await page.evaluate(() => {
            location.hash = '/julia/-1/-1/1/1';
        });
        await page.waitForTimeout(3500);
        assert.ok(near(await untilView(page), 'mandelbrot', -0.7, 0.1), `${rest} and a fragment later`);
        await page.close();
    }
});

test('a path that names no view shows the top, and the address says so', async (t) => {
    const paths = ['/mandelbrot/a/b/c/d', '/mandelbrot/1/1/-1/-1', '/mandelbrot/-9/-9/9/9', '/burning/-1/-1/1/1', '/x',
        '/index.html', '/%00', '/%E0%A4%A', '/<script>alert(1)</script>', '/..%2f..', `/${'a/'.repeat(3000)}`,
        '//elsewhere.example/julia/-1/-1/1/1', '/mandelbrot/nan/inf/1e39/-1e39'];
    for (const path of paths) {
        const page = await openApp(t, path);
        const view = await untilView(page, () => true, path.slice(0, 60));
        assertClose(view.height, 3, 1e-4, `the height for ${path.slice(0, 60)}`);
        await page.close();
    }
});

test('a bad address that is entered in the running page gives way to that of what is shown', async (t) => {
    const page = await openApp(t, '/julia/-0.1/-0.1/0.1/0.1');
    await untilView(page, (view) => view.type === 'julia');
    await page.waitForTimeout(1200);
    await page.evaluate(() => {
        history.pushState(null, '', '/nowhere/at/all');
        history.pushState(null, '', '/nowhere/else');
        history.back();
    });
    await page.waitForFunction(() => location.pathname === '/nowhere/at/all');
    await untilView(page, () => true, 'an address of a view');
});
