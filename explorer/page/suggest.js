// Filters proposed from the picture, by a worker of their own: the page goes on meanwhile.
import { drawn, find } from "./dom.js";
import { kinds } from "./settings.js";

// Asks for proposals; `newWorker` gives a worker that has the picture's message to open.
function ask(newWorker, message, hear) {
    const worker = newWorker();
    const end = (answer) => {
        worker.terminate();
        hear.done(answer);
    };
    const heard = {
        ready() {
            worker.postMessage({ type: "open", picture: 0, ...message });
            worker.postMessage({ type: "suggest" });
        },
        progress: ({ part }) => hear.progress(part),
        suggested: end,
        refused: ({ text }) => end({ refusal: text, filters: [], remarks: [] }),
    };
    worker.onmessage = ({ data }) => heard[data.type]?.(data);
    worker.onerror = ({ message: text }) => end({ refusal: text, filters: [], remarks: [] });
    return worker;
}

// A proposal as what the page sets, if it is one filter of a kind that the page has.
function settingsOf({ steps }) {
    if (steps.length !== 1 || steps[0].bothSides) return null;
    const { bothSides, ...numbers } = steps[0];
    return { ...numbers, rescale: kinds[numbers.kind].passes ? 100 : null, signed: false };
}

function text({ radius, levels }) {
    return `Radius ${radius}: ${levels.toPrecision(2)} levels`;
}

export class Suggestions {
    // `take` is called with settings, `print` with a line that the page cannot show otherwise.
    constructor({ newWorker, pictureMessage, take, print, say }) {
        Object.assign(this, { newWorker, pictureMessage, take, print, say, worker: null });
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
        this.worker = ask(this.newWorker, message, {
            progress: (part) => { find("suggest").textContent = `Suggest ${Math.round(100 * part)} %`; },
            done: (answer) => {
                this.clear();
                this.show(answer);
            },
        });
    }

    show({ filters, remarks, refusal, error }) {
        if (refusal || error) return this.say(refusal || error);
        find("suggestions").hidden = false;
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
        const settings = settingsOf(filter);
        if (settings) this.take(settings);
        else this.print(filter.arguments);
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
            add("text", { x: points[i][0], y: points[i][1] - 7, "text-anchor": "middle" }, filter.levels.toPrecision(2));
        });
    }
}
