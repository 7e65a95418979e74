/** What a run leaves to take away: C++, commands of docprep, results as JSON. */
import type { StageReport } from './run.js';
import type { Settings } from './settings.js';
import type { Command, Cpp, CppNames, Facts, Stage, Values } from './stage.js';
import { stageOf } from './stages.js';

interface Used {
    readonly stage: Stage;
    readonly values: Values;
    readonly facts: Facts;
}

/** The stages that ran without an error, in order. */
function used(settings: Settings, reports: readonly StageReport[]): Used[] {
    return settings.flatMap(({ id, on, values }) => {
        const report = reports.find((one) => one.id === id);
        return on && report && !report.error ? [{ stage: stageOf(id), values, facts: report.facts }] : [];
    });
}

const CPP_HEAD = `#include <cstdio>

#include "cv_imgproc.h"

using namespace orvex_cv_991;
using Picture = Mat<unsigned char>;
using Rects = orvex_991::vector<Rect>;

/// The page of a photograph of rows x cols x 3 bytes (B, G, R).
Picture page_of(const Picture& photo) {`;

/** One function that does what the page did, without docprep and without the page. */
export function cppOf(settings: Settings, reports: readonly StageReport[]): string {
    let names: CppNames = { picture: 'photo' };
    const body: string[] = [];
    for (const { stage, values, facts } of used(settings, reports)) {
        const { lines, ...changed }: Cpp = stage.cpp(values, names, facts);
        body.push(`    // ${stage.title}`, ...lines.map((line) => `    ${line}`), '');
        names = { ...names, ...changed };
    }
    return [CPP_HEAD, ...body, `    return ${names.picture};`, '}', ''].join('\n');
}

function quoted(name: string): string {
    return /^[\w.+/-]+$/.test(name) && !name.startsWith('-') ? name : `'./${name.replace(/'/g, `'\\''`)}'`;
}

function line(command: Command, input: string, output: string | null): string {
    const parts = ['docprep op', command.operation, quoted(input), ...(command.options ?? [])];
    return [...parts, ...(output ? [`-o ${output}`] : [])].join(' ');
}

/** A shell script that leaves the same pictures, one a stage, and prints the same numbers. */
export function commandsOf(settings: Settings, reports: readonly StageReport[], photo: string): string {
    const lines = ['#!/bin/sh', 'set -e'];
    let input = photo;
    let count = 0;
    for (const { stage, values, facts } of used(settings, reports))
        for (const command of stage.commands(values, facts)) {
            const output = command.makesPicture
                ? `${String(++count).padStart(2, '0')}_${stage.id}.png`
                : null;
            if (command.comment) lines.push(`# ${command.comment}`);
            lines.push(line(command, input, output));
            if (output && !command.aside) input = output;
        }
    return `${lines.join('\n')}\n`;
}

export interface Photo {
    readonly name: string;
    readonly rows: number;
    readonly cols: number;
}

/** Everything that was set and measured. */
export function jsonOf(settings: Settings, reports: readonly StageReport[], photo: Photo): string {
    const stages = reports.map((report) => {
        const values = settings.find((one) => one.id === report.id)?.values ?? {};
        const { milliseconds, rows, cols, facts, lines, error, nothing, histogram } = report;
        return {
            stage: report.id,
            parameters: values,
            milliseconds: Number(milliseconds.toFixed(2)),
            size: { rows, cols },
            found: facts,
            ...(histogram ? { histogram: histogram.shares } : {}),
            ...(error ? { error } : {}),
            ...(nothing ? { nothing } : {}),
            lines,
        };
    });
    return `${JSON.stringify({ photo, stages }, null, 1)}\n`;
}
