/** The column of what was measured: numbers, gray levels, times, and the library's lines. */
import type { Photo } from '../pipeline/exports.js';
import type { Histogram, StageReport } from '../pipeline/run.js';
import { stageOf } from '../pipeline/stages.js';
import { drawn, found, made } from './dom.js';

const WIDTH = 256;
const HEIGHT = 96;

/** What a stage counts. */
const SUMMED_UP: Record<string, string> = { components: 'letters', rows: 'rows', hull: 'hulls' };

export function showFindings(photo: Photo, reports: readonly StageReport[]): void {
    showMeasured(photo, reports);
    showHistogram(reports.findLast((report) => report.histogram)?.histogram);
    showTimes(reports);
    showLines(reports);
}

function showMeasured(photo: Photo, reports: readonly StageReport[]): void {
    const last = reports.at(-1) ?? photo;
    const sizes = [
        ['Photograph', `${photo.cols} × ${photo.rows}`],
        ['Result', `${last.cols} × ${last.rows}`],
    ] as const;
    const entries = reports.flatMap((report) => [
        ...report.measured.map(({ label, text }) => [label, text] as const),
        ...(report.nothing ? [[stageOf(report.id).title, 'none'] as const] : []),
    ]);
    found('measured').replaceChildren(
        ...[...sizes, ...entries].map(([label, text]) =>
            made('div', {}, made('dt', {}, label), made('dd', {}, text)),
        ),
    );
}

function showHistogram(histogram: Histogram | undefined): void {
    const box = found('histogram');
    if (!histogram) {
        box.replaceChildren(made('p', { class: 'empty' }, 'No gray picture yet.'));
        return;
    }
    const { shares, level } = histogram;
    const top = Math.max(...shares);
    const bars = shares.map(
        (share, k) => `M${k + 0.5} ${HEIGHT}v${(-HEIGHT * 0.96 * Math.sqrt(share / top)).toFixed(2)}`,
    );
    const parts = [drawn('path', { d: bars.join(''), class: 'bars' })];
    if (level !== undefined) parts.push(drawn('path', { d: `M${level} 0V${HEIGHT}`, class: 'level' }));
    const words = `Shares of the gray levels from black to white${level === undefined ? '' : `; bright from ${level}`}`;
    const picture = drawn('svg', {
        viewBox: `0 0 ${WIDTH} ${HEIGHT}`,
        preserveAspectRatio: 'none',
        role: 'img',
        'aria-label': words,
    });
    picture.append(...parts);
    const scale = made('p', { class: 'scale', 'aria-hidden': 'true' }, made('span', {}, '0'));
    if (level !== undefined) scale.append(made('strong', {}, `threshold ${level}`));
    scale.append(made('span', {}, '255'));
    box.replaceChildren(picture, scale);
}

function showTimes(reports: readonly StageReport[]): void {
    const most = Math.max(...reports.map((report) => report.milliseconds), 0.1);
    found('times').replaceChildren(
        ...reports.map(({ id, milliseconds, kept }) => {
            const bar = made('span', { class: 'bar-of-time' });
            bar.style.setProperty('--share', `${((100 * milliseconds) / most).toFixed(1)}%`);
            const time = made('span', { class: 'value' }, milliseconds.toFixed(1));
            const words = kept ? [made('span', { class: 'unseen' }, ' (from before)')] : [];
            return made(
                'li',
                { class: kept ? 'kept' : '' },
                made('span', {}, stageOf(id).title, ...words),
                bar,
                time,
            );
        }),
    );
}

function showLines(reports: readonly StageReport[]): void {
    const lines = reports.flatMap((report) => report.lines.map((line) => line.trimEnd()));
    found('console').textContent = lines.length > 0 ? lines.join('\n') : 'Nothing printed.';
}

/** In short, also for those who do not see the picture. */
export function summaryOf(reports: readonly StageReport[], milliseconds: number): string {
    const numbers = reports
        .filter((report) => SUMMED_UP[report.id] && !report.error)
        .map((report) => `${report.measured.at(-1)?.text ?? '0'} ${SUMMED_UP[report.id]}`);
    return [...numbers.reverse(), `${Math.round(milliseconds)} ms`].join(' · ');
}
