// The filter as the page knows it: kinds, fields, limits, presets.

export const kinds = [
    { name: "bandpass", title: "Ring, pass", shape: "ring", passes: true },
    { name: "bandreject", title: "Ring, reject", shape: "ring", passes: false },
    { name: "gabor", title: "Lobe, pass", shape: "lobe", passes: true },
    { name: "gaborreject", title: "Lobe, reject", shape: "lobe", passes: false },
    { name: "convolve", title: "Picture of weights", shape: "weights", passes: true },
];

export const fields = [
    { name: "frequency", label: "Frequency", unit: "cycles/px", least: 0, most: 0.7, step: 0.001, shapes: "ring lobe" },
    { name: "angle", label: "Angle", unit: "°", least: -360, most: 360, step: 1, shapes: "lobe" },
    { name: "sigma", label: "Sigma", unit: "cycles/px", least: 0.0001, most: 0.5, step: 0.001, shapes: "ring lobe" },
    { name: "sigmaAcross", label: "Sigma across", unit: "cycles/px", least: 0.0001, most: 0.5, step: 0.001,
      shapes: "lobe" },
    { name: "plateau", label: "Plateau", unit: "cycles/px", least: 0, most: 0.5, step: 0.001, shapes: "ring lobe" },
    { name: "plateauAcross", label: "Plateau across", unit: "cycles/px", least: 0, most: 0.5, step: 0.001,
      shapes: "lobe" },
    { name: "dcRadius", label: "DC radius", unit: "bins", least: 0, most: 64, step: 1, shapes: "ring lobe" },
];

export const start = {
    kind: 0, frequency: 0.03, angle: 0, sigma: 0.012, sigmaAcross: 0.012, plateau: 0, plateauAcross: 0,
    dcRadius: 1, bothSides: false, before: [], border: "mirror", rescale: 100, signed: false,
};

const plain = { ...start, dcRadius: 0, rescale: null };
const lobe = (sigma, across) => ({ sigma, sigmaAcross: across ?? sigma });

// The recipes of the guide; a picture goes with each.
export const presets = [
    { title: "Spots, stains, slack threads", picture: "woven.png", settings: start },
    { title: "A torn or missing piece", picture: "woven.png",
      settings: { ...plain, kind: 2, frequency: 0.143, ...lobe(0.01), rescale: 100 } },
    { title: "Scratches in one direction", picture: "woven.png",
      settings: { ...plain, kind: 2, frequency: 0.05, angle: 90, ...lobe(0.03, 0.006), rescale: 100 } },
    { title: "A dot screen, a grid, a sieve", picture: "printed.png",
      settings: { ...plain, kind: 1, frequency: 0.24, sigma: 0.02, plateau: 0.05 } },
    { title: "One side of a wave", picture: "printed.png",
      settings: { ...plain, kind: 3, frequency: 0.2, angle: 45, ...lobe(0.02) } },
    { title: "Uneven light", picture: "printed.png",
      settings: { ...plain, kind: 1, frequency: 0, sigma: 0.004, dcRadius: 1 } },
    { title: "Noise", picture: "brushed.png", settings: { ...plain, frequency: 0, sigma: 0.1 } },
    { title: "Smoothing by a disc", picture: "printed.png", settings: { ...plain, kind: 4 } },
];

// All filters, applied in turn: the steps before, then the one that is edited.
export function filtersOf(settings) {
    const { before, border, rescale, signed, ...last } = settings;
    return [...before, { ...last, bothSides: last.bothSides && kinds[last.kind].name === "gaborreject" }];
}

export function threeDigits(value) {
    return value >= 100 ? value.toFixed(0) : value.toPrecision(3);
}

export function clamped(field, value) {
    const digits = field.step >= 1 ? 0 : 5;
    return Number(Math.min(Math.max(value, field.least), field.most).toFixed(digits));
}
