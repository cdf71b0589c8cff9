// What all parts of the page need of the document.

export const find = (id) => document.getElementById(id);

// A new element of a drawing.
export function drawn(name, attributes, parent) {
    const made = document.createElementNS("http://www.w3.org/2000/svg", name);
    for (const [key, value] of Object.entries(attributes)) made.setAttribute(key, value);
    return parent.appendChild(made);
}

// One list is open at a time: there is room for one.
export function reveal(id) {
    for (const other of ["suggestions", "waves"]) find(other).hidden = other !== id;
}
