/** Which stages run, in which order, with which values. */
import type { Kind, Parameter, Stage, Value, Values } from './stage.js';
import { STAGES, stageOf } from './stages.js';

export interface StageSettings {
    readonly id: string;
    readonly on: boolean;
    readonly values: Values;
}

/** All stages, each once, in their order. */
export type Settings = readonly StageSettings[];

export function initialValues(stage: Stage): Values {
    return Object.fromEntries(stage.parameters.map((parameter) => [parameter.name, parameter.initial]));
}

export function initialSettings(): Settings {
    return STAGES.map((stage) => ({ id: stage.id, on: stage.on, values: initialValues(stage) }));
}

/** A value as close to `value` as the parameter allows; what it is at first where that makes no sense. */
export function allowed(parameter: Parameter, value: Value): Value {
    switch (parameter.type) {
        case 'toggle':
            return typeof value === 'boolean' ? value : parameter.initial;
        case 'choice':
            return parameter.options.some((option) => option.value === value) ? value : parameter.initial;
        case 'slider': {
            const wanted = typeof value === 'number' && Number.isFinite(value) ? value : parameter.initial;
            const { least, most, step } = parameter;
            const steps = Math.round((Math.min(Math.max(wanted, least), most) - least) / step);
            return Number((least + steps * step).toFixed(6));
        }
    }
}

export function withStage(
    settings: Settings,
    id: string,
    change: (before: StageSettings) => StageSettings,
): Settings {
    return settings.map((one) => (one.id === id ? change(one) : one));
}

export function withValue(settings: Settings, id: string, name: string, value: Value): Settings {
    const parameter = stageOf(id).parameters.find((one) => one.name === name);
    if (!parameter) return settings;
    return withStage(settings, id, (one) => ({
        ...one,
        values: { ...one.values, [name]: allowed(parameter, value) },
    }));
}

/** Whether every stage would get what it accepts if all of them were on. */
export function makesSense(order: readonly string[]): boolean {
    let kind: Kind = 'colour';
    return order.every((id, index) => {
        const stage = stageOf(id);
        const fits = stage.accepts.includes(kind);
        kind = stage.gives ? stage.gives(kind) : kind;
        return fits && (stage.after ?? []).every((before) => order.indexOf(before) < index);
    });
}

/** With a stage moved by `places`; null where that makes no sense. */
export function moved(settings: Settings, id: string, places: number): Settings | null {
    const from = settings.findIndex((one) => one.id === id);
    const to = from + places;
    if (to < 0 || to >= settings.length) return null;
    const order = [...settings];
    order.splice(to, 0, ...order.splice(from, 1));
    return makesSense(order.map((one) => one.id)) ? order : null;
}
