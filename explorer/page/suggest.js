// Filters proposed from the picture, by a worker of their own: the page goes on meanwhile.
import { ask } from "./ask.js";
import { drawn, find, reveal } from "./dom.js";
import { kinds } from "./settings.js";

// A proposal as what the page sets: its last step is the filter, the others come before it.
function settingsOf({ steps }) {
    const last = steps.at(-1);
    return { ...last, before: steps.slice(0, -1), rescale: kinds[last.kind].passes ? 100 : null, signed: false };
}

function text({ radius, levels, steps }) {
    const waves = steps.length - 1, less = waves > 1 ? `, ${waves} waves removed` : waves ? ", a wave removed" : "";
    return `Radius ${radius}: ${levels.toPrecision(2)} levels${less}`;
}

export class Suggestions {
    // `take` is called with settings.
    constructor({ newWorker, pictureMessage, take, say }) {
        Object.assign(this, { newWorker, pictureMessage, take, say, worker: null });
        find("suggest").hidden = false;
        find("suggest").addEventListener("click", () => this.start());
        find("closeSuggestions").addEventListener("click", () => this.clear());
    }

    clear() {
        this.worker?.terminate();
        this.worker = null;
        find("suggest").textContent = "Suggest";
        find("suggestions").hidden = true;
    }

    async start() {
        if (this.worker) return this.clear();
        const message = await this.pictureMessage();
        find("suggest").textContent = "Suggest 0 %";
        this.worker = ask(this.newWorker, message, "suggest", {
            progress: (part) => { find("suggest").textContent = `Suggest ${Math.round(100 * part)} %`; },
            done: (answer) => {
                this.clear();
                this.show(answer);
            },
        });
    }

    show({ filters, remarks, refusal, error }) {
        if (refusal || error) return this.say(refusal || error);
        reveal("suggestions");
        find("suggested").replaceChildren(...filters.map((filter) => {
            const button = document.createElement("button");
            button.type = "button";
            button.textContent = text(filter);
            button.title = `mvfreq ${filter.arguments.join(" ")}`;
            button.addEventListener("click", () => this.choose(filter));
            return button;
        }), ...remarks.map((remark) => Object.assign(document.createElement("p"), { textContent: remark })));
        this.plot(filters);
    }

    choose(filter) {
        this.take(settingsOf(filter));
    }

    plot(filters) {
        const svg = find("suggestions").querySelector("svg");
        const width = 300, height = 150, log = Math.log10;
        const radii = filters.map(({ radius }) => log(radius)), levels = filters.map(({ levels: of }) => log(of));
        const scale = (values, from, to) => {
            const low = Math.min(...values), range = Math.max(...values) - low || 1;
            return (value) => from + ((value - low) / range) * (to - from);
        };
        const x = scale(radii, 30, width - 20), y = scale(levels, height - 30, 16);
        const add = (name, attributes, content = "") =>
            Object.assign(drawn(name, attributes, svg), { textContent: content });
        svg.replaceChildren();
        svg.setAttribute("viewBox", `0 0 ${width} ${height}`);
        const points = filters.map((_, i) => [x(radii[i]), y(levels[i])]);
        add("path", { d: `M${points.map((point) => point.join(" ")).join("L")}` });
        filters.forEach((filter, i) => {
            const point = add("circle", { cx: points[i][0], cy: points[i][1], r: 4 });
            point.addEventListener("click", () => this.choose(filter));
            add("text", { x: points[i][0], y: height - 8, "text-anchor": "middle" }, `${filter.radius}`);
            add("text", { x: points[i][0], y: points[i][1] - 7, "text-anchor": "middle" },
                filter.levels.toPrecision(2));
        });
    }
}
