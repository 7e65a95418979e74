// @ts-check
/** Widths, themes and what screen readers get. Leaves pictures in build/screenshots. */
import assert from 'node:assert/strict';
import { mkdirSync, readFileSync } from 'node:fs';
import { createRequire } from 'node:module';
import { after, before, test } from 'node:test';
import { launched, served, settled, visited } from './site.mjs';

const AXE = readFileSync(createRequire(import.meta.url).resolve('axe-core/axe.min.js'), 'utf8');
const PICTURES = new URL('../../build/screenshots/', import.meta.url).pathname;
const SIZES = [
    [360, 740],
    [768, 1024],
    [1440, 900],
];
const ALL_ON =
    '#stages=seal,turn,resize,gray,equalise,sharpness,deskew,saliency,binarise,morphology,components,rows,hull,page&turn.quarters=0&deskew.how=given';

/** @type {Awaited<ReturnType<typeof served>>} */
let site;
/** @type {import('playwright-core').Browser} */
let browser;

before(async () => {
    mkdirSync(PICTURES, { recursive: true });
    [site, browser] = [await served(), await launched()];
});
after(async () => {
    await browser.close();
    await site.close();
});

/** What reaches beyond the window, but for what scrolls by itself. @param {import('playwright-core').Page} page */
function beyond(page) {
    return page.evaluate(() => {
        const scrolls = (/** @type {Element} */ element) => {
            for (let one = element.parentElement; one; one = one.parentElement)
                if (getComputedStyle(one).overflowX !== 'visible' && one !== document.body) return true;
            return false;
        };
        const wide = [...document.body.querySelectorAll('*')].filter((element) => {
            const { left, right, width } = element.getBoundingClientRect();
            return width > 1 && (right > innerWidth + 0.5 || left < -0.5) && !scrolls(element);
        });
        const cut = [...document.querySelectorAll('button, h1, h2, dt, dd, label')].filter(
            (element) =>
                element.scrollWidth > element.clientWidth + 1 &&
                element.clientWidth > 1 &&
                getComputedStyle(element).display !== 'inline',
        );
        return [document.documentElement.scrollWidth > innerWidth ? ['the page'] : [], wide, cut]
            .flat()
            .map((one) => (typeof one === 'string' ? one : one.outerHTML.slice(0, 120)));
    });
}

/** @param {import('playwright-core').Page} page */
async function violations(page) {
    await page.evaluate(AXE);
    const { violations } = await page.evaluate(() => /** @type {any} */ (globalThis).axe.run());
    return violations.map(
        (/** @type {any} */ one) =>
            `${one.id}: ${one.nodes.map((/** @type {any} */ node) => node.html.slice(0, 160)).join(' | ')}`,
    );
}

for (const colorScheme of /** @type {const} */ (['light', 'dark']))
    for (const [width = 0, height = 0] of SIZES)
        test(`nothing overflows and nobody is left out: ${width} pixels, ${colorScheme}`, async () => {
            const options = { viewport: { width, height }, colorScheme, hasTouch: width < 1000 };
            const { page, context } = await visited(browser, site.address, options);
            await page.screenshot({ path: `${PICTURES}${colorScheme}_${width}.png` });
            await page.screenshot({ path: `${PICTURES}${colorScheme}_${width}_whole.png`, fullPage: true });
            assert.deepEqual(await beyond(page), []);
            assert.deepEqual(await violations(page), []);
            await page.goto(site.address + ALL_ON);
            await page.reload();
            await settled(page);
            assert.deepEqual(await beyond(page), []);
            assert.deepEqual(await violations(page), []);
            await page.screenshot({ path: `${PICTURES}${colorScheme}_${width}_all.png`, fullPage: true });
            await page.click('#take-cpp');
            assert.deepEqual(await violations(page), []);
            await page.screenshot({ path: `${PICTURES}${colorScheme}_${width}_code.png` });
            await context.close();
        });
