// The golden cases, each call of an operation through the package, against the digests of the reference.
import assert from 'node:assert/strict';
import { createRequire } from 'node:module';
import { readFile } from 'node:fs/promises';
import { test } from 'node:test';
import { load, OrvexError } from '../../build/wasm/package/index.js';

const program = createRequire(import.meta.url)('../../build/wasm/tests/wasm/golden_wasm.cjs');
const digests = new URL('../golden/digests.txt', import.meta.url);
/** Others are beyond JavaScript: matrices that their shape belies, outputs whose content before matters. */
const EXPECTED_CALLS = 11097;
let calls = 0;

/** What binding.h calls: a method, to an object of everything that the call did. */
function callsOf(orvex) {
    return (name, given) => {
        ++calls;
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
        const golden = await program({ print: (line) => printed.push(line) });
        calls = 0;
        golden.callMain([]);
        const expected = (await readFile(digests, 'utf8')).trimEnd().split('\n');
        assert.deepEqual(printed.filter((line, k) => line !== expected[k]).slice(0, 10), []);
        assert.equal(printed.length, expected.length);
        assert.equal(calls, EXPECTED_CALLS);
    });
}

test('results of the maths library are near those of the reference', async () => {
    globalThis.callOrvex = callsOf(await load());
    const golden = await program({ print: () => {} });
    golden.FS.writeFile('maths.txt', await readFile(new URL('../golden/maths.txt', import.meta.url)));
    assert.equal(golden.callMain(['--maths', 'maths.txt']), 0);
});
