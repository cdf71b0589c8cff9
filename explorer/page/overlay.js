// The filters upon the spectrum: what they let through as a tint, their shapes as lines, the numbers of
// the edited one as handles that are dragged or moved by keys.
import { drawn } from "./dom.js";
import { clamped, fields, kinds } from "./settings.js";

const fieldOf = Object.fromEntries(fields.map((field) => [field.name, field]));
const radians = (degrees) => (degrees * Math.PI) / 180;

// Where a handle stands in cycles per pixel, and what dragging it there sets.
const ringHandles = [
    { name: "frequency", label: "Ring radius",
      at: (s) => [s.frequency, 0], set: (s, u, v) => ({ frequency: Math.hypot(u, v) }) },
    { name: "sigma", label: "Ring width, sigma",
      at: (s) => [0, -(s.frequency + s.plateau + s.sigma)],
      set: (s, u, v) => ({ sigma: Math.hypot(u, v) - s.frequency - s.plateau }) },
];
const along = (s, f) => [f * Math.cos(radians(s.angle)), f * Math.sin(radians(s.angle))];
const lobeHandles = [
    { name: "frequency", label: "Lobe place: frequency by left and right, angle by up and down",
      at: (s) => along(s, s.frequency),
      set: (s, u, v) => ({ frequency: Math.hypot(u, v),
                           angle: Math.round((Math.atan2(v, u) * 1800) / Math.PI) / 10 }) },
    { name: "sigma", label: "Lobe sigma along",
      at: (s) => along(s, s.frequency + s.plateau + s.sigma),
      set: (s, u, v) => {
          const a = radians(s.angle);
          return { sigma: Math.abs(u * Math.cos(a) + v * Math.sin(a) - s.frequency) - s.plateau };
      } },
    { name: "sigmaAcross", label: "Lobe sigma across",
      at: (s) => {
          const a = radians(s.angle), [u, v] = along(s, s.frequency), d = s.plateauAcross + s.sigmaAcross;
          return [u - d * Math.sin(a), v + d * Math.cos(a)];
      },
      set: (s, u, v) => {
          const a = radians(s.angle);
          return { sigmaAcross: Math.abs(v * Math.cos(a) - u * Math.sin(a)) - s.plateauAcross };
      } },
];
const handlesOf = { ring: ringHandles, lobe: lobeHandles, weights: [] };

export class Overlay {
    // `change` takes the numbers that were set.
    constructor(pane, change) {
        this.pane = pane;
        this.change = change;
        this.lines = drawn("g", {}, pane.svg);
        this.grips = drawn("g", {}, pane.svg);
        this.gains = null;
        new ResizeObserver(() => this.settings && this.draw(this.settings)).observe(pane.canvas);
        pane.layers.push((context, ratio) => this.tint(context, ratio));
    }

    showGains(gains) {
        const canvas = this.gains ?? document.createElement("canvas");
        Object.assign(canvas, { width: gains.width, height: gains.height });
        const context = canvas.getContext("2d");
        const image = context.createImageData(gains.width, gains.height);
        const to = new Uint32Array(image.data.buffer);
        for (let i = 0; i < to.length; ++i) to[i] = ((gains.pels[i] * 0.55) << 24) | 0x40b0ff;
        context.putImageData(image, 0, 0);
        this.gains = canvas;
        this.pane.draw();
    }

    tint(context, ratio) {
        if (!this.gains || this.isTinted === false) return;
        const from = this.pane.placeOf(0, 0), to = this.pane.placeOf(1, 1);
        context.imageSmoothingEnabled = true;
        context.drawImage(this.gains, from.x * ratio, from.y * ratio, (to.x - from.x) * ratio, (to.y - from.y) * ratio);
    }

    place([u, v]) { return this.pane.placeOf(u + 0.5, v + 0.5); }

    get cycle() { return this.place([1, 0]).x - this.place([0, 0]).x; }

    draw(settings) {
        this.settings = settings;
        const { shape } = kinds[settings.kind];
        this.lines.replaceChildren();
        this.drawAxes();
        for (const step of settings.before) this.drawBefore(step);
        if (shape === "ring") this.drawRing(settings);
        if (shape === "lobe") this.drawLobe(settings);
        this.drawGrips(handlesOf[shape], settings);
    }

    drawAxes() {
        const all = [0.5, 0.25, 0.1, 0.05, 0.025, 0.01, 0.005];
        const step = all.filter((s) => s * this.cycle >= 44).at(-1) ?? 0.5;
        const width = this.pane.canvas.clientWidth;
        const height = Math.min(this.pane.canvas.clientHeight, this.place([0, 0.5]).y);
        const left = Math.max(0, this.place([-0.5, 0]).x);
        const text = (value) => Number(value.toFixed(3)).toString().replace("-", "−");
        for (let value = -0.5; value < 0.5001; value += step) {
            const { x } = this.place([value, 0]), { y } = this.place([0, value]);
            if (x >= left && x <= width) {
                drawn("line", { class: "tick", x1: x, x2: x, y1: height - 4, y2: height }, this.lines);
                const place = { x: Math.min(Math.max(x, left + 14), width - 14), y: height - 7 };
                const label = drawn("text", { class: "tick", ...place, "text-anchor": "middle" }, this.lines);
                label.textContent = text(value);
            }
            if (y >= 12 && y <= height - 20) {
                drawn("line", { class: "tick", x1: left, x2: left + 4, y1: y, y2: y }, this.lines);
                drawn("text", { class: "tick", x: left + 7, y: y + 3 }, this.lines).textContent = text(value);
            }
        }
    }

    circle(name, radius) {
        const { x, y } = this.place([0, 0]);
        if (radius > 0) drawn("circle", { class: name, cx: x, cy: y, r: radius * this.cycle }, this.lines);
    }

    drawRing(s) {
        this.circle("shape", s.frequency);
        this.circle("width", s.frequency + s.plateau + s.sigma);
        this.circle("width", s.frequency - s.plateau - s.sigma);
    }

    ellipse(name, frequency, angle, rx, ry) {
        const { x, y } = this.place(along({ angle }, frequency));
        drawn("ellipse", { class: name, cx: x, cy: y, rx: rx * this.cycle, ry: ry * this.cycle,
                           transform: `rotate(${angle} ${x} ${y})` }, this.lines);
    }

    // The mirrored place is that of the same wave: a real picture has each of them twice.
    drawLobe(s) {
        const along = s.plateau + s.sigma, across = s.plateauAcross + s.sigmaAcross;
        const hasBoth = s.bothSides && kinds[s.kind].name === "gaborreject";
        this.ellipse("width", s.frequency, s.angle, along, across);
        this.ellipse("shape", s.frequency, s.angle, Math.max(s.plateau, 0.3 * s.sigma),
                     Math.max(s.plateauAcross, 0.3 * s.sigmaAcross));
        this.ellipse(hasBoth ? "width" : "twin", s.frequency, s.angle + 180, along, across);
    }

    drawBefore(s) {
        if (kinds[s.kind].shape === "ring") return this.circle("before", s.frequency);
        for (const angle of s.bothSides ? [s.angle, s.angle + 180] : [s.angle]) {
            this.ellipse("before", s.frequency, angle, s.plateau + s.sigma, s.plateauAcross + s.sigmaAcross);
        }
    }

    drawGrips(handles, settings) {
        if (this.grips.childElementCount !== handles.length || this.shape !== kinds[settings.kind].shape) {
            this.shape = kinds[settings.kind].shape;
            this.grips.replaceChildren(...handles.map((handle) => this.grip(handle)));
        }
        handles.forEach((handle, i) => {
            const { x, y } = this.place(handle.at(settings)), grip = this.grips.children[i];
            grip.setAttribute("transform", `translate(${x} ${y})`);
            grip.setAttribute("aria-valuenow", settings[handle.name]);
        });
    }

    grip(handle) {
        const { least, most, unit } = fieldOf[handle.name];
        const grip = drawn("g", {
            class: "grip", tabindex: 0, role: "slider", "aria-label": `${handle.label}, ${unit}`,
            "data-field": handle.name, "aria-valuemin": least, "aria-valuemax": most,
        }, this.grips);
        drawn("circle", { class: "reach", r: 14 }, grip);
        drawn("circle", { class: "knob", r: 5 }, grip);
        grip.addEventListener("pointerdown", (event) => this.hold(event));
        grip.addEventListener("pointermove", (event) => this.drag(event));
        for (const type of ["pointerup", "pointercancel"]) grip.addEventListener(type, () => { this.held = null; });
        grip.addEventListener("keydown", (event) => this.key(event, handle));
        return grip;
    }

    at({ clientX, clientY }) {
        const box = this.pane.canvas.getBoundingClientRect();
        const part = this.pane.partAt(clientX - box.left, clientY - box.top);
        return [part.x - 0.5, part.y - 0.5];
    }

    // Handles may lie within each other's reach: the nearest one is meant.
    hold(event) {
        const [u, v] = this.at(event), handles = handlesOf[this.shape];
        const apart = (handle) => {
            const [x, y] = handle.at(this.settings);
            return Math.hypot(x - u, y - v);
        };
        this.held = handles.reduce((a, b) => (apart(b) < apart(a) ? b : a));
        const grip = this.grips.children[handles.indexOf(this.held)];
        grip.setPointerCapture(event.pointerId);
        grip.focus({ preventScroll: true });
        event.preventDefault();
        event.stopPropagation();
    }

    drag(event) {
        if (this.held) this.set(this.held.set(this.settings, ...this.at(event)));
    }

    key(event, { name, label }) {
        const field = label.startsWith("Lobe place") && event.key.match(/Up|Down/) ? fieldOf.angle : fieldOf[name];
        const sign = { ArrowRight: 1, ArrowUp: 1, ArrowLeft: -1, ArrowDown: -1 }[event.key];
        if (!sign) return;
        event.preventDefault();
        event.stopPropagation();
        this.set({ [field.name]: this.settings[field.name] + sign * field.step * (event.shiftKey ? 10 : 1) });
    }

    // To four digits behind the point: lines are to be read and copied.
    set(numbers) {
        const rounded = Object.entries(numbers).map(([name, value]) => {
            const field = fieldOf[name];
            return [name, clamped(field, name === "angle" ? value : Math.round(value * 1e4) / 1e4)];
        });
        this.change(Object.fromEntries(rounded));
    }
}
