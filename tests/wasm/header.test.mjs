// The package has every function of CImgproc, by its name and with its parameters.
import assert from 'node:assert/strict';
import { readFileSync } from 'node:fs';
import { test } from 'node:test';
import * as orvex_991 from '../../build/wasm/package/index.js';
import { source } from './package_files.mjs';

const read = (path) => readFileSync(new URL(path, source), 'utf8');
const header = read('jni/orvex_991/cv_imgproc.h');
const operations = header.slice(header.indexOf('class CImgproc')).replace(/\/\/.*/g, '');
const declarations = read('bindings/wasm/package/index.d.ts').replace(/\/\*\*[^]*?\*\//g, '');

/** Of docprep, not of CImgproc. */
const PAGES = ['estimateSkew', 'levelPage'];

function addTo(forms, name, parameters) {
    forms.set(name, [...(forms.get(name) ?? []), parameters.join(' ')]);
}

/** By name: the parameters of each form that are no mere outputs. */
function formsOfTheHeader() {
    const forms = new Map();
    for (const [, name, parameters] of operations.matchAll(/\bstatic [^()]*?(\w+)\(([^()]*)\);/g)) {
        const inputs = parameters.split(',').filter((text) => !text.includes('&') || /\bconst\b/.test(text));
        addTo(
            forms,
            name,
            inputs.map((text) => text.match(/(\w+)\s*$/)[1]),
        );
    }
    return forms;
}

/** By name: the parameters of each form; those that may be left out make several. */
function formsOfTheDeclarations() {
    const forms = new Map();
    const methods = declarations.slice(declarations.indexOf('export interface Orvex {'));
    for (const [, name, text] of methods.matchAll(/^    (\w+)\(([^()]*)\):/gm)) {
        const parameters = [...text.matchAll(/(\w+)(\??):/g)].map(([, word, mark]) => ({ word, mark }));
        const least = parameters.filter(({ mark }) => mark === '').length;
        for (let n = least; n <= parameters.length; ++n)
            addTo(
                forms,
                name,
                parameters.slice(0, n).map(({ word }) => word),
            );
    }
    return forms;
}

test('the parser finds all static functions', () => {
    const found = [...formsOfTheHeader().values()].flat().length;
    assert.equal(found, operations.match(/^    static /gm).length);
    assert.ok(found > 50);
});

test('every function is there and no other', async () => {
    const orvex = await orvex_991.load();
    const methods = Object.getOwnPropertyNames(Object.getPrototypeOf(orvex)).filter(
        (name) =>
            typeof Object.getOwnPropertyDescriptor(Object.getPrototypeOf(orvex), name).value === 'function',
    );
    const expected = [...formsOfTheHeader().keys(), ...PAGES];
    assert.deepEqual(methods.filter((name) => name !== 'constructor').sort(), expected.sort());
});

test('every form is declared with the names of the header', () => {
    const declared = formsOfTheDeclarations();
    for (const [name, forms] of formsOfTheHeader())
        for (const form of forms) assert.ok(declared.get(name)?.includes(form), `${name}(${form})`);
});

test('nothing is declared that is not there', async () => {
    const orvex = await orvex_991.load();
    for (const name of formsOfTheDeclarations().keys()) assert.equal(typeof orvex[name], 'function', name);
    for (const [, name] of declarations.matchAll(/^export (?:class|const|function) (\w+)/gm))
        assert.ok(name in orvex_991, name);
});

test('constants have the values of the header', () => {
    const geometry = read('jni/orvex_991/cv_geometry.h');
    for (const [, body] of geometry.matchAll(/enum \w+ : int \{([^}]*)\}/g))
        body.split(',').forEach((member, value) => {
            const name = member.split('=')[0].trim();
            assert.equal(orvex_991[name], value, name);
            assert.match(declarations, new RegExp(`export const ${name}: ${value};`));
        });
});
