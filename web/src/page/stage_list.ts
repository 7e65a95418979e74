/** The list of stages: switches, order, parameters, and what became of each. */
import { initialSettings, moved, withStage, withValue, type Settings } from '../pipeline/settings.js';
import type { StageReport } from '../pipeline/run.js';
import type { Choice, Parameter, Slider, Stage, Value } from '../pipeline/stage.js';
import { STAGES } from '../pipeline/stages.js';
import { made } from './dom.js';

interface Row {
    readonly stage: Stage;
    readonly item: HTMLLIElement;
    readonly power: HTMLInputElement;
    readonly up: HTMLButtonElement;
    readonly down: HTMLButtonElement;
    readonly time: HTMLElement;
    readonly note: HTMLElement;
    readonly fields: readonly Field[];
}

interface Field {
    readonly parameter: Parameter;
    readonly element: HTMLElement;
    readonly set: (value: Value) => void;
}

export class StageList {
    private settings: Settings = initialSettings();
    private readonly rows: Row[];

    /** @param changed  called with what the user wants from now on */
    constructor(
        private readonly list: HTMLElement,
        private readonly changed: (settings: Settings) => void,
    ) {
        this.rows = STAGES.map((stage) => this.row(stage));
    }

    show(settings: Settings): void {
        this.settings = settings;
        const items = settings.map(({ id }) => this.rows.find((row) => row.stage.id === id)!.item);
        if (items.some((item, index) => this.list.children[index] !== item))
            this.list.replaceChildren(...items);
        for (const row of this.rows) this.update(row);
    }

    report(reports: readonly StageReport[]): void {
        for (const row of this.rows) {
            const report = reports.find((one) => one.id === row.stage.id);
            const on = this.settings.some((one) => one.on && one.id === row.stage.id);
            row.time.textContent = report ? `${report.milliseconds.toFixed(1)} ms` : '';
            row.item.classList.toggle('failed', report?.error !== undefined);
            const notReached = on && !report ? 'Not reached.' : '';
            row.note.textContent = report?.error?.words ?? report?.nothing ?? notReached;
            row.note.hidden = row.note.textContent === '';
        }
    }

    private want(settings: Settings): void {
        this.show(settings);
        this.changed(settings);
    }

    private update(row: Row): void {
        const { id } = row.stage;
        const { on, values } = this.settings.find((one) => one.id === id)!;
        row.power.checked = on;
        row.item.classList.toggle('off', !on);
        row.up.disabled = moved(this.settings, id, -1) === null;
        row.down.disabled = moved(this.settings, id, 1) === null;
        for (const { parameter, element, set } of row.fields) {
            set(values[parameter.name]!);
            element.hidden = !on || !(parameter.when?.(values) ?? true);
        }
    }

    private row(stage: Stage): Row {
        const { id, title } = stage;
        const power = made('input', {
            type: 'checkbox',
            role: 'switch',
            id: `on-${id}`,
            'aria-describedby': `about-${id}`,
        });
        power.onchange = () =>
            this.want(withStage(this.settings, id, (one) => ({ ...one, on: power.checked })));
        const mover = (words: string, sign: string, places: number): HTMLButtonElement => {
            const button = made(
                'button',
                { type: 'button', class: 'icon', 'aria-label': `Move ${title} ${words}` },
                sign,
            );
            button.onclick = () => this.move(id, places, button);
            return button;
        };
        const [up, down] = [mover('up', '↑', -1), mover('down', '↓', 1)];
        const time = made('span', { class: 'time' });
        const note = made('p', { class: 'note', hidden: true });
        const fields = stage.parameters.map((parameter) => this.field(stage, parameter));
        const head = made(
            'div',
            { class: 'head' },
            power,
            made('label', { for: `on-${id}` }, title),
            time,
            up,
            down,
        );
        const about = made('p', { class: 'about', id: `about-${id}` }, stage.about);
        const item = made(
            'li',
            { class: 'stage', 'data-stage': id },
            head,
            about,
            note,
            ...fields.map((one) => one.element),
        );
        return { stage, item, power, up, down, time, note, fields };
    }

    private move(id: string, places: number, button: HTMLButtonElement): void {
        const settings = moved(this.settings, id, places);
        if (!settings) return;
        this.want(settings);
        // Moving takes the focus away; at the end of the way the button is of no use any more.
        const other = this.rows.find((row) => row.stage.id === id)![places < 0 ? 'down' : 'up'];
        (button.disabled ? other : button).focus();
    }

    private set(stage: Stage, parameter: Parameter, value: Value): void {
        this.want(withValue(this.settings, stage.id, parameter.name, value));
    }

    private field(stage: Stage, parameter: Parameter): Field {
        switch (parameter.type) {
            case 'slider':
                return this.slider(stage, parameter);
            case 'choice':
                return this.choice(stage, parameter);
            case 'toggle': {
                const id = `${stage.id}-${parameter.name}`;
                const box = made('input', { type: 'checkbox', id });
                box.onchange = () => this.set(stage, parameter, box.checked);
                const element = made(
                    'div',
                    { class: 'parameter toggle' },
                    box,
                    made('label', { for: id }, parameter.label),
                );
                return { parameter, element, set: (value) => (box.checked = value === true) };
            }
        }
    }

    private slider(stage: Stage, parameter: Slider): Field {
        const id = `${stage.id}-${parameter.name}`;
        const { least, most, step, unit } = parameter;
        const range = made('input', { type: 'range', id, min: least, max: most, step });
        const exact = made('input', {
            type: 'number',
            min: least,
            max: most,
            step,
            'aria-label': `${stage.title}: ${parameter.label}, as a number`,
        });
        range.oninput = () => this.set(stage, parameter, range.valueAsNumber);
        exact.onchange = () => this.set(stage, parameter, exact.valueAsNumber);
        const number = made('span', { class: 'number' }, exact, made('span', { class: 'unit' }, unit ?? ''));
        const element = made(
            'div',
            { class: 'parameter slider' },
            made('label', { for: id }, parameter.label),
            range,
            number,
        );
        const set = (value: Value): void => {
            range.value = exact.value = String(value);
            range.style.setProperty('--filled', `${(100 * (Number(value) - least)) / (most - least)}%`);
            range.setAttribute('aria-valuetext', `${value} ${unit ?? ''}`.trim());
        };
        return { parameter, element, set };
    }

    private choice(stage: Stage, parameter: Choice): Field {
        const name = `${stage.id}-${parameter.name}`;
        const radios = parameter.options.map(({ value, label }) => {
            const radio = made('input', { type: 'radio', name, id: `${name}-${value}`, value });
            radio.onchange = () => this.set(stage, parameter, value);
            return { radio, element: made('span', {}, radio, made('label', { for: radio.id }, label)) };
        });
        const options = made('div', { class: 'options' }, ...radios.map((one) => one.element));
        const element = made(
            'fieldset',
            { class: 'parameter choice' },
            made('legend', {}, parameter.label),
            options,
        );
        return {
            parameter,
            element,
            set: (value) => radios.forEach(({ radio }) => (radio.checked = radio.value === value)),
        };
    }
}
