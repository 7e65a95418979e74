// The package: what a page loads of it, and that npm packs and installs it.
import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { mkdtempSync, readdirSync, readFileSync, rmSync, writeFileSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { test } from 'node:test';
import { fileURLToPath, pathToFileURL } from 'node:url';
import { brotliCompressSync, gunzipSync, gzipSync } from 'node:zlib';
import { Image, load } from '../../build/wasm/package/index.js';
import { page } from './images.mjs';
import { packageFolder, source } from './package_files.mjs';

const project = fileURLToPath(source);

const MOST_BYTES = 150 * 1024;

const read = (name) => readFileSync(join(packageFolder, name));

test('what a page loads is small', () => {
    const scripts = readdirSync(packageFolder).filter((name) => name.endsWith('.js'));
    for (const module of ['orvex_991.wasm', 'orvex_991_plain.wasm'])
        for (const compress of [(bytes) => gzipSync(bytes, { level: 9 }), brotliCompressSync]) {
            const sum = [module, ...scripts].reduce((bytes, name) => bytes + compress(read(name)).length, 0);
            assert.ok(sum < MOST_BYTES, `${module}: ${sum} bytes`);
        }
});

test('modules name no folder of the machine that built them', () => {
    for (const module of ['orvex_991.wasm', 'orvex_991_plain.wasm']) {
        const text = read(module).toString('latin1');
        assert.ok(text.includes('jni/orvex_991/cv_imgproc.cpp'));
        assert.ok(!/\/jni\/orvex_991|\/tools\/docprep/.test(text));
    }
});

test('npm packs it, and an empty folder can install and use it', () => {
    const folder = mkdtempSync(join(tmpdir(), 'orvex-'));
    const run = (...words) =>
        execFileSync(words[0], words.slice(1), {
            cwd: folder,
            encoding: 'utf8',
            stdio: ['ignore', 'pipe', 'pipe'],
        });
    const quiet = ['--offline', '--no-audit', '--no-fund'];
    try {
        const [{ filename, files }] = JSON.parse(run('npm', 'pack', packageFolder, '--json', ...quiet));
        assert.deepEqual(files.map(({ path }) => path).sort(), readdirSync(packageFolder).sort());
        writeFileSync(join(folder, 'package.json'), '{ "private": true }');
        run('npm', 'install', filename, ...quiet);
        writeFileSync(
            join(folder, 'frame.nv21'),
            gunzipSync(readFileSync(join(project, 'samples/frame_1280x720.nv21.gz'))),
        );
        for (const [name, ...words] of [['frame_rows.mjs', 'frame.nv21', '1280', '720'], ['errors.mjs']]) {
            const text = readFileSync(join(project, 'examples/javascript', name), 'utf8');
            writeFileSync(join(folder, name), text);
            const expected = [...text.matchAll(/^\/\/ prints: (.*)$/gm)]
                .map((match) => `${match[1]}\n`)
                .join('');
            assert.equal(run('node', name, ...words), expected);
        }
    } finally {
        rmSync(folder, { recursive: true });
    }
});

test('the example for a canvas levels what is on it', async () => {
    const folder = mkdtempSync(join(tmpdir(), 'orvex-'));
    try {
        const text = readFileSync(join(project, 'examples/javascript/canvas.mjs'), 'utf8');
        writeFileSync(
            join(folder, 'canvas.mjs'),
            text.replace("'orvex_991'", JSON.stringify(join(packageFolder, 'index.js'))),
        );
        const { level } = await import(pathToFileURL(join(folder, 'canvas.mjs')));
        const dark = new Image(
            500,
            700,
            3,
            Uint8Array.from(page().data, (byte) => 255 - byte).reduce(spread, new Uint8Array(500 * 700 * 3)),
        );
        const turned = (await load()).levelPage(dark, -3);
        const canvas = canvasOf(turned);
        level(canvas);
        assert.ok(canvas.width > turned.cols && canvas.height > turned.rows);
        assert.equal(canvas.shown.data.length, canvas.width * canvas.height * 4);
    } finally {
        rmSync(folder, { recursive: true });
    }
});

/** Puts a grey byte at all three colours of its pixel. */
function spread(colours, byte, k) {
    return colours.fill(byte, 3 * k, 3 * k + 3);
}

/** What the example needs of a canvas, which Node has not. */
function canvasOf(image) {
    globalThis.ImageData = class {
        constructor(data, width, height) {
            Object.assign(this, { data, width, height });
        }
    };
    const canvas = { width: image.cols, height: image.rows, shown: Image.toImageData(image) };
    canvas.getContext = () => ({
        getImageData: () => canvas.shown,
        putImageData: (shown) => (canvas.shown = shown),
    });
    return canvas;
}
