// The lines that make the same result: for a shell, in C++, in Python.
import { filtersOf, kinds } from "./settings.js";

const classes = ["BandPass", "BandReject", "Gabor", "GaborReject", "Image"];

function quoted(name) {
    return /^[\w.\/+-]+$/.test(name) && !name.startsWith("-") ? name : `'${name.replaceAll("'", "'\\''")}'`;
}

// The page shows colours as grey, whatever the program makes of them by itself.
function ofResult({ border, rescale, signed }, isColour) {
    const words = isColour ? ["--channels grey"] : [];
    if (border === "zero") words.push("--border zero");
    if (rescale !== null) words.push(rescale === 100 ? "--rescale" : `--rescale ${rescale}`);
    if (signed) words.push("--signed");
    return words;
}

function ofFilter(s, kernel) {
    const { shape } = kinds[s.kind];
    if (shape === "weights") return [`--kernel ${quoted(kernel)}`];
    const words = [`--frequency ${s.frequency}`];
    if (shape === "lobe") words.push(`--angle ${s.angle}`);
    words.push(`--sigma ${s.sigma}`);
    if (shape === "lobe" && s.sigmaAcross !== s.sigma) words.push(`--sigma-across ${s.sigmaAcross}`);
    if (s.plateau !== 0) words.push(`--plateau ${s.plateau}`);
    if (shape === "lobe" && s.plateauAcross !== s.plateau) words.push(`--plateau-across ${s.plateauAcross}`);
    if (s.dcRadius !== 0) words.push(`--dc-radius ${s.dcRadius}`);
    if (s.bothSides) words.push("--both-sides");
    return words;
}

function input(name) {
    return quoted(name.replace(/\.\w+$/, "") + ".png");
}

export function commandLine(s, name, kernel, isColour) {
    const steps = filtersOf(s).map((step) => [kinds[step.kind].name, ...ofFilter(step, kernel)].join(" "));
    return ["mvfreq", steps.join(" then "), ...ofResult(s, isColour), input(name), "out.png"].join(" ");
}

export function applyLine(s, name, isColour) {
    return ["mvfreq apply filter.mva", ...ofResult(s, isColour), input(name), "out.png"].join(" ");
}

// The library's filters with their names in the lines: a lobe with both sides is two of them.
function namedFilters(s, mirrored) {
    const steps = filtersOf(s);
    return steps.flatMap((step, at) => {
        const name = at + 1 === steps.length ? "filter" : steps.length === 2 ? "wave" : `wave${at + 1}`;
        const mirror = { name: mirrored(name), step: { ...step, angle: step.angle + 180 } };
        return [{ name, step }, ...(step.bothSides ? [mirror] : [])];
    });
}

function hasAngle(filters) {
    return filters.some(({ step }) => kinds[step.kind].shape === "lobe");
}

function spreading({ rescale }) {
    return rescale !== null && rescale < 100;
}

function cppFilter({ name, step: s }, { width, height }) {
    const size = `.size = {${width}, ${height}}`;
    const radius = `.dcRadius = ${s.dcRadius}`;
    const type = `mvFrequencyFilter${classes[s.kind]}`;
    if (kinds[s.kind].shape === "weights") {
        return `// weights: ${width} x ${height} doubles with the sum 1, their centre at (0, 0)\n` +
            "mvFrequencyBuffer response;\nmfForwardFFT(weights, response);\n" +
            `const ${type} ${name}(response);`;
    }
    const shape = kinds[s.kind].shape === "ring"
        ? `.sigma = ${s.sigma}, .plateau = ${s.plateau}, .frequency = ${s.frequency},`
        : `.sigma = {${s.sigma}, ${s.sigmaAcross}}, .plateau = {${s.plateau}, ${s.plateauAcross}},\n` +
          `     .angle = mvRadian(${s.angle} * std::numbers::pi / 180), .frequency = ${s.frequency},`;
    return `const ${type} ${name}(\n    {${shape}\n     ${size}, ${radius}});`;
}

export function cppLines(s, plane, isWide) {
    const options = [];
    if (s.border === "zero") options.push(".border = mvBorder::zero");
    const isDouble = s.signed || spreading(s);
    if (s.signed) options.push(".result = mvFilterResult::real");
    if (s.rescale === 100 && !s.signed) options.push(".rescale = true");
    const pel = isDouble ? "double" : isWide ? "unsigned short" : "unsigned char";
    const last = options.length ? `, {${options.join(", ")}}` : "";
    const rest = s.signed && s.rescale !== null || spreading(s)
        ? `\n// then spread ${s.rescale} % of the pels over the grey levels` : "";
    const filters = namedFilters(s, (name) => `${name}Mirror`);
    const needs = hasAngle(filters) ? "#include <numbers>\n\n" : "\n";
    const made = filters.map((filter) => cppFilter(filter, plane)).join("\n");
    const used = filters.length === 1 ? "filter" : `{${filters.map(({ name }) => `&${name}`).join(", ")}}`;
    return `#include <filt/freqfilt.h>\n${needs}${made}\nmvPelBuffer<${pel}> result;\n` +
        `mfFilterImage(image, ${used}, result${last});${rest}`;
}

function pythonFilter({ name, step: s }, { width, height }) {
    const type = `mvfreq.FrequencyFilter${classes[s.kind]}`;
    const radius = kinds[s.kind].passes ? "dc_removal_radius" : "dc_protection_radius";
    const last = `size=(${width}, ${height}), ${radius}=${s.dcRadius})`;
    if (kinds[s.kind].shape === "weights") {
        return `# weights: ${height} rows of ${width} floats with the sum 1, their centre at [0, 0]\n` +
            `${name} = ${type}(mvfreq.forward_fft(weights))`;
    }
    if (kinds[s.kind].shape === "ring") {
        return `${name} = ${type}(\n    sigma=${s.sigma}, plateau=${s.plateau}, frequency=${s.frequency},\n    ${last}`;
    }
    return `${name} = ${type}(\n    sigma=(${s.sigma}, ${s.sigmaAcross}), plateau=(${s.plateau}, ${s.plateauAcross}),` +
        `\n    angle=${s.angle} * math.pi / 180, frequency=${s.frequency},\n    ${last}`;
}

export function pythonLines(s, plane) {
    const options = [];
    if (s.signed || spreading(s)) options.push("float");
    if (s.border === "zero") options.push('border="zero"');
    if (s.signed) options.push('result="real"');
    if (s.rescale === 100 && !s.signed) options.push("rescale=True");
    const filters = namedFilters(s, (name) => `${name}_mirror`);
    const imports = hasAngle(filters) ? "import math\nimport mvfreq" : "import mvfreq";
    const rest = s.signed && s.rescale !== null || spreading(s)
        ? `\n# then spread ${s.rescale} % of the pels over the grey levels` : "";
    const made = filters.map((filter) => pythonFilter(filter, plane)).join("\n");
    const used = filters.length === 1 ? "filter" : `[${filters.map(({ name }) => name).join(", ")}]`;
    return `${imports}\n\n${made}\n` +
        `result = mvfreq.filter_image(${["image", used, ...options].join(", ")})${rest}`;
}
