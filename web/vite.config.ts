import { defineConfig } from 'vite';

export default defineConfig({
    base: './', // the page may lie in any folder of a server
    build: {
        outDir: 'build/page',
        target: 'es2022',
        assetsInlineLimit: 0,
        modulePreload: { polyfill: false },
    },
    worker: { format: 'es' },
});
