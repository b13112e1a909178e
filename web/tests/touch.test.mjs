// Drag, throw, pinch and the pilot, through the browser's real touch input.
// The view is read from the address, which follows when it rests.
import assert from 'node:assert/strict';
import {test} from 'node:test';
import {assertClose, button, differences, fingers, keepPicture, look, openApp, patience, phone, tablet, untilRests,
    untilView, upright} from './browser.mjs';

const places = [
    {name: 'phone', device: phone},
    {name: 'upright', device: upright},
    {name: 'tablet', device: tablet},
];

/** A place of the app, where the browser's window has it. */
const clientOf = ({viewport: {width, height}}) => (x, y) => height > width ? [width - y, x] : [x, y];
const shortSide = ({viewport: {width, height}}) => Math.min(width, height);

for (const {name, device} of places) {
    test(`${name}: the picture follows the finger and stays where it is let go`, async (t) => {
        const page = await openApp(t, '/', {device});
        const start = await untilView(page);
        const at = clientOf(device);
        const hand = await fingers(page);
        await hand.glide([at(300, 150)], [at(400, 200)]);
        // The speed of a throw is that of the last moments.
        for (let i = 0; i < 10; ++i) {
            await page.waitForTimeout(20);
            await hand.move(at(400, 200));
        }
        await hand.up();
        const unit = start.height / shortSide(device);
        const moved = await untilRests(page, (view) => view.x < start.x - 20 * unit, 'a dragged view');
        assertClose(moved.height, start.height, 1e-4, 'the height');
        assertClose(start.x - moved.x, 100 * unit, 16 * unit, 'the way to the left');
        assertClose(start.y - moved.y, 50 * unit, 12 * unit, 'the way up');
    });

    test(`${name}: a throw glides on`, async (t) => {
        const page = await openApp(t, '/', {device});
        const start = await untilView(page);
        const at = clientOf(device);
        const hand = await fingers(page);
        await hand.fling(at(500, 200), at(200, 200));
        const unit = start.height / shortSide(device);
        const thrown = await untilRests(page, (view) => view.x > start.x + 20 * unit, 'a thrown view');
        assert.ok(thrown.x - start.x > 330 * unit, `${(thrown.x - start.x) / unit} points for a finger's 300`);
    });

    test(`${name}: two fingers that spread draw the plane near, about their middle`, async (t) => {
        const page = await openApp(t, '/', {device});
        const start = await untilView(page);
        const at = clientOf(device);
        const hand = await fingers(page);
        await hand.glide([at(360, 180), at(440, 180)], [at(300, 180), at(500, 180)], {steps: 24});
        await hand.up();
        const near = await untilRests(page, (view) => view.height < start.height * 0.8, 'a nearer view');
        const factor = start.height / near.height;
        assert.ok(factor > 1.8 && factor < 3, `${factor} times nearer for fingers that spread from 80 to 200`);
        const unit = start.height / shortSide(device);
        const [w, h] = [Math.max(...Object.values(device.viewport)), shortSide(device)];
        const plane = (view, x, y) => [view.x + (x - w / 2) * view.height / h, view.y + (y - h / 2) * view.height / h];
        const [before, after] = [plane(start, 400, 180), plane(near, 400, 180)];
        assertClose(after[0], before[0], 25 * unit, 'the plane under their middle');
        assertClose(after[1], before[1], 25 * unit, 'the plane under their middle');
    });
}

test('a tap sends the pilot off and hides the toolbar; the next one brings it back and stops', async (t) => {
    const page = await openApp(t, '/', {device: phone});
    await untilView(page);
    await button(page, 'About').waitFor({state: 'attached'});
    const start = await look(page);
    await page.touchscreen.tap(300, 120);
    await button(page, 'About').waitFor({state: 'detached', timeout: patience});
    await page.waitForTimeout(6000);
    const flight = await look(page);
    assert.ok(differences(start, flight) > 844 * 390 / 10, 'nothing flew');
    await keepPicture(page, 'phone-flight');
    await page.touchscreen.tap(300, 120);
    await button(page, 'About').waitFor({state: 'attached', timeout: patience});
    const there = await untilView(page, (view) => view.height < 2.9, 'the view that the flight came to');
    await page.waitForTimeout(1500);
    assert.equal((await untilView(page)).height, there.height, 'it flies no more');
});

test('a second finger midway makes no jump, a lost one no throw', async (t) => {
    const page = await openApp(t, '/', {device: phone});
    const start = await untilView(page);
    const hand = await fingers(page);
    await hand.glide([[400, 200]], [[300, 200]], {steps: 10});
    await hand.move([300, 200], [500, 100]);
    await hand.down([300, 200], [500, 100]);
    await page.waitForTimeout(100);
    await hand.cancel();
    const end = await untilRests(page, (view) => view.x > start.x + 0.2, 'a dragged view');
    assertClose(end.x - start.x, 100 * start.height / 390, 20 * start.height / 390, 'the way');
    await page.waitForTimeout(1500);
    assertClose((await untilView(page)).x, end.x, 1e-6, 'it rests');
});
