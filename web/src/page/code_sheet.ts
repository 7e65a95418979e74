/** A dialog with text to copy or to save. */
import { found, opened, save } from './dom.js';

export interface Sheet {
    readonly title: string;
    readonly about: string;
    readonly text: string;
    /** Of the file. */
    readonly name: string;
}

/** Whether the text is on the clipboard now. */
export async function copied(text: string): Promise<boolean> {
    try {
        await navigator.clipboard.writeText(text);
        return true;
    } catch {
        return false;
    }
}

export function openSheet({ title, about, text, name }: Sheet): void {
    found('code-title').textContent = title;
    found('code-about').textContent = about;
    found('code-text').textContent = text;
    const copy = found<HTMLButtonElement>('code-copy');
    copy.textContent = 'Copy';
    copy.onclick = async () => {
        copy.textContent = (await copied(text)) ? 'Copied' : 'The browser refuses';
    };
    found<HTMLButtonElement>('code-save').onclick = () =>
        save(new Blob([text], { type: 'text/plain' }), name);
    opened(found<HTMLDialogElement>('code'));
}
