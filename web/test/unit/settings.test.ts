import assert from 'node:assert/strict';
import { test } from 'node:test';
import { allowed, initialSettings, makesSense, moved } from '../../src/pipeline/settings.js';
import { STAGES } from '../../src/pipeline/stages.js';

const idsOf = (settings: readonly { id: string }[]): string[] => settings.map((one) => one.id);

test('the initial order makes sense', () => {
    assert.ok(makesSense(idsOf(initialSettings())));
});

test('what needs a binary picture cannot go before the threshold', () => {
    let settings = initialSettings();
    for (let next = moved(settings, 'morphology', -1); next; next = moved(settings, 'morphology', -1))
        settings = next;
    const order = idsOf(settings);
    assert.equal(order.indexOf('morphology'), order.indexOf('binarise') + 1);
});

test('a turn can go everywhere before the threshold', () => {
    let settings = initialSettings();
    for (let next = moved(settings, 'turn', 1); next; next = moved(settings, 'turn', 1)) settings = next;
    assert.equal(idsOf(settings).at(-1), 'turn');
});

test('seals are looked for in colour', () => {
    let settings = initialSettings();
    for (let next = moved(settings, 'seal', 1); next; next = moved(settings, 'seal', 1)) settings = next;
    const order = idsOf(settings);
    assert.equal(order.indexOf('seal'), order.indexOf('gray') - 1);
});

test('every slider reaches its ends and its initial value', () => {
    for (const { parameters } of STAGES)
        for (const parameter of parameters) {
            assert.equal(allowed(parameter, parameter.initial), parameter.initial, parameter.name);
            if (parameter.type !== 'slider') continue;
            assert.equal(allowed(parameter, 1e9), parameter.most, parameter.name);
            assert.equal(allowed(parameter, -1e9), parameter.least, parameter.name);
        }
});
