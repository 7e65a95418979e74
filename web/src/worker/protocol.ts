/** Messages between the page and its worker. */
import type { Settings } from '../pipeline/settings.js';
import type { StageReport } from '../pipeline/run.js';

export type ToWorker =
    | { readonly type: 'open'; readonly photo: number; readonly file: Blob }
    /** `show`: behind which stage the picture is wanted; null is the photograph. */
    | {
          readonly type: 'run';
          readonly run: number;
          readonly settings: Settings;
          readonly show: string | null;
      }
    /** The picture that was shown last, as PNG. */
    | { readonly type: 'encode' };

export type FromWorker =
    | { readonly type: 'ready'; readonly milliseconds: number }
    | { readonly type: 'opened'; readonly photo: number; readonly bitmap: ImageBitmap }
    | { readonly type: 'refused'; readonly photo: number; readonly words: string }
    | {
          readonly type: 'done';
          readonly run: number;
          readonly reports: readonly StageReport[];
          readonly bitmap: ImageBitmap;
          /** The stage whose picture it is; the last that has one when `show` was not reached. */
          readonly shown: string | null;
          readonly milliseconds: number;
      }
    | { readonly type: 'encoded'; readonly blob: Blob }
    /** Something that is no error of the library's; the worker is of no use any more. */
    | { readonly type: 'broken'; readonly words: string };
