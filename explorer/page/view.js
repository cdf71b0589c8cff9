// Panes: a picture from near and far, one zoom and one place for all of them, or for each its own.

const mostZoom = 200;
const listeners = [];

export const view = { zoom: 1, x: 0.5, y: 0.5, isShared: true };

export function whenViewChanges(listener) {
    listeners.push(listener);
}

function settle(of) {
    of.zoom = Math.min(Math.max(of.zoom, 1), mostZoom);
    const half = 0.5 / of.zoom;
    of.x = Math.min(Math.max(of.x, half), 1 - half);
    of.y = Math.min(Math.max(of.y, half), 1 - half);
    for (const listener of listeners) listener();
}

export function fit(of = view) {
    settle(Object.assign(of, { zoom: 1, x: 0.5, y: 0.5 }));
}

// Zooms about a place that stays where it is, both in parts of the picture.
export function zoomBy(factor, of = view, x = of.x, y = of.y) {
    const former = of.zoom;
    of.zoom = Math.min(Math.max(of.zoom * factor, 1), mostZoom);
    of.x = x + ((of.x - x) * former) / of.zoom;
    of.y = y + ((of.y - y) * former) / of.zoom;
    settle(of);
}

function panBy(dx, dy, of) {
    of.x += dx;
    of.y += dy;
    settle(of);
}

const greys = Uint32Array.from({ length: 256 }, (_, grey) => (0xff << 24) | (grey * 0x10101));

export class Pane {
    constructor(root) {
        this.root = root;
        this.canvas = root.querySelector("canvas");
        this.svg = root.querySelector("svg");
        this.scratch = document.createElement("canvas");
        this.levels = null;
        this.layers = [];
        this.own = { zoom: 1, x: 0.5, y: 0.5 };
        new ResizeObserver(() => this.draw()).observe(this.canvas);
    }

    get view() { return view.isShared ? view : this.own; }
    get width() { return this.levels?.[0].width ?? 1; }
    get height() { return this.levels?.[0].height ?? 1; }

    // How the picture lies on the pane, in its pixels of the style sheet.
    placement() {
        const width = this.canvas.clientWidth, height = this.canvas.clientHeight;
        const scale = Math.min(width / this.width, height / this.height) * this.view.zoom;
        return { scale, left: width / 2 - this.view.x * this.width * scale,
                 top: height / 2 - this.view.y * this.height * scale };
    }

    // From a place on the pane to a place in parts of the picture, and back.
    partAt(x, y) {
        const { scale, left, top } = this.placement();
        return { x: (x - left) / (this.width * scale), y: (y - top) / (this.height * scale) };
    }

    placeOf(x, y) {
        const { scale, left, top } = this.placement();
        return { x: left + x * this.width * scale, y: top + y * this.height * scale };
    }

    // The pels that are seen.
    seen() {
        const { scale, left, top } = this.placement();
        const x = Math.max(0, Math.floor(-left / scale)), y = Math.max(0, Math.floor(-top / scale));
        return {
            x, y,
            width: Math.min(this.width, Math.ceil((this.canvas.clientWidth - left) / scale)) - x,
            height: Math.min(this.height, Math.ceil((this.canvas.clientHeight - top) / scale)) - y,
        };
    }

    show(levels) {
        this.levels = levels;
        this.draw();
    }

    draw() {
        const ratio = devicePixelRatio;
        const width = Math.round(this.canvas.clientWidth * ratio);
        const height = Math.round(this.canvas.clientHeight * ratio);
        if (this.canvas.width !== width || this.canvas.height !== height) Object.assign(this.canvas, { width, height });
        const context = this.canvas.getContext("2d");
        context.clearRect(0, 0, width, height);
        if (!this.levels || width === 0 || height === 0) return;
        this.drawLevel(context, ratio);
        for (const layer of this.layers) layer(context, ratio);
    }

    // Of the levels the smallest that has a pel for every pixel.
    drawLevel(context, ratio) {
        const { scale, left, top } = this.placement();
        let at = 0;
        while (at + 1 < this.levels.length && scale * ratio * 2 ** (at + 1) <= 1) ++at;
        const level = this.levels[at], step = 2 ** at, seen = this.seen();
        const x = Math.floor(seen.x / step), y = Math.floor(seen.y / step);
        const columns = Math.min(level.width, Math.ceil((seen.x + seen.width) / step)) - x;
        const rows = Math.min(level.height, Math.ceil((seen.y + seen.height) / step)) - y;
        if (columns <= 0 || rows <= 0) return;
        this.fillScratch(level, x, y, columns, rows);
        const size = scale * ratio * step;
        context.imageSmoothingEnabled = size < 1;
        context.drawImage(this.scratch, 0, 0, columns, rows, left * ratio + x * size, top * ratio + y * size,
                          columns * size, rows * size);
    }

    fillScratch(level, x, y, columns, rows) {
        const { scratch } = this;
        if (scratch.width < columns || scratch.height < rows) {
            Object.assign(scratch, { width: Math.max(columns, scratch.width), height: Math.max(rows, scratch.height) });
        }
        const context = scratch.getContext("2d");
        if (this.image?.width !== columns || this.image?.height !== rows) {
            this.image = context.createImageData(columns, rows);
        }
        const to = new Uint32Array(this.image.data.buffer);
        for (let row = 0, i = 0; row < rows; ++row) {
            let from = (y + row) * level.width + x;
            for (let column = 0; column < columns; ++column) to[i++] = greys[level.pels[from++]];
        }
        context.putImageData(this.image, 0, 0);
    }
}

// Wheel, drag, two fingers and keys move all panes.
export function makeMovable(pane) {
    const { root } = pane;
    const local = ({ clientX, clientY }) => {
        const box = pane.canvas.getBoundingClientRect();
        return pane.partAt(clientX - box.left, clientY - box.top);
    };
    root.addEventListener("wheel", (event) => {
        event.preventDefault();
        const { x, y } = local(event);
        zoomBy(Math.exp(-event.deltaY * (event.deltaMode === 1 ? 0.05 : 0.002)), pane.view, x, y);
    }, { passive: false });

    const pointers = new Map();
    root.addEventListener("pointerdown", (event) => {
        if (event.target.closest("[role=slider]") || event.button > 1) return;
        pointers.set(event.pointerId, event);
        root.setPointerCapture(event.pointerId);
    });
    root.addEventListener("pointermove", (event) => {
        const former = pointers.get(event.pointerId);
        if (!former) return;
        if (pointers.size === 1) {
            const from = local(former), to = local(event);
            panBy(from.x - to.x, from.y - to.y, pane.view);
        } else {
            const other = [...pointers.values()].find(({ pointerId }) => pointerId !== event.pointerId);
            const apart = ({ clientX, clientY }) => Math.hypot(clientX - other.clientX, clientY - other.clientY) + 1;
            const { x, y } = local(other);
            zoomBy(apart(event) / apart(former), pane.view, x, y);
        }
        pointers.set(event.pointerId, event);
    });
    for (const type of ["pointerup", "pointercancel"]) {
        root.addEventListener(type, ({ pointerId }) => pointers.delete(pointerId));
    }
    root.addEventListener("dblclick", () => fit(pane.view));
    root.addEventListener("keydown", (event) => {
        if (event.target !== root) return;
        const step = 0.1 / pane.view.zoom;
        const moves = {
            ArrowLeft: () => panBy(-step, 0, pane.view), ArrowRight: () => panBy(step, 0, pane.view),
            ArrowUp: () => panBy(0, -step, pane.view), ArrowDown: () => panBy(0, step, pane.view),
        };
        if (!moves[event.key]) return;
        event.preventDefault();
        moves[event.key]();
    });
}
