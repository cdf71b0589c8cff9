// Pictures from outside: files, the clipboard, those that come with the page.

export function bytesOf(base64) {
    return Uint8Array.from(atob(base64), (letter) => letter.charCodeAt(0));
}

function isPngFile(bytes) {
    return bytes[0] === 137 && bytes[1] === 80 && bytes[2] === 78 && bytes[3] === 71;
}

// What the browser makes of another kind of picture, its colours as they are stored.
async function decoded(blob) {
    const bitmap = await createImageBitmap(blob, { colorSpaceConversion: "none", premultiplyAlpha: "none" });
    const { width, height } = bitmap;
    const context = new OffscreenCanvas(width, height).getContext("2d");
    context.drawImage(bitmap, 0, 0);
    bitmap.close();
    return { width, height, channels: 4, samples: context.getImageData(0, 0, width, height).data };
}

// What the worker opens: the bytes of a PNG, or the samples of what the browser can read.
export async function messageOf(blob, name) {
    const bytes = new Uint8Array(await blob.arrayBuffer());
    if (isPngFile(bytes)) return { name, bytes: bytes.buffer };
    try {
        const picture = await decoded(blob);
        return { name, samples: { ...picture, samples: new Uint8Array(picture.samples.buffer) } };
    } catch {
        throw new Error(`${name}: this is no picture that the browser can read`);
    }
}

export function transfersOf(message) {
    return [message.bytes ?? message.samples.samples.buffer];
}

export function shipped() {
    return [...document.querySelectorAll("script[data-picture]")].map(({ dataset, textContent }) => ({
        name: dataset.picture, blob: () => new Blob([bytesOf(textContent.trim())]),
    }));
}

// The picture that `mvfreq explore` puts into the page.
export function givenPicture() {
    const given = document.querySelector("script[data-given]");
    return given && { name: given.dataset.given, blob: new Blob([bytesOf(given.textContent.trim())]) };
}

// Calls take(blob, name) for what is dropped, pasted or chosen.
export function acceptPictures(chooser, take) {
    const takeFirst = (files) => files[0] && take(files[0], files[0].name || "pasted.png");
    chooser.addEventListener("change", () => {
        takeFirst(chooser.files);
        chooser.value = "";
    });
    addEventListener("paste", ({ clipboardData }) => takeFirst(clipboardData.files));
    addEventListener("dragover", (event) => {
        event.preventDefault();
        document.body.classList.add("dropping");
    });
    addEventListener("dragleave", (event) => {
        if (!event.relatedTarget) document.body.classList.remove("dropping");
    });
    addEventListener("drop", (event) => {
        event.preventDefault();
        document.body.classList.remove("dropping");
        takeFirst(event.dataTransfer.files);
    });
}

export function download(blob, name) {
    const link = document.createElement("a");
    link.href = URL.createObjectURL(blob);
    link.download = name;
    link.click();
    setTimeout(() => URL.revokeObjectURL(link.href), 10000);
}
