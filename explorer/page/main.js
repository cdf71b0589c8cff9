// The page: what is set, shown and given away.
import { Before } from "./before.js";
import { drawn, find } from "./dom.js";
import { applyLine, commandLine, cppLines, pythonLines } from "./lines.js";
import { Overlay } from "./overlay.js";
import { acceptPictures, bytesOf, download, givenPicture, messageOf, shipped, transfersOf } from "./pictures.js";
import { clamped, fields, filtersOf, kinds, presets, start } from "./settings.js";
import { Suggestions } from "./suggest.js";
import { fit, makeMovable, Pane, view, whenViewChanges, zoomBy } from "./view.js";
import { writePng } from "./png.js";
import { Waves } from "./waves.js";

const panes = Object.fromEntries(["picture", "spectrum", "result"].map((id) => [id, new Pane(find(id))]));
const state = {
    settings: { ...start }, name: "", kernel: "disc.png", picture: 0, shownPicture: 0, sources: {}, number: 0, shown: 0,
    isExact: true, plane: { width: 0, height: 0 }, tiles: 1, changed: 0, tab: "shell", timings: [], isPartial: false,
};

// The worker is a part of this file: pages from the disk may not read others.
const workerPlace = URL.createObjectURL(new Blob([find("worker").textContent], { type: "text/javascript" }));

function newWorker() {
    const made = new Worker(workerPlace);
    const module = bytesOf(find("module").textContent).buffer;
    made.postMessage({ type: "start", module }, [module]);
    return made;
}

const worker = newWorker();
let isScheduled = false;

function say(text) {
    find("message").textContent = text;
    find("message").hidden = !text;
}

function wish() {
    if (isScheduled || !panes.picture.levels) return;
    isScheduled = true;
    queueMicrotask(() => {
        isScheduled = false;
        const { border, rescale, signed } = state.settings;
        const settings = { border, rescale, signed, filters: filtersOf(state.settings) };
        worker.postMessage({ type: "filter", number: ++state.number, settings, seen: panes.picture.seen() });
    });
}

function change(settings) {
    Object.assign(state.settings, settings);
    state.changed = performance.now();
    showSettings();
    wish();
}

// What is set.

function makeKinds() {
    kinds.forEach(({ title }, kind) => {
        const label = document.createElement("label");
        label.innerHTML = `<input type="radio" name="kind" value="${kind}"><span></span><kbd>${kind + 1}</kbd>`;
        label.querySelector("span").textContent = title;
        label.querySelector("input").addEventListener("change", () => change({ kind }));
        find("kinds").append(label);
    });
}

function makeFields() {
    for (const field of fields) {
        const row = document.createElement("div");
        row.className = "row";
        row.dataset.shapes = field.shapes;
        row.innerHTML = `<label for="${field.name}">${field.label}</label><input id="${field.name}" type="number"
            min="${field.least}" max="${field.most}" step="any"><span>${field.unit}</span>`;
        const input = row.querySelector("input");
        input.addEventListener("input", () => {
            if (input.value === "" || !input.validity.valid) return;
            change({ [field.name]: clamped(field, input.valueAsNumber) });
        });
        input.addEventListener("keydown", (event) => {
            const sign = { ArrowUp: 1, ArrowDown: -1 }[event.key];
            if (!sign) return;
            event.preventDefault();
            const step = field.step * (event.shiftKey ? 10 : 1) * sign;
            change({ [field.name]: clamped(field, state.settings[field.name] + step) });
        });
        input.addEventListener("blur", showSettings);
        find("sides").before(row);
    }
}

function meaning({ kind, frequency, sigma }) {
    if (kinds[kind].shape === "weights") return "The weights are divided by their sum; their middle is the centre.";
    const period = frequency > 0 ? `every ${(1 / frequency).toFixed(1)} px` : "all that is slower";
    const hasSpots = frequency > 0 && kinds[kind].shape === "ring";
    const spot = hasSpots ? `, spots of radius ${(0.22 / frequency).toFixed(1)}` : "";
    return `${period}${spot}; rings ${(1 / (2 * Math.PI * sigma)).toFixed(0)} px far`;
}

function showSettings() {
    const { settings } = state, { shape } = kinds[settings.kind];
    document.querySelector(`[name=kind][value="${settings.kind}"]`).checked = true;
    for (const row of find("numbers").querySelectorAll("[data-shapes]")) {
        row.hidden = !row.dataset.shapes.split(" ").includes(shape);
    }
    for (const { name } of fields) {
        const input = find(name);
        if (document.activeElement !== input || input.valueAsNumber !== settings[name]) input.value = settings[name];
    }
    find("weights").hidden = shape !== "weights";
    find("sides").hidden = kinds[settings.kind].name !== "gaborreject";
    find("bothSides").checked = settings.bothSides;
    find("kernelName").textContent = state.kernel;
    find("meaning").textContent = meaning(settings);
    find("border").value = settings.border;
    find("rescale").checked = settings.rescale !== null;
    find("percent").disabled = settings.rescale === null;
    if (document.activeElement !== find("percent")) find("percent").value = settings.rescale ?? 100;
    find("signed").checked = settings.signed;
    before.show(settings.before);
    waves.mark();
    overlay.draw(settings);
    showLine();
}

function bindResult() {
    find("bothSides").addEventListener("change", ({ target }) => change({ bothSides: target.checked }));
    find("border").addEventListener("change", ({ target }) => change({ border: target.value }));
    find("signed").addEventListener("change", ({ target }) => change({ signed: target.checked }));
    find("rescale").addEventListener("change", ({ target }) => {
        change({ rescale: target.checked ? find("percent").valueAsNumber || 100 : null });
    });
    find("percent").addEventListener("input", ({ target }) => {
        if (target.value === "" || !target.validity.valid || target.valueAsNumber <= 0) return;
        change({ rescale: target.valueAsNumber });
    });
    find("tint").addEventListener("change", drawPanes);
    find("together").addEventListener("change", ({ target }) => {
        for (const { own } of Object.values(panes)) Object.assign(own, { zoom: view.zoom, x: view.x, y: view.y });
        view.isShared = target.checked;
        drawPanes();
    });
}

// What is shown.

const overlay = new Overlay(panes.spectrum, change);
const before = new Before(change);

function lines() {
    const { settings, name, kernel, plane, isColour } = state;
    if (state.tab === "cpp") return cppLines(settings, plane, panes.result.pels?.BYTES_PER_ELEMENT === 2);
    if (state.tab === "python") return pythonLines(settings, plane);
    return `${commandLine(settings, name, kernel, isColour)}\n${applyLine(settings, name, isColour)}`;
}

function showLine() {
    find("line").textContent = state.name && lines();
}

function selectTab(name) {
    state.tab = name;
    for (const tab of document.querySelectorAll("[role=tab]")) {
        const isSelected = tab.id === `tab-${name}`;
        tab.setAttribute("aria-selected", isSelected);
        tab.tabIndex = isSelected ? 0 : -1;
    }
    find("line").setAttribute("aria-labelledby", `tab-${name}`);
    showLine();
}

function drawPanes() {
    overlay.isTinted = find("tint").checked;
    for (const pane of Object.values(panes)) pane.draw();
    overlay.draw(state.settings);
    drawCross();
}

let pointer = null;

function drawCross() {
    for (const [name, pane] of Object.entries(panes)) {
        pane.svg.querySelector("g.pointer")?.remove();
        if (!pointer || !pane.levels) continue;
        const { x, y } = pane.placeOf(pointer.x, pointer.y);
        if (pane.root === pointer.root) continue;
        const group = drawn("g", { class: "pointer" }, pane.svg);
        drawn("path", { class: "cross", d: `M${x - 14} ${y}h9m10 0h9M${x} ${y - 14}v9m0 10v9` }, group);
    }
    showValues();
}

function spectrumText(x, y) {
    const pane = panes.spectrum, u = x - 0.5, v = y - 0.5, f = Math.hypot(u, v);
    if (!pane.magnitudes) return "";
    const column = Math.min(pane.width - 1, Math.floor(x * pane.width));
    const row = Math.min(pane.height - 1, Math.floor(y * pane.height));
    const magnitude = pane.magnitudes[row * pane.width + column];
    const period = f > 0 ? `, every ${(1 / f).toPrecision(3)} px` : "";
    const degrees = ((Math.atan2(v, u) * 180) / Math.PI).toFixed(0);
    return `${u.toFixed(3)}, ${v.toFixed(3)}: f ${f.toFixed(3)}${period}, ${degrees}°, |F| ${magnitude.toPrecision(3)}`;
}

function showValues() {
    for (const [name, pane] of Object.entries(panes)) {
        const output = pane.root.querySelector("h2 output");
        if (!pointer || !pane.levels || pointer.x < 0 || pointer.y < 0 || pointer.x >= 1 || pointer.y >= 1) {
            output.textContent = "";
        } else if (name === "spectrum") {
            output.textContent = spectrumText(pointer.x, pointer.y);
        } else {
            const x = Math.floor(pointer.x * pane.width), y = Math.floor(pointer.y * pane.height);
            const pel = pane.pels[y * pane.width + x];
            output.textContent = `${x}, ${y}: ${name === "result" && state.settings.signed ? pel - 32768 : pel}`;
        }
    }
}

function followPointer(pane) {
    pane.root.addEventListener("pointermove", ({ clientX, clientY }) => {
        const box = pane.canvas.getBoundingClientRect();
        pointer = { ...pane.partAt(clientX - box.left, clientY - box.top), root: pane.root };
        drawCross();
    });
    pane.root.addEventListener("pointerleave", () => {
        pointer = null;
        drawCross();
    });
}

function take(pane, { levels, pels }) {
    pane.pels = pels ?? levels[0].pels;
    pane.show(levels);
}

const heard = {
    ready() {
        const [disc] = shipped().filter(({ name }) => name === "disc.png");
        openKernel(disc.blob(), disc.name);
        const given = givenPicture();
        if (given) open(given.blob, given.name);
        else openShipped("woven.png");
    },
    opened(message) {
        state.shownPicture = message.picture;
        for (const picture of Object.keys(state.sources)) if (picture < message.picture) delete state.sources[picture];
        suggestions.clear();
        waves.clear();
        const { name, isExact } = message;
        Object.assign(state, { name, isExact, isColour: isExact && message.isColour });
        panes.result.levels = null;
        panes.spectrum.magnitudes = null;
        take(panes.picture, message);
        say("");
        find("about").textContent = `${name}, ${panes.picture.width} × ${panes.picture.height}, ` +
            `${8 * panes.picture.pels.BYTES_PER_ELEMENT} bits${isExact ? "" : ", decoded by the browser"}`;
        find("savePicture").hidden = isExact;
        state.changed = performance.now();
        showSettings();
        wish();
    },
    refused({ name, text, picture }) {
        delete state.sources[picture];
        say(`${name}: ${text}`);
    },
    kernel({ name }) {
        state.kernel = name;
        showSettings();
        if (state.settings.kind === 4) change({});
    },
    failed({ text }) {
        say(text);
    },
    result(message) {
        if (message.number !== state.number) return;
        Object.assign(state, { plane: { width: message.planeWidth, height: message.planeHeight }, tiles: message.tiles,
                               isPartial: message.isPartial });
        say("");
        take(panes.result, message);
        drawCross();
        showLine();
        const { changed } = state;
        requestAnimationFrame(() => showTiming(performance.now() - changed, message));
    },
    gains(message) {
        if (message.number === state.number) overlay.showGains(message);
    },
    spectrum(message) {
        if (message.picture !== state.shownPicture) return;
        panes.spectrum.magnitudes = message.magnitudes;
        take(panes.spectrum, message);
        overlay.draw(state.settings);
    },
    archive({ bytes }) {
        download(new Blob([bytes]), "filter.mva");
    },
};

function showTiming(milliseconds, { tiles, planeWidth, planeHeight, number, isPartial }) {
    if (!isPartial) {
        state.shown = number;
        state.timings.push(milliseconds);
        if (state.timings.length > 1000) state.timings.shift();
    }
    find("state").textContent = `plane ${planeWidth} × ${planeHeight}${tiles > 1 ? `, ${tiles} tiles` : ""}, ` +
        `${isPartial ? "working" : `${milliseconds.toFixed(0)} ms`}`;
}

const pictureMessage = () => messageOf(state.sources[state.shownPicture].blob, state.name);
const suggestions = new Suggestions({
    newWorker, say, pictureMessage,
    take: (settings) => change({ ...start, ...settings, border: state.settings.border }),
});
const waves = new Waves({ newWorker, say, pictureMessage, change, before: () => state.settings.before });

// Where pictures come from and results go.

async function opened(type, blob, name, more = {}) {
    try {
        const message = await messageOf(blob, name);
        worker.postMessage({ type, ...more, ...message }, transfersOf(message));
    } catch (error) {
        say(error.message);
    }
}

function open(blob, name) {
    const picture = ++state.picture;
    state.sources[picture] = { blob, name };
    return opened("open", blob, name, { picture });
}
const openKernel = (blob, name) => opened("kernel", blob, name);

function openShipped(name) {
    find("shipped").value = name;
    return open(shipped().find((picture) => picture.name === name).blob(), name);
}

async function saveGrey(pane, name) {
    const { pels, width, height } = pane;
    if (pels) download(await writePng(pels, width, height), name);
}

function bindFiles() {
    acceptPictures(find("file"), (blob, name) => {
        find("shipped").value = "";
        open(blob, name);
    });
    find("kernel").addEventListener("change", ({ target }) => {
        if (target.files[0]) openKernel(target.files[0], target.files[0].name);
        target.value = "";
    });
    find("savePng").addEventListener("click", () => saveGrey(panes.result, "out.png"));
    find("savePicture").addEventListener("click", () => {
        saveGrey(panes.picture, `${state.name.replace(/\.\w+$/, "")}.png`);
    });
    find("saveFilter").addEventListener("click", () => worker.postMessage({ type: "archive" }));
    find("copy").addEventListener("click", copyLine);
}

// Pages from the disk may have no clipboard: then the lines are selected, to be copied by hand.
async function copyLine() {
    getSelection().selectAllChildren(find("line"));
    try {
        await navigator.clipboard.writeText(find("line").textContent);
    } catch {
        document.execCommand("copy");
    }
}

function fillSelects() {
    const options = ["", ...shipped().map(({ name }) => name).filter((name) => name !== "disc.png")];
    find("shipped").append(...options.map((name) => new Option(name || "your own", name)));
    find("shipped").addEventListener("change", ({ target }) => target.value && openShipped(target.value));
    find("preset").append(new Option("choose…", ""), ...presets.map(({ title }, at) => new Option(title, at)));
    find("preset").addEventListener("change", ({ target }) => {
        if (target.value === "") return;
        const { settings, picture } = presets[target.value];
        target.value = "";
        // A recipe is for a kind of picture: one's own stays.
        if (find("shipped").value && find("shipped").value !== picture) openShipped(picture);
        change({ ...settings });
    });
}

function toggleTheme() {
    const root = document.documentElement;
    root.dataset.theme = root.dataset.theme === "dark" ? "light" : "dark";
}

function bindKeys() {
    const toggle = (id) => find(id).click();
    // The views that keys zoom: that of the pane with the focus, or all.
    const inFocus = () => {
        const focused = Object.values(panes).filter(({ root }) => root.contains(document.activeElement));
        return view.isShared ? [view] : (focused.length ? focused : Object.values(panes)).map(({ own }) => own);
    };
    const zoom = (factor) => inFocus().forEach((of) => zoomBy(factor, of));
    const keys = {
        r: () => toggle("rescale"), s: () => toggle("signed"), g: () => toggle("tint"), o: () => toggle("file"),
        f: () => inFocus().forEach((of) => fit(of)),
        b: () => change({ border: state.settings.border === "zero" ? "mirror" : "zero" }),
        l: () => toggle("together"),
        "+": () => zoom(1.5), "=": () => zoom(1.5), "-": () => zoom(1 / 1.5), "?": () => toggle("help"),
    };
    kinds.forEach((_, kind) => { keys[kind + 1] = () => change({ kind }); });
    addEventListener("keydown", (event) => {
        if (event.ctrlKey || event.metaKey || event.altKey) return;
        if (event.target.matches("input[type=number], select")) return;
        keys[event.key.toLowerCase()]?.();
    });
    const tabs = ["shell", "cpp", "python"];
    for (const name of tabs) {
        find(`tab-${name}`).addEventListener("click", () => selectTab(name));
        find(`tab-${name}`).addEventListener("keydown", ({ key }) => {
            const step = { ArrowRight: 1, ArrowLeft: 2 }[key];
            if (!step) return;
            selectTab(tabs[(tabs.indexOf(name) + step) % 3]);
            find(`tab-${state.tab}`).focus();
        });
    }
    find("help").addEventListener("click", () => {
        find("keys").hidden = !find("keys").hidden;
        find("help").setAttribute("aria-expanded", !find("keys").hidden);
    });
}

if (!document.documentElement.dataset.theme) {
    document.documentElement.dataset.theme = matchMedia("(prefers-color-scheme: dark)").matches ? "dark" : "light";
}
find("theme").addEventListener("click", toggleTheme);
find("panel").addEventListener("submit", (event) => event.preventDefault());
makeKinds();
makeFields();
bindResult();
bindFiles();
fillSelects();
bindKeys();
for (const pane of Object.values(panes)) {
    makeMovable(pane);
    followPointer(pane);
}
whenViewChanges(drawPanes);
addEventListener("resize", drawPanes);
worker.onmessage = ({ data }) => heard[data.type](data);
worker.onerror = ({ message }) => say(`The work has stopped: ${message}`);
showSettings();

// For tests, and for the curious.
globalThis.explorer = { state, panes, view, change, open, worker };
