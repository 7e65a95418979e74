// The package: what a page loads of it, and that npm packs and installs it.
import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { mkdtempSync, readdirSync, readFileSync, rmSync, writeFileSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { test } from 'node:test';
import { brotliCompressSync, gzipSync } from 'node:zlib';
import { packageFolder } from './package_files.mjs';

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
    try {
        const npm = (...words) => execFileSync('npm', [...words, '--offline', '--no-audit', '--no-fund'], { cwd: folder, encoding: 'utf8', stdio: ['ignore', 'pipe', 'pipe'] });
        const [{ filename, files }] = JSON.parse(npm('pack', packageFolder, '--json'));
        const expected = readdirSync(packageFolder);
        assert.deepEqual(files.map(({ path }) => path).sort(), expected.sort());
        writeFileSync(join(folder, 'package.json'), '{ "private": true, "type": "module" }');
        npm('install', join(folder, filename));
        writeFileSync(
            join(folder, 'use.js'),
            `import { Image, load } from 'orvex_991';
             const white = new Image(1, 1, 3, Uint8Array.of(255, 255, 255));
             for (const simd of [undefined, true, false]) console.log((await load({ simd })).bgr2gray(white).data[0]);`,
        );
        const printed = execFileSync('node', ['use.js'], { cwd: folder, encoding: 'utf8' });
        assert.equal(printed, '253\n253\n253\n');
    } finally {
        rmSync(folder, { recursive: true });
    }
});
