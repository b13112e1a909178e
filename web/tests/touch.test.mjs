// Drag, throw, pinch and the pilot, through the browser's real touch input.
// The view is read from the address, which follows when it rests.
import {test} from 'node:test';
import {button, close, fingers, keepPicture, openApp, phone, tablet, untilLooks, untilRests, untilView, upright} from
    './browser.mjs';

const still = 300;  // ms on one place; the speed of a throw is that of the last moments

for (const [name, {viewport: {width, height}}, device] of [
    ['phone', phone, phone], ['upright phone', upright, upright], ['tablet', tablet, tablet],
]) {
    /** A place of the app, where the browser's window has it. */
    const at = (x, y) => height > width ? [width - y, x] : [x, y];
    const unitOf = (view) => view.height / Math.min(width, height);

    test(`${name}: the picture follows one finger, comes near between two, and glides on when thrown`, async (t) => {
        const page = await openApp(t, '/', {device});
        const start = await untilView(page);
        const hand = await fingers(page);
        const unit = unitOf(start);

        await hand.glide([at(300, 150)], [at(400, 200)]);
        await page.waitForTimeout(still);
        await hand.up();
        const moved = await untilRests(page, (view) => close(start.x - view.x, 100 * unit, 16 * unit) &&
            close(start.y - view.y, 50 * unit, 12 * unit) && close(view.height, start.height, 1e-4),
        'the picture 100 points to the right, 50 down');

        await hand.glide([at(360, 180), at(440, 180)], [at(300, 180), at(500, 180)]);
        await page.waitForTimeout(still);
        await hand.up();
        const near = await untilRests(page, (view) => {
            const factor = moved.height / view.height;
            return factor > 1.8 && factor < 3 && close(view.x, moved.x, unit) && close(view.y, moved.y, unit);
        }, 'near by about 200 / 80, with the same middle');

        await hand.fling(at(500, 200), at(200, 200));
        await untilView(page, (view) => view.x - near.x > 330 * unitOf(near), 'further than the finger\'s 300 points');
    });
}

test('a tap sends the pilot off and hides the toolbar; the next one brings it back and stops', async (t) => {
    const page = await openApp(t);
    await untilView(page);
    await button(page, 'About').waitFor({state: 'attached'});
    const flies = await untilLooks(page, 0.1, 'the flight');
    await page.touchscreen.tap(300, 120);
    await button(page, 'About').waitFor({state: 'detached'});
    await flies();
    await keepPicture(page, 'phone-flight');
    await page.touchscreen.tap(300, 120);
    await button(page, 'About').waitFor({state: 'attached'});
    await untilRests(page, (view) => view.height < 2.9, 'the view that the flight came to');
});

test('a second finger midway makes no jump, a lost one no throw', async (t) => {
    const page = await openApp(t);
    const start = await untilView(page);
    const hand = await fingers(page);
    await hand.glide([[400, 200]], [[300, 200]]);
    await hand.down([300, 200], [500, 100]);
    await hand.cancel();
    const unit = start.height / 390;
    await untilRests(page, (view) => close(view.x - start.x, 100 * unit, 20 * unit), 'a view dragged by 100 points');
});
