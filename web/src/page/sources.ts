/** Where photographs come from: a file, a drop, the clipboard, the camera, the sample. */
import sample from '../../../samples/page.jpg?url';
import { openCamera } from './camera.js';
import { found } from './dom.js';

export type Opened = (file: Blob, name: string) => void;

export async function openSample(opened: Opened): Promise<void> {
    const answer = await fetch(sample);
    opened(await answer.blob(), 'page.jpg');
}

export function listenToSources(opened: Opened): void {
    const input = found<HTMLInputElement>('file');
    input.onchange = () => {
        const file = input.files?.[0];
        if (file) opened(file, file.name);
        input.value = ''; // so that the same file can be chosen again
    };
    found('sample').onclick = () => void openSample(opened);
    found('camera').onclick = () => void openCamera((file) => opened(file, 'camera.png'));
    listenToDrops(opened);
    document.addEventListener('paste', (event) => {
        const file = event.clipboardData?.files[0];
        if (file) opened(file, file.name);
    });
}

/** The whole page takes a drop. */
function listenToDrops(opened: Opened): void {
    let inside = 0;
    const mark = (change: number): void => {
        inside = Math.max(0, inside + change);
        document.body.classList.toggle('dropping', inside > 0);
    };
    document.addEventListener('dragenter', () => mark(1));
    document.addEventListener('dragleave', () => mark(-1));
    document.addEventListener('dragover', (event) => event.preventDefault());
    document.addEventListener('drop', (event) => {
        event.preventDefault();
        mark(-inside);
        const file = event.dataTransfer?.files[0];
        if (file) opened(file, file.name);
    });
}
