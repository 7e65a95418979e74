/** A photograph from the camera. */
import { found, opened } from './dom.js';

const REFUSALS: Record<string, string> = {
    NotAllowedError: 'The browser does not let this page use the camera.',
    NotFoundError: 'There is no camera.',
    NotReadableError: 'Another program uses the camera.',
};

/** @param taken  called with a PNG, which loses nothing */
export async function openCamera(taken: (file: Blob) => void): Promise<void> {
    const dialog = found<HTMLDialogElement>('shot');
    const video = found<HTMLVideoElement>('video');
    const words = found('shot-words');
    const shoot = found<HTMLButtonElement>('shoot');
    words.textContent = 'Waiting for the camera …';
    shoot.disabled = true;
    opened(dialog);
    let stream: MediaStream | null = null;
    const stop = (): void => {
        stream?.getTracks().forEach((track) => track.stop());
        video.srcObject = null;
    };
    dialog.addEventListener('close', stop, { once: true });
    try {
        stream = await navigator.mediaDevices.getUserMedia({
            video: { facingMode: 'environment', width: { ideal: 4096 }, height: { ideal: 3072 } },
        });
        if (!dialog.open) return stop(); // closed while it was asked for
        video.srcObject = stream;
        await video.play();
    } catch (error) {
        const name = error instanceof Error ? error.name : '';
        words.textContent =
            REFUSALS[name] ?? 'The camera cannot be used here: it takes an https or local address.';
        return;
    }
    words.textContent = `${video.videoWidth} × ${video.videoHeight} pixels`;
    shoot.disabled = false;
    shoot.onclick = () => {
        const canvas = document.createElement('canvas');
        [canvas.width, canvas.height] = [video.videoWidth, video.videoHeight];
        canvas.getContext('2d')!.drawImage(video, 0, 0);
        canvas.toBlob((file) => file && taken(file), 'image/png');
        dialog.close();
    };
}
