/** Settings in a link: `stages` has their order, `-` before those that are off; the rest is what was changed. */
import type { Parameter, Value } from './stage.js';
import {
    allowed,
    initialSettings,
    initialValues,
    makesSense,
    type Settings,
    type StageSettings,
} from './settings.js';
import { STAGES, stageOf } from './stages.js';

export interface Linked {
    readonly settings: Settings;
    /** What the link says and this page does not understand, one line each. */
    readonly complaints: readonly string[];
}

export function asLink(settings: Settings): string {
    const parts = [`stages=${settings.map((one) => (one.on ? one.id : `-${one.id}`)).join(',')}`];
    for (const { id, values } of settings)
        for (const parameter of stageOf(id).parameters) {
            const value = values[parameter.name];
            if (value !== parameter.initial)
                parts.push(`${id}.${parameter.name}=${encodeURIComponent(String(value))}`);
        }
    return `#${parts.join('&')}`;
}

export function fromLink(hash: string): Linked {
    const complaints: string[] = [];
    const given = new URLSearchParams(hash.replace(/^#/, ''));
    const settings = ordered(given.get('stages'), complaints).map((one) => withGiven(one, given, complaints));
    for (const name of given.keys())
        if (name !== 'stages' && !isParameter(name)) complaints.push(`no setting is called ${name}`);
    return { settings, complaints };
}

function isParameter(name: string): boolean {
    return STAGES.some((stage) =>
        stage.parameters.some((parameter) => `${stage.id}.${parameter.name}` === name),
    );
}

function ordered(text: string | null, complaints: string[]): Settings {
    if (text === null) return initialSettings();
    const stages: StageSettings[] = [];
    for (const word of text.split(',')) {
        const id = word.replace(/^-/, '');
        const stage = STAGES.find((one) => one.id === id);
        if (!stage || stages.some((one) => one.id === id))
            complaints.push(`no stage, or one named twice: ${id}`);
        else stages.push({ id, on: !word.startsWith('-'), values: initialValues(stage) });
    }
    const order = stages.map((one) => one.id);
    if (stages.length === STAGES.length && makesSense(order)) return stages;
    complaints.push('the order of stages is not one that this page knows');
    return initialSettings().map((one) => stages.find((other) => other.id === one.id) ?? one);
}

function withGiven(one: StageSettings, given: URLSearchParams, complaints: string[]): StageSettings {
    const values: Record<string, Value> = { ...one.values };
    for (const parameter of stageOf(one.id).parameters) {
        const name = `${one.id}.${parameter.name}`;
        const text = given.get(name);
        if (text === null) continue;
        const value = read(parameter, text);
        values[parameter.name] = allowed(parameter, value);
        if (values[parameter.name] !== value)
            complaints.push(`${name} cannot be ${text}: ${values[parameter.name]} instead`);
    }
    return { ...one, values };
}

function read(parameter: Parameter, text: string): Value {
    switch (parameter.type) {
        case 'toggle':
            return text === 'true' || text === 'false' ? text === 'true' : text;
        case 'slider':
            return text.trim() === '' ? NaN : Number(text);
        case 'choice':
            return text;
    }
}
