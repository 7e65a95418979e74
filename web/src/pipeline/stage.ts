/** What a stage is: a name, its parameters, what it does, and the same as C++ and as commands of docprep. */
import type { Affine } from './affine.js';
import type { Library, Picture, Point, Rect } from './library.js';

/** What pixels mean. Gray and binary pictures have 1 channel, colour ones 3. */
export type Kind = 'colour' | 'gray' | 'binary';

export type Value = number | string | boolean;
export type Values = Readonly<Record<string, Value>>;

interface Described {
    readonly name: string;
    readonly label: string;
    /** Whether the parameter counts, given the others; it always does by default. */
    readonly when?: (values: Values) => boolean;
}

export interface Slider extends Described {
    readonly type: 'slider';
    readonly least: number;
    readonly most: number;
    readonly step: number;
    readonly initial: number;
    readonly unit?: string;
}

export interface Choice extends Described {
    readonly type: 'choice';
    readonly options: readonly { readonly value: string; readonly label: string }[];
    readonly initial: string;
}

export interface Toggle extends Described {
    readonly type: 'toggle';
    readonly initial: boolean;
}

export type Parameter = Slider | Choice | Toggle;

/** What stages hand on. */
export interface Flow {
    readonly picture: Picture;
    readonly kind: Kind;
    /** The components that can be letters, once they were looked for. */
    readonly letters?: readonly Rect[];
    readonly rows?: readonly (readonly Rect[])[];
}

/** What is drawn over the picture that a stage has seen, in its pixels; `group` picks the colour. */
export type Overlay =
    | { readonly type: 'boxes'; readonly boxes: readonly Rect[]; readonly groups: readonly number[] }
    | {
          readonly type: 'outlines';
          readonly outlines: readonly (readonly Point[])[];
          readonly groups: readonly number[];
      }
    | { readonly type: 'mask'; readonly mask: Picture; readonly cols: number; readonly rows: number };

export interface Measured {
    readonly label: string;
    readonly text: string;
}

/** Numbers that a stage found, by their names in results.json. Exports read them, too. */
export type Facts = Readonly<Record<string, unknown>>;

/** What a stage made of its input; what it leaves out stays as it was. */
export interface Outcome {
    readonly picture?: Picture;
    readonly letters?: readonly Rect[];
    readonly rows?: readonly (readonly Rect[])[];
    /** From places on the input to places on the picture, pixels being unit squares. */
    readonly map?: Affine;
    readonly facts?: Facts;
    readonly measured?: readonly Measured[];
    readonly overlays?: readonly Overlay[];
}

/** Names of C++ variables at a point of the program. */
export interface CppNames {
    readonly picture: string;
    readonly letters?: string;
    readonly rows?: string;
}

/** Statements, and the names that are valid behind them where they differ. */
export interface Cpp extends Partial<CppNames> {
    readonly lines: readonly string[];
}

/** One `docprep op`; without `makesPicture` it prints numbers. A comment stands above it. */
export interface Command {
    readonly operation: string;
    readonly options?: readonly string[];
    readonly makesPicture: boolean;
    /** Its picture is not the input of what follows. */
    readonly aside?: boolean;
    readonly comment?: string;
}

export interface Stage {
    readonly id: string;
    readonly title: string;
    /** One sentence. */
    readonly about: string;
    /** Whether it is on at first. */
    readonly on: boolean;
    readonly accepts: readonly Kind[];
    /** The kind of its picture, where that is not the kind that came in. */
    readonly gives?: (kind: Kind) => Kind;
    /** Leaves the picture alone; the stages behind it run even when it fails. */
    readonly measures?: true;
    /** Stages that have to stand before this one. */
    readonly after?: readonly string[];
    readonly parameters: readonly Parameter[];
    /** Which picture's gray levels the histogram shows; facts.level is marked in it. */
    readonly histogram?: 'input' | 'output';
    /** Messages of the library that mean that there was nothing to find. */
    readonly nothing?: readonly string[];
    readonly run: (input: Flow, values: Values, library: Library) => Outcome;
    readonly cpp: (values: Values, names: CppNames, facts: Facts) => Cpp;
    readonly commands: (values: Values, facts: Facts) => readonly Command[];
}
