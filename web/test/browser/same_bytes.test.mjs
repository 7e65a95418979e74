// @ts-check
/** The canvas, the saved picture, docprep's commands and the C++ program: all give the same bytes. */
import assert from 'node:assert/strict';
import { readdirSync, readFileSync, writeFileSync } from 'node:fs';
import { join } from 'node:path';
import { after, before, test } from 'node:test';
import { compiled, docprep, folder, SAMPLE, shell } from './docprep.mjs';
import { launched, served, settled, visited } from './site.mjs';

/** @typedef {import('playwright-core').Page} Page */

const ORDER =
    'seal,turn,-resize,gray,-equalise,sharpness,deskew,-saliency,binarise,-morphology,components,rows,-hull';
const EVERYTHING =
    'stages=seal,turn,resize,gray,equalise,sharpness,deskew,saliency,binarise,morphology,components,rows,hull,page';
const SETTINGS = {
    'what is set at first': '',
    everything: `#${EVERYTHING}&resize.scale=0.85&turn.quarters=3&turn.mirror=true&binarise.method=otsu`,
    'an angle by hand and hulls of components': `#${EVERYTHING}&deskew.how=given&deskew.angle=3.3&hull.of=components&morphology.type=dilate&resize.scale=1.35`,
    'a level, dark becomes 255': `#stages=${ORDER},page&binarise.method=level&binarise.level=120&turn.quarters=2`,
    'Otsu, bright becomes 255': `#stages=${ORDER},-page&binarise.method=otsu&binarise.print=false`,
    'a colour picture':
        '#stages=-seal,turn,resize,-gray,-equalise,sharpness,deskew,-saliency,-binarise,-morphology,-components,-rows,-hull,-page&deskew.how=given&deskew.angle=-7.5&resize.scale=0.6',
    'hulls of everything, opened': `#${EVERYTHING}&hull.of=everything&morphology.type=open&morphology.width=2&morphology.height=2&seal.relaxed=true`,
};

/** Reads a PPM of a photograph, writes the page as PPM or PGM. */
const MAIN = `
#include <utility>
#include "page_of.cpp"
int main() {
    int cols = 0, rows = 0;
    if (std::scanf("P6 %d %d 255", &cols, &rows) != 2 || std::getchar() == EOF) return 1;
    Picture photo;
    photo.mat_create(rows, cols, 3, 0);
    if (std::fread(photo.data, 3, static_cast<size_t>(rows) * cols, stdin) == 0) return 1;
    for (int k = 0; k < rows * cols; ++k) std::swap(photo.data[3 * k], photo.data[3 * k + 2]);
    const Picture page = page_of(photo);
    std::FILE* out = std::fopen("page.pnm", "wb");
    std::fprintf(out, "P%d\\n%d %d\\n255\\n", page.channels == 3 ? 6 : 5, page.cols, page.rows);
    for (int k = 0; k < page.rows * page.cols * page.channels; ++k)
        std::fputc(page.data[page.channels == 3 ? k / 3 * 3 + 2 - k % 3 : k], out);
    return std::fclose(out);
}
`;

const files = folder();
/** @type {Awaited<ReturnType<typeof served>>} */
let site;
/** @type {import('playwright-core').Browser} */
let browser;

before(async () => {
    docprep('op', 'resize-scale', SAMPLE, '--scale', '0.25', '-o', join(files, 'photo.png'));
    [site, browser] = [await served(), await launched()];
});
after(async () => {
    await browser.close();
    await site.close();
});

/** @typedef {{ cols: number, rows: number, digest: string }} Seen  RGBA, by their SHA-256 */

/**
 * The canvas at one pixel to one, without original and overlays: what lies in its middle, to a pixel.
 * @param {Page} page @returns {Promise<Seen[]>}
 */
async function canvasPixels(page) {
    await page.click('#exact');
    await page.focus('#divider');
    await page.keyboard.press('Home');
    const chips = page.locator('.chip[aria-pressed=true]');
    while ((await chips.count()) > 0) await chips.first().click();
    await page.evaluate(
        () => new Promise((resolve) => requestAnimationFrame(() => requestAnimationFrame(resolve))),
    );
    return page.evaluate(async () => {
        const canvas = /** @type {HTMLCanvasElement} */ (document.getElementById('canvas'));
        const words = /, (\d+) by (\d+) pixels/.exec(canvas.getAttribute('aria-label') ?? '');
        const [cols, rows] = [Number(words?.[1]), Number(words?.[2])];
        const context = /** @type {CanvasRenderingContext2D} */ (canvas.getContext('2d'));
        const [left, top] = [
            Math.floor((canvas.width - cols) / 2) - 1,
            Math.floor((canvas.height - rows) / 2) - 1,
        ];
        const { data, width } = context.getImageData(left, top, cols + 2, rows + 2);
        const seen = [];
        for (const x of [0, 1, 2])
            for (const y of [0, 1, 2]) {
                const part = new Uint8Array(4 * cols * rows);
                for (let row = 0; row < rows; ++row) {
                    const at = 4 * ((row + y) * width + x);
                    part.set(data.subarray(at, at + 4 * cols), 4 * row * cols);
                }
                const hash = new Uint8Array(await crypto.subtle.digest('SHA-256', part));
                seen.push({ cols, rows, digest: hash.join() });
            }
        return seen;
    });
}

/** A PNG, decoded by the browser. @param {Page} page @param {Buffer} png @returns {Promise<Seen>} */
function decoded(page, png) {
    return page.evaluate(async (text) => {
        const bytes = Uint8Array.from(atob(text), (letter) => letter.charCodeAt(0));
        const bitmap = await createImageBitmap(new Blob([bytes]), { colorSpaceConversion: 'none' });
        const { width: cols, height: rows } = bitmap;
        const context = /** @type {OffscreenCanvasRenderingContext2D} */ (
            new OffscreenCanvas(cols, rows).getContext('2d')
        );
        context.drawImage(bitmap, 0, 0);
        const { data } = context.getImageData(0, 0, cols, rows);
        const hash = new Uint8Array(await crypto.subtle.digest('SHA-256', data));
        return { cols, rows, digest: hash.join() };
    }, png.toString('base64'));
}

/** @param {Page} page @param {string} id @returns {Promise<Buffer>} */
async function saved(page, id) {
    const [download] = await Promise.all([page.waitForEvent('download'), page.click(id)]);
    return readFileSync(await download.path());
}

/** @param {Page} page @param {string} id */
async function sheetText(page, id) {
    await page.click(id);
    const text = (await page.textContent('#code-text')) ?? '';
    await page.click('#code [data-close]');
    return text;
}

for (const [name, hash] of Object.entries(SETTINGS))
    test(`the same bytes: ${name}`, async () => {
        const { page, context, complaints } = await visited(browser, site.address + hash);
        await page.setInputFiles('#file', join(files, 'photo.png'));
        await page.locator('#canvas[aria-label^="photo.png"]').waitFor();
        await settled(page);
        assert.equal(await page.locator('.failed').count(), 0);

        const work = folder();
        writeFileSync(join(work, 'photo.png'), readFileSync(join(files, 'photo.png')));
        shell(await sheetText(page, '#take-commands'), work);
        const last = readdirSync(work)
            .filter((entry) => /^\d\d_(?!seal)/.test(entry))
            .sort()
            .at(-1);
        const wanted = await decoded(page, readFileSync(join(work, String(last))));

        assert.deepEqual(
            await decoded(page, await saved(page, '#take-picture')),
            wanted,
            'the saved picture',
        );
        const seen = await canvasPixels(page);
        assert.ok(
            seen.some(({ digest }) => digest === wanted.digest),
            'the canvas',
        );

        writeFileSync(join(work, 'page_of.cpp'), await sheetText(page, '#take-cpp'));
        writeFileSync(join(work, 'main.cpp'), MAIN);
        compiled(join(work, 'main.cpp'), join(work, 'page_of'));
        docprep('resize', join(work, 'photo.png'), '--factor', '1', '-o', join(work, 'photo.ppm'));
        shell('./page_of < photo.ppm > lines.txt', work);
        docprep('resize', join(work, 'page.pnm'), '--factor', '1', '-o', join(work, 'page.png'));
        assert.deepEqual(
            await decoded(page, readFileSync(join(work, 'page.png'))),
            wanted,
            'the C++ program',
        );

        const json = JSON.parse((await saved(page, '#take-json')).toString());
        assert.deepEqual(json.photo, { name: 'photo.png', rows: 300, cols: 400 });
        assert.deepEqual(complaints, []);
        await context.close();
    });
