import assert from 'node:assert/strict';
import { test } from 'node:test';
import { Image, load } from 'orvex_991';
import { commandsOf, cppOf, jsonOf } from '../../src/pipeline/exports.js';
import { Pipeline } from '../../src/pipeline/run.js';
import { initialSettings, withStage, withValue, type Settings } from '../../src/pipeline/settings.js';

const orvex = await load();
const never = (): boolean => false;

/** Dark bars on light paper. */
function page(key = 1): { key: number; picture: Image } {
    const picture = new Image(120, 160, 3);
    picture.data.fill(220);
    for (let row = 20; row < 100; row += 20)
        for (let col = 20; col < 140; ++col)
            if (col % 6 < 4) picture.data.fill(30, 3 * (row * 160 + col), 3 * (row * 160 + col) + 3);
    return { key, picture };
}

const pipeline = (): Pipeline =>
    new Pipeline(
        orvex,
        () => performance.now(),
        () => Promise.resolve(),
    );

const switched = (settings: Settings, id: string, on: boolean): Settings =>
    withStage(settings, id, (one) => ({ ...one, on }));

test('stages before a changed one are not computed again', async () => {
    const stages = pipeline();
    const first = await stages.run(page(), initialSettings(), never);
    assert.ok(first!.every((report) => !report.kept));
    const second = await stages.run(page(), withValue(initialSettings(), 'components', 'least', 2), never);
    const kept = second!.filter((report) => report.kept).map((report) => report.id);
    assert.deepEqual(kept, ['seal', 'gray', 'sharpness', 'deskew', 'binarise']);
});

test('another photograph is computed from the beginning', async () => {
    const stages = pipeline();
    await stages.run(page(1), initialSettings(), never);
    const reports = await stages.run(page(2), initialSettings(), never);
    assert.ok(reports!.every((report) => !report.kept));
});

test('a slider that does not count changes nothing', async () => {
    const stages = pipeline();
    await stages.run(page(), initialSettings(), never);
    const reports = await stages.run(page(), withValue(initialSettings(), 'binarise', 'level', 7), never);
    assert.ok(reports!.every((report) => report.kept));
});

test('an overtaken run ends between stages, and what it computed serves the next one', async () => {
    let stagesBegun = 0;
    const stages = new Pipeline(
        orvex,
        () => 0,
        () => Promise.resolve(void ++stagesBegun),
    );
    assert.equal(await stages.run(page(), initialSettings(), () => stagesBegun > 3), null);
    const reports = await stages.run(page(), initialSettings(), never);
    assert.deepEqual(
        reports!.filter((report) => report.kept).map((report) => report.id),
        ['seal', 'gray', 'sharpness'],
    );
});

test('an operation that refuses its input says so in the words of the library, and ends the run', async () => {
    const reports = await pipeline().run(page(), switched(initialSettings(), 'gray', false), never);
    const last = reports!.at(-1)!;
    assert.equal(last.id, 'binarise');
    assert.equal(last.error!.code, 1);
    assert.match(last.error!.words, /1 == src\.channels/);
});

test('no seal is no error', async () => {
    const reddish = page();
    reddish.picture.data.fill(0, 0, 30);
    for (let at = 2; at < 30; at += 3) reddish.picture.data[at] = 255;
    const [seal] = (await pipeline().run(reddish, initialSettings(), never))!;
    assert.equal(seal!.error, undefined);
    assert.equal(seal!.nothing, 'could not find any valid red circle');
});

test('what is no error of the library passes', async () => {
    const short = { key: 1, picture: { rows: 10, cols: 10, channels: 3, data: new Uint8Array(299) } };
    await assert.rejects(pipeline().run(short, initialSettings(), never), RangeError);
});

test('a page of nothing but specks gives its many components in one row', async () => {
    const [rows, cols] = [1000, 1000];
    const picture = new Image(rows, cols, 1);
    for (let row = 0; row < rows; ++row)
        for (let col = row % 2; col < cols; col += 2) picture.data[row * cols + col] = 255;
    const off = ['seal', 'gray', 'sharpness', 'deskew'];
    let settings = withValue(initialSettings(), 'binarise', 'method', 'level');
    for (const id of off) settings = switched(settings, id, false);
    settings = withValue(settings, 'components', 'least', 1);
    const reports = (await pipeline().run({ key: 1, picture }, settings, never))!;
    assert.ok(reports.every((report) => !report.error));
    assert.equal((reports.find((report) => report.id === 'rows')!.facts['rows'] as unknown[]).length, 1);
    assert.ok((reports.find((report) => report.id === 'components')!.facts['letters'] as number) > 400_000);
});

test('lines of the library stand with the stage that printed them', async () => {
    const reports = await pipeline().run(page(), initialSettings(), never);
    assert.match(reports!.find((report) => report.id === 'gray')!.lines.join(), /bgr2gray cost time/);
});

test('exports leave out what is off and what failed', async () => {
    const settings = switched(switched(initialSettings(), 'gray', false), 'sharpness', false);
    const reports = (await pipeline().run(page(), settings, never))!;
    assert.doesNotMatch(cppOf(settings, reports), /bgr2gray|getSharpness|adaptiveThreshold/);
    assert.match(cppOf(settings, reports), /redColorDetect/);
    assert.doesNotMatch(commandsOf(settings, reports, 'photo.jpg'), /bgr2gray|adaptiveThreshold/);
    const json = JSON.parse(jsonOf(settings, reports, { name: 'photo.jpg', rows: 120, cols: 160 }));
    assert.equal(json.stages.at(-1).error.code, 1);
});

test('names of photographs are safe in a shell', async () => {
    const reports = (await pipeline().run(page(), initialSettings(), never))!;
    assert.match(commandsOf(initialSettings(), reports, "it's; rm -rf.png"), /'\.\/it'\\''s; rm -rf\.png'/);
    assert.match(commandsOf(initialSettings(), reports, '-x.png'), /'\.\/-x\.png'/);
});
