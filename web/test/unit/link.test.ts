import assert from 'node:assert/strict';
import { test } from 'node:test';
import { asLink, fromLink } from '../../src/pipeline/link.js';
import { initialSettings, moved, withStage, withValue } from '../../src/pipeline/settings.js';

const changed = () => {
    const off = withStage(initialSettings(), 'seal', (one) => ({ ...one, on: false }));
    const valued = withValue(withValue(off, 'binarise', 'block', 31), 'binarise', 'ratio', -0.25);
    return moved(withValue(valued, 'hull', 'of', 'components'), 'deskew', -1)!;
};

test('a link holds order, switches and values', () => {
    const { settings, complaints } = fromLink(asLink(changed()));
    assert.deepEqual(settings, changed());
    assert.deepEqual(complaints, []);
});

test('no link gives the initial settings', () => {
    assert.deepEqual(fromLink('').settings, initialSettings());
});

test('values out of range are brought into it, and said', () => {
    const { settings, complaints } = fromLink('#binarise.block=100000&binarise.level=x&turn.mirror=maybe');
    assert.deepEqual(settings, withValue(initialSettings(), 'binarise', 'block', 401));
    assert.equal(complaints.length, 3);
});

test('an order that makes no sense is left alone, switches and values are not', () => {
    const link = asLink(changed()).replace(/stages=[^&]*/, 'stages=rows,-seal,gray,nonsense');
    const { settings, complaints } = fromLink(link);
    assert.deepEqual(
        settings.map((one) => one.id),
        initialSettings().map((one) => one.id),
    );
    assert.equal(settings.find((one) => one.id === 'seal')!.on, false);
    assert.equal(settings.find((one) => one.id === 'binarise')!.values['block'], 31);
    assert.deepEqual(complaints, [
        'no stage, or one named twice: nonsense',
        'the order of stages is not one that this page knows',
    ]);
});

test('unknown settings are named', () => {
    assert.deepEqual(fromLink('#gray.depth=3').complaints, ['no setting is called gray.depth']);
});
