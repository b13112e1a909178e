// The toolbar by touch and by name, and the mirror that gives it to screen readers and the keyboard.
// What a button did is read where people would see it: in the picture, the address, the stored settings.
import assert from 'node:assert/strict';
import {test} from 'node:test';
import {assertClose, button, differences, keepPicture, listen, look, openApp, patience, phone, press, tablet, tap, told,
    untilView, upright} from './browser.mjs';

const names = ['Back to the top', 'Share', 'Mandelbrot or Julia', 'Next palette', 'Speed of the colours',
    'Record the screen', 'Autopilot', 'About'];

const settings = (page) => page.evaluate(() => JSON.parse(localStorage.getItem('zentaro.settings') ?? '{}'));

const byTouch = {how: 'by touch', use: (page, name) => tap(page, button(page, name))};
const byName = {how: 'by name', use: press};

for (const {how, use} of [byTouch, byName]) {
    for (const [place, device] of Object.entries({phone, upright, tablet})) {
        test(`${place}, ${how}: fractal, palette, cycling and the way back do what they say`, async (t) => {
            const page = await openApp(t, '/mandelbrot/-1.5/-0.5/-0.5/0.5', {device});
            const start = await untilView(page, (view) => view.height < 1.1);

            await use(page, 'Mandelbrot or Julia');
            const julia = await untilView(page, (view) => view.type === 'julia', 'the Julia set');
            assertClose(julia.x, start.x, 1e-3, 'the place stays');
            await use(page, 'Mandelbrot or Julia');
            await untilView(page, (view) => view.type === 'mandelbrot', 'the Mandelbrot set');

            const before = await look(page);
            await use(page, 'Next palette');
            await page.waitForTimeout(700);
            const after = await look(page);
            const pixels = before.png.width * before.png.height;
            assert.ok(differences(before, after) > pixels / 20, 'another palette has other colours');
            assert.equal((await settings(page)).fractalColoring, 1);

            await use(page, 'Speed of the colours');
            assert.equal((await settings(page)).fractalColorCycling, 1);
            await use(page, 'Speed of the colours');
            await use(page, 'Speed of the colours');
            assert.equal((await settings(page)).fractalColorCycling, 0);

            await use(page, 'Back to the top');
            const top = await untilView(page, (view) => view.height > 2.9, 'the whole set');
            assertClose(top.height, 3, 1e-4, 'its height');
            assertClose(top.x, -1, 1e-3, 'its middle');
        });

        test(`${place}, ${how}: the other buttons are reached, and the toolbar stays`, async (t) => {
            const page = await openApp(t, '/', {device});
            for (const name of ['Share', 'Record the screen', 'About']) {
                const said = page.waitForEvent('console', {timeout: patience});
                await use(page, name);
                assert.match((await said).text(), /later version|Share|Record|About/i, name);
            }
            assert.ok(await button(page, 'Share').count());
        });
    }
}

test('the mirror has every button once, in order, where the app shows it', async (t) => {
    const page = await openApp(t, '/', {device: phone});
    await button(page, 'About').waitFor({state: 'attached'});
    const buttons = await page.getByRole('button').evaluateAll((all) => all.map((element) => {
        const {x, y, width, height} = element.getBoundingClientRect();
        return {name: element.textContent, x, y, width, height};
    }));
    assert.deepEqual(buttons.map(({name}) => name), names);
    buttons.forEach((at, i) => {
        assert.ok(at.width >= 40 && at.height >= 40, `${at.name} is too small for a finger: ${JSON.stringify(at)}`);
        assert.ok(at.y >= 300 && at.y + at.height <= 390, `${at.name} is in the toolbar`);
        assert.ok(i === 0 || at.x > buttons[i - 1].x, `${at.name} is right of the one before`);
    });
    assert.equal(await page.locator('#mirror [style*="url"], #mirror img, #mirror script').count(), 0);
});

test('Tab walks through it with a ring that is seen; Enter and Space press, and pass nothing on', async (t) => {
    const page = await openApp(t, '/', {device: tablet});
    await button(page, 'About').waitFor({state: 'attached'});
    await listen(page, 'zentaroKey', 'zentaroActivate');
    for (const name of names) {
        await page.keyboard.press('Tab');
        assert.equal(await page.evaluate(() => document.activeElement.textContent), name);
        const ring = await page.evaluate(() => getComputedStyle(document.activeElement).outline);
        assert.match(ring, /solid [3-9]px|[3-9]px.*solid/, `${name} has no ring: ${ring}`);
    }
    await button(page, 'Next palette').focus();
    await page.waitForTimeout(300);
    await keepPicture(page, 'tablet-focus');
    await page.keyboard.press('Enter');
    await page.keyboard.press(' ');
    assert.deepEqual((await told(page)).map(([name]) => name), ['zentaroActivate', 'zentaroActivate']);
    assert.equal((await settings(page)).fractalColoring, 2);
    assert.equal(await page.evaluate(() => document.activeElement.textContent), 'Next palette');
    await page.touchscreen.tap(590, 200);
    assert.equal(await page.evaluate(() => document.activeElement.localName), 'body', 'a finger ends the walk');
});
