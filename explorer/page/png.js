// PNG files, read as the program reads them and written as it writes them: the browser's own decoder
// gives 8 bits and may correct colours.

const signature = [137, 80, 78, 71, 13, 10, 26, 10];
const mostPels = 100e6;

const crcTable = Uint32Array.from({ length: 256 }, (_, byte) => {
    for (let bit = 0; bit < 8; ++bit) byte = byte & 1 ? 0xedb88320 ^ (byte >>> 1) : byte >>> 1;
    return byte;
});

function crcOf(bytes) {
    let crc = ~0;
    for (let i = 0; i < bytes.length; ++i) crc = crcTable[(crc ^ bytes[i]) & 255] ^ (crc >>> 8);
    return ~crc >>> 0;
}

export function isPng(bytes) {
    return bytes.length >= 8 && signature.every((byte, i) => bytes[i] === byte);
}

// The chunks up to the last one that is needed, by name; those of the samples joined.
function chunksOf(bytes) {
    const view = new DataView(bytes.buffer, bytes.byteOffset, bytes.byteLength);
    const chunks = { samples: [] };
    for (let at = 8; at + 12 <= bytes.length; ) {
        const length = view.getUint32(at);
        const name = String.fromCharCode(...bytes.subarray(at + 4, at + 8));
        if (at + 12 + length > bytes.length) break;
        const data = bytes.subarray(at + 8, at + 8 + length);
        const isCritical = (bytes[at + 4] & 32) === 0;
        if (isCritical && crcOf(bytes.subarray(at + 4, at + 8 + length)) !== view.getUint32(at + 8 + length)) {
            throw new Error("The file is damaged");
        }
        if (name === "IDAT") chunks.samples.push(data);
        else chunks[name] ??= data;
        if (name === "IEND") return chunks;
        at += 12 + length;
    }
    throw new Error("The file ends early");
}

function headerOf(chunk) {
    const view = new DataView(chunk.buffer, chunk.byteOffset, chunk.byteLength);
    const header = {
        width: view.getUint32(0), height: view.getUint32(4), depth: chunk[8], colour: chunk[9],
        isInterlaced: chunk[12] === 1,
    };
    const channels = { 0: 1, 2: 3, 3: 1, 4: 2, 6: 4 }[header.colour];
    if (!channels || ![1, 2, 4, 8, 16].includes(header.depth) || !header.width || !header.height) {
        throw new Error("The file is damaged");
    }
    if (header.width * header.height > mostPels) {
        throw new Error(`${header.width} x ${header.height} pels are too many for this page; ` +
                        "the program takes them");
    }
    return { ...header, channels };
}

// Seven passes of an interlaced picture, one of any other: first column and row, steps.
function passesOf({ width, height, isInterlaced }) {
    const all = isInterlaced
        ? [[0, 0, 8, 8], [4, 0, 8, 8], [0, 4, 4, 8], [2, 0, 4, 4], [0, 2, 2, 4], [1, 0, 2, 2], [0, 1, 1, 2]]
        : [[0, 0, 1, 1]];
    return all.map(([x, y, dx, dy]) => ({
        x, y, dx, dy, columns: Math.ceil((width - x) / dx), rows: Math.ceil((height - y) / dy),
    })).filter(({ columns, rows }) => columns > 0 && rows > 0);
}

async function inflated(parts, length) {
    const out = new Uint8Array(length);
    const reader = new Blob(parts).stream().pipeThrough(new DecompressionStream("deflate")).getReader();
    let at = 0;
    try {
        while (at < length) {
            const { value, done } = await reader.read();
            if (done) break;
            out.set(value.subarray(0, length - at), at);
            at += value.length;
        }
        reader.cancel().catch(() => {});
    } catch {
        throw new Error(at === 0 ? "The file is damaged" : "The file ends early");
    }
    if (at < length) throw new Error("The file ends early");
    return out;
}

function paeth(a, b, c) {
    const p = a + b - c, pa = Math.abs(p - a), pb = Math.abs(p - b), pc = Math.abs(p - c);
    return pa <= pb && pa <= pc ? a : pb <= pc ? b : c;
}

// Takes the filter off a row in place; `above` is the row before it.
function unfilter(type, row, above, step) {
    const length = row.length;
    if (type === 1) for (let i = step; i < length; ++i) row[i] += row[i - step];
    else if (type === 2) for (let i = 0; i < length; ++i) row[i] += above[i];
    else if (type === 3) for (let i = 0; i < length; ++i) row[i] += ((i < step ? 0 : row[i - step]) + above[i]) >> 1;
    else if (type === 4) {
        for (let i = 0; i < length; ++i) {
            row[i] += i < step ? above[i] : paeth(row[i - step], above[i], above[i - step]);
        }
    } else if (type !== 0) throw new Error("The file is damaged");
}

// Puts the samples of one row, of which a byte may hold several, to their places.
function spreadRow(row, y, pass, header, samples) {
    const { depth, channels, width, colour } = header;
    const to = (pass.columns === width ? y * width : y * width + pass.x) * channels;
    const step = pass.dx * channels;
    const most = colour === 0 ? 255 / (2 ** depth - 1) : 1;
    for (let x = 0, i = 0; x < pass.columns; ++x) {
        for (let c = 0; c < channels; ++c, ++i) {
            const at = to + x * step + c;
            if (depth === 8) samples[at] = row[i];
            else if (depth === 16) samples[at] = (row[2 * i] << 8) | row[2 * i + 1];
            else samples[at] = ((row[(i * depth) >> 3] >> (8 - depth - ((i * depth) & 7))) & (2 ** depth - 1)) * most;
        }
    }
}

function coloured(indexes, palette) {
    const rgb = new Uint8Array(3 * indexes.length);
    for (let i = 0; i < indexes.length; ++i) {
        for (let c = 0; c < 3; ++c) rgb[3 * i + c] = palette[3 * indexes[i] + c] ?? 0;
    }
    return rgb;
}

// The samples of a PNG, interleaved, in 8 or 16 bits; throws an Error with a sentence.
export async function readPng(bytes) {
    const chunks = chunksOf(bytes);
    if (!chunks.IHDR || chunks.IHDR.length !== 13) throw new Error("The file is damaged");
    const header = headerOf(chunks.IHDR);
    const passes = passesOf(header);
    const rowBytes = (pass) => Math.ceil((pass.columns * header.channels * header.depth) / 8);
    const length = passes.reduce((sum, pass) => sum + pass.rows * (1 + rowBytes(pass)), 0);
    if (length / 1032 > bytes.length) throw new Error("The file ends early");
    const raw = await inflated(chunks.samples, length);
    const Samples = header.depth === 16 ? Uint16Array : Uint8Array;
    let samples = new Samples(header.width * header.height * header.channels);
    const step = Math.max(1, (header.channels * header.depth) >> 3);
    let at = 0;
    for (const pass of passes) {
        let above = new Uint8Array(rowBytes(pass));
        for (let y = 0; y < pass.rows; ++y) {
            const row = raw.subarray(at + 1, at + 1 + above.length);
            unfilter(raw[at], row, above, step);
            spreadRow(row, pass.y + y * pass.dy, pass, header, samples);
            above = row;
            at += 1 + row.length;
        }
    }
    let { channels } = header;
    if (header.colour === 3) {
        if (!chunks.PLTE) throw new Error("The file is damaged");
        samples = coloured(samples, chunks.PLTE);
        channels = 3;
    }
    return { width: header.width, height: header.height, channels, samples };
}

function chunk(name, data) {
    const bytes = new Uint8Array(12 + data.length);
    const view = new DataView(bytes.buffer);
    view.setUint32(0, data.length);
    for (let i = 0; i < 4; ++i) bytes[4 + i] = name.charCodeAt(i);
    bytes.set(data, 8);
    view.setUint32(8 + data.length, crcOf(bytes.subarray(4, 8 + data.length)));
    return bytes;
}

// A grey PNG of 8 or 16 bits that bears the program's name, so that the program may replace it.
export async function writePng(pels, width, height) {
    const size = pels.BYTES_PER_ELEMENT;
    const raw = new Uint8Array(height * (1 + width * size));
    for (let y = 0, at = 0; y < height; ++y) {
        raw[at++] = 0;
        for (let x = y * width; x < (y + 1) * width; ++x) {
            if (size === 2) raw[at++] = pels[x] >> 8;
            raw[at++] = pels[x] & 255;
        }
    }
    const packed = new Blob([raw]).stream().pipeThrough(new CompressionStream("deflate"));
    const header = new Uint8Array(13);
    const view = new DataView(header.buffer);
    view.setUint32(0, width);
    view.setUint32(4, height);
    header[8] = 8 * size;
    return new Blob([
        Uint8Array.from(signature), chunk("IHDR", header),
        chunk("tEXt", new TextEncoder().encode("Software\0mvfreq")),
        chunk("IDAT", new Uint8Array(await new Response(packed).arrayBuffer())), chunk("IEND", new Uint8Array()),
    ], { type: "image/png" });
}
