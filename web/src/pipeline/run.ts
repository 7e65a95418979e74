/** Runs the stages over a photograph; what a change does not touch is not computed again. */
import { combined, IDENTITY, type Affine } from './affine.js';
import { LibraryError, type Library, type Picture } from './library.js';
import type { Settings } from './settings.js';
import type { Facts, Flow, Kind, Measured, Outcome, Overlay, Stage, Values } from './stage.js';
import { stageOf } from './stages.js';

export interface Histogram {
    /** 256 shares, from black to white. */
    readonly shares: readonly number[];
    /** The first level that counts as bright, where one level parts the picture. */
    readonly level?: number;
}

/** What became of a stage that is on. */
export interface StageReport {
    readonly id: string;
    readonly milliseconds: number;
    /** Whether an earlier run had computed it. */
    readonly kept: boolean;
    /** What the library printed. */
    readonly lines: readonly string[];
    /** In the library's words; where it stands, the picture is still that of the stage before. */
    readonly error?: { readonly code: number; readonly words: string };
    /** In the library's words, when there was nothing to find. */
    readonly nothing?: string;
    readonly measured: readonly Measured[];
    readonly facts: Facts;
    readonly overlays: readonly Overlay[];
    readonly histogram?: Histogram;
    readonly kind: Kind;
    readonly rows: number;
    readonly cols: number;
    /** From the photograph's places to those of this stage's picture. */
    readonly map: Affine;
}

interface Step {
    readonly key: string;
    readonly report: StageReport;
    readonly flow: Flow;
}

export interface Photograph {
    /** Different for each photograph. */
    readonly key: number;
    readonly picture: Picture;
}

export class Pipeline {
    private steps: Step[] = [];

    /**
     * @param now  milliseconds of a clock
     * @param breathe  lets messages arrive; called between stages
     */
    constructor(
        private readonly library: Library,
        private readonly now: () => number,
        private readonly breathe: () => Promise<void>,
    ) {}

    /**
     * Reports of the stages that are on, in order; null once `overtaken` says that nobody waits for them any more.
     * Whatever is no error of the library's passes.
     */
    async run(
        photograph: Photograph,
        settings: Settings,
        overtaken: () => boolean,
    ): Promise<StageReport[] | null> {
        const before = this.steps;
        this.steps = [];
        let key = String(photograph.key);
        let flow: Flow = {
            picture: photograph.picture,
            kind: photograph.picture.channels === 3 ? 'colour' : 'gray',
        };
        let map: Affine = IDENTITY;
        for (const { id, values } of settings.filter((one) => one.on)) {
            const stage = stageOf(id);
            key += `|${id}${JSON.stringify(relevant(stage, values))}`;
            let step = before.find((one) => one.key === key);
            if (step) {
                step = { ...step, report: { ...step.report, kept: true } };
            } else {
                await this.breathe();
                if (overtaken()) {
                    // What the overtaken run has and has not reached serves the next one.
                    this.steps = [...this.steps, ...before];
                    return null;
                }
                step = this.step(key, stage, values, flow, map);
            }
            this.steps.push(step);
            flow = step.flow;
            map = step.report.map;
            if (step.report.error && !stage.measures) break;
        }
        return this.steps.map((step) => step.report);
    }

    /** The picture behind a stage of the last run, or the photograph. */
    pictureAfter(id: string | null, photograph: Photograph): Picture {
        return this.steps.find((step) => step.report.id === id)?.flow.picture ?? photograph.picture;
    }

    private step(key: string, stage: Stage, values: Values, input: Flow, map: Affine): Step {
        const lines: string[] = [];
        this.library.onLines = (printed) => lines.push(...printed);
        const began = this.now();
        let outcome: Outcome = {};
        let failure: { code: number; words: string } | undefined;
        try {
            outcome = stage.run(input, values, this.library);
        } catch (error) {
            if (!(error instanceof LibraryError)) throw error;
            failure = { code: error.code, words: error.message };
        } finally {
            this.library.onLines = null;
        }
        const milliseconds = this.now() - began;
        const flow = failure ? input : handedOn(stage, input, outcome);
        const none = failure && (stage.nothing ?? []).includes(failure.words);
        return {
            key,
            flow,
            report: {
                id: stage.id,
                milliseconds,
                kept: false,
                lines,
                ...(none ? { nothing: failure!.words } : failure ? { error: failure } : {}),
                measured: outcome.measured ?? [],
                facts: outcome.facts ?? {},
                overlays: outcome.overlays ?? [],
                ...(failure ? {} : this.histogram(stage, input, flow, outcome)),
                kind: flow.kind,
                rows: flow.picture.rows,
                cols: flow.picture.cols,
                map: combined(outcome.map ?? IDENTITY, map),
            },
        };
    }

    private histogram(stage: Stage, input: Flow, output: Flow, outcome: Outcome): { histogram?: Histogram } {
        if (!stage.histogram) return {};
        const { picture } = stage.histogram === 'input' ? input : output;
        const shares = Array.from(this.library.hist(picture));
        const level = outcome.facts?.['level'];
        return { histogram: { shares, ...(typeof level === 'number' ? { level } : {}) } };
    }
}

/** Values that count, given the others: moving a slider that is not shown changes nothing. */
function relevant(stage: Stage, values: Values): Values {
    const shown = stage.parameters.filter((parameter) => parameter.when?.(values) ?? true);
    return Object.fromEntries(shown.map((parameter) => [parameter.name, values[parameter.name]!]));
}

function handedOn(stage: Stage, input: Flow, outcome: Outcome): Flow {
    const moved = outcome.picture !== undefined;
    const kind = moved && stage.gives ? stage.gives(input.kind) : input.kind;
    return {
        picture: outcome.picture ?? input.picture,
        kind,
        letters: outcome.letters ?? (moved ? undefined : input.letters),
        rows: outcome.rows ?? (moved ? undefined : input.rows),
    };
}
