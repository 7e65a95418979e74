// @ts-check
/** docprep and the library, as the build has left them, to compare with. */
import { execFileSync } from 'node:child_process';
import { existsSync, mkdtempSync, rmSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { dirname, join, resolve } from 'node:path';

export const ROOT = resolve(new URL('../../..', import.meta.url).pathname);
export const SAMPLE = join(ROOT, 'samples/page.jpg');

/** The build folder that ORVEX_BUILD names, or the first that has docprep. */
function built() {
    const folders = process.env.ORVEX_BUILD
        ? [process.env.ORVEX_BUILD]
        : ['dev', 'release'].map((name) => join(ROOT, 'build', name));
    const found = folders.find((folder) => existsSync(join(folder, 'tools/docprep/docprep')));
    if (!found) throw new Error(`no docprep in ${folders.join(' or ')}`);
    return resolve(found);
}

const DOCPREP = join(built(), 'tools/docprep/docprep');

/** @param {...string} words  @returns {string} what it prints */
export function docprep(...words) {
    return execFileSync(DOCPREP, words, { encoding: 'utf8', stdio: ['ignore', 'pipe', 'inherit'] });
}

/**
 * A script of docprep commands, run in a folder.
 * @param {string} script @param {string} folder
 */
export function shell(script, folder) {
    const env = { ...process.env, PATH: `${dirname(DOCPREP)}:${process.env.PATH}` };
    return execFileSync('sh', ['-c', script], { cwd: folder, env, encoding: 'utf8' });
}

/** @param {string} source @param {string} program  both files; a program with the library */
export function compiled(source, program) {
    const flags = ['-std=c++17', '-O1', '-Wall', '-Wextra', '-Werror', `-I${join(ROOT, 'jni/orvex_991')}`];
    const library = execFileSync('find', [built(), '-name', 'liborvex_991.a'], { encoding: 'utf8' }).split(
        '\n',
    )[0];
    execFileSync('c++', [...flags, source, '-o', program, library], { stdio: ['ignore', 'pipe', 'inherit'] });
}

/** A folder that is gone when the tests are done. */
export function folder() {
    const made = mkdtempSync(join(tmpdir(), 'orvex_web_'));
    process.on('exit', () => rmSync(made, { recursive: true, force: true }));
    return made;
}
