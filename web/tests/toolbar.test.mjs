// The toolbar by touch and by name, and the mirror that gives it to screen readers and the keyboard.
// What a button did is read where people would see it: in the picture, the address, the stored settings.
import assert from 'node:assert/strict';
import {test} from 'node:test';
import {assertClose, button, desktop, differences, keepPicture, listen, look, newPage, openApp, patience, phone, press,
    shared, tablet, tap, told, untilStarted, untilView, upright} from './browser.mjs';

const names = ['Back to the top', 'Share', 'Mandelbrot or Julia', 'Next palette', 'Speed of the colours',
    'Record the screen', 'Autopilot', 'About'];

const settings = (page) => page.evaluate(() => JSON.parse(localStorage.getItem('zentaro.settings') ?? '{}'));

const byTouch = (page, name) => tap(page, button(page, name));

for (const [place, device, use] of [
    ['phone, by touch', phone, byTouch],
    ['upright phone, by touch', upright, byTouch],
    ['tablet, by name', tablet, press],
]) {
    test(`${place}: every button does what it says`, async (t) => {
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

        for (const speed of [1, 4, 0]) {
            await use(page, 'Speed of the colours');
            assert.equal((await settings(page)).fractalColorCycling, speed);
        }

        await tap(page, button(page, 'About'));
        await button(page, 'Close').waitFor({state: 'attached'});
        await page.waitForTimeout(1000);
        await tap(page, button(page, 'Close'));
        await button(page, 'About').waitFor({state: 'attached'});

        await use(page, 'Back to the top');
        const top = await untilView(page, (view) => view.height > 2.9, 'the whole set');
        assertClose(top.height, 3, 1e-4, 'its height');
        assertClose(top.x, -1, 1e-3, 'its middle');
    });
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

for (const [name, device, insets, edges] of [
    ['on its side', phone, {left: 47, right: 47, bottom: 21}, {left: 47, right: 844 - 47, bottom: 390 - 21}],
    ['upright', upright, {top: 47, bottom: 34, left: 10}, {top: 47, bottom: 844 - 34, left: 10}],
]) {
    test(`a phone with a notch, ${name}: the toolbar keeps clear of it`, async (t) => {
        const page = await newPage(t, {device});
        const devtools = await page.context().newCDPSession(page);
        await devtools.send('Emulation.setSafeAreaInsetsOverride', {insets});
        await page.goto(shared.url);
        await untilStarted(page);
        await button(page, 'About').waitFor({state: 'attached'});
        for (const place of names) {
            const at = await button(page, place).evaluate((element) => element.getBoundingClientRect().toJSON());
            for (const [side, edge] of Object.entries(edges)) {
                const isClear = ['left', 'top'].includes(side) ? at[side] >= edge : at[side] <= edge;
                assert.ok(isClear, `${place}: ${side} is ${at[side]}, beyond ${edge}`);
            }
        }
    });
}

test('the keyboard is where it was when what came over the toolbar has gone', async (t) => {
    const page = await openApp(t, '/', {device: desktop});
    const untilFocused = (name) =>
        page.waitForFunction((text) => document.activeElement.textContent === text, name, {timeout: patience});
    await press(page, 'Autopilot');
    await untilFocused('Show the buttons');
    await page.keyboard.press('Enter');
    await untilFocused('Autopilot');
    await press(page, 'Record the screen');
    await page.waitForTimeout(1500);
    await press(page, 'Record the screen');
    await untilFocused('Save');
    assert.ok(await page.locator('#preview').evaluate((dialog) => dialog.contains(document.activeElement)));
    await page.keyboard.press('Escape');
    await untilFocused('Record the screen');
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
