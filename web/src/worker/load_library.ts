import type { Library } from '../pipeline/library.js';
export function loadLibrary(): Promise<{ library: Library; simd: boolean }> { throw new Error('not there yet'); }
