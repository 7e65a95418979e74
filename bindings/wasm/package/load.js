import { Orvex } from './orvex.js';

// (module (func (result v128) i32.const 0 i8x16.splat))
const MODULE_WITH_A_VECTOR = new Uint8Array([
    0, 97, 115, 109, 1, 0, 0, 0, 1, 5, 1, 96, 0, 1, 123, 3, 2, 1, 0, 10, 8, 1, 6, 0, 65, 0, 253, 15, 11,
]);

// Two literals, so that bundlers find the files.
const VECTOR_FILE = new URL('./orvex_991.wasm', import.meta.url);
const PLAIN_FILE = new URL('./orvex_991_plain.wasm', import.meta.url);

async function bytesOf(url) {
    if (url.protocol === 'file:') {
        // A variable keeps bundlers for browsers from following the import.
        const files = 'node:fs/promises';
        return (await import(/* @vite-ignore */ files)).readFile(url);
    }
    const response = await fetch(url);
    if (!response.ok) throw new Error(`${url}: ${response.status} ${response.statusText}`);
    return response.arrayBuffer();
}

export async function load({ simd = WebAssembly.validate(MODULE_WITH_A_VECTOR) } = {}) {
    const bytes = await bytesOf(simd ? VECTOR_FILE : PLAIN_FILE);
    return Orvex.over(await WebAssembly.compile(bytes));
}
