import { fileURLToPath } from 'node:url';

export const source = new URL('../../', import.meta.url);
export const packageFolder = fileURLToPath(new URL('build/wasm/package/', source));
