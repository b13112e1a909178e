// The tour in the browser: with the first visit, by taps and by name, in its own font, and never again.
// Pictures of each device are kept in build/web/pictures, for people to look at.
import assert from 'node:assert/strict';
import {test} from 'node:test';
import {button, desktop, keepPicture, look, openApp, phone, press, sharp, tablet, untilStarted}
    from './browser.mjs';

const captions = [
    'This will bring you back to the top of the fractal.',
    'Open a share sheet with a snapshot of the fractal and its coordinates!',
    'Toggle between Mandelbrot and Julia sets.',
    'Pick through a few predefined color palettes.',
    'Animate the color palettes!',
    'Toggle ReplayKit recording.',
    'And finally, more\nabout this app.',
];
const caption = (page, i) => page.locator('#mirror p', {hasText: captions[i].split('\n')[0]});
const isViolet = ([red, green, blue]) => red > 100 && blue > red + 20 && green < 140;

for (const [name, device] of Object.entries({phone: sharp(phone), tablet: sharp(tablet), desktop})) {
    test(`${name}: the first visit is shown around by taps, the second is not`, async (t) => {
        const page = await openApp(t, '/', {device, firstRun: true});
        const {width, height} = device.viewport;
        const bottoms = new Set();
        for (let i = 0; i < captions.length; ++i) {
            await caption(page, i).waitFor({state: 'attached'});
            await page.waitForFunction(() => [...document.fonts].every((face) => face.status === 'loaded'));
            await page.waitForTimeout(900);
            const box = await caption(page, i).boundingBox();
            bottoms.add(box.y + box.height);
            await keepPicture(page, `tour-${name}-${i + 1}`);
            assert.ok(isViolet((await look(page)).at(4, height / 2)), `mark ${i + 1} darkens the screen`);
            assert.equal(await button(page, 'Share').count(), 0, 'what lies below cannot be used by name');
            if (device.hasTouch) await page.touchscreen.tap(width / 2, height / 3);
            else await page.mouse.click(width / 2, height / 3);
        }
        assert.equal(bottoms.size, 1, 'captions stand on one line, in the font that arrived late as well');
        await button(page, 'Share').waitFor({state: 'attached'});
        await page.waitForTimeout(500);
        assert.ok(!isViolet((await look(page)).at(4, height / 2)), 'the tour is over');
        await page.reload();
        await untilStarted(page);
        await button(page, 'Share').waitFor({state: 'attached'});
        assert.equal(await button(page, 'Skip').count(), 0);
    });
}

test('keys and names lead through the tour and out of it', async (t) => {
    const page = await openApp(t, '/', {device: desktop, firstRun: true});
    await caption(page, 0).waitFor({state: 'attached'});
    await page.keyboard.press('Space');
    await caption(page, 1).waitFor({state: 'attached'});
    await press(page, 'Next');
    await caption(page, 2).waitFor({state: 'attached'});
    await page.keyboard.press('Escape');
    await button(page, 'Share').waitFor({state: 'attached'});
});

test('no font is loaded for who has seen the tour', async (t) => {
    const page = await openApp(t, '/', {context: {serviceWorkers: 'block'}});
    await page.waitForTimeout(500);
    const loaded = await page.evaluate(() => performance.getEntriesByType('resource').map((entry) => entry.name));
    assert.ok(!loaded.some((name) => name.endsWith('.otf')), loaded.join());
});
