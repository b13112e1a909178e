// The record button in a browser: a film of the canvas in the browser's own player, and its file.
// The buttons are reached as screen readers reach them.
import assert from 'node:assert/strict';
import {readFileSync} from 'node:fs';
import {test} from 'node:test';
import {button, desktop, frames, keepPicture, openApp, patience, phone, press, upright} from './browser.mjs';

for (const [place, device] of Object.entries({phone, upright, desktop})) {
    test(`${place}: a recording is played, saved as a file, and closed`, async (t) => {
        const page = await openApp(t, '/', {device});
        await button(page, 'Record the screen').waitFor({state: 'attached', timeout: patience});
        await press(page, 'Record the screen');
        await page.waitForTimeout(1500);
        await frames(page, 20);
        await press(page, 'Record the screen');
        const dialog = page.locator('#preview');
        await dialog.waitFor({state: 'visible', timeout: patience});
        await page.waitForFunction(() => document.querySelector('#preview video').readyState >= 2, null, {timeout: patience});
        const size = await page.locator('#preview video').evaluate((video) => [video.videoWidth, video.videoHeight]);
        const {width, height} = device.viewport;
        assert.deepEqual(size, [Math.max(width, height), Math.min(width, height)]);
        assert.deepEqual(await dialog.boundingBox(), {x: 0, y: 0, width, height}, 'it lies as the app does');
        await keepPicture(page, `recording-${place}`);

        const coming = page.waitForEvent('download', {timeout: patience});
        await dialog.getByRole('button', {name: 'Save'}).click();
        const download = await coming;
        assert.match(download.suggestedFilename(), /^Zentaro \d{4}-\d\d-\d\d at \d\d\.\d\d\.\d\d\.(mp4|webm)$/);
        const bytes = readFileSync(await download.path());
        const isFilm = bytes.readUInt32BE(0) === 0x1a45dfa3 || bytes.toString('latin1', 4, 8) === 'ftyp';
        assert.ok(isFilm && bytes.length > 10000, `${bytes.length} bytes of film`);

        await dialog.getByRole('button', {name: 'Done'}).click();
        await dialog.waitFor({state: 'hidden', timeout: patience});
        await button(page, 'About').waitFor({state: 'attached', timeout: patience});
    });
}

test('a page whose size changes is filmed on, in the size that the film began with', async (t) => {
    const page = await openApp(t, '/', {device: desktop});
    await press(page, 'Record the screen');
    await frames(page, 20);
    await page.setViewportSize({width: 640, height: 400});
    await frames(page, 20);
    await press(page, 'Record the screen');
    const size = await page.waitForFunction(() => {
        const video = document.querySelector('#preview video');
        return video.readyState >= 2 && [video.videoWidth, video.videoHeight];
    }, null, {timeout: patience});
    assert.deepEqual(await size.jsonValue(), [1280, 720]);
});

test('a film that is asked for while the last one is being finished does not spoil that one', async (t) => {
    const page = await openApp(t, '/', {device: desktop, init: () => {
        const stop = MediaRecorder.prototype.stop;
        MediaRecorder.prototype.stop = function() { window.finish = () => stop.call(this); };
    }});
    await button(page, 'Record the screen').waitFor({state: 'attached', timeout: patience});
    await press(page, 'Record the screen');
    await page.waitForTimeout(1000);
    for (let taps = 0; taps < 3; taps += 1) {
        await press(page, 'Record the screen');
        await page.waitForTimeout(200);
    }
    await page.waitForFunction(() => window.finish, null, {timeout: patience});
    await page.evaluate(() => window.finish());
    await page.locator('#preview').waitFor({state: 'visible', timeout: patience});
});
