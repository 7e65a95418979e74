// @ts-check
/** The built page on a loopback address, and browsers that look at it. */
import { execFileSync } from 'node:child_process';
import { chromium } from 'playwright-core';
import { preview } from 'vite';

const ROOT = new URL('../..', import.meta.url).pathname;

/** Chromium asks nobody but the page's own server. */
const QUIET = [
    '--no-sandbox',
    '--disable-gpu',
    '--no-first-run',
    '--disable-background-networking',
    '--disable-component-update',
    '--disable-sync',
    '--use-fake-device-for-media-stream',
    '--use-fake-ui-for-media-stream',
];

/** @returns {Promise<{ address: string, close: () => Promise<void> }>} */
export async function served() {
    const server = await preview({ root: ROOT, logLevel: 'silent', preview: { port: 0, host: '127.0.0.1' } });
    const address = server.resolvedUrls?.local[0];
    if (!address) throw new Error('the page is not served');
    return { address, close: () => new Promise((resolve) => server.httpServer.close(() => resolve())) };
}

export function launched() {
    const executablePath = execFileSync('sh', ['-c', 'command -v chromium'], { encoding: 'utf8' }).trim();
    return chromium.launch({ executablePath, args: QUIET });
}

/**
 * A page that has shown its first result; what goes wrong in it and where it asks is collected.
 * @param {import('playwright-core').Browser} browser
 * @param {string} address
 * @param {import('playwright-core').BrowserContextOptions} [options]
 */
export async function visited(browser, address, options = {}) {
    const context = await browser.newContext({ viewport: { width: 1440, height: 900 }, ...options });
    const page = await context.newPage();
    /** @type {string[]} */
    const complaints = [];
    /** @type {string[]} */
    const requests = [];
    page.on('console', (message) => {
        if (message.type() === 'error' || message.type() === 'warning') complaints.push(message.text());
    });
    page.on('pageerror', (error) => complaints.push(String(error)));
    page.on('request', (request) => requests.push(request.url()));
    await page.goto(address);
    await settled(page);
    return { page, context, complaints, requests };
}

/** @param {import('playwright-core').Page} page  has shown the result of the newest settings */
export async function settled(page) {
    await page.waitForFunction(() => document.body.dataset.settled === 'true', undefined, {
        timeout: 60_000,
    });
}
