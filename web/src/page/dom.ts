/** Making and finding elements. */

type Attributes = Readonly<Record<string, string | boolean | number | undefined>>;
type Child = Node | string;

/** Attributes that are false or undefined are left out. */
export function made<Name extends keyof HTMLElementTagNameMap>(
    name: Name,
    attributes: Attributes = {},
    ...children: Child[]
): HTMLElementTagNameMap[Name] {
    const element = document.createElement(name);
    set(element, attributes);
    element.append(...children);
    return element;
}

export function drawn(name: string, attributes: Attributes, ...children: Child[]): SVGElement {
    const element = document.createElementNS('http://www.w3.org/2000/svg', name);
    set(element, attributes);
    element.append(...children);
    return element;
}

function set(element: Element, attributes: Attributes): void {
    for (const [name, value] of Object.entries(attributes))
        if (value !== false && value !== undefined)
            element.setAttribute(name, value === true ? '' : String(value));
}

/** The element that index.html has under that id. */
export function found<Type extends Element = HTMLElement>(id: string): Type {
    const element = document.getElementById(id);
    if (!element) throw new Error(`the page has no #${id}`);
    return element as unknown as Type;
}

export function save(blob: Blob, name: string): void {
    const address = URL.createObjectURL(blob);
    made('a', { href: address, download: name }).click();
    setTimeout(() => URL.revokeObjectURL(address), 60_000);
}

/** Opens a dialog whose [data-close] closes it, and so does a click beside it. */
export function opened(dialog: HTMLDialogElement): void {
    dialog.onclick = ({ target }) => {
        if (target === dialog || (target instanceof Element && target.closest('[data-close]')))
            dialog.close();
    };
    dialog.showModal();
}
