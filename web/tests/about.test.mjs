// The About screen in the browser: by finger, key and name, with the browser's way back, in other languages.
// Pictures of each device are kept in build/web/pictures, for people to look at.
import assert from 'node:assert/strict';
import {test} from 'node:test';
import {button, desktop, fingers, keepPicture, look, openApp, phone, press, sharp, shared, tablet, tap, untilLooks,
    untilView, upright} from './browser.mjs';

const replay = 'Replay the introduction, What each button does, one after the other';
const licences = 'Licences, The software that Zentaro is built with';
const siteRow = (page) => page.getByRole('button', {name: /^Zentaro on the web/});
const mainScreen = (page) => button(page, 'Share').waitFor({state: 'attached'});
const shows = (page, name) => button(page, name).waitFor({state: 'attached'});
/** What goes is on its way for a moment, and the address is written behind it. */
const settle = (page) => page.waitForTimeout(1500);

async function start(t, options) {
    const page = await openApp(t, '/', {...options, init: () => {
        window.opened = [];
        window.open = (...values) => {
            window.opened.push(values);
            return null;
        };
    }});
    await mainScreen(page);
    await untilView(page);
    return page;
}

for (const [name, device] of Object.entries({phone, upright, tablet})) {
    test(`${name}: fingers open it, follow its rows, scroll and leave`, async (t) => {
        const page = await start(t, {device});
        await tap(page, button(page, 'About'));
        await shows(page, replay);
        assert.equal(await button(page, 'Share').count(), 0, 'what lies below cannot be used');
        await settle(page);
        await tap(page, siteRow(page));
        await page.waitForFunction(() => window.opened.length > 0);
        assert.deepEqual(await page.evaluate(() => window.opened),
            [[shared.url.replace('http:', 'https:') + '/', '_blank', 'noopener']]);
        await tap(page, button(page, licences));
        await shows(page, 'Back');
        await settle(page);
        const moved = await untilLooks(page, 0.02, 'the list moves');
        const touch = await fingers(page);
        const {width, height} = device.viewport;
        const [x, y] = [width / 2, height / 2];
        if (name === 'upright') await touch.glide([[x + 60, y]], [[x + 200, y]]);
        else await touch.glide([[x, y + 60]], [[x, y - 100]]);
        await touch.up();
        await moved();
        await tap(page, button(page, 'Back'));
        await shows(page, replay);
        await settle(page);
        await tap(page, button(page, 'Close'));
        await mainScreen(page);
    });
}

test('keys and names go through the rows and back', async (t) => {
    const page = await start(t, {device: desktop});
    await press(page, 'About');
    await shows(page, replay);
    const focused = () => page.evaluate(() => document.activeElement.textContent);
    const comesTo = (name) => page.waitForFunction((wanted) => document.activeElement.textContent === wanted, name);
    await comesTo('Close');
    await page.keyboard.press('Tab');
    assert.equal(await focused(), replay);
    await page.waitForFunction(() => document.activeElement.className === 'ringed');
    await page.keyboard.press('ArrowDown');
    await page.keyboard.press('ArrowDown');
    await comesTo(licences);
    await page.keyboard.press('Enter');
    await shows(page, 'Back');
    await page.keyboard.press('Escape');
    await shows(page, replay);
    await button(page, replay).focus();
    await page.keyboard.press('Space');
    await page.locator('#mirror p', {hasText: 'bring you back'}).waitFor({state: 'attached'});
    assert.equal(await button(page, replay).count(), 0, 'the tour shows the main screen');
});

test('the browser leads back through its screens, and not forward into what was closed', async (t) => {
    const page = await start(t, {device: desktop});
    await settle(page);
    const address = page.url();
    const entries = () => page.evaluate(() => history.length);
    const before = await entries();
    await press(page, 'About');
    await shows(page, replay);
    await press(page, licences);
    await shows(page, 'Back');
    assert.equal(await entries(), before + 2);
    await page.goBack();
    await shows(page, replay);
    await page.goBack();
    await mainScreen(page);
    await settle(page);
    assert.equal(page.url(), address);

    await page.evaluate(() => history.forward());
    await settle(page);
    assert.equal(await button(page, replay).count(), 0);
    assert.equal(await page.evaluate(() => history.state), null, 'it is not stuck in an entry of a closed screen');

    await press(page, 'About');
    await shows(page, replay);
    await page.keyboard.press('Escape');
    await mainScreen(page);
    await settle(page);
    assert.equal(await page.evaluate(() => history.state), null, 'closing it in the app takes its entry back');
    assert.equal(page.url(), address);

    await press(page, 'About');
    await shows(page, replay);
    await page.evaluate(() => {
        const data = new DataTransfer();
        data.setData('text/plain', '/julia/-0.5/-0.25/0.5/0.25');
        dispatchEvent(new ClipboardEvent('paste', {clipboardData: data}));
    });
    await untilView(page, (view) => view.type === 'julia', 'a link opens its view over the screen');
    await mainScreen(page);
    await page.goBack();
    await untilView(page, (view) => view.type === 'mandelbrot', 'and back leads to the view before');
});

test('texts of other scripts break and lie as their readers expect', async (t) => {
    const page = await start(t, {device: desktop});
    const lines = (text, width) => page.evaluate(([words, most]) =>
        Module.text.layOut(words, Module.text.font('', 16, false), 16, most, false).lines, [text, width]);
    const japanese = 'Zentaroを評価すると、「ほかの人」に見つけてもらう助けになります。ありがとうございます。';
    for (let width = 60; width <= 400; width += 20) {
        const found = await lines(japanese, width);
        assert.equal(found.map(({text}) => text).join(''), japanese);
        for (const line of found) {
            assert.ok(line.width <= width + 1, `${line.text} fits ${width}`);
            assert.doesNotMatch(line.text, /^[、。」]|「$/, 'marks stay with their words');
        }
    }
    assert.deepEqual((await lines('one two three', 80)).map(({text}) => text), ['one two', 'three']);
    assert.equal((await lines('Zentaro 評価する', 120))[0].text.startsWith('Zentaro 評'), true, 'lines are filled');
    const directions = await page.evaluate(() =>
        ['حول Zentaro', '(1) عربي', 'Zentaro', '0.1', '評価', 'שלום'].map((text) => Module.text.isRightToLeft(text)));
    assert.deepEqual(directions, [true, true, false, false, false, true]);
});

for (const [language, title] of Object.entries(
    {en: 'About Zentaro', de: 'Über Zentaro', ja: 'Zentaroについて', ar: 'حول Zentaro'})) {
    test(`${language}: in the user's language, on each device`, async (t) => {
        for (const [name, device] of Object.entries({phone: sharp(phone), tablet: sharp(tablet), desktop})) {
            const page = await start(t, {device, context: {locale: language}});
            await press(page, 'About');
            await page.locator('#mirror p', {hasText: title}).waitFor({state: 'attached'});
            await settle(page);
            await keepPicture(page, `about-${language}-${name}`);
            const box = await page.locator('#mirror button').first().boundingBox();
            const {width} = device.viewport;
            assert.equal(box.x > width / 2, language === 'ar', 'the button is where lines begin');
            const {at} = await look(page);
            assert.ok(Math.max(...at(width / 2, device.viewport.height - 2)) < 60, 'a dark ground');
            await page.context().close();
        }
    });
}
