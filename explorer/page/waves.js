// The strongest waves of the picture, each to be removed before the filter.
import { ask } from "./ask.js";
import { find, reveal } from "./dom.js";
import { threeDigits } from "./settings.js";

const isSame = (a, b) => Object.keys(a).every((key) => a[key] === b[key]);

function has(before, steps) {
    return steps.every((step) => before.some((other) => isSame(step, other)));
}

// The cells of a wave; an overtone stands under its wave.
function cellsOf({ period, angle, amplitude, decibels, order }) {
    const degrees = (Math.round(10 * angle) / 10 + 0).toFixed(1).replace("-", "−");
    return [`${threeDigits(period)} px`, `${degrees}°`, `${threeDigits(amplitude)} levels`,
            `${Math.round(decibels)} dB`, order > 1 ? `overtone ${order}` : ""];
}

export class Waves {
    // `before` gives the steps before the filter, `change` sets them.
    constructor({ newWorker, pictureMessage, before, change, say }) {
        Object.assign(this, { newWorker, pictureMessage, before, change, say, worker: null, peaks: [] });
        find("findWaves").addEventListener("click", () => this.toggle());
        find("closeWaves").addEventListener("click", () => {
            this.clear();
            find("findWaves").focus();
        });
    }

    clear() {
        this.worker?.terminate();
        this.worker = null;
        find("findWaves").textContent = "Waves";
        find("waves").hidden = true;
    }

    async toggle() {
        const isOpen = this.worker || !find("waves").hidden;
        this.clear();
        if (isOpen) return;
        const message = await this.pictureMessage();
        find("findWaves").textContent = "Waves …";
        this.worker = ask(this.newWorker, message, "peaks", {
            done: (answer) => {
                this.clear();
                this.show(answer);
            },
        });
    }

    show({ peaks, refusal }) {
        if (refusal) return this.say(refusal);
        this.peaks = peaks;
        reveal("waves");
        find("noWaves").hidden = peaks.length > 0;
        find("waveList").replaceChildren(...peaks.map((peak) => this.row(peak)));
        this.mark();
    }

    row(peak) {
        const row = document.createElement("li"), label = row.appendChild(document.createElement("label"));
        row.className = peak.order > 1 ? "overtone" : "";
        label.title = `mvfreq ${peak.arguments.join(" ")}`;
        const box = label.appendChild(Object.assign(document.createElement("input"), { type: "checkbox" }));
        const cell = (textContent) => Object.assign(document.createElement("span"), { textContent });
        label.append(...cellsOf(peak).map(cell));
        box.addEventListener("change", () => this.set(peak.steps, box.checked));
        return row;
    }

    set(steps, isRemoved) {
        const others = this.before().filter((step) => !steps.some((other) => isSame(other, step)));
        this.change({ before: isRemoved ? [...others, ...steps] : others });
    }

    // What is ticked is what the settings say, whoever set them.
    mark() {
        [...find("waveList").children].forEach((row, at) => {
            row.querySelector("input").checked = has(this.before(), this.peaks[at].steps);
        });
    }
}
