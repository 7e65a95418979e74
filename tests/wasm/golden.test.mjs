// The golden cases, each call of an operation through the package, against the digests of the reference.
import assert from 'node:assert/strict';
import { createRequire } from 'node:module';
import { readFile } from 'node:fs/promises';
import { test } from 'node:test';
import { load, OrvexError } from '../../build/wasm/package/index.js';

const program = createRequire(import.meta.url)('../../build/wasm/tests/wasm/golden_wasm.cjs');
const digests = new URL('../golden/digests.txt', import.meta.url);
const EXPECTED_CALLS = '? calls through the binding, ? beyond it';

/** What binding.h calls: a method, to an object of everything that the call did. */
function callsOf(orvex) {
    return (name, given) => {
        const did = { code: 0, reason: '', lines: [], result: undefined };
        orvex.onLines = (lines) => (did.lines = lines);
        try {
            did.result = orvex[name](...given);
        } catch (error) {
            if (!(error instanceof OrvexError)) throw error;
            Object.assign(did, { code: error.code, reason: error.reason });
        }
        return did;
    };
}

for (const simd of [true, false]) {
    test(`digests are those of the reference, ${simd ? 'with' : 'without'} vectors`, async () => {
        globalThis.callOrvex = callsOf(await load({ simd }));
        const printed = [];
        const errors = [];
        const golden = await program({ print: (line) => printed.push(line), printErr: (line) => errors.push(line) });
        golden.callMain([]);
        const expected = (await readFile(digests, 'utf8')).trimEnd().split('\n');
        assert.deepEqual(printed.filter((line, k) => line !== expected[k]).slice(0, 10), []);
        assert.equal(printed.length, expected.length);
        assert.deepEqual(errors, [EXPECTED_CALLS]);
    });
}
