// The work, beside the page: one picture, one wish at a time, and of several wishes only the last.
import { isPng, readPng } from "./png.js";

let library = null;
let engine = null;
let picture = null; // the number of the picture that is open
let hasSpectrum = false;
let wanted = null;
let isBusy = false;

const channel = new MessageChannel();
const waiting = [];
channel.port1.onmessage = () => waiting.shift()();

// Lets the messages in that have come meanwhile.
function breath() {
    return new Promise((go) => {
        waiting.push(go);
        channel.port2.postMessage(0);
    });
}

function checked(answer) {
    if (answer.error) throw new Error(answer.error);
    return answer;
}

function buffersOf(answer) {
    const arrays = [answer.pels, answer.magnitudes, ...(answer.levels ?? []).map(({ pels }) => pels)];
    return arrays.filter(Boolean).map(({ buffer }) => buffer);
}

function send(message, answer = {}) {
    postMessage({ ...message, ...answer }, buffersOf(answer));
}

async function samplesOf({ bytes, samples }) {
    if (samples) return samples;
    const file = new Uint8Array(bytes);
    if (!isPng(file)) throw new Error("This is no picture that the browser or this page can read");
    return readPng(file);
}

async function open(message) {
    const read = await samplesOf(message);
    const { width, height, channels, samples } = read;
    const answer = checked(engine.setPicture(samples, width, height, channels));
    picture = message.picture;
    hasSpectrum = false;
    const { name, bytes } = message;
    send({ type: "opened", picture, name, isExact: Boolean(bytes), isColour: channels > 2 }, answer);
}

async function takeKernel(message) {
    const { width, height, channels, samples } = await samplesOf(message);
    checked(engine.setKernel(samples, width, height, channels));
    send({ type: "kernel", name: message.name });
}

// What is seen first, and that from its middle outwards.
function ordered(tiles, seen) {
    const weight = ({ x, y, width, height }) => {
        const dx = x + width / 2 - seen.x - seen.width / 2, dy = y + height / 2 - seen.y - seen.height / 2;
        const isSeen = x < seen.x + seen.width && x + width > seen.x && y < seen.y + seen.height && y + height > seen.y;
        return { isSeen, distance: dx * dx + dy * dy };
    };
    return tiles.map((tile, at) => ({ at, ...weight(tile) }))
        .sort((a, b) => b.isSeen - a.isSeen || a.distance - b.distance);
}

// False when something else is wanted before all is done.
async function workTiles(message, tiles) {
    const order = ordered(tiles, message.seen);
    const seen = order.filter(({ isSeen }) => isSeen).length;
    for (let i = 0; i < order.length; ++i) {
        checked(engine.work(order[i].at));
        if (i + 1 === order.length) break;
        if (i + 1 === seen) sendResult(message, true);
        await breath();
        if (wanted) return false;
    }
    return true;
}

function sendResult(message, isPartial) {
    send({ type: "result", number: message.number, isPartial, ...plan }, checked(engine.result()));
}

let plan = {};

async function filter(message) {
    const { tiles, planeWidth, planeHeight } = checked(engine.begin(message.settings));
    plan = { planeWidth, planeHeight, tiles: tiles.length };
    if (!await workTiles(message, tiles)) return;
    sendResult(message, false);
    await breath();
    if (wanted) return;
    send({ type: "gains", number: message.number }, checked(engine.gains(256)));
    if (hasSpectrum) return;
    await breath();
    if (wanted) return;
    hasSpectrum = true;
    send({ type: "spectrum", picture }, checked(engine.spectrum()));
}

async function run() {
    if (isBusy) return;
    isBusy = true;
    while (wanted) {
        const message = wanted;
        wanted = null;
        try {
            await filter(message);
        } catch (error) {
            send({ type: "failed", number: message.number, text: error.message });
        }
        await breath();
    }
    isBusy = false;
}

// What changes picture or weights waits until the filter at work has come to an end.
let queue = Promise.resolve();

function inTurn(message, steps) {
    queue = queue.then(async () => {
        wanted = null;
        while (isBusy) await breath();
        await steps(message);
    }).catch((error) => send({ type: "refused", name: message.name, text: error.message, picture: message.picture }));
}

const takes = {
    async start({ module }) {
        library = await mvfreqEngine({ wasmBinary: module });
        engine = new library.Engine();
        send({ type: "ready" });
    },
    open: (message) => inTurn(message, open),
    kernel: (message) => inTurn(message, takeKernel),
    filter(message) {
        wanted = message;
        breath().then(run);
    },
    suggest: (message) => inTurn(message, async () => {
        const answer = checked(engine.suggest((part) => postMessage({ type: "progress", part })));
        postMessage({ type: "answer", ...answer });
    }),
    peaks: (message) => inTurn(message, async () => {
        postMessage({ type: "answer", ...checked(engine.peaks()) });
    }),
    memory: ({ port }) => port.postMessage(library.HEAPU8.length),
    archive() {
        const { bytes } = checked(engine.archive());
        postMessage({ type: "archive", bytes }, [bytes.buffer]);
    },
};

onmessage = ({ data }) => takes[data.type](data);
