// What the browser reports of fingers, mouse, wheel and keys, and what of it reaches the app.
// Places must be the app's also where the page is turned; nothing may be left pressed.
import assert from 'node:assert/strict';
import {test} from 'node:test';
import {desktop, fingers, listen, openApp, phone, told, upright} from './browser.mjs';

const began = 0, moved = 1, ended = 2, cancelled = 3;
const pointers = (calls) => calls.filter(([name]) => name === 'zentaroPointer').map((call) => call.slice(1));

for (const {name, device, client, app} of [
    {name: 'on its side', device: phone, client: [100, 50], app: [100, 50]},
    {name: 'upright', device: upright, client: [100, 50], app: [50, 290]},
]) {
    test(`a phone held ${name}: fingers arrive at the app's places, with one id from landing to lift`, async (t) => {
        const page = await openApp(t, '/', {device});
        await listen(page, 'zentaroPointer');
        const hand = await fingers(page);
        await hand.down(client);
        await hand.move([client[0] + 40, client[1]]);
        await hand.up();
        const calls = pointers(await told(page));
        assert.deepEqual(calls.map(([phase]) => phase), [began, moved, ended]);
        assert.deepEqual(calls[0].slice(2, 4), app);
        const ids = new Set(calls.map(([, id]) => id));
        assert.equal(ids.size, 1);
        const times = calls.map((call) => call[4]);
        assert.ok(times.every((time, i) => i === 0 || time >= times[i - 1]) && times[0] > 0, `times ${times}`);
    });
}

test('several fingers keep their own ids; a cancelled one ends as cancelled', async (t) => {
    const page = await openApp(t);
    await listen(page, 'zentaroPointer');
    const hand = await fingers(page);
    await hand.down([100, 100]);
    await hand.down([100, 100], [300, 120]);
    await hand.cancel();
    const calls = pointers(await told(page));
    assert.deepEqual(calls.map(([phase]) => phase), [began, began, cancelled, cancelled]);
    assert.notEqual(calls[0][1], calls[1][1]);
    assert.deepEqual(calls.slice(2).map(([, id]) => id).sort(), [calls[0][1], calls[1][1]].sort());
});

test('the mouse is one finger while its first button is down, also when another one stays down', async (t) => {
    const page = await openApp(t, '/', {device: desktop});
    await listen(page, 'zentaroPointer');
    await page.mouse.move(200, 200);
    await page.mouse.down({button: 'right'});
    await page.mouse.up({button: 'right'});
    assert.deepEqual(pointers(await told(page)), [], 'moves and other buttons are none');
    await page.mouse.down();
    await page.mouse.move(240, 200);
    await page.mouse.down({button: 'right'});
    await page.mouse.up();
    await page.mouse.move(300, 200);
    await page.mouse.up({button: 'right'});
    assert.deepEqual(pointers(await told(page)).map(([phase]) => phase), [began, moved, ended]);
});

test('a hidden page has no fingers on it', async (t) => {
    const page = await openApp(t);
    await listen(page, 'zentaroPointer', 'zentaroVisibility');
    const hand = await fingers(page);
    await hand.down([100, 100]);
    await page.evaluate(() => {
        Object.defineProperty(document, 'hidden', {get: () => true, configurable: true});
        document.dispatchEvent(new Event('visibilitychange'));
    });
    await hand.up();
    const calls = await told(page);
    assert.deepEqual(calls.map(([name, first]) => [name, first]),
        [['zentaroPointer', began], ['zentaroPointer', cancelled], ['zentaroVisibility', 0]]);
});

test('turning the phone takes the fingers off it: their places are others from then on', async (t) => {
    const page = await openApp(t);
    await listen(page, 'zentaroPointer');
    const hand = await fingers(page);
    await hand.down([100, 100]);
    await page.setViewportSize(upright.viewport);
    await page.waitForFunction(() => window.told.length > 1);
    await hand.move([150, 150]);
    await hand.up();
    assert.deepEqual(pointers(await told(page)).map(([phase]) => phase), [began, cancelled]);
});

test('wheels count in notches away from the user, pinches on a trackpad as factors', async (t) => {
    const page = await openApp(t, '/', {device: desktop});
    await listen(page, 'zentaroWheel', 'zentaroMagnify');
    const turn = (options) => page.evaluate((values) => {
        const event = new WheelEvent('wheel', {clientX: 10, clientY: 20, cancelable: true, bubbles: true, ...values});
        document.getElementById('screen').dispatchEvent(event);
        return event.defaultPrevented;
    }, options);
    const cases = [
        [{deltaY: -100}, ['zentaroWheel', 10, 20, 1]],
        [{deltaY: 6, deltaMode: 1}, ['zentaroWheel', 10, 20, -2]],
        [{deltaY: -1, deltaMode: 2}, ['zentaroWheel', 10, 20, 1]],
        [{deltaY: -10, ctrlKey: true}, ['zentaroMagnify', 10, 20, Math.exp(0.1)]],
        [{deltaY: 120, ctrlKey: true}, ['zentaroMagnify', 10, 20, Math.exp(-0.25)]],
    ];
    for (const [event] of cases) assert.ok(await turn(event), `the browser scrolls by ${JSON.stringify(event)}`);
    await turn({deltaX: 50});
    const calls = await told(page);
    assert.deepEqual(calls.map((call) => call.slice(0, 4)), cases.map(([, call]) => call));
});

test('keys that the app uses are its own, all others the browser\'s', async (t) => {
    const page = await openApp(t, '/', {device: desktop});
    await listen(page, 'zentaroKey');
    const takenBy = (options) => page.evaluate((values) => {
        const event = new KeyboardEvent('keydown', {cancelable: true, bubbles: true, ...values});
        document.body.dispatchEvent(event);
        return event.defaultPrevented ? 'app' : 'browser';
    }, options);
    const cases = [
        [{key: 'c'}, 'app'],
        [{key: 'C', shiftKey: true}, 'app'],
        [{key: '0'}, 'app'],
        [{key: 'ArrowLeft', repeat: true}, 'app'],
        [{key: 'q'}, 'browser'],
        [{key: 'F5'}, 'browser'],
        [{key: 'r', ctrlKey: true}, 'browser'],
        [{key: '0', ctrlKey: true}, 'browser'],
        [{key: 'c', altKey: true}, 'browser'],
        [{key: 'v', ctrlKey: true}, 'browser'],
        [{key: 'Tab'}, 'browser'],
    ];
    for (const [event, owner] of cases) assert.equal(await takenBy(event), owner, JSON.stringify(event));
});

test('nothing of the browser\'s own happens: menu, selection, scrolling, zooming', async (t) => {
    const page = await openApp(t);
    const prevented = await page.evaluate(() => {
        const screen = document.getElementById('screen');
        return ['contextmenu', 'selectstart', 'dragstart', 'touchstart', 'touchmove', 'gesturestart', 'mousedown']
            .filter((type) => screen.dispatchEvent(new Event(type, {bubbles: true, cancelable: true})));
    });
    assert.deepEqual(prevented, [], 'these kept their default');
    const hand = await fingers(page);
    await hand.glide([[400, 300]], [[400, 60]], {steps: 5});
    await hand.up();
    for (let i = 0; i < 2; ++i) await page.touchscreen.tap(600, 150);
    const state = await page.evaluate(() => ({
        scrolled: [scrollX, scrollY],
        zoomed: visualViewport.scale,
        selected: String(getSelection()),
        room: document.documentElement.scrollHeight - innerHeight,
    }));
    assert.deepEqual(state, {scrolled: [0, 0], zoomed: 1, selected: '', room: 0});
});
